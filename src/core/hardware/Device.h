#pragma once
// One virtual device of a machine. Its settings are held as the .vmx values they stand for,
// keyed by the key suffix of its type (".present", ".fileName", ... see DeviceKeys.h); a
// setting that the loaded file did not hold stays unset and is not written back, so opening
// and saving a file never adds or changes a device setting the user did not touch.
// CPU and memory hold their values under "pae" and "memsize".
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/hardware/DeviceTypes.h"
#include "core/hardware/clsNodeDevice.h"

namespace arden {

class DeviceSettings {
public:
    // The stored text of a setting, or nothing when unset. Names compare without regard to case.
    std::optional<std::string> get(std::string_view name) const;
    void set(std::string_view name, std::string value);
    void unset(std::string_view name);
    bool has(std::string_view name) const { return get(name).has_value(); }

    // Typed views. A flag is set as "TRUE"/"FALSE"; `fallback` is returned when unset.
    bool flag(std::string_view name, bool fallback) const;
    void setFlag(std::string_view name, bool value) { set(name, value ? "TRUE" : "FALSE"); }
    std::string text(std::string_view name) const { return get(name).value_or(std::string{}); }
    std::optional<int> number(std::string_view name) const;
    void setNumber(std::string_view name, long long value) { set(name, std::to_string(value)); }

    const std::vector<std::pair<std::string, std::string>>& all() const { return values_; }
    bool operator==(const DeviceSettings&) const = default;

private:
    std::vector<std::pair<std::string, std::string>> values_;  // in the order first set
};

// A line of the opened file under a device's prefix whose key or value the editor does not use:
// the suffix as written (".pvnID") and the rest of the line after the key (" = \"...\"").
// The writer puts it back under the device's current prefix, so it follows the device when the
// device is renumbered and goes when the device is removed.
struct KeptKeyLine {
    std::string suffix;
    std::string rest;
    bool operator==(const KeptKeyLine&) const = default;
};

struct Device {
    DeviceType type = DeviceType::Cpu;
    std::string identifier;   // unique within its type; stable while the editor lives
    int number = -1;          // number in the device keys (ethernet<n>, floppy<n>, ide<n>, scsi<n>)
    clsNodeDevice node;       // placement of hard disks, DVD/CD-ROM drives and generic SCSI devices
    DeviceSettings settings;
    std::vector<KeptKeyLine> keptLines;  // lines of the opened file under this device's prefix

    // Whether the device counts as enabled (its ".present" setting; unset means not present,
    // as the product reads a missing key).
    bool enabled() const;

    bool operator==(const Device&) const = default;
};

}  // namespace arden
