// SATA and NVMe nodes, the wider SCSI node ranges of later products, the placement order of
// new devices there, and removing a SATA or NVMe controller that holds devices.
#include "core/hardware/HardwareLimits.h"
#include "core/hardware/NodeAssignment.h"

#include "core/shell/GetText.h"
#include "NodeTestSupport.h"
#include "TestSupport.h"

using namespace arden;
using test::shown;

namespace {

// A machine of a later product with the given controllers and devices placed by node label.
struct Machine {
    DeviceStore store;
    Machine(int scsi, int sata, int nvme, BusOptions options = {true, false, true}) {
        store.busOptions = options;
        for (int i = 0; i < scsi; ++i) store.createDevice(DeviceType::ScsiController).settings.set(".virtualDev", "lsilogic");
        for (int i = 0; i < sata; ++i) store.createDevice(DeviceType::SataController);
        for (int i = 0; i < nvme; ++i) store.createDevice(DeviceType::NvmeController);
    }
    Device& add(DeviceType type, std::string_view label = {}) { return test::addOnNode(store, type, label); }
    std::string placed(DeviceType type, std::vector<std::string>* notices = nullptr) {
        Device& d = store.createDevice(type);
        Placement p = placeOnFirstFreeNode(store, d);
        if (notices)
            for (const Message& m : p.notices) notices->push_back(shown(m));
        return placedNodeLabel(d);
    }
};

}  // namespace

TEST(BusNodes, SataAndNvmeLabelsListsAndTheirLastNodes) {
    Machine m(0, 2, 1);
    m.add(DeviceType::CdRom, "SATA 0:1");
    m.add(DeviceType::HardDisk, "NVMe 0:0");
    EXPECT_EQ(parseNodeLabel("SATA 0:1 - CD-ROM 1"), (ParsedNodeLabel{Bus::Sata, 0, 1, "CD-ROM 1"}));
    EXPECT_EQ(parseNodeLabel("NVMe 3:14"), (ParsedNodeLabel{Bus::Nvme, 3, 14, ""}));
    EXPECT_EQ(parseNodeLabel("nvme 0:0"), std::nullopt);
    const std::vector<std::string> sata = nodeList(m.store, Bus::Sata);
    ASSERT_EQ(sata.size(), 60u) << "thirty nodes on each of two controllers";
    EXPECT_EQ(sata[0], "SATA 0:0");
    EXPECT_EQ(sata[1], "SATA 0:1 - CD-ROM 1");
    EXPECT_EQ(sata[29], "SATA 0:29");
    EXPECT_EQ(sata[30], "SATA 1:0");
    const std::vector<std::string> nvme = nodeList(m.store, Bus::Nvme);
    ASSERT_EQ(nvme.size(), 15u);
    EXPECT_EQ(nvme.front(), "NVMe 0:0 - Hard Disk 1");
    EXPECT_EQ(nvme.back(), "NVMe 0:14");
    EXPECT_TRUE(nodeList(Machine(0, 0, 0).store, Bus::Sata).empty()) << "no controller, no nodes";
}

TEST(BusNodes, ScsiNodeRangesFollowTheProductAndTheControllerType) {
    struct Case { BusOptions options; std::string type; std::size_t count; std::string last; };
    const Case cases[] = {
        {{false, false, false}, "lsilogic", 8, "SCSI 0:7 - Controller"},  // an original product
        {{true, false, true}, "buslogic", 8, "SCSI 0:7 - Controller"},
        {{true, false, true}, "lsisas1068", 16, "SCSI 0:15"},
        {{true, false, true}, "pvscsi", 16, "SCSI 0:15"},
        {{true, true, true}, "pvscsi", 64, "SCSI 0:63"},
        {{true, true, true}, "lsilogic", 16, "SCSI 0:15"},
    };
    for (const Case& c : cases) {
        Machine m(1, 0, 0, c.options);
        m.store.find(DeviceType::ScsiController, m.store.devices(DeviceType::ScsiController)[0].identifier)
            ->settings.set(".virtualDev", c.type);
        const std::vector<std::string> nodes = nodeList(m.store, Bus::Scsi);
        EXPECT_EQ(nodes.size(), c.count) << c.type;
        EXPECT_EQ(nodes.back(), c.last) << c.type;
        EXPECT_EQ(nodes[7], "SCSI 0:7 - Controller") << c.type;
    }
}

