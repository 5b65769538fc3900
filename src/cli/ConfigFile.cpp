#include "cli/ConfigFile.h"

#include <filesystem>
#include <iostream>

#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"
#include "core/hardware/NetworkAdapter.h"

namespace arden::cli {

namespace fs = std::filesystem;

std::optional<VmConfiguration> loadConfiguration(const std::string& file, bool printNotices) {
    LoadResult r = loadVmxFile(fs::absolute(file));
    if (!r.ok) {
        printMessage(*r.error);
        return std::nullopt;
    }
    if (printNotices) {
        for (const LoadNotice& n : r.notices) std::cerr << file << ":" << n.line << ": " << n.text << '\n';
    }
    return std::move(r.config);
}

namespace {

// The questions asked before a save (a VMware product has the machine open; two adapters
// share a static MAC address), answered No.
bool refusedAsInUse(const VmConfiguration& config) {
    for (const auto& question : {inUseQuestion(config), duplicateStaticMacQuestion(config.devices)}) {
        if (!question) continue;
        printMessage(*question);
        std::cerr << "Answered No: nothing was written.\n";
        return true;
    }
    return false;
}

}  // namespace

int saveConfiguration(const VmConfiguration& config, bool printPath) {
    if (refusedAsInUse(config)) return Refused;
    SaveResult r = CreateVmxFile(config);
    if (!r.written) {
        printMessage(*r.refusal);
        return Refused;
    }
    if (printPath) std::cout << r.path << '\n';
    return Success;
}

int saveEditedConfiguration(const std::string& file, const VmConfiguration& config) {
    if (refusedAsInUse(config)) return Refused;
    if (auto refusal = checkSave(config)) {
        printMessage(*refusal);
        return Refused;
    }
    bool ok = false;
    printMessage(makeBackup(fs::absolute(file), ok));
    if (!ok) return Refused;
    return saveConfiguration(config, false);
}

}  // namespace arden::cli
