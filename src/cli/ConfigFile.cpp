#include "cli/ConfigFile.h"

#include <filesystem>
#include <iostream>

#include "core/config/ProductTables.h"
#include "core/config/SaveFlow.h"
#include "core/config/SavePreview.h"
#include "core/config/VmxLoader.h"
#include "core/hardware/NetworkAdapter.h"
#include "core/support/PathText.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace arden::cli {

namespace fs = std::filesystem;

std::optional<VmConfiguration> loadConfiguration(const std::string& file, bool printNotices) {
    LoadResult r = loadVmxFile(fs::absolute(filePath(file)));
    if (!r.ok) {
        printMessage(*r.error);
        return std::nullopt;
    }
    if (printNotices) {
        for (const LoadNotice& n : r.notices) std::cerr << file << ":" << n.line << ": " << n.text << '\n';
    }
    return std::move(r.config);
}

bool questionsAnswered(VmConfiguration& config, bool yes) {
    if (!config.fileText.readOnlyReason.empty()) {
        printMessage(*checkSave(config));
        return false;
    }
    // A character the file's encoding cannot hold: Yes writes the whole file in UTF-8; No
    // leaves the file as it is, and the save checks refuse naming the character.
    if (auto question = encodingQuestion(config)) {
        printMessage(*question);
        if (!yes) {
            std::cerr << "Answered No.\n";
        } else {
            std::cerr << "Answered Yes.\n";
            printMessage(convertToUtf8(config));
        }
    }
    for (const auto& question :
         {inUseQuestion(config), readOnlyQuestion(config), duplicateStaticMacQuestion(config.devices)}) {
        if (!question) continue;
        printMessage(*question);
        if (!yes) {
            std::cerr << "Answered No: nothing was written.\n";
            return false;
        }
        std::cerr << "Answered Yes.\n";
    }
    return true;
}

int writeConfiguration(const VmConfiguration& config, bool printPath) {
    SaveResult r = CreateVmxFile(config);
    if (!r.written) {
        printMessage(*r.refusal);
        return Refused;
    }
    if (r.notice) printMessage(*r.notice);
    if (printPath) std::cout << r.path << '\n';
    return Success;
}

bool backupMade(const std::string& file) {
    bool ok = false;
    printMessage(makeBackup(fs::absolute(filePath(file)), ok));
    return ok;
}

int saveConfiguration(VmConfiguration config, bool printPath, bool yes) {
    if (!questionsAnswered(config, yes)) return Refused;
    return writeConfiguration(config, printPath);
}

int printChanges(const VmConfiguration& config) {
    SavePreview preview = previewSave(config);
    if (preview.readError) {
        printMessage(Message{MessageKind::Critical, {TextPart::fixed("Unable to Read")}, {TextPart::fixed(*preview.readError)}});
        return Refused;
    }
    if (preview.diff.empty()) std::cerr << preview.path << ": a save would change nothing.\n";
#ifdef _WIN32
    // The diff holds the file's own line endings: written as bytes, as patch reads them.
    std::cout.flush();
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    std::cout << preview.diff;
    return Success;
}

int saveEditedConfiguration(const std::string& file, VmConfiguration config, bool yes, bool dryRun) {
    if (!questionsAnswered(config, yes)) return Refused;
    if (auto refusal = checkSave(config)) {
        printMessage(*refusal);
        return Refused;
    }
    if (dryRun) return printChanges(config);
    if (!backupMade(file)) return Refused;
    return writeConfiguration(config, false);
}

void printTarget(const VmConfiguration& config) {
    const ProductSettings& p = config.product;
    auto versions = platformVersions(p.platform);
    std::cout << "Display name: " << config.identity.displayName << '\n';
    if (config.fileText.encrypted) {
        std::cout << "Encrypted: the settings are encrypted; only the display name can be read\n";
        return;
    }
    std::cout << "Product: "
              << (p.version >= 0 && static_cast<std::size_t>(p.version) < versions.size()
                      ? productText(p.platform, p.version)
                      : std::string(platformName(p.platform)) + " (no version chosen)")
              << ", hardware version " << config.hwVersionText() << '\n';
    if (std::string note = formatNote(config); !note.empty()) std::cout << "Format: " << note << '\n';
    std::cout << "Guest: ";
    if (auto g = findGuest(p.guestId)) {
        std::cout << guestFamilyName(g->family) << ", " << guestVersions(g->family)[static_cast<std::size_t>(g->version)].name
                  << " (" << p.guestId << ")\n";
    } else {
        std::cout << p.guestId << " (not in the guest list)\n";
    }
}

}  // namespace arden::cli