TEST(BusNodes, NvmeRefusesDrivesAndAFullSataControllerSaysSo) {
    Machine m(0, 1, 1);
    Device& cd = m.add(DeviceType::CdRom, "IDE 1:0");
    const DeviceStore before = m.store;
    NodeChoice refused = chooseNode(m.store, DeviceType::CdRom, cd.identifier, "NVMe 0:0");
    EXPECT_FALSE(refused.changed);
    EXPECT_TRUE(shown(refused.message)
                    .starts_with("Invalid Node Selection: A DVD/CD-ROM Drive sits on IDE, SCSI or SATA nodes only, not on NVMe 0:0. "
                                 "Free nodes: IDE 0:0, IDE 0:1, IDE 1:1, SATA 0:0"))
        << shown(refused.message);
    EXPECT_FALSE(chooseBus(m.store, DeviceType::CdRom, cd.identifier, Bus::Nvme).changed);
    EXPECT_EQ(m.store, before);

    for (int n = 0; n < 30; ++n) m.add(DeviceType::HardDisk, nodeLabel(Bus::Sata, 0, n));
    EXPECT_EQ(shown(chooseBus(m.store, DeviceType::CdRom, cd.identifier, Bus::Sata).message),
              "No Available Nodes: No available SATA nodes!");
    NodeChoice held = chooseNode(m.store, DeviceType::CdRom, cd.identifier, "SATA 0:29");
    EXPECT_EQ(shown(held.message), "No Available Nodes: No available SATA nodes!") << "the holder has nowhere to go";
    EXPECT_EQ(placedNodeLabel(cd), "IDE 1:0");
}

TEST(BusNodes, ADriveMovesFromAFullIdeBusToSata) {
    Machine m(0, 1, 0);
    for (const char* n : {"IDE 0:0", "IDE 0:1", "IDE 1:1"}) m.add(DeviceType::HardDisk, n);
    Device& cd = m.add(DeviceType::CdRom, "IDE 1:0");
    NodeChoice moved = chooseBus(m.store, DeviceType::CdRom, cd.identifier, Bus::Sata);
    EXPECT_TRUE(moved.changed && !moved.message);
    EXPECT_EQ(placedNodeLabel(cd), "SATA 0:0");
    EXPECT_EQ(nodeList(m.store, Bus::Ide)[2], "IDE 1:0");
    EXPECT_EQ(m.store.summary(cd), "SATA 0:0, auto detect");

    // A disk moved to SATA loses the "disk" device type the products write only on IDE and SCSI.
    Device& disk = m.store.createDevice(DeviceType::HardDisk);
    ASSERT_EQ(disk.settings.text(".deviceType"), "disk");
    EXPECT_TRUE(chooseNode(m.store, DeviceType::HardDisk, disk.identifier, "SATA 0:3").changed);
    EXPECT_FALSE(m.store.find(DeviceType::HardDisk, disk.identifier)->settings.has(".deviceType"));
}

TEST(BusNodes, NewDevicesOfLaterProductsPreferTheNewerBuses) {
    Machine m(1, 1, 1);
    EXPECT_EQ(m.placed(DeviceType::HardDisk), "NVMe 0:0");
    EXPECT_EQ(m.placed(DeviceType::CdRom), "SATA 0:0");
    EXPECT_EQ(m.placed(DeviceType::GenericScsi), "SCSI 0:0");
    Machine scsi(1, 1, 0);
    EXPECT_EQ(scsi.placed(DeviceType::HardDisk), "SCSI 0:0") << "no NVMe controller: the SCSI one";
    Machine sata(0, 1, 0);
    EXPECT_EQ(sata.placed(DeviceType::HardDisk), "SATA 0:0");
    Machine original(1, 0, 0, {});
    EXPECT_EQ(original.placed(DeviceType::HardDisk), "IDE 0:0") << "the original products: IDE first";

    Machine full(0, 0, 0);
    std::vector<std::string> notices;
    for (int i = 0; i < 4; ++i) full.placed(DeviceType::HardDisk);
    EXPECT_EQ(full.placed(DeviceType::CdRom, &notices), "");
    EXPECT_EQ(notices, (std::vector<std::string>{"No Available Nodes: No free node on any bus of this machine!"}));
}

