#include "core/config/MachineKeys.h"

#include <algorithm>
#include <array>

#include "core/hardware/DeviceKeys.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

constexpr std::string_view kCoresKey = "cpuid.coresPerSocket";

constexpr std::array<MachineSwitchRow, 5> kSwitches{{
    {MachineSwitch::Efi, DeviceFeature::EfiFirmware, "firmware", "firmware", ""},
    {MachineSwitch::SecureBoot, DeviceFeature::SecureBoot, "uefi.secureBoot.enabled", "secure-boot", ""},
    {MachineSwitch::NestedVirtualization, DeviceFeature::NestedVirtualization, "vhv.enable", "nested", ""},
    {MachineSwitch::Usb2, DeviceFeature::UsbEhci, "ehci.present", "usb2", "ehci"},
    {MachineSwitch::Usb3, DeviceFeature::UsbXhci, "usb_xhci.present", "usb3", "usb_xhci"},
}};

// Whether a kept line's key is `key`, or (with a family) one of the family's: "ehci.pciSlotNumber",
// "ehci:0.deviceType".
bool ofSwitch(std::string_view lineKey, const MachineSwitchRow& row) {
    if (equalsIgnoreCase(lineKey, row.key)) return true;
    if (row.family.empty() || lineKey.size() <= row.family.size()) return false;
    const char next = lineKey[row.family.size()];
    return (next == '.' || next == ':') && equalsIgnoreCase(lineKey.substr(0, row.family.size()), row.family);
}

template <typename Keep>
void filterLines(KeptLines& lines, Keep keep) {
    KeptLines kept;
    for (std::string_view line : lines) {
        if (keep(line)) kept.push_back(line);
    }
    lines = std::move(kept);
}

SwitchResult refused(int titleId, TextParts text) {
    return {false, Message{MessageKind::Warning, {TextPart::fromId(titleId)}, std::move(text)}};
}

}  // namespace

std::optional<std::pair<std::string_view, std::string_view>> keptKeyValue(std::string_view line) {
    const std::size_t eq = line.find('=');
    if (eq == std::string_view::npos) return std::nullopt;
    std::string_view value = trimBlanks(line.substr(eq + 1));
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
    return std::pair{trimBlanks(line.substr(0, eq)), value};
}

std::optional<std::string> keptValue(const KeptLines& lines, std::string_view key) {
    std::optional<std::string> value;
    for (std::string_view line : lines) {
        auto kv = keptKeyValue(line);
        if (kv && equalsIgnoreCase(kv->first, key)) value = std::string(kv->second);
    }
    return value;
}

void setKeptValue(KeptLines& lines, std::string_view key, const std::string& value) {
    KeptLines changed;
    bool found = false;
    for (std::string_view line : lines) {
        auto kv = keptKeyValue(line);
        if (kv && equalsIgnoreCase(kv->first, key)) {
            changed.push_back(std::string(kv->first) + " = \"" + value + "\"");
            found = true;
        } else {
            changed.push_back(line);
        }
    }
    if (!found) changed.push_back(std::string(key) + " = \"" + value + "\"");
    lines = std::move(changed);
}

std::span<const MachineSwitchRow> machineSwitches() { return kSwitches; }

const MachineSwitchRow& machineSwitch(MachineSwitch which) {
    return *std::find_if(kSwitches.begin(), kSwitches.end(), [&](const MachineSwitchRow& r) { return r.which == which; });
}

bool switchOn(const VmConfiguration& config, MachineSwitch which) {
    const auto value = keptValue(config.keptLines, machineSwitch(which).key);
    if (!value) return false;
    if (which == MachineSwitch::Efi) return equalsIgnoreCase(*value, "efi");
    bool on = false;
    return parseFlag(*value, on) && on;
}

bool switchOffered(const VmConfiguration& config, MachineSwitch which) {
    if (!hasFeature(config.figures(), machineSwitch(which).feature)) return false;
    return which != MachineSwitch::SecureBoot || switchOn(config, MachineSwitch::Efi);
}

SwitchResult setSwitch(VmConfiguration& config, MachineSwitch which, bool on) {
    if (switchOn(config, which) == on) return {};
    const MachineSwitchRow& row = machineSwitch(which);
    if (on && !hasFeature(config.figures(), row.feature)) {
        return refused(450, {TextPart::fixed(productText(config.product.platform, config.product.version) +
                                             " does not offer " + std::string(featureName(row.feature)) + ".")});
    }
    if (on && which == MachineSwitch::SecureBoot && !switchOn(config, MachineSwitch::Efi))
        return refused(448, {TextPart::fromId(449)});
    if (which == MachineSwitch::Efi) {
        if (on) {
            setKeptValue(config.keptLines, row.key, "efi");
        } else {
            // Absent is BIOS: the line goes, and secure boot, which needs EFI, with it.
            setSwitch(config, MachineSwitch::SecureBoot, false);
            filterLines(config.keptLines, [&](std::string_view line) {
                auto kv = keptKeyValue(line);
                return !kv || !equalsIgnoreCase(kv->first, row.key);
            });
        }
        return {true, std::nullopt};
    }
    setKeptValue(config.keptLines, row.key, on ? "TRUE" : "FALSE");
    return {true, std::nullopt};
}

void removeSwitch(VmConfiguration& config, MachineSwitch which) {
    const MachineSwitchRow& row = machineSwitch(which);
    filterLines(config.keptLines, [&](std::string_view line) {
        auto kv = keptKeyValue(line);
        return !kv || !ofSwitch(kv->first, row);
    });
}

std::optional<int> coresPerSocket(const KeptLines& lines) {
    const auto value = keptValue(lines, kCoresKey);
    int n = 0;
    if (!value || !parseInt32(*value, n)) return std::nullopt;
    return n;
}

SwitchResult setCoresPerSocket(VmConfiguration& config, int cores) {
    const int cpus = std::max(config.devices.count(DeviceType::Cpu), 1);
    const int most = std::min(config.figures().maxCoresPerSocket, cpus);
    if (cores < 1 || cores > most || cpus % cores != 0) {
        std::string allowed;
        for (int n = 1; n <= most; ++n) {
            if (cpus % n == 0) allowed += (allowed.empty() ? "" : ", ") + std::to_string(n);
        }
        return refused(446, {TextPart::fromId(447), TextPart::fixed(" " + allowed + ".")});
    }
    const auto now = coresPerSocket(config.keptLines);
    if (now.value_or(1) == cores) return {};
    setKeptValue(config.keptLines, kCoresKey, std::to_string(cores));
    return {true, std::nullopt};
}

}  // namespace arden
