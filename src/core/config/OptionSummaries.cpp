// The one-line summaries of the option groups shown beside each entry of the options list.
#include <array>

#include "core/config/VmConfiguration.h"

namespace arden {
namespace {

constexpr std::array<std::string_view, 4> kSnapshotActions = {"just power off", "revert to snapshot",
                                                              "take a new snapshot", "ask me"};

std::string generalSummary(const VmConfiguration& c) {
    std::string text(platformName(c.product.platform));
    auto versions = platformVersions(c.product.platform);
    if (c.product.version >= 0 && static_cast<std::size_t>(c.product.version) < versions.size())
        text += " " + std::string(versions[static_cast<std::size_t>(c.product.version)]);
    std::string guest = c.product.guestId;
    if (auto pos = findGuest(c.product.guestId)) guest = std::string(guestVersions(pos->family)[static_cast<std::size_t>(pos->version)].name);
    return text + ", " + guest;
}

std::string powerSummary(const PowerOptions& p) {
    std::string text = p.powerOff == 1 ? "Shut down guest" : "Power off";
    text += p.reset == 1 ? ", restart guest" : ", reset";
    int scripts = p.runToolsAfterPowerOn + p.runToolsAfterResume + p.runToolsBeforeSuspend + p.runToolsBeforePowerOff;
    text += ", " + std::to_string(scripts) + " of 4 tools scripts";
    if (p.powerOnAfterOpen) text += ", power on when opened";
    return text;
}

std::string sharedSummary(const SharedFolderOptions& s) {
    if (!s.allowed) return "Disabled";
    std::size_t n = s.folders.size();
    return n == 0 ? "Enabled, no folders" : "Enabled, " + std::to_string(n) + (n == 1 ? " folder" : " folders");
}

std::string snapshotSummary(const SnapshotOptions& s) {
    if (!s.allowed) return "Disabled";
    std::size_t a = s.action >= 0 && s.action < 4 ? static_cast<std::size_t>(s.action) : 0;
    return "Enabled, when powering off: " + std::string(kSnapshotActions[a]);
}

std::string isolationSummary(const IsolationOptions& i) {
    std::string off;
    auto add = [&](bool allowed, const char* what) {
        if (!allowed) off += (off.empty() ? "" : ", ") + std::string(what);
    };
    add(i.dragAndDropAllowed, "drag and drop");
    add(i.pasteAllowed, "paste");
    add(i.copyAllowed, "copy");
    return off.empty() ? "Drag and drop, copy and paste allowed" : "Disabled: " + off;
}

std::string advancedSummary(const AdvancedOptions& a) {
    std::string text = std::string("Priority ") + (a.grabbedPriority == 1 ? "high" : "normal") + "/" +
                       (a.ungrabbedPriority == 0 ? "low" : "normal");
    text += a.logging ? ", logging" : ", no logging";
    if (a.debug) text += ", debug";
    if (a.disableAcceleration) text += ", no acceleration";
    if (a.templateVm) text += ", template";
    if (a.clusterEnabled) text += ", clustering";
    return text;
}

}  // namespace

std::string optionSummary(const VmConfiguration& c, int position) {
    switch (position) {
        case 0: return generalSummary(c);
        case 1: return powerSummary(c.power);
        case 2: return sharedSummary(c.sharedFolders);
        case 3: return snapshotSummary(c.snapshots);
        case 4: return isolationSummary(c.isolation);
        case 5: return advancedSummary(c.advanced);
        default: return {};
    }
}

}  // namespace arden
