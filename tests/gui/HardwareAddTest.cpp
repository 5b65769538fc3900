// The Add command with frmAddHardware, and node choices on the pages of disk-like devices.
#include <QRadioButton>
#include <QStackedWidget>

#include "HardwareTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::ScratchDir;

const clsNodeDevice& nodeOf(const Builder& b, DeviceType type, int nth = 0) {
    return b.configuration().devices.devices(type)[static_cast<std::size_t>(nth)].node;
}

std::string where(const clsNodeDevice& n) {
    return n.ControllerType() + " " + std::to_string(n.ControllerNumber()) + ":" + std::to_string(n.NodeNumber());
}

TEST(AddHardware, OffersWhatFitsAndAddsTheChosenDeviceOnItsPage) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    PromptScript script;
    auto b = openCopy("metasploitable2__Metasploitable.vmx", dir.path());
    auto* list = child<QTreeWidget>(b.get(), "lvwHardwareList");
    const int entriesBefore = list->topLevelItemCount();

    // Cancelling changes nothing.
    AddDialogSeen seen = addThroughDialog(b.get(), "Hard Disk", false);
    EXPECT_EQ(seen.info, "Add a Hard Disk.");
    EXPECT_TRUE(seen.okEnabled);
    EXPECT_FALSE(seen.offered.contains("Memory"));
    EXPECT_TRUE(seen.offered.contains("Parallel Port"));
    EXPECT_FALSE(b->ChangesPending());
    EXPECT_EQ(list->topLevelItemCount(), entriesBefore);

    // The CD-ROM drive holds IDE 1:0: the new disk takes IDE 0:0, its entry is chosen and
    // its page shown without a further click.
    addThroughDialog(b.get(), "Hard Disk");
    EXPECT_TRUE(b->ChangesPending());
    ASSERT_EQ(list->topLevelItemCount(), entriesBefore + 1);
    EXPECT_TRUE(list->currentItem()->text(0).startsWith("Hard Disk"));
    EXPECT_EQ(child<QStackedWidget>(b.get(), "sstHardware")->currentIndex(), 10);
    const int disks = b->configuration().devices.count(DeviceType::HardDisk);
    EXPECT_EQ(where(nodeOf(*b, DeviceType::HardDisk, disks - 1)), "IDE 0:0");
    EXPECT_TRUE(child<QComboBox>(b.get(), "cboHDIDE")->currentText().startsWith("IDE 0:0"));

    // Floppy drives stop at two.
    const int floppies = b->configuration().devices.count(DeviceType::Floppy);
    for (int i = floppies; i < 2; ++i) addThroughDialog(b.get(), "Floppy Drive");
    EXPECT_FALSE(addThroughDialog(b.get(), "Floppy Drive", false).offered.contains("Floppy Drive"));
    EXPECT_TRUE(script.messages().empty());
}

TEST(AddHardware, FullIdeSendsTheNextDiskToScsiAfterSayingSo) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Disks", dir.path());  // its DVD/CD-ROM drive holds IDE 1:0
    addThroughDialog(b.get(), "SCSI Controller");
    for (int i = 0; i < 3; ++i) addThroughDialog(b.get(), "Hard Disk");
    EXPECT_TRUE(script.messages().empty());
    EXPECT_EQ(where(nodeOf(*b, DeviceType::HardDisk, 2)), "IDE 1:1");

    addThroughDialog(b.get(), "Hard Disk");
    const auto shown = script.messages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title, "No Available Nodes");
    EXPECT_EQ(shown[0].text, "No available IDE nodes!");
    EXPECT_EQ(where(nodeOf(*b, DeviceType::HardDisk, 3)), "SCSI 0:0");
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optHDSCSI")->isChecked());
    EXPECT_EQ(child<QComboBox>(b.get(), "cboHDIDE")->currentText(), "N/A");
}

TEST(NodeChoice, TakingAHeldNodeMovesTheHolderAndTheControllerNodeIsRefused) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Nodes", dir.path());
    addThroughDialog(b.get(), "SCSI Controller");
    addThroughDialog(b.get(), "Hard Disk");  // IDE 0:0
    auto* ide = child<QComboBox>(b.get(), "cboHDIDE");
    auto* scsi = child<QComboBox>(b.get(), "cboHDSCSI");
    auto* list = child<QTreeWidget>(b.get(), "lvwHardwareList");

    // Refused: the controller's own node. The disk stays, nothing is marked.
    b->CreateVmxFile();
    ASSERT_FALSE(b->ChangesPending());
    chooseDevice(b.get(), DeviceType::HardDisk);
    script.clear();
    ASSERT_TRUE(pick(scsi, "SCSI 0:7 - Controller"));
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Invalid Node Selection");
    EXPECT_EQ(script.messages()[0].text, "Node already occupied - cannot move");
    EXPECT_EQ(script.messages()[0].kind, MessageKind::Warning);
    EXPECT_EQ(where(nodeOf(*b, DeviceType::HardDisk)), "IDE 0:0");
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optHDIDE")->isChecked());
    EXPECT_FALSE(b->ChangesPending());

    // "N/A" changes nothing.
    ASSERT_TRUE(pick(scsi, "N/A"));
    EXPECT_FALSE(b->ChangesPending());

    // The CD-ROM drive's node: the drive moves to the first free IDE node (0:1) and both
    // lists and both entries say so.
    script.clear();
    ASSERT_TRUE(pick(ide, "IDE 1:0 - CD-ROM 1"));
    EXPECT_TRUE(script.messages().empty());
    EXPECT_EQ(where(nodeOf(*b, DeviceType::HardDisk)), "IDE 1:0");
    EXPECT_EQ(where(nodeOf(*b, DeviceType::CdRom)), "IDE 0:1");
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_EQ(ide->currentText(), "IDE 1:0 - Hard Disk 1");
    EXPECT_TRUE(entries(ide).contains("IDE 0:1 - CD-ROM 1"));
    QTreeWidgetItem* cd = chooseDevice(b.get(), DeviceType::CdRom);
    EXPECT_TRUE(cd->text(1).startsWith("IDE 0:1")) << cd->text(1).toStdString();
    EXPECT_EQ(child<QComboBox>(b.get(), "cboCDRIDE")->currentText(), "IDE 0:1 - CD-ROM 1");

    // Choosing the SCSI bus puts the drive on the first free SCSI node.
    child<QRadioButton>(b.get(), "optCDRSCSI")->click();
    EXPECT_EQ(where(nodeOf(*b, DeviceType::CdRom)), "SCSI 0:0");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboCDRSCSI")->currentText(), "SCSI 0:0 - CD-ROM 1");
    EXPECT_EQ(list->currentItem(), cd);
}

}  // namespace
}  // namespace arden::gui::test
