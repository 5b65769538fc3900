// The main window from the keyboard: menus reached with Alt and F10, every menu shortcut, and
// questions that could lose work answered with Enter keep the work. A launch that cannot start
// says what was tried.
#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QMessageBox>
#include <QTreeWidget>
#include <functional>

#include "MainWindowFixture.h"

namespace fs = std::filesystem;

namespace arden::gui::test {
namespace {

void activate(QWidget* window) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
}

TEST_F(MainWindow, MenusOpenWithAltAndF10AndTheirEntriesWithALetter) {
    open();
    activate(window.get());
    auto* file = child<QMenu>(window.get(), "mnuFile");
    QTest::keyClick(window.get(), Qt::Key_F, Qt::AltModifier);
    QTRY_VERIFY_WITH_TIMEOUT(file->isVisible(), 2000);
    QTest::keyClick(file, Qt::Key_Escape);
    QTest::keyClick(file, Qt::Key_Escape);
    QTRY_VERIFY(!file->isVisible());

    activate(window.get());
    QTest::keyClick(window.get(), Qt::Key_F10);
    QTRY_VERIFY_WITH_TIMEOUT(file->isVisible(), 2000);
    QTest::keyClick(file, Qt::Key_Escape);
    QTest::keyClick(file, Qt::Key_Escape);

    activate(window.get());
    auto* help = child<QMenu>(window.get(), "mnuHelp");
    QTest::keyClick(window.get(), Qt::Key_H, Qt::AltModifier);
    QTRY_VERIFY_WITH_TIMEOUT(help->isVisible(), 2000);
    QTest::keyClick(help, Qt::Key_C);  // "&Contents"
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "No Help Yet");
}

TEST_F(MainWindow, EveryMenuShortcutDoesItsCommand) {
    struct Case {
        const char* keys;
        std::function<bool()> done;
    };
    const fs::path file = writeVmx("vm/vm.vmx");
    auto lastTitle = [&] { return script.shown().empty() ? QString() : script.shown().back().title; };
    auto favourites = [&] { return child<QTreeWidget>(window.get(), "lvwVMs")->topLevelItemCount(); };
    const Case cases[] = {
        {"Ctrl+N", [&] { return !script.shown().empty() && script.shown().front().title == "New Virtual Machine Location"; }},
        {"Ctrl+O", [&] { return lastTitle() == "Select Existing Virtual Machine Configuration"; }},
        {"Ctrl+S", [&] { return favourites() == 1; }},
        {"Ctrl+W", [&] { return tabs()->count() == 1; }},
        {"Ctrl+R", [&] { return lastTitle() == "Launch Virtual Machine"; }},
        {"F1", [&] { return lastTitle() == "No Help Yet"; }},
        {"Ctrl+Q", [&] { return !window->isVisible() && settingsWritten(); }},
    };
    for (const Case& c : cases) {
        open();
        window->settings().CreateBackups = false;
        window->settings().LaunchApplication = at("no-such-launcher").toStdString();
        window->OpenEditorTab(true, QString::fromStdString(file.string()), {}, 8, {});
        activate(window.get());
        script.clear();
        QTest::keySequence(window.get(), QKeySequence(QString::fromLatin1(c.keys)));
        settle();
        EXPECT_TRUE(c.done()) << c.keys;
        window.reset();
    }
}

TEST_F(MainWindow, ALaunchThatCannotStartSaysWhatWasTried) {
    const fs::path file = writeVmx("vm/vm.vmx");
    const QString vmx = QString::fromStdString(file.string());
    open();
    window->settings().CreateBackups = false;
    window->OpenEditorTab(true, vmx, {}, 8, {});

    window->settings().LaunchApplication = at("no-such-launcher").toStdString();
    window->launchConfiguration();
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].kind, MessageKind::Warning);
    EXPECT_TRUE(script.messages()[0].text.startsWith("Could not start \"" + at("no-such-launcher") + "\" to launch \"" +
                                                     vmx + "\": "))
        << script.messages()[0].text.toStdString();

    // Offscreen there is no desktop opener: what the program tried is named.
    script.clear();
    window->settings().LaunchApplication.clear();
    window->launchConfiguration();
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].text,
              "Could not launch \"" + vmx +
                  "\": no program is set under Options (\"Target Platform to Launch VMX files\") and the desktop has "
                  "no application to open .vmx files with.");
}

// Real message boxes: Enter answers with the default button, which must keep the work.
TEST_F(MainWindowReal, EnterOnADiscardQuestionKeepsTheWork) {
    writeVmx("vm/vm.vmx");
    open();
    window->settings().CreateBackups = false;
    Builder* editor = window->OpenEditorTab(true, at("vm/vm.vmx"), {}, 8, {});
    typeInto(editor, "txtDisplayName", " Changed");
    ASSERT_TRUE(editor->ChangesPending());

    QString asked;
    auto pressEnter = [&](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (!box) return modal->close();
        asked = box->windowTitle();
        QTest::keyClick(box, Qt::Key_Return);
        return true;
    };
    onNextModal(pressEnter);
    EXPECT_FALSE(window->CloseEditorTab());
    EXPECT_EQ(asked, "Unsaved Changes exist - Small One Changed");
    EXPECT_EQ(tabs()->count(), 2) << "Close with Enter";

    asked.clear();
    onNextModal(pressEnter);
    QCloseEvent quit;
    QApplication::sendEvent(window.get(), &quit);
    EXPECT_FALSE(quit.isAccepted()) << "quitting with Enter";
    EXPECT_EQ(asked, "Unsaved Changes exist - Small One Changed");
    EXPECT_EQ(tabs()->count(), 2);
    EXPECT_TRUE(editor->ChangesPending());
}

}  // namespace
}  // namespace arden::gui::test
