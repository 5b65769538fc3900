#include "core/config/VmxLoader.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>

#include "core/config/VmxText.h"
#include "core/hardware/DeviceKeys.h"
#include "core/hardware/DeviceTexts.h"
#include "core/support/AtomicFile.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

using Setter = void (*)(VmConfiguration&, bool);

// Keys that hold one flag of the model. `inverted` keys hold the opposite of the field
// (a "disable" key for a field that means allowed).
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
};

// The first prefix test that matches decides how a key is read. A pattern ends in "*" and
// matches the start of the prefix.
enum class Family {
    FormatNumber, Gui, PowerType, ToolScripts, Isolation, SharedFolder, Snapshot, Priority, MonitorControl,
    Log, Disk, Floppy, Parallel, Serial, Sound, Ethernet, Usb, Ide, Scsi, Svga, Mks, VmMouse, Other
};

struct PrefixRule {
    std::string_view test;
    Family family;
};

const PrefixRule kPrefixRules[] = {
    {"config", Family::FormatNumber}, {"virtualhw", Family::FormatNumber}, {"gui", Family::Gui},
    {"powertype", Family::PowerType}, {"toolscripts", Family::ToolScripts}, {"isolation", Family::Isolation},
    {"sharedfolder*", Family::SharedFolder}, {"snapshot", Family::Snapshot}, {"priority", Family::Priority},
    {"monitor_control", Family::MonitorControl}, {"log", Family::Log}, {"disk", Family::Disk},
    {"floppy*", Family::Floppy}, {"parallel*", Family::Parallel}, {"serial*", Family::Serial},
    {"sound", Family::Sound}, {"ethernet*", Family::Ethernet}, {"usb", Family::Usb}, {"ide*", Family::Ide},
    {"scsi*", Family::Scsi}, {"svga", Family::Svga}, {"mks", Family::Mks}, {"vmmouse", Family::VmMouse},
};

Family familyOf(std::string_view prefix) {
    for (const PrefixRule& r : kPrefixRules) {
        if (r.test.back() == '*') {
            if (prefix.substr(0, r.test.size() - 1) == r.test.substr(0, r.test.size() - 1)) return r.family;
        } else if (prefix == r.test) {
            return r.family;
        }
    }
    return Family::Other;
}

// Reads "<digits>" (whole text) as a device number.
bool parseNumber(std::string_view s, int& n) {
    if (s.empty() || s.size() > 6) return false;
    n = 0;
    for (char c : s) {
        if (c < '0' || c > '9') return false;
        n = n * 10 + (c - '0');
    }
    return true;
}

struct NodeAddress {
    std::string bus;  // "IDE" or "SCSI"
    int controller;
    int node;
    auto operator<=>(const NodeAddress&) const = default;
};

struct SharedFolderBuild {
    SharedFolder folder;
};

struct Line {
    std::size_t index;   // 0-based line number
    std::string_view text;
};

class Loader {
public:
    Loader(VmConfiguration& c, std::vector<LoadNotice>& notices) : c_(c), notices_(notices) {}

    void dataLine(const Line& line);
    void commentLine(const Line& line);
    void finish();

private:
    void keep(const Line& line) { kept_.emplace_back(line.index, std::string(line.text)); }
    void notice(const Line& line, std::string text) { notices_.push_back({static_cast<int>(line.index + 1), std::move(text)}); }
    void dispatch(const Line& line, const std::string& key, std::string_view value);
    bool deviceSetting(DeviceSettings& settings, DeviceType table, std::string_view suffix, std::string_view value);
    bool other(const std::string& key, std::string_view value);
    bool sharedFolder(const std::string& key, std::string_view prefix, std::string_view value);
    bool numberedDevice(DeviceType type, std::string_view stem, const std::string& key, std::string_view prefix,
                        std::string_view value);
    bool busDevice(std::string_view bus, DeviceType controllerType, std::string_view stem, const std::string& key,
                   std::string_view prefix, std::string_view value);
    bool singleDevice(DeviceType type, std::string_view suffix, std::string_view value);
    static bool isClusterLine(const std::string& key, std::string_view value);
    DeviceType nodeKind(const NodeAddress& at, const DeviceSettings& s) const;

