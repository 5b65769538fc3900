#include "core/hardware/HardwareLimits.h"

namespace arden {

bool canAddDevice(DeviceType type, int count, const DeviceMaxima& m) {
    const int cdNodes = m.scsiNodes * m.scsiControllers + 30 * m.sataControllers + 3;
    const int diskNodes = cdNodes + 15 * m.nvmeControllers;
    switch (type) {
        case DeviceType::Cpu: return count == m.cpus - 1 || (count >= 1 && count < m.cpus);
        case DeviceType::Memory:
        case DeviceType::Sound:
        case DeviceType::Usb: return count == 0;
        case DeviceType::Floppy: return count < 2;
        case DeviceType::ParallelPort: return count < 3;
        case DeviceType::SerialPort: return count < m.serialPorts;
        case DeviceType::Network: return m.nics >= 1 && count <= m.nics - 1;
        case DeviceType::IdeController: return count < 2;
        case DeviceType::ScsiController: return m.scsiControllers >= 1 && count <= m.scsiControllers - 1;
        case DeviceType::SataController: return count < m.sataControllers;
        case DeviceType::NvmeController: return count < m.nvmeControllers;
        case DeviceType::HardDisk: return count <= diskNodes;
        case DeviceType::CdRom: return count <= cdNodes;
        case DeviceType::GenericScsi: return count <= 7 * m.scsiControllers - 1;
        case DeviceType::Display:
        case DeviceType::Mouse: return count < 1;
    }
    return false;
}

std::vector<DeviceType> offeredDeviceTypes(const DeviceCounts& counts, const DeviceMaxima& maxima) {
    std::vector<DeviceType> offered;
    for (int n = 0; n < kDeviceTypeCount; ++n) {
        DeviceType t = *deviceTypeFromNumber(n);
        if (canAddDevice(t, counts[static_cast<std::size_t>(n)], maxima)) offered.push_back(t);
    }
    return offered;
}

std::vector<DeviceType> listedDeviceTypes(const DeviceCounts& counts, const DeviceMaxima& maxima) {
    std::vector<DeviceType> listed;
    for (int n = 0; n < kDeviceTypeCount; ++n) {
        DeviceType t = *deviceTypeFromNumber(n);
        if (counts[static_cast<std::size_t>(n)] > 0 || canAddDevice(t, 0, maxima)) listed.push_back(t);
    }
    return listed;
}

AddHardwareInfo addHardwareInfo(DeviceType type, int count, const DeviceMaxima& maxima) {
    const TextPart name = TextPart::fromId(deviceTypeNameId(type));
    if (canAddDevice(type, count, maxima)) {
        return AddHardwareInfo{true, {TextPart::fromId(92), TextPart::fixed(" "), name, TextPart::fixed(".")}};
    }
    // The plural ending belongs to the language: 94 begins with it in English ("s has already
    // been added..."), other languages close a quoted type name there.
    return AddHardwareInfo{false, {TextPart::fromId(93), name, TextPart::fromId(94)}};
}

bool canRemoveDevice(DeviceType type, int count) {
    if (count <= 0 || type == DeviceType::Memory) return false;
    return type != DeviceType::Cpu || count > 1;
}

}  // namespace arden
