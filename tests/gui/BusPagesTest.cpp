// SATA and NVMe in the editor: the node rows of the disk and drive pages, the controllers' page,
// Add Hardware on a Workstation 17.5x machine, and none of it on a Workstation 5.5x machine.
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTabWidget>

#include "GuiTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::writeBytes;

QStringList listed(QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i) out << list->item(i)->text();
    return out;
}

QString shownPage(Builder* b) { return child<QStackedWidget>(b, "sstHardware")->currentWidget()->objectName(); }

}  // namespace

TEST(BusPages, AWorkstation17MachineShowsAndAddsSataAndNvme) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    PromptScript script;
    writeBytes(dir / "w.vmx", readBytes(arden::test::corpusDir() / "vmx" / "lanrenlan-configbackup__Windows-10-x64.vmx"));
    auto b = openFile(dir / "w.vmx");
    child<QTabWidget>(b.get(), "sstMain")->setCurrentIndex(1);

    chooseDevice(b.get(), DeviceType::HardDisk);
    EXPECT_EQ(shownPage(b.get()), "fraHDPage");
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optHDNVMe")->isChecked());
    EXPECT_EQ(child<QComboBox>(b.get(), "cboHDNVMe")->currentText(), "NVMe 0:0 - Hard Disk 1");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboHDSATA")->itemText(1), "SATA 0:1 - CD-ROM 1");
    EXPECT_TRUE(child<QComboBox>(b.get(), "cboHDSATA")->isVisibleTo(b.get()));

    chooseDevice(b.get(), DeviceType::CdRom);
    EXPECT_EQ(child<QComboBox>(b.get(), "cboCDRSATA")->currentText(), "SATA 0:1 - CD-ROM 1");
    EXPECT_EQ(b->findChild<QComboBox*>("cboCDRNVMe"), nullptr) << "drives do not sit on NVMe";

    QTreeWidgetItem* sata = chooseDevice(b.get(), DeviceType::SataController);
    ASSERT_NE(sata, nullptr);
    EXPECT_EQ(sata->text(0) + " / " + sata->text(1), "SATA Controller 0 / Enabled");
    EXPECT_EQ(shownPage(b.get()), "fraSATAPage");
    EXPECT_EQ(listed(child<QListWidget>(b.get(), "lstSATADevices")), QStringList({"SATA 0:1 - CD-ROM 1"}));
    EXPECT_TRUE(child<QCheckBox>(b.get(), "chkSATAEnabled")->isChecked());
    chooseDevice(b.get(), DeviceType::NvmeController);
    EXPECT_EQ(shownPage(b.get()), "fraNVMePage");
    EXPECT_EQ(listed(child<QListWidget>(b.get(), "lstNVMeDevices")), QStringList({"NVMe 0:0 - Hard Disk 1"}));

    const QStringList offered = addThroughDialog(b.get(), "NVMe Controller");
    EXPECT_TRUE(offered.contains("SATA Controller"));
    EXPECT_EQ(offered.back(), "Add a NVMe Controller.");
    QTreeWidgetItem* added = chooseDevice(b.get(), DeviceType::NvmeController, 1);
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->text(0), "NVMe Controller 1");
    ASSERT_TRUE(b->CreateVmxFile());
    const std::string written = readBytes(dir / "w.vmx");
    for (const char* line : {"nvme1.present = \"TRUE\"\r\n", "nvme0:0.fileName = \"Windows 10 x64.vmdk\"\r\n",
                             "sata0:1.deviceType = \"cdrom-image\"\r\n", "nvme0.pciSlotNumber = \"224\"\r\n"})
        EXPECT_NE(written.find(line), std::string::npos) << line;
    EXPECT_EQ(written.find("nvme1.pciSlotNumber"), std::string::npos) << "no slot number is invented";
}

TEST(BusPages, AWorkstation55MachineHasNoSataOrNvme) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Old", dir.path());
    child<QTabWidget>(b.get(), "sstMain")->setCurrentIndex(1);
    const QStringList offered = addThroughDialog(b.get(), "SATA Controller", false);
    EXPECT_FALSE(offered.contains("SATA Controller"));
    EXPECT_FALSE(offered.contains("NVMe Controller"));
    chooseDevice(b.get(), DeviceType::CdRom);
    EXPECT_TRUE(child<QComboBox>(b.get(), "cboCDRIDE")->isVisibleTo(b.get()));
    EXPECT_FALSE(child<QComboBox>(b.get(), "cboCDRSATA")->isVisibleTo(b.get()));
    EXPECT_FALSE(child<QRadioButton>(b.get(), "optCDRSATA")->isVisibleTo(b.get()));
    addThroughDialog(b.get(), "SCSI Controller");
    chooseDevice(b.get(), DeviceType::ScsiController);
    EXPECT_EQ(entries(child<QComboBox>(b.get(), "cboSCSICont")), QStringList({"BusLogic", "LsiLogic"}));
}

}  // namespace arden::gui::test
