// arden-forge-cli machine: the whole-machine switches of later products (firmware, secure boot,
// nested virtualisation, the USB 2.0 and USB 3 controllers) and the cores per socket: listed, or
// some set, as the processor and USB pages set them.
#include <iostream>
#include <string>

#include "cli/CliCommands.h"
#include "cli/ConfigFile.h"
#include "core/config/MachineKeys.h"
#include "core/hardware/DeviceKeys.h"

namespace arden::cli {
namespace {

std::string switchWord(const VmConfiguration& c, MachineSwitch which) {
    if (which == MachineSwitch::Efi) return switchOn(c, which) ? "efi" : "bios";
    return switchOn(c, which) ? "yes" : "no";
}

// Prints one line per setting the product offers: name and value, tab-separated.
void listSettings(const VmConfiguration& c) {
    for (const MachineSwitchRow& row : machineSwitches()) {
        if (hasFeature(c.figures(), row.feature)) std::cout << row.cliName << '\t' << switchWord(c, row.which) << '\n';
    }
    if (c.figures().maxCoresPerSocket > 1)
        std::cout << "cores-per-socket\t" << coresPerSocket(c.keptLines).value_or(1) << '\n';
}

// Applies "--NAME VALUE" of one switch; Success when absent or applied.
int applySwitch(VmConfiguration& c, const MachineSwitchRow& row, const std::string& value) {
    bool on = false;
    if (row.which == MachineSwitch::Efi) {
        if (value != "efi" && value != "bios") return usageError("--firmware takes bios or efi, not \"" + value + "\"");
        on = value == "efi";
    } else if (!parseFlag(value, on)) {
        return usageError("--" + std::string(row.cliName) + " takes yes or no, not \"" + value + "\"");
    }
    SwitchResult result = setSwitch(c, row.which, on);
    if (result.refusal) {
        printMessage(*result.refusal);
        return Refused;
    }
    return Success;
}

}  // namespace

int runMachine(Args args) {
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    bool missing = false;
    std::vector<std::pair<const MachineSwitchRow*, std::string>> switches;
    for (const MachineSwitchRow& row : machineSwitches()) {
        if (auto value = takeOption(args, "--" + std::string(row.cliName), missing)) switches.emplace_back(&row, *value);
    }
    auto cores = takeOption(args, "--cores-per-socket", missing);
    if (missing) return usageError("each machine option needs a value");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 1) return usageError("machine needs a FILE");
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    if (switches.empty() && !cores) {
        listSettings(*config);
        return Success;
    }
    // Firmware first: secure boot asks for EFI.
    for (const auto& [row, value] : switches) {
        if (int rc = applySwitch(*config, *row, value); rc != Success) return rc;
    }
    if (cores) {
        int n = 0;
        if (!parseInt32(*cores, n)) return usageError("--cores-per-socket takes a whole number, not \"" + *cores + "\"");
        SwitchResult result = setCoresPerSocket(*config, n);
        if (result.refusal) {
            printMessage(*result.refusal);
            return Refused;
        }
    }
    if (int rc = saveEditedConfiguration(args[0], *config, yes, dryRun); rc != Success || dryRun) return rc;
    listSettings(*config);
    return Success;
}

}  // namespace arden::cli
