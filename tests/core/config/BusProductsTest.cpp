// SATA and NVMe machines against the products: written in the products' own form and read back
// unchanged, controllers over a product's four (or any where it lacks the bus) listed like other
// devices over a limit, and SCSI types a product lacks fitted when the product changes.
#include "core/config/ProductLimits.h"
#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "core/hardware/NodeAssignment.h"

#include "TestSupport.h"
#include "VmxTestSupport.h"

using namespace arden;
using test::shown;

namespace {

VmConfiguration workstation(const char* version) {
    VmConfiguration c = VmConfiguration::newMachine("Bus", "/vms/bus/", "New VM", 7);
    c.retarget(kWorkstation, *versionFromText(kWorkstation, version));
    return c;
}

Device& placed(VmConfiguration& c, DeviceType type) {
    Device& d = c.devices.createDevice(type);
    placeOnFirstFreeNode(c.devices, d);
    return *c.devices.find(type, d.identifier);
}

// The hardware list, one "entry<TAB>summary" a line.
std::string listOf(const VmConfiguration& c) {
    std::string text;
    for (const HardwareListEntry& e : c.devices.hardwareList()) text += e.text + "\t" + e.summary + "\n";
    return text;
}

}  // namespace

TEST(BusMachines, SataAndNvmeDevicesAreWrittenAsTheProductsWriteThemAndReadBack) {
    VmConfiguration c = workstation("17.5x");
    c.devices.createDevice(DeviceType::SataController);
    c.devices.createDevice(DeviceType::NvmeController);
    placed(c, DeviceType::HardDisk).settings.set(".fileName", "system.vmdk");
    placed(c, DeviceType::CdRom);
    const std::string text = writeVmxText(c);
    for (const char* line : {"nvme0.present = \"TRUE\"", "nvme0:0.present = \"TRUE\"", "nvme0:0.fileName = \"system.vmdk\"",
                             "nvme0:0.mode = \"persistent\"", "sata0.present = \"TRUE\"", "sata0:0.present = \"TRUE\"",
                             "sata0:0.fileName = \"auto detect\"", "sata0:0.deviceType = \"cdrom-raw\"",
                             "sata0:0.autodetect = \"TRUE\"", "ide1:0.deviceType = \"cdrom-raw\""})
        EXPECT_TRUE(test::hasLine(text, line)) << line;
    EXPECT_EQ(text.find("nvme0:0.deviceType"), std::string::npos) << "no device type for a disk on NVMe";
    EXPECT_EQ(text.find("pciSlotNumber"), std::string::npos) << "slot numbers are the product's to choose";
    EXPECT_LT(text.find("sata0.present"), text.find("sata0:0.present")) << "the controller before its devices";

    const LoadResult loaded = test::parseIn(text);
    ASSERT_TRUE(loaded.ok);
    EXPECT_EQ(listOf(loaded.config), listOf(c));
    EXPECT_NE(listOf(c).find("Hard Disk 1\tNVMe 0:0, system.vmdk (persistent)\nCD-ROM 1\tIDE 1:0, auto detect\n"
                             "CD-ROM 2\tSATA 0:0, auto detect\n"),
              std::string::npos)
        << listOf(c);
    EXPECT_EQ(writeVmxText(loaded.config), text) << "a second save writes the same bytes";
}

TEST(BusMachines, ControllersOverTheProductsFourOrWithoutItsBusAreListed) {
    VmConfiguration c = workstation("17.5x");
    for (int i = 0; i < 5; ++i) c.devices.createDevice(DeviceType::SataController);
    EXPECT_EQ(shown(checkSave(c)),
              "Over the Product's Limits: This machine holds more than its product allows:\n"
              "- 5 SATA controllers (SATA Controller 0, SATA Controller 1, SATA Controller 2, SATA Controller 3, "
              "SATA Controller 4): Workstation 17.5x allows at most 4; remove 1");
    EXPECT_EQ(pciDeviceTally(c), 8) << "the machine's board, a network adapter, a sound card and five SATA controllers";
    c.devices.remove(DeviceType::SataController, c.devices.devices(DeviceType::SataController).back().identifier);
    EXPECT_FALSE(checkSave(c));

    VmConfiguration nvme = workstation("17.5x");
    nvme.devices.createDevice(DeviceType::NvmeController);
    const RetargetPlan plan = planRetarget(nvme, kWorkstation, *versionFromText(kWorkstation, "12.x"));
    EXPECT_EQ(shown(plan.refusal),
              "Change of Product: Workstation 12.x cannot hold everything this machine has; remove the devices over its "
              "limits first, then choose the product again:\n"
              "- 1 NVMe controllers (NVMe Controller 0): Workstation 12.x allows at most 0; remove 1");
    EXPECT_FALSE(planRetarget(nvme, kWorkstation, *versionFromText(kWorkstation, "14.x")).refusal);
}

TEST(BusMachines, AScsiTypeTheNewProductLacksBecomesLsiLogic) {
    VmConfiguration c = workstation("17.5x");
    c.devices.createDevice(DeviceType::ScsiController).settings.set(".virtualDev", "pvscsi");
    c.devices.createDevice(DeviceType::ScsiController).settings.set(".virtualDev", "buslogic");
    const int ws55 = *versionFromText(kWorkstation, "5.5x");
    const RetargetPlan plan = planRetarget(c, kWorkstation, ws55);
    EXPECT_TRUE(shown(plan.question).find("- SCSI Controller 0: Workstation 5.5x does not offer the controller type "
                                          "\"pvscsi\"; becomes \"lsilogic\"") != std::string::npos)
        << shown(plan.question);
    retargetAndFit(c, kWorkstation, ws55);
    EXPECT_EQ(c.devices.devices(DeviceType::ScsiController)[0].settings.text(".virtualDev"), "lsilogic");
    EXPECT_EQ(c.devices.devices(DeviceType::ScsiController)[1].settings.text(".virtualDev"), "buslogic");
    EXPECT_EQ(nodeList(c.devices, Bus::Scsi).size(), 16u) << "seven nodes and the controller's own on each";
}
