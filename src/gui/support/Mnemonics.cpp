#include "gui/support/Mnemonics.h"

#include <QSet>

namespace arden::gui {

QStringList withMnemonics(const QStringList& texts) {
    QSet<QChar> taken;
    QStringList out;
    out.reserve(texts.size());
    for (const QString& text : texts) {
        QString marked;
        bool placed = false;
        for (const QChar c : text) {
            if (!placed && c.isLetterOrNumber() && !taken.contains(c.toLower())) {
                taken.insert(c.toLower());
                marked += QLatin1Char('&');
                placed = true;
            }
            marked += c;
            if (c == QLatin1Char('&')) marked += c;
        }
        out << marked;
    }
    return out;
}

}  // namespace arden::gui
