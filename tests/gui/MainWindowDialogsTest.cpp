// The windows around the editor and the keyboard: the options dialog (language, backup box,
// settings folder), every menu shortcut, Enter on a question that could lose work, the summary
// after a save.
#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QMessageBox>
#include <QRadioButton>

#include "MainWindowFixture.h"
#include "gui/shell/frmSummary.h"

namespace fs = std::filesystem;

namespace arden::gui::test {
namespace {

// Opens the options dialog, lets `edit` change it and presses OK.
void inOptions(frmMain& window, const std::function<void(QWidget*)>& edit) {
    onNextModal([edit](QWidget* dialog) {
        edit(dialog);
        child<QPushButton>(dialog, "cmdOK")->click();
    });
    window.showOptions();
}

void activate(QWidget* window) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
}

TEST_F(MainWindow, LanguageSwitchRelabelsTheWindowAndEveryEditorTab) {
    writeVmx("a/a.vmx");
    writeVmx("b/b.vmx");
    open();
    Builder* editors[] = {edit("a/a.vmx"), edit("b/b.vmx")};
    // German lacks most texts and shows what remains: no fall-back to English.
    struct Step { const char *option, *options, *hardware, *add; };
    for (const Step& s : {Step{"optLangDe", "Wahlen", "", "..."}, Step{"optLangEn", "Options", "Hardware", "Add..."}}) {
        inOptions(*window, [&](QWidget* d) { child<QRadioButton>(d, s.option)->setChecked(true); });
        EXPECT_EQ(child<QAction>(window.get(), "mnuOptions")->iconText(), s.options);
        for (Builder* editor : editors) {
            auto* pages = child<QTabWidget>(editor, "sstMain");
            // As shown: without the mark of the underlined letter.
            EXPECT_EQ(pages->tabText(0).remove('&'), s.options) << s.option;
            EXPECT_EQ(pages->tabText(1).remove('&'), s.hardware) << s.option;
            EXPECT_EQ(child<QPushButton>(editor, "cmdHardwareAdd")->text().remove('&'), s.add);
        }
    }
}

// The box "Create backup when editing existing VMX file" decides whether opening a file for
// editing first copies it to NAME.vmx.bak; the dialog shows the setting it stored.
TEST_F(MainWindow, TheBackupBoxTurnsTheBackupOnOpeningOffAndOn) {
    writeVmx("a/a.vmx");
    const fs::path second = writeVmx("b/b.vmx");
    open({}, true);
    auto setBox = [&](bool checked) {
        bool shown = false;
        inOptions(*window, [&](QWidget* d) {
            auto* box = child<QCheckBox>(d, "chkBackup");
            shown = box->isChecked();
            box->setChecked(checked);
        });
        return shown;
    };
    EXPECT_TRUE(setBox(false));
    edit("a/a.vmx");
    EXPECT_FALSE(setBox(true)) << "the dialog shows the setting it stored";
    edit("b/b.vmx");
    EXPECT_EQ(arden::test::readBytes(home.path() / "b" / "b.vmx.bak"), arden::test::readBytes(second));
    EXPECT_EQ(said(script), QStringList{"Backup Made: Backup file created as: " + at("b/b.vmx.bak")});
}

TEST_F(MainWindow, MovingTheSettingsFolderTakesTheFavouritesAlong) {
    arden::test::writeBytes(home.path() / "tmp" / "ArdenForge.ini",
                            "[General]\r\nCreateBackups=-1\r\n[Favorites]\r\nFavorite0=Kept\t/home/user/vms/k.vmx\t8\r\n");
    fs::create_directory(home.path() / "shared");
    open();
    QString note;
    inOptions(*window, [&](QWidget* d) {
        child<QLineEdit>(d, "txtIniPath")->setText(at("shared"));
        note = child<QLabel>(d, "lblIniNote")->text();
    });
    EXPECT_EQ(note, "Settings are read from " + at("shared/ArdenForge.ini") + " and written to " +
                        at("tmp/ArdenForge.ini") + " when Arden Forge closes.");
    EXPECT_EQ(arden::test::readBytes(home.path() / "shared" / "ArdenForge.ini"),
              arden::test::readBytes(home.path() / "tmp" / "ArdenForge.ini"));
    window->close();
    open();
    EXPECT_EQ(column(favourites(), 0), QStringList{"Kept"}) << "the next start reads the new folder";
}

TEST_F(MainWindow, EveryMenuShortcutDoesItsCommand) {
    struct Case {
        const char* keys;
        std::function<bool()> done;
    };
    writeVmx("vm/vm.vmx");
    auto lastTitle = [&] { return script.shown().empty() ? QString() : script.shown().back().title; };
    const Case cases[] = {
        {"Ctrl+N", [&] { return !script.shown().empty() && script.shown().front().title == "New Virtual Machine Location"; }},
        {"Ctrl+O", [&] { return lastTitle() == "Select Existing Virtual Machine Configuration"; }},
        {"Ctrl+S", [&] { return favourites()->topLevelItemCount() == 1; }},
        {"Ctrl+W", [&] { return tabs()->count() == 1; }},
        {"Ctrl+R", [&] { return lastTitle() == "Launch Virtual Machine"; }},
        {"F1", [&] { return said(script) == QStringList{"No Help Yet: Coming soon.  For good information, read the VMware documentation."}; }},
        {"F10", [&] { return QApplication::activePopupWidget() == child<QMenu>(window.get(), "mnuFile"); }},
        {"Alt+H, C", [&] { return lastTitle() == "No Help Yet"; }},  // "&Help", "&Contents"
        {"Ctrl+Q", [&] { return !window->isVisible() && settingsWritten(); }},
    };
    for (const Case& c : cases) {
        open();
        window->settings().LaunchApplication = at("no-such-launcher").toStdString();
        edit("vm/vm.vmx");
        activate(window.get());
        script.clear();
        const QKeySequence keys(QString::fromLatin1(c.keys));
        for (int i = 0; i < keys.count(); ++i) {
            QTest::keyClick(QApplication::activePopupWidget() ? QApplication::activePopupWidget() : window.get(),
                            keys[i].key(), keys[i].keyboardModifiers());
            EXPECT_TRUE(i + 1 == keys.count() ||
                        QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }, 2000));
        }
        settle();
        EXPECT_TRUE(c.done()) << c.keys;
    }
}

