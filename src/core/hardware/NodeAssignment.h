#pragma once
// Which node of which bus (BusTable.h: IDE, SCSI, SATA, NVMe) a disk-like device (hard disk,
// DVD/CD-ROM drive, generic SCSI device) sits on, and the node lists its page shows.
//
// Nodes: IDE has two controllers of two nodes each (IDE 0:0, 0:1, 1:0, 1:1). Every controller
// the machine declares of the other buses (its key number n, "scsin", "satan", "nvmen") offers
// the nodes of its row; a SCSI controller holds node n:7 itself. A node that a device of an
// opened file holds outside these (SCSI 0:9, or a node of a controller the file does not
// declare) is listed too, so the device's page can show where it sits; such nodes are never
// offered when free.
//
// Node labels: "SATA 0:1" for a free node; "IDE 0:1 - CD-ROM 1" for a held one (label, blank,
// "-", blank, the holder's display text); "SCSI 0:7 - Controller" for the
// controller's own node. "N/A" stands for no node.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/hardware/BusTable.h"
#include "core/hardware/DeviceStore.h"
#include "core/support/Message.h"

namespace arden {

inline constexpr std::string_view kNoNodeLabel = "N/A";
inline constexpr std::string_view kControllerHolderPrefix = "Controller";

// The nodes of controller `controller` of `bus` in the machine, its own node included: the row's
// count, and for SCSI what the controller's type and the machine's BusOptions allow.
int nodesPerController(const DeviceStore& store, Bus bus, const Device& controller);

// "IDE 0:1", "SCSI 1:3".
std::string nodeLabel(Bus bus, int controller, int node);

// The node list of `bus` for the machine held by `store`: controller by controller, node by
// node, each label showing its holder. This is what the node lists of the hard disk, DVD/CD-ROM
// and generic SCSI pages show (rebuild it after every change: it is the relabelling).
std::vector<std::string> nodeList(const DeviceStore& store, Bus bus);

// Find first free node: the position of the first label without a "-", or nothing when every
// node is held.
std::optional<std::size_t> findFirstFreeNode(const std::vector<std::string>& labels);

// Parse node label: "IDE 1:0 - CD-ROM 1" -> IDE, 1, 0, "CD-ROM 1". The holder is everything
// from two characters after the first "-" (empty for a free node). Nothing for "N/A" and for
// texts that are not node labels ("SCSI x:1", "USB 0:0", "IDE 0").
struct ParsedNodeLabel {
    Bus bus = Bus::Ide;
    int controller = -1;
    int node = -1;
    std::string holder;
    bool operator==(const ParsedNodeLabel&) const = default;
};
std::optional<ParsedNodeLabel> parseNodeLabel(std::string_view label);

// The label of the node a device sits on ("IDE 1:0"), empty when it is not placed.
std::string placedNodeLabel(const Device& device);

// The outcome of choosing a node for a device.
struct NodeChoice {
    bool changed = false;                // the device now sits on the chosen node
    std::optional<Message> message;      // a refusal (warning) or a notice (information) to show
    // The device that held the node and was moved out of the way (its entry's summary changes).
    std::optional<DeviceType> movedType;
    std::string movedIdentifier;
    std::string movedTo;                 // its new node label, e.g. "IDE 0:1"
};

// Choosing a node in a node list for the device (`type`, `identifier`). `label` is an item of
// nodeList() or a label typed by hand ("IDE 1:0"); the holder is taken from the machine, not
// from the text after the label.
// - "N/A", or the node the device already holds: nothing changes, no message.
// - a free node: the device takes it.
// - the SCSI controller's own node: refused, "Invalid Node Selection" / "Node already
//   occupied - cannot move" (warning, ids 191/192); nothing changes.
// - a node held by another disk-like device: that device moves to the first free node of the
//   same bus and the device takes the chosen node; when that bus has no free node, "No
//   Available Nodes" / "No available IDE nodes!" (or the SCSI, SATA, NVMe notice of the bus;
//   information) and nothing moves.
// - a label that names no node of this machine ("SCSI 3:9"), a bus the device cannot use, or
//   an unknown device: refused with a warning that names the label and lists the free nodes;
//   nothing changes.
NodeChoice chooseNode(DeviceStore& store, DeviceType type, std::string_view identifier, std::string_view label);

// Moving the device (`type`, `identifier`) to another bus: it takes that bus's first free
// node, as chooseNode() with that node's label. When the bus has no free node, "No Available
// Nodes" / the bus's notice ("No available SATA nodes!") and the device stays where it was. Nothing happens when it is on that bus already.
NodeChoice chooseBus(DeviceStore& store, DeviceType type, std::string_view identifier, Bus bus);

// Placing a new hard disk or DVD/CD-ROM drive on the first free node. On the original products:
// IDE first; when IDE is full, "No available IDE nodes!" and then SCSI; when SCSI is full too,
// "No available SCSI nodes either!". With BusOptions::modernPlacement the order is the one the
// later products' own editors use for a new machine: the system disk on the fast adapter
// (NVMe, then SCSI, then SATA, then IDE) and the DVD/CD-ROM drive on SATA, then IDE, then SCSI
// (corpus files of Workstation 10 to 17 hold their drive on "sata0:1" and their disk on
// "nvme0:0" or "scsi0:0"); buses without a declared controller offer no node and are passed
// over silently; when every bus is full, "No free node on any bus of this machine!". A generic
// SCSI device is placed on SCSI only ("No available SCSI nodes!"). A device that already sits
// on a node stays there.
struct Placement {
    bool placed = false;                 // the device sits on a node afterwards
    std::vector<Message> notices;        // information messages, in the order they are shown
};
Placement placeOnFirstFreeNode(DeviceStore& store, Device& device);

// The free nodes a device of `type` could take, joined for a message ("IDE 1:1, SCSI 0:2"),
// or "none".
std::string freeNodesText(const DeviceStore& store, DeviceType type);

// Whether a node of a bus a device of `type` may sit on is free (always true for a type that
// sits on no node). Add Hardware offers a disk-like type only then.
bool hasFreeNode(const DeviceStore& store, DeviceType type);

// The disk-like devices on the nodes of controller `number` of `bus`, in node order.
std::vector<const Device*> devicesOnController(const DeviceStore& store, Bus bus, int number);

// Removes the SCSI, SATA or NVMe controller (`controllerType`, `identifier`) and the devices on
// its nodes: each moves to the first free node of another place it may sit on (IDE, then the
// machine's other controllers of the same bus, then the other buses in table order), or is
// removed with the controller when none is free. Returns one line per device saying which
// ("Hard Disk 2 (SCSI 0:0) moved to IDE 0:1", "Gen SCSI 1 (SCSI 0:2) removed with the
// controller").
std::vector<std::string> removeController(DeviceStore& store, DeviceType controllerType, std::string_view identifier);

// Devices that sit on a node of a controller the machine does not declare (no "scsiN.present",
// "sataN.present", "nvmeN.present" line): one line each, "Hard Disk 1 sits on SCSI 1:0, but
// the file declares no SCSI controller 1 (scsi1.present)".
std::vector<std::string> devicesOnUndeclaredControllers(const DeviceStore& store);
// That line for one device, or empty when it does not sit on such a node.
std::string undeclaredControllerText(const DeviceStore& store, const Device& device);

}  // namespace arden