    VmConfiguration& c_;
    std::vector<LoadNotice>& notices_;
    std::vector<std::pair<std::size_t, std::string>> kept_;
    std::vector<std::pair<Line, std::string>> clusterLines_;  // set aside until clustering is known
    std::map<std::pair<int, int>, Device> numbered_;          // (type, number)
    std::map<NodeAddress, DeviceSettings> nodes_;
    std::map<int, SharedFolderBuild> shares_;
    std::map<int, DeviceSettings> singles_;                   // by type number
    std::optional<int> numvcpus_;
    std::optional<int> memsize_;
    bool pae_ = false;
    int platform_ = -1;
    std::size_t clusterKeyLine_ = 0;  // line of "disk.locking" = "FALSE"
};

bool Loader::isClusterLine(const std::string& key, std::string_view value) {
    if (key == "disk.locking") return false;  // the line that turns clustering on
    for (const vmx::FixedKey& k : vmx::clusterKeys()) {
        if (equalsIgnoreCase(k.key, key) && equalsIgnoreCase(k.value, value)) return true;
    }
    return false;
}

void Loader::dataLine(const Line& line) {
    std::size_t eq = line.text.find('=');
    if (eq == std::string_view::npos) {
        notice(line, "no \"=\" on this line; it is kept as it stands");
        keep(line);
        return;
    }
    std::string key = toLowerAscii(trimBlanks(line.text.substr(0, eq)));
    if (key.empty()) {
        notice(line, "no key before \"=\"; the line is kept as it stands");
        keep(line);
        return;
    }
    std::string_view rawValue = trimBlanks(line.text.substr(eq + 1));
    std::size_t quotes = static_cast<std::size_t>(std::count(rawValue.begin(), rawValue.end(), '"'));
    std::string value;
    value.reserve(rawValue.size());
    for (std::size_t i = 0; i < rawValue.size(); ++i) {
        if (rawValue[i] == '"') continue;
        // "|22" is VMware's escape of a double quote inside a value; the writer writes it so.
        if (rawValue.compare(i, 3, "|22") == 0) {
            value += '"';
            i += 2;
            continue;
        }
        value += rawValue[i];
    }
    if (quotes % 2 != 0) notice(line, "unbalanced quotes in the value of " + key + "; read as \"" + value + "\"");
    if (isClusterLine(key, value)) {
        clusterLines_.emplace_back(line, std::move(key));
        return;
    }
    dispatch(line, key, value);
}

void Loader::dispatch(const Line& line, const std::string& key, std::string_view value) {
    std::string_view prefix = std::string_view(key).substr(0, key.find('.'));
    bool taken = false;
    switch (familyOf(prefix)) {
        case Family::FormatNumber:
            // The writer renews these two; other keys of the family are the product's own.
            taken = key == "config.version" || key == "virtualhw.version";
            break;
        case Family::SharedFolder: taken = sharedFolder(key, prefix, value); break;
        case Family::Disk:
            if (key == "disk.locking" && equalsIgnoreCase(value, "false")) {
                taken = c_.advanced.clusterEnabled = true;
                clusterKeyLine_ = line.index;
            }
            break;
        case Family::Floppy: taken = numberedDevice(DeviceType::Floppy, "floppy", key, prefix, value); break;
        case Family::Parallel: taken = numberedDevice(DeviceType::ParallelPort, "parallel", key, prefix, value); break;
        case Family::Serial: taken = numberedDevice(DeviceType::SerialPort, "serial", key, prefix, value); break;
        case Family::Ethernet: taken = numberedDevice(DeviceType::Network, "ethernet", key, prefix, value); break;
        case Family::Sound: taken = singleDevice(DeviceType::Sound, std::string_view(key).substr(prefix.size()), value); break;
        case Family::Usb: taken = singleDevice(DeviceType::Usb, std::string_view(key).substr(prefix.size()), value); break;
        case Family::Ide: taken = busDevice("IDE", DeviceType::IdeController, "ide", key, prefix, value); break;
        case Family::Scsi: taken = busDevice("SCSI", DeviceType::ScsiController, "scsi", key, prefix, value); break;
        case Family::Svga:
        case Family::Mks: taken = singleDevice(DeviceType::Display, key, value); break;
        case Family::VmMouse: taken = singleDevice(DeviceType::Mouse, std::string_view(key).substr(prefix.size()), value); break;
        default: taken = other(key, value); break;
    }
    if (!taken) keep(line);
}

