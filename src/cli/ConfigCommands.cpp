// arden-forge-cli new | show | resave | check: configuration files through the same core as
// the editor.
#include <filesystem>
#include <iostream>
#include <random>

#include "cli/CliCommands.h"
#include "cli/ConfigFile.h"
#include "core/config/NewMachineTemplate.h"
#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"
#include "core/hardware/DeviceTexts.h"
#include "core/hardware/NodeAssignment.h"
#include "core/shell/GetText.h"
#include "core/support/AtomicFile.h"
#include "core/support/TempFolder.h"

namespace arden::cli {
namespace fs = std::filesystem;

int runNew(Args args) {
    bool missing = false;
    auto platformText = takeOption(args, "--platform", missing);
    auto versionText = takeOption(args, "--version", missing);
    if (missing) return usageError("--platform and --version need a value");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 2) return usageError("new needs a FOLDER and a NAME");

    // Without --platform and --version a new machine targets the editor's default product
    // (Workstation 5.5x), as the desktop program's new machines do.
    std::optional<std::pair<int, int>> target;
    if (platformText || versionText) {
        target = productTarget(platformText, versionText, kWorkstation);
        if (!target) return UsageError;
    }

    std::random_device random;
    VmConfiguration config = VmConfiguration::newMachine(args[1], args[0], cliText(26), random());
    if (target) {
        config.retarget(target->first, target->second);
    }
    addProductTemplate(config);
    std::error_code ec;
    if (fs::exists(config.vmxPath(), ec)) {
        printMessage(Message{MessageKind::Critical, {TextPart::fixed("File Exists")},
                             {TextPart::fixed(config.vmxPath() + " already exists; choose another name or folder")}});
        return Refused;
    }
    return saveConfiguration(config);
}

int runShow(Args args) {
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 1) return usageError("show needs one FILE");
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    std::cout << "File: " << config->vmxPath() << '\n';
    printTarget(*config);
    if (config->fileText.encrypted) return Success;
    for (const Device& m : config->devices.devices(DeviceType::Memory)) std::cout << "Memory: " << m.settings.text("memsize") << " MB\n";
    std::cout << "Hardware:\n";
    // The hardware list's entries, in its order: by type, then as added.
    for (int n = 0; n < kDeviceTypeCount; ++n) {
        for (const Device& d : config->devices.devices(static_cast<DeviceType>(n))) {
            std::cout << "  " << config->devices.displayText(d) << '\t' << config->devices.summary(d) << '\t'
                      << nodeLabel(d.node) << '\n';
        }
    }
    std::cout << "Encoding: " << config->fileText.encoding << (config->fileText.readOnlyReason.empty() ? "" : " (read-only)")
              << '\n';
    std::cout << "Kept lines: " << config->keptLines.size() << '\n';
    return Success;
}

int runResave(Args args) {
    bool missing = false;
    auto output = takeOption(args, "--output", missing);
    bool backup = takeFlag(args, "--backup");
    bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    if (missing) return usageError("--output needs a file name");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 1) return usageError("resave needs one FILE");
    if (output) {
        // Only a regular file (or a new name) is written over; nothing is read or written first.
        if (std::string kind = nonRegularKind(filePath(*output)); !kind.empty()) {
            printMessage(Message{MessageKind::Critical, {TextPart::fixed("Unable to Save")},
                                 {TextPart::fixed(*output + " is " + kind + ", not a regular file; --output names a "
                                                  "configuration file to write")}});
            return Refused;
        }
    }
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    if (output) {
        fs::path out = fs::absolute(filePath(*output));
        std::string folder = pathText(out.parent_path());
        if (!folder.empty() && folder.back() != '/' && folder.back() != kPathSeparator) folder += kPathSeparator;
        config->identity.vmxFolder = folder;
        config->identity.vmxFileName = pathText(out.filename());
    }
    if (!questionsAnswered(*config, yes)) return Refused;
    if (dryRun) {
        if (auto refusal = checkSave(*config)) {
            printMessage(*refusal);
            return Refused;
        }
        return printChanges(*config);
    }
    if (backup && !backupMade(args[0])) return Refused;
    return writeConfiguration(*config);
}

int runCheck(Args args) {
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 1) return usageError("check needs one FILE");
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    if (auto refusal = checkSave(*config)) {
        printMessage(*refusal);
        return Refused;
    }
    if (auto stranded = devicesOnUndeclaredControllers(config->devices); !stranded.empty()) {
        std::string text;
        for (const std::string& line : stranded) text += (text.empty() ? "" : "; ") + line;
        printMessage(Message{MessageKind::Warning, {TextPart::fixed("Undeclared Controller")},
                             {TextPart::fixed(text + ". The product does not see such a device: add the controller "
                                                     "or move the device to a node of this machine.")}});
        return Refused;
    }
    if (auto question = inUseQuestion(*config)) {
        printMessage(*question);
        return Refused;
    }
    std::cout << config->vmxPath() << ": the save checks pass\n";
    return Success;
}

}  // namespace arden::cli
