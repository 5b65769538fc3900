#pragma once
// The add-hardware rules: which device types a machine may still be given (frmAddHardware's
// lvwAvailableHardware) and the lblInfo text of a chosen row.
//
// The platform maxima come from the product tables (core/config); config builds this small
// record for the chosen platform and version with deviceMaxima() in
// core/config/HardwareFigures.h, so these rules do not depend on config.
#include <array>
#include <vector>

#include "core/hardware/DeviceTypes.h"
#include "core/support/Message.h"

namespace arden {

struct DeviceMaxima {
    int cpus = 1;
    int nics = 0;
    int scsiControllers = 0;
    int serialPorts = 4;
    int sataControllers = 0;  // 4 on products with SATA, else 0
    int nvmeControllers = 0;  // 4 on products with NVMe, else 0
    int scsiNodes = 7;        // device nodes per SCSI controller counted for disks (15 when wide)
    bool operator==(const DeviceMaxima&) const = default;
};

using DeviceCounts = std::array<int, kDeviceTypeCount>;  // DeviceStore::counts()

// Whether one more device of `type` may be added to a machine that has `count` of them:
//   CPU            count == CPU maximum - 1 (an equality on purpose: a maximum of 2 offers a
//                  CPU only at count 1, a maximum of 1 only at count 0), or 1 <= count < maximum
//                  (the products with more than two processors offer one more up to the maximum)
//   Memory, Sound Adapter, USB Controller: count 0;  Display, Mouse: count < 1
//   Floppy Drive < 2, Parallel Port < 3, Serial Port < serial maximum (4 on hosted products),
//   IDE Controller < 2
//   Network Adapter   NIC maximum >= 1 and count <= NIC maximum - 1
//   SCSI Controller   SCSI maximum >= 1 and count <= SCSI maximum - 1
//   SATA Controller, NVMe Controller   count < the product's maximum (0 without the bus)
//   Hard Disk      count <= SCSI nodes x SCSI maximum + 30 x SATA maximum + 15 x NVMe maximum
//                  + 3 (four IDE nodes; seven nodes per SCSI controller on the original products)
//   DVD/CD-ROM Drive   the same without the NVMe nodes
//   Generic SCSI Device           count <= 7 x SCSI maximum - 1
bool canAddDevice(DeviceType type, int count, const DeviceMaxima& maxima);

// The types that may be added now, in type order.
std::vector<DeviceType> offeredDeviceTypes(const DeviceCounts& counts, const DeviceMaxima& maxima);

// The rows of lvwAvailableHardware, in type order: every type the product has (one it could
// add to a machine without such a device) or the machine holds. A row whose type is at its
// limit stays listed, so that the user reads why it cannot be added (addHardwareInfo).
std::vector<DeviceType> listedDeviceTypes(const DeviceCounts& counts, const DeviceMaxima& maxima);

// lblInfo for a chosen row, with whether cmdOK is enabled:
//   within the limit: "Add a" + " " + name + "."   (ids 92, 95 + type)  -> "Add a Hard Disk."
//   at the limit:     "The maximum number of" + name + "s " + "has already been added to this
//                     virtual machine." (ids 93, 95 + type, 94) -> "The maximum number ofHard
//                     Disks has already been added to this virtual machine." (no blank after
//                     "of", kept so)
struct AddHardwareInfo {
    bool okEnabled = false;
    TextParts text;  // resolve with resolveText(text, languageOffset)
};
AddHardwareInfo addHardwareInfo(DeviceType type, int count, const DeviceMaxima& maxima);

// Whether cmdHardwareRemove may remove a device of `type` from a machine with `count` of
// them: the memory entry stays, and so does the last CPU (a machine runs on at least one).
bool canRemoveDevice(DeviceType type, int count);

}  // namespace arden
