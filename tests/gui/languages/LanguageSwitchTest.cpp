// Choosing another language in Options relabels the main window and every editor tab at once,
// every caption of them, and Qt's own texts follow; choosing English again restores them all.
#include <QAction>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTreeWidget>

#include "MainWindowFixture.h"
#include "gui/support/UiText.h"

namespace arden::gui::test {
namespace {

// Opens the options dialog, chooses the language `option` and presses OK.
void chooseLanguage(frmMain& window, const char* option) {
    onNextModal([option](QWidget* dialog) {
        child<QRadioButton>(dialog, option)->setChecked(true);
        child<QPushButton>(dialog, "cmdOK")->click();
    });
    window.showOptions();
}

// Every caption of `root` in widget order: labels, buttons, frame titles, tabs, list headers
// and menu entries, without their "&" marks.
QStringList captionsOf(QWidget* root) {
    QStringList out;
    for (QObject* o : root->findChildren<QObject*>()) {
        if (auto* label = qobject_cast<QLabel*>(o)) out << label->text();
        else if (auto* button = qobject_cast<QAbstractButton*>(o)) out << button->text();
        else if (auto* frame = qobject_cast<QGroupBox*>(o)) out << frame->title();
        else if (auto* action = qobject_cast<QAction*>(o)) out << action->text();
        else if (auto* bar = qobject_cast<QTabBar*>(o))
            for (int i = 0; i < bar->count(); ++i) out << bar->tabText(i);
        else if (auto* list = qobject_cast<QTreeWidget*>(o); list && list->objectName() != "lvwVMs")  // fixed English columns
            for (int i = 0; i < list->columnCount(); ++i) out << list->headerItem()->text(i);
    }
    for (QString& caption : out) caption.remove('&');
    return out;
}

// The German texts of an English caption that is a text of the string table, with the ending
// the program adds to it (":" or "..."); none when the caption is no text of the table.
QStringList germanOf(const QString& caption) {
    QStringList german;
    for (const QString& ending : {QString(), QStringLiteral(":"), QStringLiteral("...")}) {
        if (!caption.endsWith(ending)) continue;
        const QString text = caption.chopped(ending.size());
        for (int id = 1; id < 500; ++id)
            if (!text.isEmpty() && uiText(id, 0) == text) german << uiText(id, 500) + ending;
    }
    return german;
}

}  // namespace

TEST_F(MainWindow, ChoosingGermanShowsEveryCaptionInGermanAtOnceAndEnglishRestoresThem) {
    writeVmx("a/a.vmx");
    writeVmx("b/b.vmx");
    open();
    Builder* editors[] = {edit("a/a.vmx"), edit("b/b.vmx")};
    const QStringList english = captionsOf(window.get());

    chooseLanguage(*window, "optLangDe");
    const QStringList german = captionsOf(window.get());
    ASSERT_EQ(german.size(), english.size());
    int fromTable = 0;
    for (int i = 0; i < english.size(); ++i) {
        const QStringList wanted = germanOf(english[i]);
        if (wanted.isEmpty()) continue;
        ++fromTable;
        EXPECT_TRUE(wanted.contains(german[i])) << english[i] << " became " << german[i] << ", not " << wanted.join(" or ");
    }
    EXPECT_GE(fromTable, 200) << "the captions of the main window and both editors, every page of them";
    EXPECT_EQ(child<QAction>(window.get(), "mnuOptions")->iconText(), "Wahlen");
    for (Builder* editor : editors) {
        auto* pages = child<QTabWidget>(editor, "sstMain");
        // As shown: without the mark of the underlined letter.
        EXPECT_EQ(QString(pages->tabText(0) + "|" + pages->tabText(1)).remove(QChar(0x26)), "Wahlen|Hardware");
        EXPECT_EQ(child<QPushButton>(editor, "cmdHardwareAdd")->text().remove('&'), "Hinzufügen...");
        EXPECT_EQ(child<QLabel>(editor, "lblDisplayName")->text().remove('&'), "Anzeigename:");
    }

    // A question's buttons read as its German text asks ("klicken Sie auf Ja"), where the
    // system has Qt's translations.
    auto yesNo = [] {
        QMessageBox box(QMessageBox::Question, "", "", QMessageBox::Yes | QMessageBox::No);
        return box.button(QMessageBox::Yes)->text().remove('&') + "|" + box.button(QMessageBox::No)->text().remove('&');
    };
    if (QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm")) {
        EXPECT_EQ(yesNo(), "Ja|Nein");
    }

    chooseLanguage(*window, "optLangEn");
    EXPECT_EQ(captionsOf(window.get()), english);
    EXPECT_EQ(yesNo(), "Yes|No");
}

}  // namespace arden::gui::test