bool Loader::other(const std::string& key, std::string_view value) {
    for (const FlagKey& f : kFlagKeys) {
        if (f.key == key) {
            bool b = false;
            if (!parseFlag(value, b)) return false;
            f.set(c_, b);
            return true;
        }
    }
    for (const ChoiceKey& k : kChoiceKeys) {
        if (k.key != key) continue;
        int i = 0;
        for (std::string_view w : k.words) {
            if (equalsIgnoreCase(w, value)) {
                k.set(c_, i);
                return true;
            }
            ++i;
        }
        return false;
    }
    int n = 0;
    if (key == "displayname") c_.identity.displayName = std::string(value);
    else if (key == "workingdir") c_.identity.workingDir = std::string(value);
    else if (key == "log.filename") c_.advanced.logFolder = std::string(value);
    else if (key == "guestos") {
        c_.product.guestId = std::string(value);
        if (auto g = findGuest(value)) {
            c_.product.guestFamily = g->family;
            c_.product.guestVersion = g->version;
        } else {
            c_.product.guestVersion = -1;
        }
    } else if (key == "annotation") {
        std::string notes;
        for (std::size_t i = 0; i < value.size(); ++i) {
            if (value.compare(i, 6, "|0D|0A") == 0) {
                notes += "\r\n";
                i += 5;
            } else {
                notes += value[i];
            }
        }
        c_.identity.notes = std::move(notes);
    } else if (key == "memtrimrate") {
        if (!parseInt32(value, n)) return false;
        c_.advanced.memPageTrim = n == 0;
    } else if (key == "numvcpus") {
        if (!parseInt32(value, n) || n < 0 || n > 128) return false;
        numvcpus_ = n;
    } else if (key == "paevm") {
        bool b = false;
        if (!parseFlag(value, b)) return false;
        pae_ = b;
    } else if (key == "memsize") {
        if (!parseInt32(value, n) || n < 0) return false;
        memsize_ = n;
    } else {
        return false;
    }
    return true;
}

bool Loader::deviceSetting(DeviceSettings& settings, DeviceType table, std::string_view suffix, std::string_view value) {
    const DeviceKey* k = findDeviceKey(table, suffix);
    std::string normalised;
    if (!k || !normaliseDeviceValue(*k, value, normalised)) return false;
    settings.set(k->suffix, std::move(normalised));
    return true;
}

bool Loader::singleDevice(DeviceType type, std::string_view suffix, std::string_view value) {
    DeviceSettings probe;
    if (auto it = singles_.find(typeNumber(type)); it != singles_.end()) probe = it->second;
    if (!deviceSetting(probe, type, suffix, value)) return false;
    singles_[typeNumber(type)] = std::move(probe);
    return true;
}

bool Loader::numberedDevice(DeviceType type, std::string_view stem, const std::string& key, std::string_view prefix,
                            std::string_view value) {
    int number = 0;
    if (!parseNumber(prefix.substr(stem.size()), number)) return false;
    Device candidate;
    auto it = numbered_.find({typeNumber(type), number});
    if (it != numbered_.end()) candidate = it->second;
    if (!deviceSetting(candidate.settings, type, std::string_view(key).substr(prefix.size()), value)) return false;
    candidate.type = type;
    candidate.number = number;
    numbered_[{typeNumber(type), number}] = std::move(candidate);
    return true;
}

bool Loader::busDevice(std::string_view bus, DeviceType controllerType, std::string_view stem, const std::string& key,
                       std::string_view prefix, std::string_view value) {
    std::string_view rest = prefix.substr(stem.size());
    std::string_view suffix = std::string_view(key).substr(prefix.size());
    std::size_t colon = rest.find(':');
    int controller = 0;
    if (colon == std::string_view::npos) {
        if (!parseNumber(rest, controller)) return false;
        return numberedDevice(controllerType, stem, key, prefix, value);
    }
    int node = 0;
    if (!parseNumber(rest.substr(0, colon), controller) || !parseNumber(rest.substr(colon + 1), node)) return false;
    NodeAddress at{std::string(bus), controller, node};
    DeviceSettings probe;
    if (auto it = nodes_.find(at); it != nodes_.end()) probe = it->second;
    if (!deviceSetting(probe, DeviceType::HardDisk, suffix, value)) return false;
    nodes_[at] = std::move(probe);
    return true;
}

