// The options dialog's backup box ("Create backup when editing existing VMX file") decides whether opening a file for editing first
// copies it to NAME.vmx.bak.
#include <QCheckBox>
#include <QPushButton>

#include "MainWindowFixture.h"

namespace fs = std::filesystem;

namespace arden::gui::test {
namespace {

// Opens the options dialog, sets the box, reads back what it showed and presses OK.
bool setBackupBox(frmMain& window, bool checked) {
    bool shown = false;
    onNextModal([&](QWidget* dialog) {
        auto* box = child<QCheckBox>(dialog, "chkBackup");
        EXPECT_EQ(box->text(), "Create backup when editing existing VMX file");
        shown = box->isChecked();
        box->setChecked(checked);
        child<QPushButton>(dialog, "cmdOK")->click();
    });
    window.showOptions();
    return shown;
}

TEST_F(MainWindow, CreateBackupsBoxTurnsTheBackupOnOpeningOffAndOn) {
    writeVmx("a/a.vmx");
    const fs::path second = writeVmx("b/b.vmx");
    open();

    setBackupBox(*window, false);
    EXPECT_FALSE(setBackupBox(*window, false)) << "the dialog shows the setting it stored";
    ASSERT_NE(window->OpenEditorTab(true, at("a/a.vmx"), {}, 8, {}), nullptr);
    settle();
    EXPECT_FALSE(fs::exists(home.path() / "a" / "a.vmx.bak"));
    EXPECT_TRUE(script.messages().empty());

    setBackupBox(*window, true);
    EXPECT_TRUE(setBackupBox(*window, true));
    ASSERT_NE(window->OpenEditorTab(true, at("b/b.vmx"), {}, 8, {}), nullptr);
    settle();
    ASSERT_TRUE(fs::exists(home.path() / "b" / "b.vmx.bak"));
    EXPECT_EQ(arden::test::readBytes(home.path() / "b" / "b.vmx.bak"), arden::test::readBytes(second));
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Backup Made");
    EXPECT_EQ(script.messages()[0].text, "Backup file created as: " + at("b/b.vmx.bak"));
    EXPECT_FALSE(fs::exists(home.path() / "a" / "a.vmx.bak"));
}

}  // namespace
}  // namespace arden::gui::test
