// Node lists, parsing of node labels, placing new disk-like devices and choosing nodes.
#include "core/hardware/NodeAssignment.h"

#include "core/shell/GetText.h"
#include "TestSupport.h"

using namespace arden;

namespace {

// A machine given as (type, node label) pairs; "" leaves a device unplaced.
struct Machine {
    DeviceStore store;
    explicit Machine(int scsiControllers = 0) {
        for (int i = 0; i < scsiControllers; ++i) store.createDevice(DeviceType::ScsiController);
    }
    Device& add(DeviceType type, std::string_view label = {}) {
        Device& d = store.createDevice(type);
        if (auto p = parseNodeLabel(label)) {
            d.node.setControllerType(std::string(busName(p->bus)));
            d.node.setControllerNumber(p->controller);
            d.node.setNodeNumber(p->node);
        }
        return d;
    }
    // Fills the four IDE nodes with hard disks.
    void fillIde() {
        for (const char* n : {"IDE 0:0", "IDE 0:1", "IDE 1:0", "IDE 1:1"}) add(DeviceType::HardDisk, n);
    }
};

std::string shown(const Message& m) { return resolveText(m.title, 0) + ": " + resolveText(m.text, 0); }

std::vector<std::string> shown(const std::vector<Message>& ms) {
    std::vector<std::string> out;
    for (const Message& m : ms) out.push_back(shown(m));
    return out;
}

}  // namespace

TEST(NodeLabel, ParsesLabelsAndRefusesOtherTexts) {
    struct Case { std::string_view label; std::optional<ParsedNodeLabel> expected; };
    const Case cases[] = {
        {"IDE 1:0 - CD-ROM 1", ParsedNodeLabel{Bus::Ide, 1, 0, "CD-ROM 1"}},
        {"SCSI 12:15", ParsedNodeLabel{Bus::Scsi, 12, 15, ""}},
        {"N/A", std::nullopt}, {"SCSI x:1", std::nullopt}, {"USB 0:0", std::nullopt}, {"IDE 0:", std::nullopt},
        {"IDE -1:0", std::nullopt}, {"IDE 0:1 junk", std::nullopt}, {"ide 0:1", std::nullopt},
    };
    for (const Case& c : cases) EXPECT_EQ(parseNodeLabel(c.label), c.expected) << c.label;
}

TEST(NodeList, ShowsHoldersAndTheControllersOwnNode) {
    Machine m(1);
    m.add(DeviceType::HardDisk, "IDE 0:0");
    m.add(DeviceType::CdRom, "IDE 1:0");
    m.add(DeviceType::GenericScsi, "SCSI 0:2");
    m.add(DeviceType::HardDisk, "SCSI 0:9");  // outside the seven nodes, as an opened file may hold it
    m.add(DeviceType::HardDisk);              // not placed: holds nothing
    EXPECT_EQ(nodeList(m.store, Bus::Ide),
              (std::vector<std::string>{"IDE 0:0 - Hard Disk 1", "IDE 0:1", "IDE 1:0 - CD-ROM 1", "IDE 1:1"}));
    EXPECT_EQ(nodeList(m.store, Bus::Scsi),
              (std::vector<std::string>{"SCSI 0:0", "SCSI 0:1", "SCSI 0:2 - Gen SCSI 1", "SCSI 0:3", "SCSI 0:4",
                                        "SCSI 0:5", "SCSI 0:6", "SCSI 0:7 - Controller", "SCSI 0:9 - Hard Disk 2"}));
    EXPECT_TRUE(nodeList(Machine(0).store, Bus::Scsi).empty()) << "no SCSI controller, no SCSI nodes";
    EXPECT_EQ(nodeList(Machine(2).store, Bus::Scsi)[8], "SCSI 1:0");
    EXPECT_EQ(findFirstFreeNode(nodeList(m.store, Bus::Ide)), 1u);
    EXPECT_EQ(findFirstFreeNode({"IDE 0:0 - Hard Disk 1", "SCSI 0:7 - Controller"}), std::nullopt);
}