bool Loader::sharedFolder(const std::string& key, std::string_view prefix, std::string_view value) {
    int count = 0;
    if (key == "sharedfolder.maxnum") return parseInt32(value, count);  // the count is written anew
    int number = 0;
    if (!parseNumber(prefix.substr(std::string_view("sharedfolder").size()), number)) return false;
    std::string_view sub = std::string_view(key).substr(prefix.size());
    SharedFolder f = shares_.count(number) ? shares_[number].folder : SharedFolder{};
    bool b = false;
    if (sub == ".hostpath") f.hostPath = std::string(value);
    else if (sub == ".guestname") f.name = std::string(value);
    else if (sub == ".expiration") {
        if (equalsIgnoreCase(value, "session")) f.disableAfterSession = true;
        else if (equalsIgnoreCase(value, "never")) f.disableAfterSession = false;
        else return false;
    } else if (sub == ".present" || sub == ".enabled" || sub == ".readaccess" || sub == ".writeaccess") {
        if (!parseFlag(value, b)) return false;
        if (sub == ".present") f.present = b;
        else if (sub == ".enabled") f.enabled = b;
        else if (sub == ".writeaccess") f.readOnly = !b;
        // read access is always granted when the folder is written back
    } else {
        return false;
    }
    shares_[number].folder = std::move(f);
    return true;
}

void Loader::commentLine(const Line& line) {
    std::string_view t = trimBlanks(line.text);
    if (vmx::isOwnBannerLine(t)) return;
    for (int p = 0; p < kPlatformCount; ++p) {
        if (t == platformCommentLine(p)) {
            platform_ = p;
            c_.product.platform = p;
            return;
        }
    }
    constexpr std::string_view kVersion = "# Version = ";
    if (t.substr(0, kVersion.size()) == kVersion) {
        int platform = platform_ >= 0 ? platform_ : c_.product.platform;
        if (auto v = versionFromText(platform, t.substr(kVersion.size()))) {
            c_.product.version = *v;
            return;
        }
    }
    keep(line);
}

DeviceType Loader::nodeKind(const NodeAddress& at, const DeviceSettings& s) const {
    std::string type = toLowerAscii(s.text(".deviceType"));
    if (type == "disk" || type == "rawdisk") return DeviceType::HardDisk;
    if (type == "atapi-cdrom" || type == "cdrom-raw" || type == "cdrom-image") return DeviceType::CdRom;
    if (type == "scsi-passthru" && at.bus == "SCSI") return DeviceType::GenericScsi;
    // No type, or one the list does not name (ata-hardDisk, scsi-hardDisk, plainDisk): decide
    // by the file. Disk files are disks; an ISO image or the drive selector is a CD-ROM drive;
    // anything else is taken for a disk, the product's default device on a node.
    std::string file = toLowerAscii(s.text(".fileName"));
    auto endsWith = [&](std::string_view ext) { return file.size() >= ext.size() && file.compare(file.size() - ext.size(), ext.size(), ext) == 0; };
    if (endsWith(".vmdk") || endsWith(".raw") || endsWith(".pln")) return DeviceType::HardDisk;
    if (endsWith(".iso") || file == "auto detect") return DeviceType::CdRom;
    return DeviceType::HardDisk;
}

