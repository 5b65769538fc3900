#pragma once
// The per-type device store of one editor: fifteen collections, one per device type, in type
// order. It hands out each device's identifier, display text and summary, and builds the
// entries of the hardware list.
//
// Devices are held by stable identity: a Device& or Device* handed out stays valid until that
// very device is removed (or the store is destroyed or assigned), whatever else is created,
// added or removed meanwhile. A device's type, identifier and number are fixed once it is in
// the store (the store indexes them); everything else may be edited through the reference.
#include <array>
#include <memory>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/hardware/BusTable.h"
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
    using Slots = std::vector<std::unique_ptr<Device>>;

public:
    // A read-only, random-access view of the devices of one type in collection order:
    // range-for, size(), empty(), operator[], front() and back() work as on a vector.
    class DeviceView {
    public:
        class iterator {
        public:
            using iterator_category = std::random_access_iterator_tag;
            using value_type = Device;
            using difference_type = std::ptrdiff_t;
            using pointer = const Device*;
            using reference = const Device&;
            iterator() = default;
            explicit iterator(Slots::const_iterator at) : at_(at) {}
            reference operator*() const { return **at_; }
            pointer operator->() const { return at_->get(); }
            iterator& operator++() { ++at_; return *this; }
            iterator operator++(int) { iterator before = *this; ++at_; return before; }
            iterator& operator--() { --at_; return *this; }
            iterator& operator+=(difference_type n) { at_ += n; return *this; }
            iterator operator+(difference_type n) const { return iterator(at_ + n); }
            difference_type operator-(const iterator& other) const { return at_ - other.at_; }
            reference operator[](difference_type n) const { return *at_[n]; }
            bool operator==(const iterator&) const = default;
        private:
            Slots::const_iterator at_;
        };
        explicit DeviceView(const Slots& items) : slots_(&items) {}
        iterator begin() const { return iterator(slots_->begin()); }
        iterator end() const { return iterator(slots_->end()); }
        std::size_t size() const { return slots_->size(); }
        bool empty() const { return slots_->empty(); }
        const Device& operator[](std::size_t i) const { return *(*slots_)[i]; }
        const Device& front() const { return *slots_->front(); }
        const Device& back() const { return *slots_->back(); }
    private:
        const Slots* slots_;
    };

    DeviceStore() = default;
    DeviceStore(const DeviceStore& other);  // copies every device
    DeviceStore& operator=(const DeviceStore& other);
    DeviceStore(DeviceStore&&) noexcept = default;
    DeviceStore& operator=(DeviceStore&&) noexcept = default;

    int count(DeviceType type) const { return static_cast<int>(collection(type).size()); }
    std::array<int, kDeviceTypeCount> counts() const;
    DeviceView devices(DeviceType type) const { return DeviceView(collection(type)); }

    // Item by 1-based position within its type; nullptr when out of range.
    const Device* item(DeviceType type, int position) const;

    Device* find(DeviceType type, std::string_view identifier);
    const Device* find(DeviceType type, std::string_view identifier) const;

    // The device of `type` with key number `number` (ethernet<n>, floppy<n>, scsi<n> ...).
    Device* findByNumber(DeviceType type, int number);
    const Device* findByNumber(DeviceType type, int number) const;

    // The disk-like device on a node ("IDE"/"SCSI"/"SATA"/"NVMe", controller, node), of any disk-like type.
    const Device* deviceOnNode(std::string_view controllerType, int controller, int node) const;

    // Creates a device of `type` with the defaults a new device of that type gets, numbered
    // with the lowest free key number, and appends it to its collection. Numbering and
    // identifiers take constant time on average, so n devices are created in O(n).
    Device& createDevice(DeviceType type);

    // Adds a device read from a file; an empty or already used identifier is replaced by a
    // new one.
    Device& addDevice(Device device);

    // Removes a device. Removing a hard disk, DVD/CD-ROM drive or generic SCSI device numbers
    // the others of its type again in node order (see orderByNode).
    bool remove(DeviceType type, std::string_view identifier);

    // Numbers the devices of a disk-like type in node order, the order a file lists them in and
    // the loader numbers them by: bus label (IDE, NVMe, SATA, SCSI), then controller, then node; a device on no
    // node comes last. Its collection is put in that order too, so that the name a device is
    // shown by ("Hard Disk 2") is the one it has when the saved file is opened again. Called
    // after every placement, move and removal of such a device.
    void orderByNode(DeviceType type);

    std::string displayText(const Device& device) const;
    std::string summary(const Device& device) const;
    HardwareListEntry entry(const Device& device) const;

    // All entries, in type order and within a type in collection order.
    std::vector<HardwareListEntry> hardwareList() const;

    // Two stores are equal when they hold equal devices in the same order.
    bool operator==(const DeviceStore& other) const;

    // What the machine's product adds to the buses (wider SCSI nodes, placement order); set
    // by the configuration whenever its product changes.
    BusOptions busOptions;

private:
    // Per type: the devices in order, an index by identifier, how often each key number is
    // used, the smallest number that may be free, and the serial of the last identifier made.
    struct Collection {
        Slots devices;  // not "slots": Qt defines that word for its own headers
        std::unordered_map<std::string, Device*> byIdentifier;
        std::unordered_map<int, int> numberUse;
        int freeNumberHint = 0;
        int serial = 0;
    };

    Slots& collection(DeviceType t) { return types_[static_cast<std::size_t>(t)].devices; }
    const Slots& collection(DeviceType t) const { return types_[static_cast<std::size_t>(t)].devices; }
    Collection& of(DeviceType t) { return types_[static_cast<std::size_t>(t)]; }
    std::string nextIdentifier(DeviceType type);
    int lowestFreeNumber(DeviceType type);

    std::array<Collection, kDeviceTypeCount> types_;
};

}  // namespace arden
