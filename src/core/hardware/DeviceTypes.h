#pragma once
// The fifteen kinds of virtual device. The number of a type indexes the per-type device
// collections, the hardware-list icon (type + 1), the device page and the type's name in the
// string table (id 95 + type).
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
};

constexpr int kDeviceTypeCount = 15;

constexpr int typeNumber(DeviceType t) { return static_cast<int>(t); }

// The device type of a number, or nothing for numbers outside 0-14.
constexpr std::optional<DeviceType> deviceTypeFromNumber(int n) {
    if (n < 0 || n >= kDeviceTypeCount) return std::nullopt;
    return static_cast<DeviceType>(n);
}

// String-table id of the type's name ("CPU" 95 ... "Mouse" 109).
constexpr int deviceTypeNameId(DeviceType t) { return 95 + typeNumber(t); }

// Disk-like devices sit on an IDE or SCSI node and carry a clsNodeDevice record.
constexpr bool isNodeDevice(DeviceType t) {
    return t == DeviceType::HardDisk || t == DeviceType::CdRom || t == DeviceType::GenericScsi;
}

}  // namespace arden
