// The editor: a new machine's pages, a missing file (the backup copy: MainWindowDialogsTest), saving
// with its question and notice, the option pages and their summaries (the hardware list: DevicePagesTest).
#include <QCheckBox>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStackedWidget>
#include <QUndoStack>

#include "GuiTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::writeBytes;

QStringList summaries(Builder* b) { return column(child<QTreeWidget>(b, "lvwOptionsList"), 1); }

TEST(Builder, NewMachineShowsItsDefaultsAndIsUnsaved) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Web Server", dir.path());
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtVmxFileName")->text(), "Web Server.vmx");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboGuestVersions")->currentText(), "Windows XP Professional");
    EXPECT_EQ(summaries(b.get()), QStringList({"Workstation 5.5x, Windows XP Professional",
                                               "Power off, reset, 0 of 4 tools scripts", "Enabled, no folders",
                                               "Enabled, when powering off: just power off",
                                               "Drag and drop, copy and paste allowed", "Priority normal/normal, logging"}));
    EXPECT_EQ(child<QTreeWidget>(b.get(), "lvwOptionsList")->topLevelItem(5)->toolTip(1), "Priority normal/normal, logging");
    auto* hardware = child<QTreeWidget>(b.get(), "lvwHardwareList");
    EXPECT_EQ(column(hardware, 0), QStringList({"CPU 1", "Memory", "Floppy 1", "Sound Adapter",
                                                "Network Adapter 1", "USB Controller", "CD-ROM 1", "Display", "Mouse"}));
    EXPECT_EQ(hardware->currentItem(), hardware->topLevelItem(0));
    EXPECT_TRUE(b->ChangesPending()) << "a machine that exists only in the editor is unsaved";
    EXPECT_EQ(child<QLineEdit>(newMachine("", dir.path()).get(), "txtVmxFileName")->text(), "New VM.vmx");
}

TEST(Builder, OpeningAMissingFileNamesIt) {
    ScratchDir dir;
    PromptScript script;
    Builder absent;
    absent.EditExistingFile = true;
    absent.ExistingVmxFileName = qpath(dir / "absent.vmx");
    EXPECT_FALSE(absent.start());
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_TRUE(script.messages()[0].text.contains(qpath(dir / "absent.vmx"))) << script.messages()[0].text;
}

TEST(BuilderSave, WritesTheFileClearsChangesAndRefusesWithoutAName) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Saved", dir / "machines");  // the folder is made by the save
    ASSERT_TRUE(b->CreateVmxFile());
    const auto file = dir / "machines" / "Saved.vmx";
    EXPECT_NE(readBytes(file).find("\r\ndisplayName = \"Saved\"\r\n"), std::string::npos);
    EXPECT_FALSE(b->ChangesPending());

    child<QLineEdit>(b.get(), "txtWorkingDir")->setText("/srv/vm");
    EXPECT_TRUE(b->ChangesPending());
    ASSERT_TRUE(b->CreateVmxFile());
    EXPECT_NE(readBytes(file).find("\r\nworkingDir = \"/srv/vm\"\r\n"), std::string::npos);

    child<QLineEdit>(b.get(), "txtVmxFileName")->setText("");
    EXPECT_FALSE(b->CreateVmxFile());
    EXPECT_EQ(said(script), QStringList{"Missing Data: Invalid VMX File Name and/or Folder"});
    EXPECT_TRUE(b->ChangesPending());
}

