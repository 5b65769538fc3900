// arden-forge-cli __complete: the words the bash completion offers that only the program knows,
// one a line: the device types "device add" takes, and the hardware entries and node labels of
// the configuration file being edited. Left out of the help: it is for the completion script.
#include <iostream>

#include "cli/CliCommands.h"
#include "cli/ConfigFile.h"
#include "core/hardware/DeviceTexts.h"
#include "core/hardware/NodeAssignment.h"

namespace arden::cli {
namespace {

void printTypes() {
    for (int n = 0; n < kDeviceTypeCount; ++n) std::cout << englishTypeName(*deviceTypeFromNumber(n)) << '\n';
}

void printEntries(const DeviceStore& store) {
    for (const HardwareListEntry& e : store.hardwareList()) std::cout << e.text << '\n';
}

// Every node a device may be put on, free or held ("IDE 0:0", "SCSI 0:6", "SATA 0:1"); a SCSI controller's
// own node is left out, as device node refuses it.
void printNodes(const DeviceStore& store) {
    for (const BusRow& row : busRows()) {
        for (const std::string& label : nodeList(store, row.bus)) {
            auto node = parseNodeLabel(label);
            if (!node || node->holder.starts_with(kControllerHolderPrefix)) continue;
            std::cout << nodeLabel(node->bus, node->controller, node->node) << '\n';
        }
    }
}

}  // namespace

int runComplete(Args args) {
    if (args.size() == 1 && args[0] == "types") {
        printTypes();
        return Success;
    }
    const bool entries = args.size() == 2 && args[0] == "entries";
    if (!entries && !(args.size() == 2 && args[0] == "nodes")) {
        return usageError("__complete needs types, entries FILE or nodes FILE");
    }
    auto config = loadConfiguration(args[1], false);
    if (!config) return Refused;
    if (entries) printEntries(config->devices);
    else printNodes(config->devices);
    return Success;
}

}  // namespace arden::cli
