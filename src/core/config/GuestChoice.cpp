#include "core/config/GuestChoice.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/config/ProductTables.h"

namespace arden {
namespace {

Message refusal(const std::string& text) {
    return Message{MessageKind::Critical, {TextPart::fixed("Invalid Guest Operating System")}, {TextPart::fixed(text)}};
}

// "Microsoft Windows, Linux, NetWare and Other"
std::string familyList(const std::vector<int>& families) {
    std::string text;
    for (std::size_t i = 0; i < families.size(); ++i)
        text += (i == 0 ? "" : i + 1 == families.size() ? " and " : ", ") + std::string(guestFamilyName(families[i]));
    return text;
}

}  // namespace

std::optional<Message> selectGuestById(VmConfiguration& config, std::string_view identifier) {
    const int platform = config.product.platform;
    int version = config.product.version;
    // A stored version the platform does not have counts as its last one, as the editor's lists do.
    if (version < 0 || static_cast<std::size_t>(version) >= platformVersions(platform).size()) version = lastVersion(platform);
    const std::vector<int> families = offeredGuestFamilies(platform, version);
    const auto guest = findGuest(identifier);
    if (!guest) {
        return refusal("\"" + std::string(identifier) +
                       "\" is not in the guest list; give the guest's identifier as a configuration file names "
                       "it, such as winXPPro or otherlinux.");
    }
    if (std::find(families.begin(), families.end(), guest->family) == families.end()) {
        return refusal(productText(platform, version) + " does not offer " + std::string(guestFamilyName(guest->family)) +
                       " guests; it offers " + familyList(families) + ".");
    }
    // A guest of an offered family that the product does not run (64-bit before Workstation
    // 5.5, a guest of a later product, macOS or Arm elsewhere).
    const GuestEntry& entry = guestVersions(guest->family)[static_cast<std::size_t>(guest->version)];
    if (!guestOffered(config.figures(), guest->family, entry)) {
        return refusal(productText(platform, version) + " does not offer the guest " + std::string(entry.identifier) + " (" +
                       std::string(entry.name) + ").");
    }
    config.selectGuest(guest->family, guest->version);
    return std::nullopt;
}

}  // namespace arden
