// arden-forge-cli set: what the General page edits, from the command line: the display name,
// the notes, the product target and the guest operating system.
#include <iostream>

#include "cli/CliCommands.h"
#include "cli/ConfigFile.h"
#include "core/config/GuestChoice.h"
#include "core/config/ProductLimits.h"
#include "core/config/ProductTables.h"

namespace arden::cli {

std::optional<std::pair<int, int>> productTarget(const std::optional<std::string>& platformText,
                                                 const std::optional<std::string>& versionText, int platform) {
    if (platformText) {
        auto p = platformFromName(*platformText);
        if (!p) {
            std::string allowed;
            for (int q = 0; q < kPlatformCount; ++q)
                allowed += std::string(q == 0 ? "\"" : q + 1 == kPlatformCount ? " or \"" : ", \"") +
                           std::string(platformName(q)) + "\"";
            usageError("unknown platform \"" + *platformText + "\"; use " + allowed);
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

    std::optional<std::pair<int, int>> target;
    if (platformText || versionText) {
        target = productTarget(platformText, versionText, config->product.platform);
        if (!target) return UsageError;
    }
    // The guest is checked against the product chosen with it; a refusal writes nothing. A
    // guest chosen here is the one the new product gets, so the change of product does not
    // ask about the old one.
    if (guest) {
        VmConfiguration probe = *config;
        if (target) probe.retarget(target->first, target->second);
        if (auto refusal = selectGuestById(probe, *guest)) {
            printMessage(*refusal);
            return Refused;
        }
        config->selectGuest(probe.product.guestFamily, probe.product.guestVersion);
    }
    std::optional<Message> adaptersChanged;
    if (target) {
        // What the new product cannot hold is listed before anything changes: devices over a
        // limit refuse the change, the rest is fitted when --yes accepts it.
        const RetargetPlan plan = planRetarget(*config, target->first, target->second);
        if (plan.refusal) {
            printMessage(*plan.refusal);
            return Refused;
        }
        if (plan.question && !yes) {
            printMessage(*plan.question);
            std::cerr << "Nothing was written; --yes accepts these changes.\n";
            return Refused;
        }
        adaptersChanged = retargetAndFit(*config, target->first, target->second);
    }
    if (adaptersChanged) printMessage(*adaptersChanged);
    if (name) config->identity.displayName = *name;
    if (notes) config->identity.notes = *notes;
    if (int rc = saveEditedConfiguration(args[0], *config, yes, dryRun); rc != Success || dryRun) return rc;
    printTarget(*config);
    return Success;
}

}  // namespace arden::cli
