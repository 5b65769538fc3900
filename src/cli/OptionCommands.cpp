// arden-forge-cli option: the settings of the Options tab's power, shared-folder, snapshot,
// isolation and advanced pages by name: all listed, or some set.
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/CliCommands.h"
#include "cli/ConfigFile.h"
#include "core/hardware/DeviceKeys.h"
#include "core/support/IniDocument.h"
#include "core/support/TextUtil.h"

namespace arden::cli {
namespace {

// One option: its name, where the configuration holds it, and, for a choice, its words in the
// order of the stored numbers. Flags take yes or no (or another spelling of true and false),
// "log-folder" any text.
struct OptionEntry {
    std::string_view name;
    bool* (*flag)(VmConfiguration&);
    int* (*choice)(VmConfiguration&);
    std::vector<std::string_view> words;
    std::string* (*text)(VmConfiguration&) = nullptr;
};

using C = VmConfiguration;

// The names say what "yes" means; where the page's check box is inverted ("Disable Snapshots"),
// the name is that of the feature allowed.
const std::vector<OptionEntry>& options() {
    static const std::vector<OptionEntry> table = {
        {"power-on-after-open", [](C& c) { return &c.power.powerOnAfterOpen; }, nullptr, {}},
        {"full-screen-after-power-on", [](C& c) { return &c.power.fullScreenAfterPowerOn; }, nullptr, {}},
        {"close-after-power-off", [](C& c) { return &c.power.closeAfterPowerOff; }, nullptr, {}},
        {"power-off", nullptr, [](C& c) { return &c.power.powerOff; }, {"hard", "soft"}},
        {"reset", nullptr, [](C& c) { return &c.power.reset; }, {"hard", "soft"}},
        {"tools-after-power-on", [](C& c) { return &c.power.runToolsAfterPowerOn; }, nullptr, {}},
        {"tools-after-resume", [](C& c) { return &c.power.runToolsAfterResume; }, nullptr, {}},
        {"tools-before-suspend", [](C& c) { return &c.power.runToolsBeforeSuspend; }, nullptr, {}},
        {"tools-before-power-off", [](C& c) { return &c.power.runToolsBeforePowerOff; }, nullptr, {}},
        {"shared-folders", [](C& c) { return &c.sharedFolders.allowed; }, nullptr, {}},
        {"snapshots", [](C& c) { return &c.snapshots.allowed; }, nullptr, {}},
        {"when-powering-off", nullptr, [](C& c) { return &c.snapshots.action; }, {"keep", "revert", "take-new", "ask"}},
        {"drag-and-drop", [](C& c) { return &c.isolation.dragAndDropAllowed; }, nullptr, {}},
        {"paste", [](C& c) { return &c.isolation.pasteAllowed; }, nullptr, {}},
        {"copy", [](C& c) { return &c.isolation.copyAllowed; }, nullptr, {}},
        {"input-grabbed-priority", nullptr, [](C& c) { return &c.advanced.grabbedPriority; }, {"normal", "high"}},
        {"input-ungrabbed-priority", nullptr, [](C& c) { return &c.advanced.ungrabbedPriority; }, {"low", "normal"}},
        {"debug", [](C& c) { return &c.advanced.debug; }, nullptr, {}},
        {"disable-acceleration", [](C& c) { return &c.advanced.disableAcceleration; }, nullptr, {}},
        {"disable-memory-page-trimming", [](C& c) { return &c.advanced.memPageTrim; }, nullptr, {}},
        {"logging", [](C& c) { return &c.advanced.logging; }, nullptr, {}},
        {"log-periodically", [](C& c) { return &c.advanced.logPeriodic; }, nullptr, {}},
        {"log-folder", nullptr, nullptr, {}, [](C& c) { return &c.advanced.logFolder; }},
        {"template", [](C& c) { return &c.advanced.templateVm; }, nullptr, {}},
        {"clustering", [](C& c) { return &c.advanced.clusterEnabled; }, nullptr, {}},
    };
    return table;
}

std::string valueOf(const OptionEntry& o, VmConfiguration& c) {
    if (o.flag) return *o.flag(c) ? "yes" : "no";
    if (o.text) return *o.text(c);
    const int n = *o.choice(c);
    return n >= 0 && static_cast<std::size_t>(n) < o.words.size() ? std::string(o.words[static_cast<std::size_t>(n)])
                                                                   : std::to_string(n);
}

// Stores `value`; returns what the option takes when the value is not one of that.
std::string store(const OptionEntry& o, VmConfiguration& c, const std::string& value) {
    if (o.flag) return parseFlag(value, *o.flag(c)) ? "" : "yes or no";
    if (o.text) {
        if (!fitsOnOneLine(value)) return "a folder on one line";
        *o.text(c) = value;
        return "";
    }
    std::string allowed;
    for (std::size_t n = 0; n < o.words.size(); ++n) {
        if (equalsIgnoreCase(value, o.words[n])) {
            *o.choice(c) = static_cast<int>(n);
            return "";
        }
        allowed += (n == 0 ? "" : n + 1 == o.words.size() ? " or " : ", ") + std::string(o.words[n]);
    }
    return allowed;
}

const OptionEntry* findOption(std::string_view name) {
    for (const OptionEntry& o : options())
        if (equalsIgnoreCase(o.name, name)) return &o;
    return nullptr;
}

}  // namespace

int runOption(Args args) {
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.empty() || args.size() % 2 == 0) return usageError("option needs a FILE and then NAME VALUE pairs");
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    if (args.size() == 1) {
        for (const OptionEntry& o : options()) std::cout << o.name << '\t' << valueOf(o, *config) << '\n';
        return Success;
    }
    for (std::size_t i = 1; i < args.size(); i += 2) {
        const OptionEntry* o = findOption(args[i]);
        if (!o) return usageError("no option is named \"" + args[i] + "\"; 'arden-forge-cli option FILE' lists them");
        if (std::string wanted = store(*o, *config, args[i + 1]); !wanted.empty())
            return usageError(std::string(o->name) + " takes " + wanted + ", not \"" + args[i + 1] + "\"");
    }
    if (int rc = saveEditedConfiguration(args[0], *config, yes, dryRun); rc != Success || dryRun) return rc;
    for (std::size_t i = 1; i < args.size(); i += 2) {
        const OptionEntry* o = findOption(args[i]);
        std::cout << o->name << '\t' << valueOf(*o, *config) << '\n';
    }
    return Success;
}

}  // namespace arden::cli
