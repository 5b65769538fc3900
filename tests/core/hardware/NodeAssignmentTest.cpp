// Node lists, node labels, placing new disk-like devices and choosing a node for a device.
#include "core/hardware/NodeAssignment.h"

#include "core/shell/GetText.h"
#include "NodeTestSupport.h"
#include "TestSupport.h"

using namespace arden;
using test::shown;

namespace {

// A machine with the given SCSI controllers and devices placed by node label ("" leaves one unplaced).
struct Machine {
    DeviceStore store;
    explicit Machine(int scsiControllers = 0) {
        for (int i = 0; i < scsiControllers; ++i) store.createDevice(DeviceType::ScsiController);
    }
    Device& add(DeviceType type, std::string_view label = {}) { return test::addOnNode(store, type, label); }
};

const std::string kNoIde = "No Available Nodes: No available IDE nodes!";
const std::string kNoScsi = "No Available Nodes: No available SCSI nodes!";

}  // namespace

TEST(NodeLabel, ParsesLabelsAndRefusesOtherTexts) {
    EXPECT_EQ(parseNodeLabel("IDE 1:0 - CD-ROM 1"), (ParsedNodeLabel{Bus::Ide, 1, 0, "CD-ROM 1"}));
    EXPECT_EQ(parseNodeLabel("SCSI 12:15"), (ParsedNodeLabel{Bus::Scsi, 12, 15, ""}));
    for (const char* bad : {"N/A", "SCSI x:1", "USB 0:0", "IDE 0:", "IDE -1:0", "IDE 0:1 junk", "ide 0:1"})
        EXPECT_EQ(parseNodeLabel(bad), std::nullopt) << bad;
}

TEST(NodeList, ShowsHoldersAndTheControllersOwnNode) {
    Machine m(1);
    m.add(DeviceType::HardDisk, "IDE 0:0");
    m.add(DeviceType::CdRom, "IDE 1:0");
    m.add(DeviceType::GenericScsi, "SCSI 0:2");
    m.add(DeviceType::HardDisk, "SCSI 0:9");  // outside the seven nodes, as an opened file may hold it
    m.add(DeviceType::HardDisk);              // not placed: holds nothing
    EXPECT_EQ(nodeList(m.store, Bus::Ide), (std::vector<std::string>{"IDE 0:0 - Hard Disk 1", "IDE 0:1", "IDE 1:0 - CD-ROM 1", "IDE 1:1"}));
    EXPECT_EQ(nodeList(m.store, Bus::Scsi),
              (std::vector<std::string>{"SCSI 0:0", "SCSI 0:1", "SCSI 0:2 - Gen SCSI 1", "SCSI 0:3", "SCSI 0:4", "SCSI 0:5", "SCSI 0:6",
                                        "SCSI 0:7 - Controller", "SCSI 0:9 - Hard Disk 2"}));
    EXPECT_TRUE(nodeList(Machine(0).store, Bus::Scsi).empty()) << "no SCSI controller, no SCSI nodes";
    EXPECT_EQ(nodeList(Machine(2).store, Bus::Scsi)[8], "SCSI 1:0");
    EXPECT_EQ(findFirstFreeNode(nodeList(m.store, Bus::Ide)), 1u);
}

TEST(NodePlacement, NewDevicesTakeTheFirstFreeNodeIdeBeforeScsi) {
    struct Case { int scsiControllers; int ideHeld; DeviceType type; std::string node; std::vector<std::string> notices; };
    const Case cases[] = {
        {1, 1, DeviceType::HardDisk, "IDE 0:1", {}},
        {1, 4, DeviceType::HardDisk, "SCSI 0:0", {kNoIde}},
        {0, 4, DeviceType::CdRom, "", {kNoIde, "No Available Nodes: No available SCSI nodes either!"}},
        {1, 1, DeviceType::GenericScsi, "SCSI 0:0", {}},
        {0, 1, DeviceType::GenericScsi, "", {kNoScsi}},
    };
    for (const Case& c : cases) {
        Machine m(c.scsiControllers);
        for (const char* n : {"IDE 0:0", "IDE 0:1", "IDE 1:0", "IDE 1:1"}) {
            if (m.store.count(DeviceType::HardDisk) < c.ideHeld) m.add(DeviceType::HardDisk, n);
        }
        Device& d = m.add(c.type);
        Placement p = placeOnFirstFreeNode(m.store, d);
        std::vector<std::string> notices;
        for (const Message& n : p.notices) notices.push_back(shown(n));
        EXPECT_EQ(std::tuple(p.placed, placedNodeLabel(d), notices), std::tuple(!c.node.empty(), c.node, c.notices));
    }
    Machine m;
    Device& cd = m.add(DeviceType::CdRom, "IDE 1:0");
    EXPECT_TRUE(placeOnFirstFreeNode(m.store, cd).placed);
    EXPECT_EQ(placedNodeLabel(cd), "IDE 1:0") << "a placed device stays where it is";
}

