// Keys of devices and shared folders: a prefix names the device ("ethernet0", "scsi0:1",
// "sound", "sharedFolder2"), its suffix the setting. A line under a device's prefix that the
// editor does not use stays with that device, so it follows the device when the device is
// renumbered or moved and goes when the device is removed.
#include <algorithm>
#include <array>

#include "core/config/VmxLoaderState.h"
#include "core/config/VmxWriter.h"
#include "core/hardware/DeviceKeys.h"
#include "core/hardware/DeviceTexts.h"
#include "core/hardware/NodeAssignment.h"
#include "core/support/TextUtil.h"

namespace arden::load {
namespace {

// Reads "<digits>" (whole text) as a device number. A number with a leading zero ("scsi00")
// names no device: such a key is kept as written rather than read as another key's device.
bool parseNumber(std::string_view s, int& n) {
    if (s.empty() || s.size() > 6 || (s.size() > 1 && s[0] == '0')) return false;
    n = 0;
    for (char c : s) {
        if (c < '0' || c > '9') return false;
        n = n * 10 + (c - '0');
    }
    return true;
}

// Devices numbered in their prefix, and the single devices, by prefix.
struct PrefixDevice {
    std::string_view stem;
    DeviceType type;
    bool numbered;
};

const PrefixDevice kPrefixDevices[] = {
    {"floppy", DeviceType::Floppy, true},       {"parallel", DeviceType::ParallelPort, true},
    {"serial", DeviceType::SerialPort, true},   {"ethernet", DeviceType::Network, true},
    {"sound", DeviceType::Sound, false},        {"usb", DeviceType::Usb, false},
    {"vmmouse", DeviceType::Mouse, false},      {"svga", DeviceType::Display, false},
    {"mks", DeviceType::Display, false},
};

std::string allowedValues(const DeviceKey& key) {
    switch (key.kind) {
        case ValueKind::Flag: return "TRUE or FALSE";
        case ValueKind::Number: return "a whole number";
        case ValueKind::Choice: break;
        case ValueKind::Text: return "a text";
    }
    std::string text = "one of";
    for (std::string_view c : key.choices) text += (text.size() == 6 ? " " : ", ") + std::string(c);
    return text;
}

DeviceType nodeKind(const Owner& at, const DeviceSettings& s) {
    std::string type = toLowerAscii(s.text(".deviceType"));
    if (type == "disk" || type == "rawdisk") return DeviceType::HardDisk;
    if (type == "atapi-cdrom" || type == "cdrom-raw" || type == "cdrom-image") return DeviceType::CdRom;
    if (type == "scsi-passthru" && at.bus == "SCSI") return DeviceType::GenericScsi;
    // No type, or one the list does not name (ata-hardDisk, scsi-hardDisk, plainDisk): decide
    // by the file. Disk files are disks; an ISO image or the drive selector is a CD-ROM drive;
    // anything else is taken for a disk, the product's default device on a node.
    std::string file = toLowerAscii(s.text(".fileName"));
    auto endsWith = [&](std::string_view ext) {
        return file.size() >= ext.size() && file.compare(file.size() - ext.size(), ext.size(), ext) == 0;
    };
    if (endsWith(".vmdk") || endsWith(".raw") || endsWith(".pln")) return DeviceType::HardDisk;
    if (endsWith(".iso") || file == "auto detect") return DeviceType::CdRom;
    return DeviceType::HardDisk;
}

}  // namespace

std::size_t Loader::suffixStart(const std::optional<Owner>& owner, const std::string& key) {
    // The display's keys are whole keys ("svga.vramSize"); every other device's begin after its prefix.
    if (owner && owner->kind == Owner::Single && owner->type == typeNumber(DeviceType::Display)) return 0;
    return std::min(key.find('.'), key.size());
}

Outcome Loader::setDeviceValue(DeviceSettings& settings, DeviceType table, std::string_view suffix,
                               std::string_view value, std::string& allowed) {
    const DeviceKey* k = findDeviceKey(table, suffix);
    if (!k) return Outcome::Unknown;
    std::string normalised;
    if (!normaliseDeviceValue(*k, value, normalised)) {
        allowed = allowedValues(*k);
        return Outcome::Unusable;
    }
    settings.set(k->suffix, std::move(normalised));
    return Outcome::Taken;
}

std::pair<std::map<Owner, DeviceSettings>::iterator, bool> Loader::settingsOf(const Owner& owner) {
    // Files list a device's keys together and the devices in order, so the device is mostly
    // the last one or comes after it: found or added without a search.
    if (!devices_.empty()) {
        auto last = std::prev(devices_.end());
        if (last->first == owner) return {last, false};
        if (last->first < owner) return {devices_.emplace_hint(devices_.end(), owner, DeviceSettings{}), true};
    }
    return devices_.try_emplace(owner);
}

Outcome Loader::deviceKey(const Line&, const std::string& key, std::string_view prefix, std::string_view value,
                          std::optional<Owner>& owner, std::string& allowed) {
    std::string_view suffix = std::string_view(key).substr(prefix.size());
    DeviceType table = DeviceType::HardDisk;
    int number = 0;
    if (prefix.substr(0, 12) == "sharedfolder") {
        if (key == "sharedfolder.maxnum") {
            if (parseInt32(value, number)) return Outcome::Taken;  // the count is written anew
            allowed = "a whole number";
            return Outcome::Unusable;
        }
        if (!parseNumber(prefix.substr(12), number)) return Outcome::Unknown;
        owner = Owner{Owner::Share, 0, {}, 0, number};
        return sharedFolder(key, prefix, value, *owner, allowed);
    }
    std::string_view stem = prefix.substr(0, prefix.find_first_of("0123456789"));
    const auto bus = std::find_if(busRows().begin(), busRows().end(), [&](const BusRow& r) { return r.keyStem == stem; });
    if (bus != busRows().end()) {
        std::string_view rest = prefix.substr(stem.size());
        std::size_t colon = rest.find(':');
        int controller = 0;
        if (colon == std::string_view::npos) {
            if (!parseNumber(rest, controller)) return Outcome::Unknown;
            table = bus->controllerType;
            owner = Owner{Owner::Numbered, typeNumber(table), {}, 0, controller};
        } else {
            if (!parseNumber(rest.substr(0, colon), controller) || !parseNumber(rest.substr(colon + 1), number))
                return Outcome::Unknown;
            owner = Owner{Owner::Node, 0, std::string(bus->label), controller, number};
        }
    } else {
        auto it = std::find_if(std::begin(kPrefixDevices), std::end(kPrefixDevices),
                               [&](const PrefixDevice& d) { return d.stem == stem; });
        if (it == std::end(kPrefixDevices)) return Outcome::Unknown;
        table = it->type;
        if (it->numbered) {
            if (!parseNumber(prefix.substr(stem.size()), number)) return Outcome::Unknown;
            owner = Owner{Owner::Numbered, typeNumber(table), {}, 0, number};
        } else {
            if (prefix != stem) return Outcome::Unknown;
            owner = Owner{Owner::Single, typeNumber(table), {}, 0, 0};
            if (table == DeviceType::Display) suffix = key;
        }
    }
    // The device's settings change only when the value is taken.
    auto [device, added] = settingsOf(*owner);
    Outcome outcome = setDeviceValue(device->second, table, suffix, value, allowed);
    if (outcome != Outcome::Taken && added) devices_.erase(device);
    return outcome;
}

Outcome Loader::sharedFolder(const std::string& key, std::string_view prefix, std::string_view value,
                             const Owner& owner, std::string& allowed) {
    std::string_view sub = std::string_view(key).substr(prefix.size());
    SharedFolder f;
    f.keysRead = 0;  // the file's lines say which keys the share has
    if (auto it = shares_.find(owner.number); it != shares_.end()) f = it->second;
    bool b = false;
    unsigned keyBit = 0;
    if (sub == ".hostpath") {
        f.hostPath = std::string(value);
        keyBit = kShareHostPath;
    } else if (sub == ".guestname") {
        f.name = std::string(value);
        keyBit = kShareGuestName;
    } else if (sub == ".expiration") {
        if (equalsIgnoreCase(value, "session")) f.disableAfterSession = true;
        else if (equalsIgnoreCase(value, "never")) f.disableAfterSession = false;
        else {
            allowed = "one of session, never";
            return Outcome::Unusable;
        }
        keyBit = kShareExpiration;
    } else if (sub == ".present" || sub == ".enabled" || sub == ".readaccess" || sub == ".writeaccess") {
        if (!parseFlag(value, b)) {
            allowed = "TRUE or FALSE";
            return Outcome::Unusable;
        }
        if (sub == ".present") f.present = b, keyBit = kSharePresent;
        else if (sub == ".enabled") f.enabled = b, keyBit = kShareEnabled;
        else if (sub == ".readaccess") f.readAccess = b, keyBit = kShareReadAccess;
        else f.readOnly = !b, keyBit = kShareWriteAccess;
    } else {
        return Outcome::Unknown;
    }
    f.keysRead |= keyBit;
    shares_[owner.number] = std::move(f);
    return Outcome::Taken;
}

void Loader::ownLine(const Owner& owner, const Line& line, std::size_t suffixStart) {
    std::string_view t = trimBlanks(line.text);
    std::string_view key = trimBlanks(t.substr(0, t.find('=')));
    KeptKeyLine kept{std::string(key.substr(suffixStart)), std::string(t.substr(key.size()))};
    disown(owner, kept.suffix);
    owned_[owner].push_back({line, std::move(kept)});
}

void Loader::disown(const Owner& owner, std::string_view suffix) {
    auto it = owned_.find(owner);
    if (it == owned_.end()) return;
    std::erase_if(it->second, [&](const OwnedLine& o) { return equalsIgnoreCase(o.kept.suffix, suffix); });
}

void Loader::unsetDeviceValue(const Owner& owner, std::string_view suffix) {
    if (auto it = devices_.find(owner); it != devices_.end()) it->second.unset(suffix);
}

void Loader::buildDevices() {
    DeviceStore& store = c_.devices;
    std::array<int, kDeviceTypeCount> nodeNumbers{};
    for (auto& [owner, settings] : devices_) {
        Device d;
        if (owner.kind == Owner::Node) {
            d.type = nodeKind(owner, settings);
            d.number = nodeNumbers[static_cast<std::size_t>(d.type)]++;
            d.node.setControllerType(owner.bus);
            d.node.setControllerNumber(owner.controller);
            d.node.setNodeNumber(owner.number);
            d.node.setDeviceType(std::string(englishTypeName(d.type)));
            d.node.setDeviceNumber(d.number);
        } else {
            d.type = static_cast<DeviceType>(owner.type);
            d.number = owner.kind == Owner::Numbered ? owner.number : 0;
        }
        d.settings = std::move(settings);
        built_.emplace_hint(built_.end(), owner, &store.addDevice(std::move(d)));  // in order: no search
    }
    devices_.clear();
    for (auto& [n, share] : shares_) c_.sharedFolders.folders.push_back(share);
    noteUndeclaredControllers();
}

void Loader::noteUndeclaredControllers() {
    for (const auto& [owner, device] : built_) {
        std::string text = undeclaredControllerText(c_.devices, *device);
        if (text.empty()) continue;
        // Told at the device's first line.
        const Line* first = nullptr;
        for (const auto& [key, read] : consumed_) {
            if (read.second == owner && (!first || read.first.index < first->index)) first = &read.first;
        }
        if (first) notice(*first, text + "; the product does not see it until the controller is added or the "
                                         "device is moved to a node of this machine");
    }
}

void Loader::attachOwnedLines() {
    for (auto& [owner, lines] : owned_) {
        std::vector<KeptKeyLine>* target = nullptr;
        if (owner.kind == Owner::Share) {
            // Folders are written numbered from 0 in the order of their numbers: a line of a
            // number no folder has goes with the folder written under that number, as the
            // product reads the saved file.
            auto& folders = c_.sharedFolders.folders;
            std::size_t index = static_cast<std::size_t>(owner.number);
            if (auto it = shares_.find(owner.number); it != shares_.end())
                index = static_cast<std::size_t>(std::distance(shares_.begin(), it));
            if (index < folders.size()) target = &folders[index].keptLines;
        } else if (auto it = built_.find(owner); it != built_.end()) {
            // A device that writes none of its own keys is not read back as a device from the
            // saved file: its lines stay among the kept lines, in file order, as they will be
            // when the saved file is opened again.
            if (writesOwnKeys(*it->second, c_.identity.vmxFolder, c_.heldKeys)) target = &it->second->keptLines;
        }
        // Lines of a device the file never describes stay where they were, among the kept lines.
        for (OwnedLine& o : lines) {
            if (target) target->push_back(std::move(o.kept));
            else keep(o.line);
        }
    }
}

}  // namespace arden::load