// Writing over a machine a product has open waits for a Yes.
TEST(BuilderSave, AsksBeforeWritingOverAMachineInUseAndTellsOfASaveInPlace) {
    ScratchDir dir;
    const std::string original = "displayName = \"busy\"\r\nmemsize = \"64\"\r\n";
    writeBytes(dir / "busy.vmx", original);
    std::filesystem::create_directory(dir / "busy.vmx.lck");
    {
        PromptScript script;
        auto b = openFile(dir / "busy.vmx");
        script.answer(Answer::No);
        EXPECT_FALSE(b->CreateVmxFile());
        EXPECT_EQ(readBytes(dir / "busy.vmx"), original);
        script.answer(Answer::Yes);
        EXPECT_TRUE(b->CreateVmxFile());
        EXPECT_NE(readBytes(dir / "busy.vmx"), original);
        ASSERT_EQ(script.messages().size(), 2u);
        EXPECT_EQ(script.messages()[0].kind, MessageKind::Question);
        EXPECT_EQ(said(script)[0].left(33), "Virtual Machine in Use: The lock ");
    }
    // A file with other hard links is rewritten in place, without a question but with a notice.
    PromptScript script;
    std::filesystem::create_hard_link(dir / "busy.vmx", dir / "link.vmx");
    ASSERT_TRUE(openFile(dir / "link.vmx")->CreateVmxFile());
    EXPECT_EQ(readBytes(dir / "busy.vmx"), readBytes(dir / "link.vmx"));
    EXPECT_EQ(said(script), QStringList{"Saved in Place: " + qpath(dir / "link.vmx") +
                                        " was rewritten in place because it has other hard links; no backup copy "
                                        "of the old contents could be made beside it."});
}

TEST(BuilderSave, ANewerFileKeepsItsNumbersUntilAnotherVersionIsPicked) {
    ScratchDir dir;
    PromptScript script;
    writeBytes(dir / "new.vmx", "config.version = \"8\"\r\nvirtualHW.version = \"25\"\r\nmemsize = \"2048\"\r\n");
    auto b = openFile(dir / "new.vmx");
    auto* note = child<QLabel>(b.get(), "lblFormatNote");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboPlatformVersion")->currentText(), "17.5x") << "shown as the newest product";
    EXPECT_EQ(child<QLabel>(b.get(), "lblProductHardware")->text(), "Workstation 17.5x, hardware version 25");
    EXPECT_EQ(note->isHidden() ? "" : note->text(), "written for virtual hardware version 25; saving keeps it");

    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboPlatformVersion"), "5.0x"));
    EXPECT_TRUE(note->isHidden());
    EXPECT_EQ(child<QLabel>(b.get(), "lblProductHardware")->text(), "Workstation 5.0x, hardware version 4");
}

TEST(BuilderPages, GeneralListsFollowEachOtherAndTheSummaryFollows) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Lists", dir.path());
    auto* platform = child<QComboBox>(b.get(), "cboTargetPlatform");
    auto* version = child<QComboBox>(b.get(), "cboPlatformVersion");
    auto* families = child<QComboBox>(b.get(), "cboGuestFamilies");
    chooseDevice(b.get(), DeviceType::Memory);
    EXPECT_EQ(child<QLabel>(b.get(), "lblMemoryRange")->text(), "4 - 3600 MB") << "Workstation 5.5x";
    ASSERT_TRUE(pick(platform, "GSX Server"));
    EXPECT_EQ(version->currentText(), "3.x") << "a new platform starts on its latest version";
    ASSERT_TRUE(pick(version, "2.5x"));
    ASSERT_TRUE(pick(families, "Linux"));
    // GSX Server runs no 64-bit guests: the list offers none.
    EXPECT_EQ(child<QComboBox>(b.get(), "cboGuestVersions")->findText("Red Hat Enterprise Linux 3 (64 bit)"), -1);
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboGuestVersions"), "Red Hat Enterprise Linux 3"));
    EXPECT_EQ(b->configuration().product.guestId, "rhel3");
    EXPECT_EQ(summaries(b.get())[0], "GSX Server 2.5x, Red Hat Enterprise Linux 3");

    // A version that lacks the guest's family asks first: No keeps the product, Yes takes the
    // guest to one the version offers.
    ASSERT_TRUE(pick(version, "3.x"));
    ASSERT_TRUE(pick(families, "Solaris"));
    script.clear();
    script.answer(Answer::No);
    pick(version, "2.5x");
    EXPECT_EQ(said(script), QStringList{"Change of Product: GSX Server 2.5x cannot hold everything this machine has:\n"
                                        "- Guest solaris6: GSX Server 2.5x does not offer it; becomes guest other\n"
                                        "Change the machine to fit the new product?"});
    EXPECT_EQ(version->currentText(), "3.x");
    EXPECT_EQ(b->configuration().product.guestId, "solaris6");
    script.answer(Answer::Yes);
    ASSERT_TRUE(pick(version, "2.5x"));
    EXPECT_EQ(families->currentText(), "Other");
    EXPECT_EQ(b->configuration().product.guestId, "other");

    // The products beyond the original nine: their versions, guests and limits.
    ASSERT_TRUE(pick(platform, "ESXi"));
    EXPECT_EQ(version->currentText(), "8.0 U2");
    EXPECT_EQ(child<QLabel>(b.get(), "lblProductHardware")->text(), "ESXi 8.0 U2, hardware version 21");
    ASSERT_TRUE(pick(families, "Microsoft Windows"));
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboGuestVersions"), "Windows 11 (64 bit)"));
    EXPECT_EQ(b->configuration().product.guestId, "windows11-64");
    chooseDevice(b.get(), DeviceType::Memory);
    EXPECT_EQ(child<QLabel>(b.get(), "lblMemoryRange")->text(), "4 - 25149440 MB");

    child<QPlainTextEdit>(b.get(), "txtNotes")->setPlainText("first\nsecond");
    EXPECT_EQ(b->configuration().identity.notes, "first\r\nsecond");
}

