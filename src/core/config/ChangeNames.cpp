#include "core/config/ChangeNames.h"

#include <functional>
#include <map>
#include <vector>

#include "core/hardware/DeviceTexts.h"

namespace arden {
namespace {

using C = VmConfiguration;

// Option pages, in the order of the options list.
enum Page : int { kGeneral = 0, kPower = 1, kSharedFolders = 2, kSnapshots = 3, kIsolation = 4, kAdvanced = 5 };

// One field of the option pages: its page, the caption of the control that shows it, and how
// its new value is told after the caption (not at all for a check box: its caption says it).
struct OptionField {
    int page;
    TextParts caption;
    std::function<bool(const C&, const C&)> differs;
    std::function<TextParts(const C&)> value;
    std::string typed;  // the field's name when it is a text box that takes keystrokes
};

TextParts ids(std::initializer_list<int> captionIds) {
    TextParts parts;
    for (int id : captionIds) {
        if (!parts.empty()) parts.push_back(TextPart::fixed(": "));
        parts.push_back(TextPart::fromId(id));
    }
    return parts;
}

template <typename G, typename T>
std::function<bool(const C&, const C&)> differ(G C::*group, T G::*member) {
    return [=](const C& a, const C& b) { return a.*group.*member != b.*group.*member; };
}

// A check box, captioned by `captionIds` (a frame's caption first where the box's alone is unclear).
template <typename G>
OptionField flag(int page, std::initializer_list<int> captionIds, G C::*group, bool G::*member) {
    return {page, ids(captionIds), differ(group, member), {}, {}};
}

// A list or a group of option buttons whose position `member` holds; `entryIds` in that order.
template <typename G>
OptionField choice(int page, int captionId, G C::*group, int G::*member, std::vector<int> entryIds) {
    return {page, ids({captionId}), differ(group, member), [=](const C& c) {
                const int n = c.*group.*member;
                return n >= 0 && static_cast<std::size_t>(n) < entryIds.size()
                           ? TextParts{TextPart::fromId(entryIds[static_cast<std::size_t>(n)])}
                           : TextParts{TextPart::fixed(std::to_string(n))};
            },
            {}};
}

// A text box; `shown` false for the notes, whose text does not fit a menu entry.
template <typename G>
OptionField text(int page, int captionId, G C::*group, std::string G::*member, std::string typed, bool shown = true) {
    std::function<TextParts(const C&)> value;
    if (shown) value = [=](const C& c) { return TextParts{TextPart::fixed(c.*group.*member)}; };
    return {page, ids({captionId}), differ(group, member), value, std::move(typed)};
}

bool productDiffers(const C& a, const C& b) {
    const ProductSettings& p = a.product;
    const ProductSettings& q = b.product;
    return p.platform != q.platform || p.version != q.version || p.configVersionAsRead != q.configVersionAsRead ||
           p.hwVersionAsRead != q.hwVersionAsRead;
}

bool guestDiffers(const C& a, const C& b) {
    return a.product.guestId != b.product.guestId || a.product.guestFamily != b.product.guestFamily ||
           a.product.guestVersion != b.product.guestVersion;
}

TextParts productValue(const C& c) {
    const int version = c.product.version;
    return {TextPart::fixed(version >= 0 ? productText(c.product.platform, version)
                                         : std::string(platformName(c.product.platform)))};
}

TextParts guestValue(const C& c) {
    if (auto g = findGuest(c.product.guestId))
        return {TextPart::fixed(std::string(guestVersions(g->family)[static_cast<std::size_t>(g->version)].name))};
    return {TextPart::fixed(c.product.guestId)};
}

// Every field of the option pages but the list of shared folders, in page order.
const std::vector<OptionField>& optionFields() {
    static const std::vector<OptionField> table = {
        text(kGeneral, 207, &C::identity, &IdentitySettings::displayName, "displayName"),
        text(kGeneral, 208, &C::identity, &IdentitySettings::vmxFileName, "vmxFileName"),
        text(kGeneral, 209, &C::identity, &IdentitySettings::vmxFolder, "vmxFolder"),
        text(kGeneral, 210, &C::identity, &IdentitySettings::workingDir, "workingDir"),
        text(kGeneral, 211, &C::identity, &IdentitySettings::notes, "notes", false),
        {kGeneral, ids({212}), productDiffers, productValue, {}},
        {kGeneral, ids({218}), guestDiffers, guestValue, {}},
        flag(kPower, {230}, &C::power, &PowerOptions::powerOnAfterOpen),
        flag(kPower, {231}, &C::power, &PowerOptions::fullScreenAfterPowerOn),
        flag(kPower, {232}, &C::power, &PowerOptions::closeAfterPowerOff),
        choice(kPower, 236, &C::power, &PowerOptions::powerOff, {234, 235}),
        choice(kPower, 237, &C::power, &PowerOptions::reset, {238, 239}),
        flag(kPower, {240, 241}, &C::power, &PowerOptions::runToolsAfterPowerOn),
        flag(kPower, {240, 242}, &C::power, &PowerOptions::runToolsAfterResume),
        flag(kPower, {240, 243}, &C::power, &PowerOptions::runToolsBeforeSuspend),
        flag(kPower, {240, 244}, &C::power, &PowerOptions::runToolsBeforePowerOff),
        flag(kSharedFolders, {247}, &C::sharedFolders, &SharedFolderOptions::allowed),
        flag(kSnapshots, {250}, &C::snapshots, &SnapshotOptions::allowed),
        choice(kSnapshots, 252, &C::snapshots, &SnapshotOptions::action, {253, 254, 255, 256}),
        flag(kIsolation, {259}, &C::isolation, &IsolationOptions::dragAndDropAllowed),
        flag(kIsolation, {260}, &C::isolation, &IsolationOptions::pasteAllowed),
        flag(kIsolation, {261}, &C::isolation, &IsolationOptions::copyAllowed),
        choice(kAdvanced, 264, &C::advanced, &AdvancedOptions::grabbedPriority, {265, 266}),
        choice(kAdvanced, 267, &C::advanced, &AdvancedOptions::ungrabbedPriority, {268, 265}),
        flag(kAdvanced, {271}, &C::advanced, &AdvancedOptions::debug),
        flag(kAdvanced, {272}, &C::advanced, &AdvancedOptions::disableAcceleration),
        flag(kAdvanced, {273}, &C::advanced, &AdvancedOptions::memPageTrim),
        flag(kAdvanced, {274}, &C::advanced, &AdvancedOptions::logging),
        flag(kAdvanced, {276}, &C::advanced, &AdvancedOptions::logPeriodic),
        text(kAdvanced, 275, &C::advanced, &AdvancedOptions::logFolder, "logFolder"),
        flag(kAdvanced, {277}, &C::advanced, &AdvancedOptions::templateVm),
        flag(kAdvanced, {270}, &C::advanced, &AdvancedOptions::clusterEnabled),
    };
    return table;
}

// "<caption> <words>": a caption id (205 "Add", 206 "Remove" ...) and a fixed text after it.
TextParts captioned(int captionId, const std::string& words) {
    return {TextPart::fromId(captionId), TextPart::fixed(" " + words)};
}

// The shared folder added, removed or changed: named by the share's name.
std::optional<ConfigurationChange> folderChange(const C& before, const C& after) {
    const auto& was = before.sharedFolders.folders;
    const auto& now = after.sharedFolders.folders;
    if (was == now) return std::nullopt;
    auto missingFrom = [](const std::vector<SharedFolder>& list, const std::vector<SharedFolder>& other) {
        for (const SharedFolder& f : list) {
            bool found = false;
            for (const SharedFolder& g : other) found = found || g.name == f.name;
            if (!found) return f.name;
        }
        return list.empty() ? std::string{} : list.front().name;
    };
    ConfigurationChange change;
    change.optionPage = kSharedFolders;
    if (now.size() > was.size()) {
        change.name = captioned(205, missingFrom(now, was));
    } else if (now.size() < was.size()) {
        change.name = captioned(206, missingFrom(was, now));
    } else {
        std::size_t i = 0;
        while (was[i] == now[i]) ++i;
        change.name = captioned(245, now[i].name);
    }
    return change;
}

// The device added, removed or changed. Of several changed devices (a node chosen for one moves
// the device that held it aside) the one that took another's node is the one the user moved.
std::optional<ConfigurationChange> deviceChange(const C& before, const C& after) {
    if (before.devices == after.devices) return std::nullopt;
    std::map<std::string, HardwareListEntry> was;
    for (HardwareListEntry& e : before.devices.hardwareList()) was.emplace(e.key, std::move(e));
    const std::vector<HardwareListEntry> now = after.devices.hardwareList();

    ConfigurationChange change;
    change.onHardware = true;
    auto about = [&](const HardwareListEntry& e, TextParts name) {
        change.deviceType = e.type;
        change.deviceIdentifier = e.identifier;
        change.name = std::move(name);
        return change;
    };
    std::vector<const HardwareListEntry*> changed;
    for (const HardwareListEntry& e : now) {
        auto old = was.find(e.key);
        if (old == was.end()) return about(e, captioned(205, e.text));
        if (*before.devices.find(e.type, e.identifier) != *after.devices.find(e.type, e.identifier)) changed.push_back(&e);
        was.erase(old);
    }
    if (!was.empty()) return about(was.begin()->second, captioned(206, was.begin()->second.text));
    if (changed.empty()) return std::nullopt;  // the same devices in another order
    const HardwareListEntry* moved = changed.front();
    for (const HardwareListEntry* e : changed) {
        const std::string node = nodeLabel(after.devices.find(e->type, e->identifier)->node);
        for (const HardwareListEntry* other : changed) {
            if (other != e && !node.empty() && node == nodeLabel(before.devices.find(other->type, other->identifier)->node))
                moved = e;
        }
    }
    const std::string& summaryBefore = before.devices.entry(*before.devices.find(moved->type, moved->identifier)).summary;
    return about(*moved, {TextPart::fixed(moved->summary != summaryBefore ? moved->text + " " + moved->summary : moved->text)});
}

}  // namespace

std::optional<ConfigurationChange> describeChange(const VmConfiguration& before, const VmConfiguration& after) {
    if (before == after) return std::nullopt;
    auto optionChange = [](const OptionField& f, const C& c) {
        ConfigurationChange change;
        change.optionPage = f.page;
        change.name = f.caption;
        if (f.value) {
            change.name.push_back(TextPart::fixed(" "));
            for (TextPart& part : f.value(c)) change.name.push_back(std::move(part));
        }
        change.typedField = f.typed;
        return change;
    };
    for (const OptionField& f : optionFields()) {
        if (f.differs(before, after)) return optionChange(f, after);
    }
    if (auto change = folderChange(before, after)) return change;
    if (auto change = deviceChange(before, after)) return change;
    ConfigurationChange other;
    other.name = {TextPart::fromId(204)};  // "Virtual Machine Configuration"
    return other;
}

}  // namespace arden
