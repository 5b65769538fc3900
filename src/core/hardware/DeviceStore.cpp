#include "core/hardware/DeviceStore.h"

#include <algorithm>
#include <charconv>

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

std::array<int, kDeviceTypeCount> DeviceStore::counts() const {
    std::array<int, kDeviceTypeCount> c{};
    for (int t = 0; t < kDeviceTypeCount; ++t) c[static_cast<std::size_t>(t)] = static_cast<int>(items_[static_cast<std::size_t>(t)].size());
    return c;
}

const Device* DeviceStore::item(DeviceType type, int position) const {
    const auto& c = collection(type);
    if (position < 1 || position > static_cast<int>(c.size())) return nullptr;
    return &c[static_cast<std::size_t>(position - 1)];
}

Device* DeviceStore::find(DeviceType type, std::string_view identifier) {
    for (Device& d : collection(type)) {
        if (d.identifier == identifier) return &d;
    }
    return nullptr;
}

const Device* DeviceStore::find(DeviceType type, std::string_view identifier) const {
    return const_cast<DeviceStore*>(this)->find(type, identifier);
}

Device* DeviceStore::findByNumber(DeviceType type, int number) {
    for (Device& d : collection(type)) {
        if (d.number == number) return &d;
    }
    return nullptr;
}

const Device* DeviceStore::findByNumber(DeviceType type, int number) const {
    return const_cast<DeviceStore*>(this)->findByNumber(type, number);
}

const Device* DeviceStore::deviceOnNode(std::string_view controllerType, int controller, int node) const {
    for (DeviceType t : {DeviceType::HardDisk, DeviceType::CdRom, DeviceType::GenericScsi}) {
        for (const Device& d : collection(t)) {
            if (d.node.ControllerType() == controllerType && d.node.ControllerNumber() == controller &&
                d.node.NodeNumber() == node)
                return &d;
        }
    }
    return nullptr;
}

std::string DeviceStore::nextIdentifier(DeviceType type) {
    int& serial = serials_[static_cast<std::size_t>(type)];
    std::string id;
    do {
        id = std::string(identifierStem(type)) + std::to_string(++serial);
    } while (find(type, id));
    return id;
}

int DeviceStore::lowestFreeNumber(DeviceType type) const {
    int n = 0;
    while (findByNumber(type, n)) ++n;
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
    if (device.identifier.empty() || find(device.type, device.identifier)) {
        device.identifier = nextIdentifier(device.type);
    }
    auto& c = collection(device.type);
    c.push_back(std::move(device));
    return c.back();
}

bool DeviceStore::remove(DeviceType type, std::string_view identifier) {
    auto& c = collection(type);
    auto it = std::find_if(c.begin(), c.end(), [&](const Device& d) { return d.identifier == identifier; });
    if (it == c.end()) return false;
    c.erase(it);
    return true;
}

std::string DeviceStore::displayText(const Device& device) const { return deviceDisplayText(device); }

std::string DeviceStore::summary(const Device& device) const { return deviceSummary(device); }

HardwareListEntry DeviceStore::entry(const Device& device) const {
    return HardwareListEntry{hardwareListKey(device.type, device.identifier), displayText(device),
                             summary(device), typeNumber(device.type) + 1, device.type, device.identifier};
}

std::vector<HardwareListEntry> DeviceStore::hardwareList() const {
    std::vector<HardwareListEntry> list;
    for (const auto& c : items_) {
        for (const Device& d : c) list.push_back(entry(d));
    }
    return list;
}

}  // namespace arden