TEST(BuilderPages, OptionControlsStoreTheirValueAndRewriteTheSummaries) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Options", dir.path());
    ASSERT_TRUE(b->CreateVmxFile());
    // The "disable" boxes store the inverse of what they show.
    for (const char* name : {"chkSharedDisable", "chkSnapshotsEnabled", "chkInteractDND", "chkInteractPaste",
                             "chkInteractCopy", "chkDebug"})
        child<QCheckBox>(b.get(), name)->click();
    pick(child<QComboBox>(b.get(), "cboInputUngrabPri"), "low");
    pick(child<QComboBox>(b.get(), "cboReset"), "Restart Guest");
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_EQ(summaries(b.get()), QStringList({"Workstation 5.5x, Windows XP Professional",
                                               "Power off, restart guest, 0 of 4 tools scripts", "Disabled", "Disabled",
                                               "Disabled: drag and drop, paste, copy",
                                               "Priority normal/low, logging, debug"}));
    EXPECT_FALSE(child<QGroupBox>(b.get(), "fraPowerOffAction")->isEnabled()) << "no snapshots, no action";
    auto* list = child<QTreeWidget>(b.get(), "lvwOptionsList");
    list->setCurrentItem(list->topLevelItem(4));
    EXPECT_EQ(child<QStackedWidget>(b.get(), "sstOptions")->currentIndex(), 4);
    ASSERT_TRUE(b->CreateVmxFile());
    EXPECT_NE(readBytes(dir / "Options.vmx").find("\r\nisolation.tools.copy.disable = \"TRUE\"\r\n"), std::string::npos);

    child<QCheckBox>(b.get(), "chkSnapshotsEnabled")->click();
    auto* ask = child<QRadioButton>(b.get(), "optSnapAsk");
    ask->click();
    EXPECT_EQ(summaries(b.get())[3], "Enabled, when powering off: ask me");
    ASSERT_TRUE(b->CreateVmxFile());
    const int steps = b->history()->count();
    ask->click();
    EXPECT_FALSE(b->ChangesPending()) << "a click on the chosen option changes nothing: no step, nothing unsaved";
    EXPECT_EQ(b->history()->count(), steps);

    auto* folder = child<QLineEdit>(b.get(), "txtLogFolder");
    script.folder("/var/log/machines");
    child<QPushButton>(b.get(), "cmdBrowseLogFolder")->click();
    EXPECT_EQ(folder->text(), "/var/log/machines");
    child<QCheckBox>(b.get(), "chkLogging")->click();
    EXPECT_FALSE(folder->isEnabled());
}

}  // namespace
}  // namespace arden::gui::test
