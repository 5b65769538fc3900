// Every caption of every window fits its control in every language (German texts are often a
// third longer than English ones), and none of them is left in English. The tour of the screenshot program visits each window; here
// each visible label, button, check box, option button, frame title, tab, list header and list
// box of it is measured against the room its control gives the text. CTest runs the same test
// again at twice the scale.
#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QToolButton>
#include <QTreeWidget>
#include <cstring>

#include "MainWindowFixture.h"
#include "WindowTour.h"
#include "gui/support/UiText.h"

namespace arden::gui::test {
namespace {

int textWidth(const QWidget* w, const QString& text) {
    return w->fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

// The room a button's style gives its text (beside the check mark or the icon).
int buttonTextRoom(QAbstractButton* b) {
    QStyleOptionButton opt;
    opt.initFrom(b);
    opt.text = b->text();
    opt.icon = b->icon();
    opt.iconSize = b->iconSize();
    QStyle::SubElement contents = QStyle::SE_PushButtonContents;
    if (qobject_cast<QCheckBox*>(b)) contents = QStyle::SE_CheckBoxContents;
    if (qobject_cast<QRadioButton*>(b)) contents = QStyle::SE_RadioButtonContents;
    int room = b->style()->subElementRect(contents, &opt, b).width();
    if (!b->icon().isNull()) room -= b->iconSize().width() + 4;
    return room;
}

int comboTextRoom(QComboBox* c) {
    QStyleOptionComboBox opt;
    opt.initFrom(c);
    opt.editable = c->isEditable();
    int room = c->style()->subControlRect(QStyle::CC_ComboBox, &opt, QStyle::SC_ComboBoxEditField, c).width();
    if (!c->itemIcon(c->currentIndex()).isNull()) room -= c->iconSize().width() + 4;
    return room;
}

// "name: text" of each caption in `window` that does not fit the room its control gives it.
QStringList cutCaptions(QWidget* window) {
    QStringList cut;
    auto check = [&](QWidget* w, const QString& text, int need, int room) {
        if (!text.isEmpty() && need > room)
            cut << QStringLiteral("%1 \"%2\" needs %3 px, has %4").arg(w->objectName(), text).arg(need).arg(room);
    };
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(window) || w->width() <= 0) continue;
        if (auto* l = qobject_cast<QLabel*>(w)) {
            if (l->text().isEmpty() || Qt::mightBeRichText(l->text())) continue;
            if (l->wordWrap()) check(l, l->text(), l->heightForWidth(l->width()), l->height());
            else check(l, l->text(), textWidth(l, l->text()), l->contentsRect().width());
        } else if (auto* t = qobject_cast<QToolButton*>(w)) {
            if (t->toolButtonStyle() != Qt::ToolButtonIconOnly) check(t, t->text(), t->sizeHint().width(), t->width());
        } else if (auto* b = qobject_cast<QAbstractButton*>(w)) {
            check(b, b->text(), textWidth(b, b->text()), buttonTextRoom(b));
        } else if (auto* g = qobject_cast<QGroupBox*>(w)) {
            check(g, g->title(), textWidth(g, g->title()) + 16, g->width());
        } else if (auto* c = qobject_cast<QComboBox*>(w)) {
            check(c, c->currentText(), textWidth(c, c->currentText()), comboTextRoom(c));
        } else if (auto* bar = qobject_cast<QTabBar*>(w)) {
            for (int i = 0; i < bar->count(); ++i)
                check(bar, bar->tabText(i), textWidth(bar, bar->tabText(i)) + 8, bar->tabRect(i).width());
        } else if (auto* header = qobject_cast<QHeaderView*>(w)) {
            auto* list = qobject_cast<QTreeWidget*>(header->parentWidget());
            const int margin = 2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
            for (int i = 0; list && i < header->count(); ++i) {
                const QString text = list->headerItem()->text(i);
                if (!header->isSectionHidden(i)) check(list, text, textWidth(header, text) + margin, header->sectionSize(i));
            }
        }
    }
    return cut;
}

// "name: text" of each caption in `window` that still shows an English text of the string table
// although the language at `offset` has its own text for it.
QStringList englishCaptions(QWidget* window, int offset) {
    QSet<QString> english;
    for (int id = 1; id < 500; ++id)
        if (uiText(id, 0) != uiText(id, offset)) english.insert(uiText(id, 0));
    QStringList left;
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(window)) continue;
        QString text;
        if (auto* l = qobject_cast<QLabel*>(w)) text = l->text();
        else if (auto* b = qobject_cast<QAbstractButton*>(w); b && !qobject_cast<QMessageBox*>(window))
            text = b->text();  // a message box's buttons are Qt's, translated where Qt's translations are installed
        else if (auto* g = qobject_cast<QGroupBox*>(w)) text = g->title();
        text.remove('&');
        for (const char* ending : {":", "..."})
            if (text.endsWith(QLatin1String(ending))) text.chop(static_cast<int>(std::strlen(ending)));
        if (english.contains(text)) left << w->objectName() + " \"" + text + "\"";
    }
    return left;
}

}  // namespace

class TranslatedLayout : public MainWindow {};

TEST_F(TranslatedLayout, EveryCaptionFitsItsControlInEveryLanguage) {
    for (int offset : {0, 500, 1000, 1500, 2000}) {
        open();
        window->resize(1100, 720);  // the size the program opens with
        int windows = 0;
        QStringList cut;
        tourWindows(*window, {offset, qpath(home.path() / std::to_string(offset)), false},
                    [&](QWidget* w, const QString& name) {
                        ++windows;
                        for (const QString& c : cutCaptions(w)) cut << name + ": " + c;
                        if (offset != 0)
                            for (const QString& c : englishCaptions(w, offset)) cut << name + ": still English: " + c;
                    });
        EXPECT_GE(windows, 30) << "language offset " << offset;
        EXPECT_EQ(cut, QStringList{}) << "language offset " << offset;
        window.reset();
    }
}

}  // namespace arden::gui::test
