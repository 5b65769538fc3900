#pragma once
// Whole-machine settings of later products that the editor holds among the kept lines, where
// an opened file has them: firmware, secure boot, nested virtualisation, the USB 2.0 and USB 3
// controllers, and the cores per socket. Reading them leaves the lines as the file wrote them;
// a change rewrites the value of the key's own line in place (or appends one), so a re-save
// changes nothing else. Each switch is offered only where the product has its feature.
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "core/config/DeviceFeatures.h"
#include "core/config/VmConfiguration.h"
#include "core/support/Message.h"

namespace arden {

// The key and value of a kept "key = value" line (quotes taken off the value), or nothing.
std::optional<std::pair<std::string_view, std::string_view>> keptKeyValue(std::string_view line);
// The value of `key` (any letter case) among the kept lines; the last line counts.
std::optional<std::string> keptValue(const KeptLines& lines, std::string_view key);
// Gives every line of `key` the value `value`, the key spelt as the file has it; appends
// "key = "value"" when there is none.
void setKeptValue(KeptLines& lines, std::string_view key, const std::string& value);

enum class MachineSwitch { Efi, SecureBoot, NestedVirtualization, Usb2, Usb3 };

struct MachineSwitchRow {
    MachineSwitch which;
    DeviceFeature feature;
    std::string_view key;      // "firmware", "uefi.secureBoot.enabled", ...
    std::string_view cliName;  // the command line's option: "--" + "firmware", "secure-boot", ...
    std::string_view family;   // the stem of the runtime lines that go with the device ("ehci"), or empty
};
std::span<const MachineSwitchRow> machineSwitches();
const MachineSwitchRow& machineSwitch(MachineSwitch which);

// Whether the switch is on: firmware "efi" (any case; absent or "bios" is BIOS), a TRUE flag for
// the others (absent is off).
bool switchOn(const VmConfiguration& config, MachineSwitch which);
// Whether the machine's product has the switch's feature (and, for secure boot, EFI is on).
bool switchOffered(const VmConfiguration& config, MachineSwitch which);
// Turns the switch on or off. Refused when turning on what the product lacks, or secure boot
// without EFI firmware. BIOS takes the firmware line away (absent is BIOS; a written "bios"
// stays as written) and turns secure boot off with it; the other switches write "FALSE" where
// the file has their line and nothing where it has none. False in `changed` when it was so.
struct SwitchResult {
    bool changed = false;
    std::optional<Message> refusal;
};
SwitchResult setSwitch(VmConfiguration& config, MachineSwitch which, bool on);
// Takes away every line of the switch's key and of its family (fitting to a product without it).
void removeSwitch(VmConfiguration& config, MachineSwitch which);

// "cpuid.coresPerSocket" as held among the kept lines, or nothing.
std::optional<int> coresPerSocket(const KeptLines& lines);
// Sets the cores per socket: refused (naming the allowed values) unless it is 1 to the
// product's maximum and divides the number of processors. One core per socket on a machine
// without the line writes none.
SwitchResult setCoresPerSocket(VmConfiguration& config, int cores);

}  // namespace arden
