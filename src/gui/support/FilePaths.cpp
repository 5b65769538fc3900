#include "gui/support/FilePaths.h"

#include <QDir>
#include <QFileInfo>

namespace arden::gui {

QString absolutePath(const QString& path) {
    if (path.isEmpty()) return {};
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

QString realPath(const QString& path) {
    if (path.isEmpty()) return {};
    const QString real = QFileInfo(path).canonicalFilePath();
    return real.isEmpty() ? absolutePath(path) : real;
}

}  // namespace arden::gui
