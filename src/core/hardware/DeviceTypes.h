#pragma once
// The kinds of virtual device. The number of a type indexes the per-type device collections,
// the hardware-list icon (type + 1), the device page and the type's name in the string table.
// Types 0-14 are the original products' kinds; 15 and 16 came with later hardware versions.
#include <optional>
#include <string_view>

namespace arden {

enum class DeviceType : int {
    Cpu = 0,
    Memory = 1,
    Floppy = 2,
    ParallelPort = 3,
    SerialPort = 4,
    Sound = 5,
    Network = 6,
    Usb = 7,
    IdeController = 8,
    ScsiController = 9,
    HardDisk = 10,
    CdRom = 11,
    GenericScsi = 12,
    Display = 13,
    Mouse = 14,
    SataController = 15,
    NvmeController = 16,
};

constexpr int kDeviceTypeCount = 17;

constexpr int typeNumber(DeviceType t) { return static_cast<int>(t); }

// The device type of a number, or nothing for numbers outside 0-16.
constexpr std::optional<DeviceType> deviceTypeFromNumber(int n) {
    if (n < 0 || n >= kDeviceTypeCount) return std::nullopt;
    return static_cast<DeviceType>(n);
}

// String-table id of the type's name: "CPU" 95 ... "Mouse" 109 for the original kinds (95 +
// type), "SATA Controller" 400 and "NVMe Controller" 401 for the later ones.
constexpr int deviceTypeNameId(DeviceType t) {
    constexpr int kLaterNameIds[] = {400, 401};
    return typeNumber(t) < 15 ? 95 + typeNumber(t) : kLaterNameIds[typeNumber(t) - 15];
}

// Disk-like devices sit on a node of a bus (IDE, SCSI, SATA, NVMe) and carry a clsNodeDevice record.
constexpr bool isNodeDevice(DeviceType t) {
    return t == DeviceType::HardDisk || t == DeviceType::CdRom || t == DeviceType::GenericScsi;
}

}  // namespace arden
