// Edits in the desktop program keep what the user has: typed text is stored before Save and
// Close, Add Hardware offers a disk-like device only where a node is free and a hard disk only
// with its disk, removing a SCSI controller asks for its devices, clustering takes over no drive.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>

#include "MainWindowFixture.h"
#include "gui/config/Builder.h"
#include "gui/shell/frmSummary.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;

const char* const kWithDrive =
    "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\ndisplayName = \"Drive\"\r\nmemsize = \"256\"\r\n"
    "ide1:0.present = \"TRUE\"\r\nide1:0.fileName = \"old.iso\"\r\nide1:0.deviceType = \"cdrom-image\"\r\n";

// Focus in a box of the shown editor and keys typed into it, without leaving it.
QLineEdit* typeWithoutLeaving(Builder* editor, const char* name, const QString& text) {
    auto* box = child<QLineEdit>(editor, name);
    box->activateWindow();
    settle();
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, text);
    return box;
}

}  // namespace

TEST_F(MainWindow, SaveAndCloseStoreTheTypedTextFirstAndARefusalStopsThem) {
    const std::filesystem::path file = writeVmx("d/d.vmx", kWithDrive);
    open();
    Builder* editor = edit("d/d.vmx");
    chooseDevice(editor, DeviceType::CdRom);
    QLineEdit* box = typeWithoutLeaving(editor, "txtCDRImage", "new.iso");
    ASSERT_EQ(QApplication::focusWidget(), box);
    window->saveConfiguration();
    const std::string saved = readBytes(file);
    EXPECT_NE(saved.find("ide1:0.fileName = \"new.iso\""), std::string::npos) << saved;
    window->summaryWindow()->close();  // the summary after the save took the focus
    settle();

    // A value the box refuses stops the save with its message; focus stays in the box.
    chooseDevice(editor, DeviceType::Memory);
    QLineEdit* memory = typeWithoutLeaving(editor, "txtMemSize", "2");
    ASSERT_EQ(QApplication::focusWidget(), memory)
        << QApplication::focusWidget()->objectName() << " in " << QApplication::focusWidget()->window()->objectName()
        << " active " << (QApplication::activeWindow() ? QApplication::activeWindow()->objectName() : QString("none"));
    script.clear();
    window->saveConfiguration();
    EXPECT_EQ(said(script), QStringList{"Invalid Memory Size: RAM size out of valid range for Selected Product/Version"});
    EXPECT_EQ(readBytes(file), saved) << "nothing was written";
    EXPECT_EQ(QApplication::focusWidget(), memory);
    script.clear();
    EXPECT_FALSE(window->CloseEditorTab());
    EXPECT_EQ(said(script), QStringList{"Invalid Memory Size: RAM size out of valid range for Selected Product/Version"});

    // Close after typing asks, as for any change; No keeps the tab and the typed text.
    typeInto(memory, "256");
    chooseDevice(editor, DeviceType::CdRom);
    typeWithoutLeaving(editor, "txtCDRImage", "other.iso");
    script.clear();
    EXPECT_FALSE(window->CloseEditorTab()) << "No to the unsaved-changes question keeps the tab";
    ASSERT_EQ(said(script).size(), 1);
    EXPECT_TRUE(said(script).front().startsWith("Unsaved Changes exist - Drive")) << said(script).front();
    EXPECT_EQ(settingsOf(editor, DeviceType::CdRom).text(".fileName"), "other.iso");
    EXPECT_EQ(tabs()->count(), 2);
}

// A disk-like type is offered only while a node it may sit on is free, and says why otherwise.
TEST(AddHardware, ADiskLikeTypeNeedsAFreeNode) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Full", dir.path());  // Workstation 5.5x, no SCSI controller, CD-ROM on IDE 1:0
    const QStringList first = addThroughDialog(b.get(), "Generic SCSI Device", false);
    EXPECT_FALSE(first.contains("Generic SCSI Device"));
    for (const char* disk : {"a.vmdk", "b.vmdk", "c.vmdk"}) {
        script.file(qpath(dir / disk));
        addThroughDialog(b.get(), "Hard Disk");
    }
    EXPECT_EQ(b->configuration().devices.count(DeviceType::HardDisk), 3);
    QString notOffered;
    onNextModal([&](QWidget* dialog) {
        notOffered = child<QLabel>(dialog, "lblNotOffered")->text();
        EXPECT_TRUE(child<QTreeWidget>(dialog, "lvwAvailableHardware")->findItems("Hard Disk", Qt::MatchExactly, 0).isEmpty());
        child<QPushButton>(dialog, "cmdCancel")->click();
    });
    child<QPushButton>(b.get(), "cmdHardwareAdd")->click();
    EXPECT_EQ(notOffered, "Not offered, no free node:\nHard Disk - needs a free IDE or SCSI node\n"
                          "DVD/CD-ROM Drive - needs a free IDE or SCSI node\n"
                          "Generic SCSI Device - needs a free SCSI node (each SCSI Controller adds seven)");
    EXPECT_EQ(b->configuration().devices.count(DeviceType::HardDisk), 3);
}