TEST(NodePlacement, NewDevicesTakeTheFirstFreeNodeIdeBeforeScsi) {
    struct Case {
        const char* what;
        int scsiControllers;
        bool ideFull;
        DeviceType type;
        std::string node;                  // where the device lands; "" when nowhere
        std::vector<std::string> notices;  // shown on the way, in order
    };
    const Case cases[] = {
        {"free IDE node", 1, false, DeviceType::HardDisk, "IDE 0:1", {}},
        {"IDE full", 1, true, DeviceType::HardDisk, "SCSI 0:0", {"No Available Nodes: No available IDE nodes!"}},
        {"IDE full, no SCSI", 0, true, DeviceType::CdRom, "",
         {"No Available Nodes: No available IDE nodes!", "No Available Nodes: No available SCSI nodes either!"}},
        {"generic SCSI skips IDE", 1, false, DeviceType::GenericScsi, "SCSI 0:0", {}},
        {"generic SCSI without SCSI", 0, false, DeviceType::GenericScsi, "", {"No Available Nodes: No available SCSI nodes!"}},
    };
    for (const Case& c : cases) {
        Machine m(c.scsiControllers);
        if (c.ideFull) m.fillIde();
        else m.add(DeviceType::CdRom, "IDE 0:0");
        Device& d = m.add(c.type);
        Placement p = placeOnFirstFreeNode(m.store, d);
        EXPECT_EQ(p.placed, !c.node.empty()) << c.what;
        EXPECT_EQ(placedNodeLabel(d), c.node) << c.what;
        EXPECT_EQ(shown(p.notices), c.notices) << c.what;
    }

    // A placed device stays where it is.
    Machine m;
    Device& cd = m.add(DeviceType::CdRom, "IDE 1:0");
    EXPECT_TRUE(placeOnFirstFreeNode(m.store, cd).placed);
    EXPECT_EQ(placedNodeLabel(cd), "IDE 1:0");
}

TEST(NodeChoice, FreeNodesAreTakenAndNothingElseChanges) {
    Machine m(1);
    Device& disk = m.add(DeviceType::HardDisk, "IDE 0:0");
    m.add(DeviceType::CdRom, "IDE 1:0");
    const DeviceStore before = m.store;

    for (const char* same : {"N/A", "IDE 0:0", "IDE 0:0 - Hard Disk 1"}) {
        NodeChoice c = chooseNode(m.store, DeviceType::HardDisk, disk.identifier, same);
        EXPECT_FALSE(c.changed) << same;
        EXPECT_FALSE(c.message) << same;
    }
    EXPECT_EQ(m.store, before);

    NodeChoice free = chooseNode(m.store, DeviceType::HardDisk, disk.identifier, "SCSI 0:4");
    EXPECT_TRUE(free.changed && !free.message && !free.movedType);
    EXPECT_EQ(placedNodeLabel(disk), "SCSI 0:4");
    EXPECT_EQ(nodeList(m.store, Bus::Scsi)[4], "SCSI 0:4 - Hard Disk 1");
    EXPECT_EQ(nodeList(m.store, Bus::Ide)[0], "IDE 0:0") << "the old node is free again";
}