TEST(BusNodes, RemovingASataOrNvmeControllerMovesWhatItHolds) {
    Machine m(0, 2, 2);
    for (const char* n : {"IDE 0:0", "IDE 0:1", "IDE 1:0"}) m.add(DeviceType::HardDisk, n);
    m.add(DeviceType::CdRom, "SATA 0:1");
    m.add(DeviceType::HardDisk, "SATA 0:2");
    const std::string sata0 = m.store.devices(DeviceType::SataController)[0].identifier;
    EXPECT_EQ(devicesOnController(m.store, Bus::Sata, 0).size(), 2u);
    EXPECT_EQ(removeController(m.store, DeviceType::SataController, sata0),
              (std::vector<std::string>{"CD-ROM 1 (SATA 0:1) moved to IDE 1:1", "Hard Disk 4 (SATA 0:2) moved to SATA 1:0"}));
    EXPECT_EQ(m.store.count(DeviceType::SataController), 1);

    m.add(DeviceType::HardDisk, "NVMe 0:3");
    const std::string nvme0 = m.store.devices(DeviceType::NvmeController)[0].identifier;
    EXPECT_EQ(removeController(m.store, DeviceType::NvmeController, nvme0),
              (std::vector<std::string>{"Hard Disk 5 (NVMe 0:3) moved to NVMe 1:0"}))
        << "the bus's other controller before the other buses";
}

TEST(BusNodes, DevicesOnUndeclaredSataAndNvmeControllersAreNamed) {
    Machine m(0, 1, 0);
    m.add(DeviceType::HardDisk, "SATA 0:0");
    m.add(DeviceType::HardDisk, "NVMe 1:0");
    m.add(DeviceType::CdRom, "SATA 2:1");
    EXPECT_EQ(devicesOnUndeclaredControllers(m.store),
              (std::vector<std::string>{"Hard Disk 2 sits on NVMe 1:0, but the file declares no NVMe controller 1 (nvme1.present)",
                                        "CD-ROM 1 sits on SATA 2:1, but the file declares no SATA controller 2 (sata2.present)"}));
}

TEST(BusNodes, SataAndNvmeControllersWithinTheProductsFour) {
    const DeviceMaxima modern{16, 10, 4, 4, 4, 4, 15};
    const DeviceMaxima original{2, 3, 1};
    EXPECT_TRUE(canAddDevice(DeviceType::SataController, 3, modern));
    EXPECT_FALSE(canAddDevice(DeviceType::SataController, 4, modern));
    EXPECT_TRUE(canAddDevice(DeviceType::NvmeController, 3, modern));
    EXPECT_FALSE(canAddDevice(DeviceType::NvmeController, 4, modern));
    EXPECT_FALSE(canAddDevice(DeviceType::SataController, 0, original));
    EXPECT_FALSE(canAddDevice(DeviceType::NvmeController, 0, original));
    EXPECT_EQ(resolveText(addHardwareInfo(DeviceType::SataController, 0, modern).text, 0), "Add a SATA Controller.");
    EXPECT_EQ(resolveText(addHardwareInfo(DeviceType::NvmeController, 4, modern).text, 0),
              "The maximum number ofNVMe Controllers has already been added to this virtual machine.");
    EXPECT_EQ(resolveText(addHardwareInfo(DeviceType::NvmeController, 0, modern).text, 500), "Hinzufügen: NVMe-Controller.");
    // Disks fit on every node: 4 IDE + 4 x 15 SCSI + 4 x 30 SATA + 4 x 15 NVMe.
    EXPECT_TRUE(canAddDevice(DeviceType::HardDisk, 243, modern));
    EXPECT_FALSE(canAddDevice(DeviceType::HardDisk, 244, modern));
    EXPECT_FALSE(canAddDevice(DeviceType::CdRom, 184, modern)) << "drives do not sit on NVMe";
}