TEST(NodeChoice, FreeNodesAreTakenAndRefusalsChangeNothing) {
    Machine m(1);
    Device& disk = m.add(DeviceType::HardDisk, "IDE 0:0");
    Device& gen = m.add(DeviceType::GenericScsi, "SCSI 0:0");
    const DeviceStore before = m.store;
    for (const char* same : {"N/A", "IDE 0:0", "IDE 0:0 - Hard Disk 1"}) {
        NodeChoice c = chooseNode(m.store, DeviceType::HardDisk, disk.identifier, same);
        EXPECT_FALSE(c.changed || c.message) << same;
    }
    const std::tuple<DeviceType, std::string, std::string, std::string> refused[] = {
        {DeviceType::HardDisk, disk.identifier, "SCSI 0:7", "Invalid Node Selection: Node already occupied - cannot move"},
        {DeviceType::HardDisk, disk.identifier, "SCSI 3:9", "Invalid Node Selection: SCSI 3:9 is not a node of this machine. Free nodes: "
                                                            "IDE 0:1, IDE 1:0, IDE 1:1, SCSI 0:1, SCSI 0:2, SCSI 0:3, SCSI 0:4, SCSI 0:5, SCSI 0:6"},
        {DeviceType::HardDisk, disk.identifier, "Floppy", "Invalid Node Selection: \"Floppy\" is not a node label"},
        {DeviceType::GenericScsi, gen.identifier, "IDE 0:1", "Invalid Node Selection: A Generic SCSI Device sits on SCSI nodes only, not on IDE 0:1"},
        {DeviceType::HardDisk, "hd99", "IDE 0:1", "Invalid Node Selection: There is no Hard Disk \"hd99\" to place on a node"},
    };
    for (const auto& [type, identifier, label, message] : refused) {
        NodeChoice r = chooseNode(m.store, type, identifier, label);
        EXPECT_FALSE(r.changed) << label;
        EXPECT_TRUE(shown(r.message).starts_with(message)) << shown(r.message);
    }
    EXPECT_EQ(m.store, before);

    NodeChoice free = chooseNode(m.store, DeviceType::HardDisk, disk.identifier, "SCSI 0:4");
    EXPECT_TRUE(free.changed && !free.message && !free.movedType);
    EXPECT_EQ(nodeList(m.store, Bus::Scsi)[4], "SCSI 0:4 - Hard Disk 1");
    EXPECT_EQ(nodeList(m.store, Bus::Ide)[0], "IDE 0:0") << "the old node is free again";
}

TEST(NodeChoice, TheHolderMovesToTheFirstFreeNodeOfItsBusUnlessItIsFull) {
    Machine m(1);
    Device& disk = m.add(DeviceType::HardDisk, "IDE 0:0");
    Device& cd = m.add(DeviceType::CdRom, "IDE 1:0");
    NodeChoice c = chooseNode(m.store, DeviceType::HardDisk, disk.identifier, "IDE 1:0 - CD-ROM 1");
    EXPECT_TRUE(c.changed && !c.message);
    EXPECT_EQ(placedNodeLabel(disk), "IDE 1:0");
    EXPECT_EQ(placedNodeLabel(cd), "IDE 0:1") << "the first node free while the disk still held IDE 0:0";
    EXPECT_EQ(std::tuple(*c.movedType, c.movedIdentifier, c.movedTo), std::tuple(DeviceType::CdRom, cd.identifier, "IDE 0:1"));
    Device& gen = m.add(DeviceType::GenericScsi, "SCSI 0:0");
    EXPECT_TRUE(chooseNode(m.store, DeviceType::CdRom, cd.identifier, "SCSI 0:0").changed);
    EXPECT_EQ(placedNodeLabel(gen), "SCSI 0:1") << "on SCSI a generic SCSI device moves the same way";

    for (Bus bus : {Bus::Ide, Bus::Scsi}) {
        Machine full(1);
        for (const char* n : {"IDE 0:0", "IDE 0:1", "IDE 1:0", "IDE 1:1"}) full.add(DeviceType::HardDisk, n);
        for (int n = 0; n < 7; ++n) full.add(DeviceType::CdRom, nodeLabel(Bus::Scsi, 0, n));
        const DeviceStore before = full.store;
        NodeChoice r = chooseNode(full.store, DeviceType::HardDisk, full.store.devices(DeviceType::HardDisk)[0].identifier,
                                  bus == Bus::Ide ? "IDE 1:1" : "SCSI 0:3");
        EXPECT_FALSE(r.changed);
        EXPECT_EQ(shown(r.message), bus == Bus::Ide ? kNoIde : kNoScsi);
        EXPECT_EQ(full.store, before);
    }
}

TEST(NodeChoice, TheOtherBusGivesItsFirstFreeNodeOrSaysItIsFull) {
    Machine m(1);
    Device& disk = m.add(DeviceType::HardDisk, "IDE 0:0");
    m.add(DeviceType::CdRom, "SCSI 0:0");
    EXPECT_FALSE(chooseBus(m.store, DeviceType::HardDisk, disk.identifier, Bus::Ide).changed) << "already on IDE";
    NodeChoice toScsi = chooseBus(m.store, DeviceType::HardDisk, disk.identifier, Bus::Scsi);
    EXPECT_TRUE(toScsi.changed && !toScsi.message);
    EXPECT_EQ(placedNodeLabel(disk), "SCSI 0:1");

    for (int n = 2; n < 7; ++n) m.add(DeviceType::CdRom, nodeLabel(Bus::Scsi, 0, n));
    for (const char* n : {"IDE 0:0", "IDE 0:1", "IDE 1:0", "IDE 1:1"}) m.add(DeviceType::CdRom, n);
    const DeviceStore before = m.store;
    NodeChoice full = chooseBus(m.store, DeviceType::HardDisk, disk.identifier, Bus::Ide);
    EXPECT_FALSE(full.changed);
    EXPECT_EQ(shown(full.message), kNoIde);
    EXPECT_EQ(m.store, before) << "the disk stays where it was";
}
