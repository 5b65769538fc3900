// Keys of the machine as a whole: identity, guest, processors, memory, and the option groups
// (power, shared-folder and guest isolation switches, snapshots, input priority, advanced).
#include "core/config/VmxLoaderState.h"
#include "core/hardware/DeviceKeys.h"
#include "core/support/TextUtil.h"

namespace arden::load {
namespace {

using Setter = void (*)(VmConfiguration&, bool);

// Keys that hold one flag of the model. A "disable" key for a field that means allowed holds
// the opposite of the field.
struct FlagKey {
    std::string_view key;  // lower case
    Setter set;
};

const FlagKey kFlagKeys[] = {
    {"gui.poweronatstartup", [](VmConfiguration& c, bool v) { c.power.powerOnAfterOpen = v; }},
    {"gui.fullscreenatpoweron", [](VmConfiguration& c, bool v) { c.power.fullScreenAfterPowerOn = v; }},
    {"gui.exitatpoweroff", [](VmConfiguration& c, bool v) { c.power.closeAfterPowerOff = v; }},
    {"toolscripts.afterpoweron", [](VmConfiguration& c, bool v) { c.power.runToolsAfterPowerOn = v; }},
    {"toolscripts.afterresume", [](VmConfiguration& c, bool v) { c.power.runToolsAfterResume = v; }},
    {"toolscripts.beforesuspend", [](VmConfiguration& c, bool v) { c.power.runToolsBeforeSuspend = v; }},
    {"toolscripts.beforepoweroff", [](VmConfiguration& c, bool v) { c.power.runToolsBeforePowerOff = v; }},
    {"isolation.tools.hgfs.disable", [](VmConfiguration& c, bool v) { c.sharedFolders.allowed = !v; }},
    {"isolation.tools.dnd.disable", [](VmConfiguration& c, bool v) { c.isolation.dragAndDropAllowed = !v; }},
    {"isolation.tools.paste.disable", [](VmConfiguration& c, bool v) { c.isolation.pasteAllowed = !v; }},
    {"isolation.tools.paste.enabled", [](VmConfiguration& c, bool v) { c.isolation.pasteAllowed = v; }},
    {"isolation.tools.copy.disable", [](VmConfiguration& c, bool v) { c.isolation.copyAllowed = !v; }},
    {"isolation.tools.copy.enable", [](VmConfiguration& c, bool v) { c.isolation.copyAllowed = v; }},
    {"snapshot.disabled", [](VmConfiguration& c, bool v) { c.snapshots.allowed = !v; }},
    {"monitor_control.log_vmsample", [](VmConfiguration& c, bool v) { c.advanced.logPeriodic = v; }},
    {"debug", [](VmConfiguration& c, bool v) { c.advanced.debug = v; }},
    {"disable_acceleration", [](VmConfiguration& c, bool v) { c.advanced.disableAcceleration = v; }},
    {"logging", [](VmConfiguration& c, bool v) { c.advanced.logging = v; }},
    {"templatevm", [](VmConfiguration& c, bool v) { c.advanced.templateVm = v; }},
    {"paevm", nullptr},  // read into the processor entries
};

using ChoiceSetter = void (*)(VmConfiguration&, int);

// Keys whose value is one word of a list; the word's position is stored.
struct ChoiceKey {
    std::string_view key;  // lower case
    std::initializer_list<std::string_view> words;
    ChoiceSetter set;
};

const ChoiceKey kChoiceKeys[] = {
    {"powertype.poweroff", {"hard", "soft"}, [](VmConfiguration& c, int i) { c.power.powerOff = i; }},
    {"powertype.reset", {"hard", "soft"}, [](VmConfiguration& c, int i) { c.power.reset = i; }},
    {"snapshot.action", {"keep", "autorevert", "autocommit", "prompt"},
     [](VmConfiguration& c, int i) { c.snapshots.action = i; }},
    {"priority.grabbed", {"normal", "high"}, [](VmConfiguration& c, int i) { c.advanced.grabbedPriority = i; }},
    {"priority.ungrabbed", {"idle", "normal"}, [](VmConfiguration& c, int i) { c.advanced.ungrabbedPriority = i; }},
    // The memory-trimming box: "0" is checked, "30" (the product's default rate) unchecked.
    {"memtrimrate", {"30", "0"}, [](VmConfiguration& c, int i) { c.advanced.memPageTrim = i == 1; }},
};

std::string wordList(std::initializer_list<std::string_view> words) {
    std::string text = "one of";
    for (std::string_view w : words) text += (text.size() == 6 ? " " : ", ") + std::string(w);
    return text;
}

}  // namespace

bool isReplacedKey(std::string_view key) {
    return key == "isolation.tools.paste.enabled" || key == "isolation.tools.copy.enable";
}

Outcome Loader::optionKey(const Line& line, const std::string& key, std::string_view value, std::string& allowed) {
    for (const FlagKey& f : kFlagKeys) {
        if (f.key != key) continue;
        bool b = false;
        if (!parseFlag(value, b)) {
            allowed = "TRUE or FALSE";
            return Outcome::Unusable;
        }
        if (f.set) f.set(c_, b);
        else pae_ = b;
        return Outcome::Taken;
    }
    for (const ChoiceKey& k : kChoiceKeys) {
        if (k.key != key) continue;
        int i = 0;
        for (std::string_view w : k.words) {
            if (equalsIgnoreCase(w, value)) {
                k.set(c_, i);
                return Outcome::Taken;
            }
            ++i;
        }
        allowed = wordList(k.words);
        return Outcome::Unusable;
    }
    int n = 0;
    if (key == "displayname") c_.identity.displayName = std::string(value);
    else if (key == "workingdir") c_.identity.workingDir = std::string(value);
    else if (key == "log.filename") c_.advanced.logFolder = std::string(value);
    else if (key == "annotation") c_.identity.notes = std::string(value);
    else if (key == "guestos") {
        c_.product.guestId = std::string(value);
        if (auto g = findGuest(value)) {
            c_.product.guestFamily = g->family;
            c_.product.guestVersion = g->version;
        } else {
            c_.product.guestVersion = -1;
        }
    } else if (key == "numvcpus") {
        numvcpus_.emplace(line, std::string(value));  // checked once the target is known
    } else if (key == "memsize") {
        if (!parseInt32(value, n) || n < 0) {
            allowed = "a whole number of megabytes";
            return Outcome::Unusable;
        }
        memsize_ = n;
    } else {
        return Outcome::Unknown;
    }
    return Outcome::Taken;
}

void Loader::checkProcessors() {
    if (!numvcpus_) return;
    const auto& [line, value] = *numvcpus_;
    const int most = c_.figures().maxCpus;
    int n = 0;
    if (parseInt32(value, n) && n >= 1 && n <= most) {
        processors_ = n;
        return;
    }
    // The processor list cannot show it: the file's line stays, the editor shows one processor.
    const std::string product = productText(c_.product.platform, c_.product.version);
    unusable(line, "numvcpus", value, "1 to " + std::to_string(most) + " for " + product);
    consumed_.erase("numvcpus");
    held_.insert("numvcpus");
    keep(line);
}

void Loader::addProcessorsAndMemory() {
    DeviceStore& store = c_.devices;
    for (int i = 0; i < processors_; ++i) {
        Device& cpu = store.createDevice(DeviceType::Cpu);
        cpu.settings.setFlag("pae", i == 0 && pae_);
    }
    Device& memory = store.createDevice(DeviceType::Memory);
    memory.settings.setNumber("memsize", memsize_.value_or(32));  // the product's own default
}

}  // namespace arden::load