// A hard disk is added with its disk: created (Yes) or chosen (No); nothing when cancelled.
TEST(AddHardware, AHardDiskComesWithItsDisk) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Disks", dir.path());
    addThroughDialog(b.get(), "Hard Disk");  // No, and the picker cancelled
    EXPECT_EQ(b->configuration().devices.count(DeviceType::HardDisk), 0);
    EXPECT_EQ(said(script), QStringList{"New Hard Disk: Create a new disk file for this hard disk?  Yes opens the create-disk "
                                        "dialog; No lets you choose an existing disk file."});
    script.answer(Answer::Yes);
    onNextModal([&](QWidget* dialog) {
        auto* list = child<QTreeWidget>(dialog, "lvwAvailableHardware");
        list->setCurrentItem(list->findItems("Hard Disk", Qt::MatchExactly, 0).value(0));
        onNextModal([&](QWidget* create) {  // the create-disk dialog, once Add Hardware is closed
            child<QLineEdit>(create, "txtNewDisk")->setText("Fresh");
            child<QLineEdit>(create, "txtDiskSize")->setText("1");
            child<QPushButton>(create, "cmdOK")->click();
        });
        child<QPushButton>(dialog, "cmdOK")->click();
    });
    child<QPushButton>(b.get(), "cmdHardwareAdd")->click();
    ASSERT_EQ(b->configuration().devices.count(DeviceType::HardDisk), 1);
    EXPECT_EQ(settingsOf(b.get(), DeviceType::HardDisk).text(".fileName"), (dir / "Fresh.vmdk").string());
    EXPECT_TRUE(std::filesystem::exists(dir / "Fresh.vmdk"));
}

// Removing a SCSI controller that holds devices asks; Yes moves or removes them, No keeps all.
TEST(HardwareList, RemovingAControllerWithDisksAsksAndSaysWhatBecameOfThem) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Controller", dir.path());
    addThroughDialog(b.get(), "SCSI Controller");
    for (const char* disk : {"a.vmdk", "b.vmdk", "c.vmdk", "d.vmdk"}) {
        script.file(qpath(dir / disk));
        addThroughDialog(b.get(), "Hard Disk");  // three on IDE, the fourth on SCSI 0:0
    }
    chooseDevice(b.get(), DeviceType::HardDisk, 2);  // IDE 1:1
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboHDSCSI"), "SCSI 0:1"));
    ASSERT_TRUE(b->CreateVmxFile());
    const VmConfiguration before = b->configuration();

    script.clear();
    chooseDevice(b.get(), DeviceType::ScsiController);
    child<QPushButton>(b.get(), "cmdHardwareRemove")->click();  // answered No
    EXPECT_TRUE(b->configuration() == before);
    ASSERT_EQ(said(script).size(), 1);
    EXPECT_EQ(said(script).front(), "Remove SCSI Controller: This SCSI controller holds these devices:\n"
                                    "Hard Disk 3 (SCSI 0:0)\nHard Disk 4 (SCSI 0:1)\n\n"
                                    "Yes moves each of them to a free node of another bus, or removes it with the "
                                    "controller where none is free.  No removes nothing.");

    script.clear();
    script.answer(Answer::Yes);
    chooseDevice(b.get(), DeviceType::ScsiController);
    child<QPushButton>(b.get(), "cmdHardwareRemove")->click();
    EXPECT_EQ(said(script).back(), "SCSI Controller Removed: Hard Disk 3 (SCSI 0:0) moved to IDE 1:1\n"
                                   "Hard Disk 4 (SCSI 0:1) removed with the controller");
    EXPECT_EQ(b->configuration().devices.count(DeviceType::ScsiController), 0);
    EXPECT_EQ(column(child<QTreeWidget>(b.get(), "lvwHardwareList"), 0).filter("Hard Disk"),
              QStringList({"Hard Disk 1", "Hard Disk 2", "Hard Disk 3"}));
    ASSERT_TRUE(b->CreateVmxFile());
    const std::string text = readBytes(dir / "Controller.vmx");
    EXPECT_EQ(text.find("scsi0"), std::string::npos);
    EXPECT_NE(text.find("ide1:1.fileName = \"d.vmdk\""), std::string::npos) << text;
}

TEST(AdvancedPage, ClusteringIsRefusedWhileADriveStandsOnItsNodes) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Cluster", dir.path());
    addThroughDialog(b.get(), "SCSI Controller");
    chooseDevice(b.get(), DeviceType::CdRom);
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboCDRSCSI"), "SCSI 0:1"));
    auto* box = child<QCheckBox>(b.get(), "chkClusterEnabled");
    box->click();
    EXPECT_FALSE(box->isChecked());
    EXPECT_FALSE(b->configuration().advanced.clusterEnabled);
    EXPECT_EQ(said(script).back(), "Clustering Not Possible: Clustering makes the devices on SCSI 0:0 and SCSI 0:1 shared "
                                   "disks of a cluster, and CD-ROM 1 stands on SCSI 0:1. Move it to another node first.");
}

}  // namespace arden::gui::test