void Loader::finish() {
    // Clustering lines: the writer puts its fixed clustering block right after "disk.locking",
    // so when clustering is on, a fixed line that follows that key is the block's own and is
    // consumed (it is written again); any other is read like every line, e.g. a disk's own mode.
    for (auto& [line, key] : clusterLines_) {
        if (c_.advanced.clusterEnabled && line.index > clusterKeyLine_) continue;
        std::string value;
        for (char ch : trimBlanks(line.text.substr(line.text.find('=') + 1))) {
            if (ch != '"') value += ch;
        }
        dispatch(line, key, value);
    }

    DeviceStore& store = c_.devices;
    int cpus = numvcpus_.value_or(1);
    for (int i = 0; i < cpus; ++i) {
        Device& cpu = store.createDevice(DeviceType::Cpu);
        cpu.settings.setFlag("pae", i == 0 && pae_);
    }
    Device& memory = store.createDevice(DeviceType::Memory);
    memory.settings.setNumber("memsize", memsize_.value_or(32));  // the product's own default

    for (auto& [id, device] : numbered_) store.addDevice(std::move(device));

    std::array<int, kDeviceTypeCount> nodeNumbers{};
    for (auto& [at, settings] : nodes_) {
        Device d;
        d.type = nodeKind(at, settings);
        d.number = nodeNumbers[static_cast<std::size_t>(d.type)]++;
        d.node.setControllerType(at.bus);
        d.node.setControllerNumber(at.controller);
        d.node.setNodeNumber(at.node);
        d.node.setDeviceType(std::string(englishTypeName(d.type)));
        d.node.setDeviceNumber(d.number);
        d.settings = std::move(settings);
        store.addDevice(std::move(d));
    }
    for (auto& [type, settings] : singles_) {
        Device d;
        d.type = static_cast<DeviceType>(type);
        d.number = 0;
        d.settings = std::move(settings);
        store.addDevice(std::move(d));
    }
    for (auto& [n, share] : shares_) c_.sharedFolders.folders.push_back(std::move(share.folder));

    std::stable_sort(kept_.begin(), kept_.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    c_.keptLines.reserve(kept_.size());
    for (auto& [index, text] : kept_) c_.keptLines.push_back(std::move(text));
}

Message loadError(const std::string& sourceName, const std::string& what) {
    return Message{MessageKind::Critical, {TextPart::fixed("Unable to Open Configuration")},
                   {TextPart::fixed(sourceName + ": " + what)}};
}

}  // namespace

LoadResult parseVmxText(std::string_view bytes, const std::string& folder, const std::string& fileName,
                        const std::string& sourceName) {
    LoadResult result;
    if (bytes.size() > kMaxVmxFileBytes) {
        result.error = loadError(sourceName, "the file is " + std::to_string(bytes.size()) +
                                                 " bytes long; a configuration file is at most " +
                                                 std::to_string(kMaxVmxFileBytes) + " bytes");
        return result;
    }
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
    if (std::size_t nul = bytes.find('\0'); nul != std::string_view::npos) {
        result.error = loadError(sourceName, "this is not a configuration file: it holds binary data (a zero byte at offset " +
                                                 std::to_string(nul) + "); a configuration file is text of \"key = value\" lines");
        return result;
    }

    VmConfiguration& c = result.config;
    c.identity.vmxFolder = folder;
    c.identity.vmxFileName = fileName;
    c.identity.displayName.clear();
    Loader loader(c, result.notices);

    std::vector<Line> comments;
    std::size_t index = 0;
    std::size_t pos = 0;
    while (pos < bytes.size()) {
        std::size_t eol = bytes.find('\n', pos);
        if (eol == std::string_view::npos) eol = bytes.size();
        std::string_view text = bytes.substr(pos, eol - pos);
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        if (text.size() > kMaxVmxLineBytes) {
            result.error = loadError(sourceName, "line " + std::to_string(index + 1) + " is " + std::to_string(text.size()) +
                                                     " bytes long; configuration lines are at most " +
                                                     std::to_string(kMaxVmxLineBytes) + " bytes");
            return result;
        }
        std::string_view trimmed = trimBlanks(text);
        if (!trimmed.empty()) {
            Line line{index, text};
            if (trimmed.front() == '#') comments.push_back(line);
            else loader.dataLine(line);
        }
        ++index;
        pos = eol + 1;
    }
    for (const Line& line : comments) loader.commentLine(line);
    loader.finish();
    result.ok = true;
    return result;
}

LoadResult loadVmxFile(const std::filesystem::path& path) {
    std::string error;
    std::error_code ec;
    auto size = std::filesystem::file_size(path, ec);
    if (!ec && size > kMaxVmxFileBytes) {
        LoadResult r;
        r.error = loadError(path.string(), "the file is " + std::to_string(size) +
                                               " bytes long; a configuration file is at most " +
                                               std::to_string(kMaxVmxFileBytes) + " bytes");
        return r;
    }
    auto bytes = readWholeFile(path, error);
    if (!bytes) {
        LoadResult r;
        r.error = Message{MessageKind::Critical, {TextPart::fixed("Unable to Open Configuration")}, {TextPart::fixed(error)}};
        return r;
    }
    std::string folder = path.parent_path().string();
    if (!folder.empty() && folder.back() != '/' && folder.back() != '\\') folder += static_cast<char>(std::filesystem::path::preferred_separator);
    return parseVmxText(*bytes, folder, path.filename().string(), path.string());
}

}  // namespace arden
