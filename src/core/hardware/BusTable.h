#pragma once
// The buses disk-like devices sit on, as rows of one table: IDE, SCSI, SATA and NVMe. Node
// labels, node lists, placement and moves (NodeAssignment) are written once over these rows.
//
//   IDE   "ideN:M"   two controllers of two nodes, there without a "ideN.present" line
//   SCSI  "scsiN:M"  up to four declared controllers ("scsiN.present"); node 7 is the
//                    controller's own. Devices: n:0-n:6 on the original products and on BusLogic
//                    controllers; n:0-n:15 on LSI Logic, LSI Logic SAS and paravirtual ones of a
//                    product with those types; a paravirtual controller's n:0-n:63 where the
//                    product has wide paravirtual nodes
//   SATA  "sataN:M"  up to four declared controllers, nodes 0-29, no node of their own
//   NVMe  "nvmeN:M"  up to four declared controllers, nodes 0-14, disks only
#include <optional>
#include <span>
#include <string_view>

#include "core/hardware/DeviceTypes.h"

namespace arden {

enum class Bus { Ide, Scsi, Sata, Nvme };

struct BusRow {
    Bus bus;
    std::string_view label;        // "SATA": node labels, clsNodeDevice::ControllerType
    std::string_view keyStem;      // "sata": "sata0.present", "sata0:1.fileName"
    DeviceType controllerType;     // the device kind of its controllers
    int maxControllers;            // key numbers 0 to this - 1
    int nodes;                     // nodes per controller, the controller's own included
    int ownNode;                   // the node the controller holds itself, -1 for none
    bool declaredControllers;      // nodes exist only on controllers the file declares
    bool cdRoms;                   // DVD/CD-ROM drives may sit there
    bool genericScsi;              // generic SCSI devices may sit there
    int fullNoticeId;              // "No available ... nodes!"
    bool diskType;                 // a hard disk there carries deviceType "disk"; the products
                                   // write none for a disk on SATA or NVMe
};

// The rows in the order the editor offers the buses.
std::span<const BusRow> busRows();
const BusRow& busRow(Bus bus);

std::string_view busName(Bus bus);  // "IDE", "SCSI", "SATA", "NVMe"
std::optional<Bus> busFromName(std::string_view name);
// The bus whose controllers are of `controllerType`, or nothing for other kinds.
std::optional<Bus> busOfController(DeviceType controllerType);

// Whether a device of `type` may sit on `bus`: hard disks everywhere, DVD/CD-ROM drives on
// IDE, SCSI and SATA, generic SCSI devices on SCSI only.
bool busAllowed(DeviceType type, Bus bus);

// What the machine's product adds to the buses of the original products. Built from the
// product tables by core/config (busOptions in DeviceFeatures.h); all false for the original
// products, whose node lists and placement stay as they always were.
struct BusOptions {
    bool wideScsi = false;         // LSI Logic, LSI Logic SAS, paravirtual: nodes n:0-n:15
    bool wideParavirtual = false;  // paravirtual: nodes n:0-n:63
    bool modernPlacement = false;  // new disks and drives prefer the newer buses
    bool operator==(const BusOptions&) const = default;
};

}  // namespace arden
