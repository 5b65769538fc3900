// arden-forge-cli set: what the General page edits, from the command line: the display name,
// the notes, the product target and the guest operating system.
#include <iostream>

#include "cli/CliCommands.h"
#include "cli/ConfigFile.h"
#include "core/config/GuestChoice.h"
#include "core/config/NetworkAdapterTypes.h"
#include "core/config/ProductTables.h"

namespace arden::cli {

std::optional<std::pair<int, int>> productTarget(const std::optional<std::string>& platformText,
                                                 const std::optional<std::string>& versionText, int platform) {
    if (platformText) {
        auto p = platformFromName(*platformText);
        if (!p) {
            usageError("unknown platform \"" + *platformText + "\"; use \"GSX Server\", \"Workstation\", \"Player\" or \"Server\"");
            return std::nullopt;
        }
        platform = *p;
    }
    if (!versionText) return std::pair{platform, lastVersion(platform)};
    if (auto v = versionFromText(platform, *versionText)) return std::pair{platform, *v};
    std::string allowed;
    for (std::string_view v : platformVersions(platform)) allowed += (allowed.empty() ? "\"" : ", \"") + std::string(v) + "\"";
    usageError(std::string(platformName(platform)) + " has no version \"" + *versionText + "\"; use " + allowed);
    return std::nullopt;
}

int runSet(Args args) {
    bool missing = false;
    const auto name = takeOption(args, "--name", missing);
    const auto notes = takeOption(args, "--notes", missing);
    const auto platformText = takeOption(args, "--platform", missing);
    const auto versionText = takeOption(args, "--version", missing);
    const auto guest = takeOption(args, "--guest", missing);
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    if (missing) return usageError("--name, --notes, --platform, --version and --guest need a value");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 1) return usageError("set needs one FILE");
    if (!name && !notes && !platformText && !versionText && !guest)
        return usageError("set needs --name, --notes, --platform, --version or --guest");
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;

    std::optional<Message> adaptersChanged;
    if (platformText || versionText) {
        auto target = productTarget(platformText, versionText, config->product.platform);
        if (!target) return UsageError;
        config->retarget(target->first, target->second);
        adaptersChanged = fitNicTypesToProduct(config->devices, target->first, target->second);
    }
    // The guest is checked against the product just chosen; a refusal writes nothing and
    // leaves the adapters' notice unsaid.
    if (guest) {
        if (auto refusal = selectGuestById(*config, *guest)) {
            printMessage(*refusal);
            return Refused;
        }
    }
    if (adaptersChanged) printMessage(*adaptersChanged);
    if (name) config->identity.displayName = *name;
    if (notes) config->identity.notes = *notes;
    if (int rc = saveEditedConfiguration(args[0], *config, yes, dryRun); rc != Success || dryRun) return rc;
    printTarget(*config);
    return Success;
}

}  // namespace arden::cli
