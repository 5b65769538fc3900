#include "core/hardware/BusTable.h"

#include <algorithm>

namespace arden {
namespace {

// Controller and node figures: modern-products reference §2c (SATA 0..3 with 30 units, NVMe
// 0..3 with 15 units per controller, SCSI 0..3).
constexpr BusRow kRows[] = {
    {Bus::Ide, "IDE", "ide", DeviceType::IdeController, 2, 2, -1, false, true, false, 171, true},
    {Bus::Scsi, "SCSI", "scsi", DeviceType::ScsiController, 4, 8, 7, true, true, true, 172, true},
    {Bus::Sata, "SATA", "sata", DeviceType::SataController, 4, 30, -1, true, true, false, 402, false},
    {Bus::Nvme, "NVMe", "nvme", DeviceType::NvmeController, 4, 15, -1, true, false, false, 403, false},
};

}  // namespace

std::span<const BusRow> busRows() { return kRows; }

const BusRow& busRow(Bus bus) { return kRows[static_cast<std::size_t>(bus)]; }

std::string_view busName(Bus bus) { return busRow(bus).label; }

std::optional<Bus> busFromName(std::string_view name) {
    for (const BusRow& row : kRows) {
        if (row.label == name) return row.bus;
    }
    return std::nullopt;
}

std::optional<Bus> busOfController(DeviceType controllerType) {
    for (const BusRow& row : kRows) {
        if (row.controllerType == controllerType) return row.bus;
    }
    return std::nullopt;
}

bool busAllowed(DeviceType type, Bus bus) {
    const BusRow& row = busRow(bus);
    switch (type) {
        case DeviceType::HardDisk: return true;
        case DeviceType::CdRom: return row.cdRoms;
        case DeviceType::GenericScsi: return row.genericScsi;
        default: return false;
    }
}

}  // namespace arden