TEST(NodeChoice, RefusalsLeaveTheMachineAsItWas) {
    Machine m(1);
    Device& disk = m.add(DeviceType::HardDisk, "IDE 0:0");
    Device& gen = m.add(DeviceType::GenericScsi, "SCSI 0:0");
    const DeviceStore before = m.store;
    struct Case { DeviceType type; std::string identifier; std::string label; std::string message; };
    const Case cases[] = {
        {DeviceType::HardDisk, disk.identifier, "SCSI 0:7", "Invalid Node Selection: Node already occupied - cannot move"},
        {DeviceType::HardDisk, disk.identifier, "SCSI 3:9",
         "Invalid Node Selection: SCSI 3:9 is not a node of this machine. Free nodes: IDE 0:1, IDE 1:0, IDE 1:1, SCSI 0:1, "
         "SCSI 0:2, SCSI 0:3, SCSI 0:4, SCSI 0:5, SCSI 0:6"},
        {DeviceType::HardDisk, disk.identifier, "IDE 2:0", "Invalid Node Selection: IDE 2:0 is not a node of this machine..."},
        {DeviceType::HardDisk, disk.identifier, "Floppy", "Invalid Node Selection: \"Floppy\" is not a node label..."},
        {DeviceType::GenericScsi, gen.identifier, "IDE 0:1", "Invalid Node Selection: A Generic SCSI Device sits on SCSI nodes only, not on IDE 0:1..."},
        {DeviceType::HardDisk, "hd99", "IDE 0:1", "Invalid Node Selection: There is no Hard Disk \"hd99\" to place on a node"},
    };
    for (const Case& c : cases) {
        NodeChoice r = chooseNode(m.store, c.type, c.identifier, c.label);
        EXPECT_FALSE(r.changed) << c.label;
        ASSERT_TRUE(r.message) << c.label;
        std::string text = shown(*r.message);
        if (c.message.ends_with("...")) EXPECT_TRUE(text.starts_with(c.message.substr(0, c.message.size() - 3))) << text;
        else EXPECT_EQ(text, c.message);
        EXPECT_EQ(m.store, before) << c.label;
    }
}

TEST(NodeChoice, TheHolderMovesToTheFirstFreeNodeOfItsBus) {
    Machine m(1);
    Device& disk = m.add(DeviceType::HardDisk, "IDE 0:0");
    Device& cd = m.add(DeviceType::CdRom, "IDE 1:0");
    NodeChoice c = chooseNode(m.store, DeviceType::HardDisk, disk.identifier, "IDE 1:0 - CD-ROM 1");
    EXPECT_TRUE(c.changed && !c.message);
    EXPECT_EQ(placedNodeLabel(disk), "IDE 1:0");
    EXPECT_EQ(placedNodeLabel(cd), "IDE 0:1") << "the first node free while the disk still held IDE 0:0";
    EXPECT_EQ(std::tuple(*c.movedType, c.movedIdentifier, c.movedTo), std::tuple(DeviceType::CdRom, cd.identifier, "IDE 0:1"));

    // On SCSI a generic SCSI device is moved the same way.
    Device& gen = m.add(DeviceType::GenericScsi, "SCSI 0:0");
    NodeChoice s = chooseNode(m.store, DeviceType::CdRom, cd.identifier, "SCSI 0:0");
    EXPECT_TRUE(s.changed);
    EXPECT_EQ(placedNodeLabel(cd), "SCSI 0:0");
    EXPECT_EQ(placedNodeLabel(gen), "SCSI 0:1");
    EXPECT_EQ(s.movedType, DeviceType::GenericScsi);
}

TEST(NodeChoice, AFullBusKeepsTheHolderWhereItIs) {
    for (Bus bus : {Bus::Ide, Bus::Scsi}) {
        Machine m(1);
        m.fillIde();
        for (int n = 0; n < 7; ++n) m.add(DeviceType::CdRom, nodeLabel(Bus::Scsi, 0, n));
        Device& disk = *m.store.find(DeviceType::HardDisk, m.store.devices(DeviceType::HardDisk)[0].identifier);
        const std::string target = bus == Bus::Ide ? "IDE 1:1" : "SCSI 0:3";
        const DeviceStore before = m.store;
        NodeChoice c = chooseNode(m.store, DeviceType::HardDisk, disk.identifier, target);
        EXPECT_FALSE(c.changed);
        ASSERT_TRUE(c.message);
        EXPECT_EQ(shown(*c.message), bus == Bus::Ide ? "No Available Nodes: No available IDE nodes!"
                                                     : "No Available Nodes: No available SCSI nodes!");
        EXPECT_EQ(m.store, before);
    }
}
