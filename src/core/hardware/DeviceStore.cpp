#include "core/hardware/DeviceStore.h"

#include <algorithm>
#include <charconv>
#include <tuple>

#include "core/hardware/DeviceDefaults.h"
#include "core/hardware/DeviceTexts.h"

namespace arden {

std::string hardwareListKey(DeviceType type, std::string_view identifier) {
    return "H" + std::to_string(typeNumber(type)) + "|" + std::string(identifier);
}

bool parseHardwareListKey(std::string_view key, DeviceType& type, std::string& identifier) {
    std::size_t bar = key.find('|');
    if (key.size() < 2 || bar == std::string_view::npos || bar < 2) return false;
    int n = -1;
    auto [ptr, ec] = std::from_chars(key.data() + 1, key.data() + bar, n);
    if (ec != std::errc{} || ptr != key.data() + bar) return false;
    auto t = deviceTypeFromNumber(n);
    if (!t) return false;
    type = *t;
    identifier = std::string(key.substr(bar + 1));
    return true;
}

DeviceStore::DeviceStore(const DeviceStore& other) { *this = other; }

DeviceStore& DeviceStore::operator=(const DeviceStore& other) {
    if (this == &other) return *this;
    busOptions = other.busOptions;
    for (std::size_t t = 0; t < types_.size(); ++t) {
        const Collection& from = other.types_[t];
        Collection& to = types_[t];
        to = Collection{};
        to.devices.reserve(from.devices.size());
        for (const auto& d : from.devices) {
            to.devices.push_back(std::make_unique<Device>(*d));
            to.byIdentifier.emplace(d->identifier, to.devices.back().get());
        }
        to.numberUse = from.numberUse;
        to.freeNumberHint = from.freeNumberHint;
        to.serial = from.serial;
    }
    return *this;
}

bool DeviceStore::operator==(const DeviceStore& other) const {
    for (std::size_t t = 0; t < types_.size(); ++t) {
        const Slots& a = types_[t].devices;
        const Slots& b = other.types_[t].devices;
        if (!std::equal(a.begin(), a.end(), b.begin(), b.end(),
                        [](const auto& x, const auto& y) { return *x == *y; }))
            return false;
    }
    return true;
}

std::array<int, kDeviceTypeCount> DeviceStore::counts() const {
    std::array<int, kDeviceTypeCount> c{};
    for (std::size_t t = 0; t < types_.size(); ++t) c[t] = static_cast<int>(types_[t].devices.size());
    return c;
}

const Device* DeviceStore::item(DeviceType type, int position) const {
    const auto& c = collection(type);
    if (position < 1 || position > static_cast<int>(c.size())) return nullptr;
    return c[static_cast<std::size_t>(position - 1)].get();
}

Device* DeviceStore::find(DeviceType type, std::string_view identifier) {
    const auto& index = of(type).byIdentifier;
    auto it = index.find(std::string(identifier));
    return it == index.end() ? nullptr : it->second;
}

const Device* DeviceStore::find(DeviceType type, std::string_view identifier) const {
    return const_cast<DeviceStore*>(this)->find(type, identifier);
}

Device* DeviceStore::findByNumber(DeviceType type, int number) {
    for (const auto& d : collection(type)) {
        if (d->number == number) return d.get();
    }
    return nullptr;
}

const Device* DeviceStore::findByNumber(DeviceType type, int number) const {
    return const_cast<DeviceStore*>(this)->findByNumber(type, number);
}

const Device* DeviceStore::deviceOnNode(std::string_view controllerType, int controller, int node) const {
    for (DeviceType t : {DeviceType::HardDisk, DeviceType::CdRom, DeviceType::GenericScsi}) {
        for (const Device& d : devices(t)) {
            if (d.node.ControllerType() == controllerType && d.node.ControllerNumber() == controller &&
                d.node.NodeNumber() == node)
                return &d;
        }
    }
    return nullptr;
}

// Identifiers count up per type and are never handed out twice, so the loop only skips the
// few that a loaded file happened to use already.
std::string DeviceStore::nextIdentifier(DeviceType type) {
    Collection& c = of(type);
    std::string id;
    do {
        id = std::string(identifierStem(type)) + std::to_string(++c.serial);
    } while (c.byIdentifier.count(id));
    return id;
}

// Every number below the hint is in use; the hint only moves back when a device is removed.
int DeviceStore::lowestFreeNumber(DeviceType type) {
    Collection& c = of(type);
    int n = std::max(c.freeNumberHint, 0);
    while (c.numberUse.count(n)) ++n;
    c.freeNumberHint = n;
    return n;
}

Device& DeviceStore::createDevice(DeviceType type) {
    Device d;
    d.type = type;
    d.number = lowestFreeNumber(type);
    if (isNodeDevice(type)) {
        d.node.setDeviceType(std::string(englishTypeName(type)));
        d.node.setDeviceNumber(d.number);
    }
    applyNewDeviceDefaults(d);
    return addDevice(std::move(d));
}

Device& DeviceStore::addDevice(Device device) {
    Collection& c = of(device.type);
    if (device.identifier.empty() || c.byIdentifier.count(device.identifier)) {
        device.identifier = nextIdentifier(device.type);
    }
    c.devices.push_back(std::make_unique<Device>(std::move(device)));
    Device& added = *c.devices.back();
    c.byIdentifier.emplace(added.identifier, &added);
    ++c.numberUse[added.number];
    return added;
}

bool DeviceStore::remove(DeviceType type, std::string_view identifier) {
    Collection& c = of(type);
    auto found = c.byIdentifier.find(std::string(identifier));
    if (found == c.byIdentifier.end()) return false;
    Device* device = found->second;
    c.byIdentifier.erase(found);
    auto use = c.numberUse.find(device->number);
    if (use != c.numberUse.end() && --use->second == 0) {
        c.numberUse.erase(use);
        if (device->number >= 0) c.freeNumberHint = std::min(c.freeNumberHint, device->number);
    }
    std::erase_if(c.devices, [&](const auto& d) { return d.get() == device; });
    if (isNodeDevice(type)) orderByNode(type);
    return true;
}

void DeviceStore::orderByNode(DeviceType type) {
    if (!isNodeDevice(type)) return;
    Collection& c = of(type);
    // A device on no node sorts after every placed one. Placed devices go by bus label in
    // text order (IDE, NVMe, SATA, SCSI), then controller and node: the order the loader
    // numbers a file's devices in.
    auto rank = [](const Device& d) {
        const bool unplaced = d.node.ControllerType().empty() || d.node.ControllerNumber() < 0 || d.node.NodeNumber() < 0;
        return std::make_tuple(unplaced, unplaced ? std::string_view{} : std::string_view(d.node.ControllerType()),
                               d.node.ControllerNumber(), d.node.NodeNumber());
    };
    std::stable_sort(c.devices.begin(), c.devices.end(),
                     [&](const auto& a, const auto& b) { return rank(*a) < rank(*b); });
    c.numberUse.clear();
    for (std::size_t i = 0; i < c.devices.size(); ++i) {
        Device& d = *c.devices[i];
        d.number = static_cast<int>(i);
        d.node.setDeviceNumber(d.number);
        c.numberUse[d.number] = 1;
    }
    c.freeNumberHint = static_cast<int>(c.devices.size());
}

std::string DeviceStore::displayText(const Device& device) const { return deviceDisplayText(device); }

std::string DeviceStore::summary(const Device& device) const { return deviceSummary(device); }

HardwareListEntry DeviceStore::entry(const Device& device) const {
    return HardwareListEntry{hardwareListKey(device.type, device.identifier), displayText(device),
                             summary(device), typeNumber(device.type) + 1, device.type, device.identifier};
}

std::vector<HardwareListEntry> DeviceStore::hardwareList() const {
    std::vector<HardwareListEntry> list;
    std::size_t count = 0;
    for (const Collection& c : types_) count += c.devices.size();
    list.reserve(count);
    for (const Collection& c : types_) {
        for (const auto& d : c.devices) list.push_back(entry(*d));
    }
    return list;
}

}  // namespace arden
