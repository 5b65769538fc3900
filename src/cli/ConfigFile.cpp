#include "cli/ConfigFile.h"

#include <filesystem>
#include <iostream>

#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"

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

// The question asked before writing over a machine that a VMware product has open, answered No.
bool refusedAsInUse(const VmConfiguration& config) {
    auto question = inUseQuestion(config);
    if (!question) return false;
    printMessage(*question);
    std::cerr << "Answered No: nothing was written.\n";
    return true;
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
