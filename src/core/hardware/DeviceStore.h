#pragma once
// The per-type device store of one editor: fifteen collections, one per device type, in type
// order. It hands out each device's identifier, display text and summary, and builds the
// entries of the hardware list.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "core/hardware/Device.h"

namespace arden {

// One entry of the hardware list: key "H" + type + "|" + identifier, the display text, a
// one-line summary, and the icon number (type + 1).
struct HardwareListEntry {
    std::string key;
    std::string text;
    std::string summary;
    int icon = 0;
    DeviceType type = DeviceType::Cpu;
    std::string identifier;
    bool operator==(const HardwareListEntry&) const = default;
};

std::string hardwareListKey(DeviceType type, std::string_view identifier);

// Splits a hardware-list key into type number and identifier. False for a key without "|"
// or with a type outside 0-14.
bool parseHardwareListKey(std::string_view key, DeviceType& type, std::string& identifier);

class DeviceStore {
public:
    int count(DeviceType type) const { return static_cast<int>(collection(type).size()); }
    std::array<int, kDeviceTypeCount> counts() const;
    const std::vector<Device>& devices(DeviceType type) const { return collection(type); }

    // Item by 1-based position within its type; nullptr when out of range.
    const Device* item(DeviceType type, int position) const;

    Device* find(DeviceType type, std::string_view identifier);
    const Device* find(DeviceType type, std::string_view identifier) const;

    // The device of `type` with key number `number` (ethernet<n>, floppy<n>, scsi<n> ...).
    Device* findByNumber(DeviceType type, int number);
    const Device* findByNumber(DeviceType type, int number) const;

    // The disk-like device on a node ("IDE"/"SCSI", controller, node), of any disk-like type.
    const Device* deviceOnNode(std::string_view controllerType, int controller, int node) const;

    // Creates a device of `type` with the defaults a new device of that type gets, numbered
    // with the lowest free key number, and appends it to its collection.
    Device& createDevice(DeviceType type);

    // Adds a device read from a file; an empty identifier is filled in.
    Device& addDevice(Device device);

    bool remove(DeviceType type, std::string_view identifier);

    std::string displayText(const Device& device) const;
    std::string summary(const Device& device) const;
    HardwareListEntry entry(const Device& device) const;

    // All entries, in type order and within a type in collection order.
    std::vector<HardwareListEntry> hardwareList() const;

    bool operator==(const DeviceStore&) const = default;

private:
    std::vector<Device>& collection(DeviceType t) { return items_[static_cast<std::size_t>(t)]; }
    const std::vector<Device>& collection(DeviceType t) const { return items_[static_cast<std::size_t>(t)]; }
    std::string nextIdentifier(DeviceType type);
    int lowestFreeNumber(DeviceType type) const;

    std::array<std::vector<Device>, kDeviceTypeCount> items_;
    std::array<int, kDeviceTypeCount> serials_{};
};

}  // namespace arden