// Real message boxes: Enter answers with the default button, which must keep the work.
TEST_F(MainWindowReal, EnterOnADiscardQuestionKeepsTheWork) {
    writeVmx("vm/vm.vmx");
    open();
    Builder* editor = edit("vm/vm.vmx");
    typeKeys(editor, "txtDisplayName", " Changed");
    QStringList asked;
    auto pressEnter = [&](QWidget* box) {
        asked << box->windowTitle();
        QTest::keyClick(box, Qt::Key_Return);
    };
    onNextModal(pressEnter);
    EXPECT_FALSE(window->CloseEditorTab());
    EXPECT_EQ(asked, QStringList{"Unsaved Changes exist - Small One Changed"});
    EXPECT_EQ(tabs()->count(), 2);
}

TEST_F(MainWindow, TheSummaryAfterASaveWaitsCentredOverTheWindow) {
    writeVmx("vm/vm.vmx");
    open();
    window->setGeometry(40, 40, 720, 700);  // the summary fits on the screen when centred
    edit("vm/vm.vmx");
    script.letWindowsBlock(true);
    QString seen;
    onNextModal([&](QWidget* summary) {
        seen = qobject_cast<frmSummary*>(summary) ? qobject_cast<frmSummary*>(summary)->output() : "not the summary";
        EXPECT_EQ(favourites()->topLevelItemCount(), 0) << "the save waits for the window";
        EXPECT_LE((summary->geometry().center() - window->geometry().center()).manhattanLength(), 10);
        summary->close();
    });
    window->saveConfiguration();
    EXPECT_TRUE(seen.contains("memsize = \"256\"")) << seen;
    EXPECT_EQ(favourites()->topLevelItemCount(), 1) << "the favourite after the window";
}

}  // namespace
}  // namespace arden::gui::test
