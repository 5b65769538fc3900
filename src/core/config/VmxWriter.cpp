#include "core/config/VmxWriter.h"

#include <algorithm>
#include <unordered_map>

#include "core/config/KeptLinesToWrite.h"
#include "core/config/VmxLines.h"
#include "core/config/VmxText.h"
#include "core/hardware/BusTable.h"
#include "core/hardware/DeviceKeys.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

using vmx::KeptLinesToWrite;
using vmx::VmxLines;

std::string keyPrefix(const Device& d) {
    switch (d.type) {
        case DeviceType::Floppy: return "floppy" + std::to_string(d.number);
        case DeviceType::ParallelPort: return "parallel" + std::to_string(d.number);
        case DeviceType::SerialPort: return "serial" + std::to_string(d.number);
        case DeviceType::Network: return "ethernet" + std::to_string(d.number);
        case DeviceType::IdeController:
        case DeviceType::ScsiController:
        case DeviceType::SataController:
        case DeviceType::NvmeController:
            return std::string(busRow(*busOfController(d.type)).keyStem) + std::to_string(d.number);
        case DeviceType::Sound: return "sound";
        case DeviceType::Usb: return "usb";
        case DeviceType::Mouse: return "vmmouse";
        case DeviceType::HardDisk:
        case DeviceType::CdRom:
        case DeviceType::GenericScsi:
            return toLowerAscii(d.node.ControllerType()) + std::to_string(d.node.ControllerNumber()) + ":" +
                   std::to_string(d.node.NodeNumber());
        default: return {};
    }
}

// Whether a set key of a device is written, given the device's other settings.
bool keyApplies(const Device& d, std::string_view suffix) {
    const DeviceSettings& s = d.settings;
    if (d.type == DeviceType::Network) {
        auto addressType = s.get(".addressType");
        if (suffix == ".vnet") return equalsIgnoreCase(s.text(".connectionType"), "custom");
        if (suffix == ".address") return !addressType || equalsIgnoreCase(*addressType, "static");
        if (suffix == ".generatedAddress" || suffix == ".generatedAddressOffset")
            return !addressType || equalsIgnoreCase(*addressType, "generated");
    }
    if (d.type == DeviceType::Sound && suffix == ".synth.operational")
        return equalsIgnoreCase(s.text(".virtualDev"), "sb16") && s.flag(suffix, false);
    return true;
}

void writeKeptLines(VmxLines& out, const std::string& prefix, const std::vector<KeptKeyLine>& lines) {
    for (const KeptKeyLine& k : lines) out.keptLine(prefix + k.suffix, k.rest);
}

// The keys of the device's own settings; false when it has none to write.
bool writeOwnKeys(VmxLines& out, const Device& d, const std::string& prefix, const std::string& vmxFolder) {
    const bool node = isNodeDevice(d.type);
    // A drive that detects the host's drive says so: decided on the name as written, and for a
    // DVD/CD-ROM drive only. Any other ".autodetect" line of the file stays as it was read.
    auto fileName = d.settings.get(".fileName");
    const bool autoDetect = d.type == DeviceType::CdRom && fileName &&
                            equalsIgnoreCase(relativeToVmxFolder(*fileName, vmxFolder), "auto detect");
    const std::size_t start = out.mark();
    for (const DeviceKey& key : deviceKeys(d.type)) {
        if (node && key.suffix == ".autodetect") {
            if (autoDetect) out.setting(prefix + std::string(key.suffix), "TRUE");
            continue;
        }
        auto value = d.settings.get(key.suffix);
        if (!value || !keyApplies(d, key.suffix)) continue;
        const std::string name = prefix + std::string(key.suffix);
        if (key.suffix == ".fileName") out.setting(name, relativeToVmxFolder(*value, vmxFolder));
        else out.setting(name, *value);
    }
    return out.mark() != start;
}

void writeDevice(VmxLines& out, const Device& d, const std::string& vmxFolder, KeptLinesToWrite& kept) {
    const std::string prefix = keyPrefix(d);
    if (writeOwnKeys(out, d, prefix, vmxFolder)) {
        writeKeptLines(out, prefix, d.keptLines);
        if (!prefix.empty()) kept.writeUnder(out, prefix);
        return;
    }
    // A device with none of its own keys in the file would not be read back as a device: its
    // lines go with the other kept lines, where a reopened file has them too.
    for (const KeptKeyLine& k : d.keptLines) out.defer(prefix + k.suffix, k.rest);
}

std::vector<const Device*> sortedByNumber(const DeviceStore& store, DeviceType type) {
    std::vector<const Device*> list;
    for (const Device& d : store.devices(type)) list.push_back(&d);
    std::stable_sort(list.begin(), list.end(), [](const Device* a, const Device* b) { return a->number < b->number; });
    return list;
}

// Disk-like devices on the nodes of one bus, by controller and node number.
std::vector<const Device*> devicesOnBus(const DeviceStore& store, std::string_view bus) {
    std::vector<const Device*> list;
    for (DeviceType t : {DeviceType::HardDisk, DeviceType::CdRom, DeviceType::GenericScsi}) {
        if (!busAllowed(t, *busFromName(bus))) continue;
        for (const Device& d : store.devices(t)) {
            if (d.node.ControllerType() == bus && d.node.ControllerNumber() >= 0 && d.node.NodeNumber() >= 0)
                list.push_back(&d);
        }
    }
    std::stable_sort(list.begin(), list.end(), [](const Device* a, const Device* b) {
        if (a->node.ControllerNumber() != b->node.ControllerNumber())
            return a->node.ControllerNumber() < b->node.ControllerNumber();
        return a->node.NodeNumber() < b->node.NodeNumber();
    });
    return list;
}

void writeSection(VmxLines& out, std::string_view banner, const std::vector<const Device*>& devices,
                  const std::string& folder, KeptLinesToWrite& kept) {
    if (devices.empty()) return;
    std::size_t start = out.mark();
    out.banner(banner);
    std::size_t keys = out.mark();
    for (const Device* d : devices) writeDevice(out, *d, folder, kept);
    // A section whose devices have nothing to write is left out, as one without devices.
    if (out.mark() == keys) out.truncate(start);
}

void writeIdentity(VmxLines& out, const VmConfiguration& c) {
    out.banner(vmx::kIdentityBanner);
    out.setting("displayName", c.identity.displayName);
    // Both comment lines, always: a platform without a version (or with one it does not have)
    // stands for its latest version, as the loader reads it.
    int platform = platformName(c.product.platform).empty() ? kWorkstation : c.product.platform;
    int version = versionCommentLine(platform, c.product.version).empty() ? lastVersion(platform) : c.product.version;
    out.raw(platformCommentLine(platform));
    out.raw(versionCommentLine(platform, version));
    out.setting("config.version", c.configVersionText());
    out.setting("virtualHW.version", c.hwVersionText());
    out.setting("guestOS", c.product.guestId);
    out.setting("workingDir", c.identity.workingDir);
    if (!c.identity.notes.empty()) out.setting("annotation", c.identity.notes);
    const auto& cpus = c.devices.devices(DeviceType::Cpu);
    if (!cpus.empty()) {
        out.setting("numvcpus", std::to_string(cpus.size()), " =");
        bool pae = std::any_of(cpus.begin(), cpus.end(), [](const Device& d) { return d.settings.flag("pae", false); });
        if (pae) out.setting("paevm", "TRUE");
    }
    for (const Device& m : c.devices.devices(DeviceType::Memory)) {
        if (auto mb = m.settings.number("memsize")) out.setting("memsize", std::to_string(*mb));
    }
}

void writeAdvanced(VmxLines& out, const VmConfiguration& c, KeptLinesToWrite& kept) {
    static constexpr std::string_view kHardSoft[] = {"hard", "soft"};
    static constexpr std::string_view kSnapshotActions[] = {"keep", "autoRevert", "autoCommit", "prompt"};
    static constexpr std::string_view kGrabbed[] = {"normal", "high"};
    static constexpr std::string_view kUngrabbed[] = {"idle", "normal"};
    auto pick = [](std::span<const std::string_view> list, int i) {
        return list[i >= 0 && static_cast<std::size_t>(i) < list.size() ? static_cast<std::size_t>(i) : 0];
    };

    out.banner(vmx::kAdvancedBanner);
    const PowerOptions& p = c.power;
    out.flag("gui.powerOnAtStartup", p.powerOnAfterOpen);
    out.flag("gui.fullScreenAtPowerOn", p.fullScreenAfterPowerOn);
    out.flag("gui.exitAtPowerOff", p.closeAfterPowerOff);
    out.setting("powerType.powerOff", pick(kHardSoft, p.powerOff));
    out.setting("powerType.reset", pick(kHardSoft, p.reset));
    out.flag("toolScripts.afterPowerOn", p.runToolsAfterPowerOn);
    out.flag("toolScripts.afterResume", p.runToolsAfterResume);
    out.flag("toolScripts.beforeSuspend", p.runToolsBeforeSuspend);
    out.flag("toolScripts.beforePowerOff", p.runToolsBeforePowerOff);

    out.flag("isolation.tools.hgfs.disable", !c.sharedFolders.allowed);
    out.setting("sharedFolder.maxNum", std::to_string(c.sharedFolders.folders.size()));
    for (std::size_t i = 0; i < c.sharedFolders.folders.size(); ++i) {
        const SharedFolder& f = c.sharedFolders.folders[i];
        const std::string prefix = "sharedFolder" + std::to_string(i);
        // A key the file did not hold for the share is written once it stands for more than
        // its absence does (the values a share without that key is read with).
        auto wanted = [&](ShareKey key, bool differsFromAbsent) { return (f.keysRead & key) || differsFromAbsent; };
        const std::size_t keys = out.mark();
        if (wanted(kSharePresent, !f.present)) out.flag(prefix + ".present", f.present);
        if (wanted(kShareEnabled, !f.enabled)) out.flag(prefix + ".Enabled", f.enabled);
        if (wanted(kShareReadAccess, !f.readAccess)) out.flag(prefix + ".readAccess", f.readAccess);
        if (wanted(kShareWriteAccess, f.readOnly)) out.flag(prefix + ".writeAccess", !f.readOnly);
        if (wanted(kShareHostPath, !f.hostPath.empty())) out.setting(prefix + ".hostPath", f.hostPath);
        if (wanted(kShareGuestName, !f.name.empty())) out.setting(prefix + ".guestName", f.name);
        if (wanted(kShareExpiration, f.disableAfterSession))
            out.setting(prefix + ".expiration", f.disableAfterSession ? "session" : "never");
        writeKeptLines(out, prefix, f.keptLines);
        if (out.mark() != keys) kept.writeUnder(out, prefix);
    }

    out.flag("snapshot.disabled", !c.snapshots.allowed);
    out.setting("snapshot.Action", pick(kSnapshotActions, c.snapshots.action));
    out.flag("isolation.tools.dnd.disable", !c.isolation.dragAndDropAllowed);
    out.flag("isolation.tools.paste.disable", !c.isolation.pasteAllowed);
    out.flag("isolation.tools.copy.disable", !c.isolation.copyAllowed);

    const AdvancedOptions& a = c.advanced;
    out.setting("priority.grabbed", pick(kGrabbed, a.grabbedPriority));
    out.setting("priority.ungrabbed", pick(kUngrabbed, a.ungrabbedPriority));
    out.flag("debug", a.debug);
    out.flag("disable_acceleration", a.disableAcceleration);
    out.setting("MemTrimRate", a.memPageTrim ? "0" : "30");
    out.flag("logging", a.logging);
    out.flag("monitor_control.log_vmsample", a.logPeriodic);
    out.setting("log.filename", a.logFolder);
    out.flag("templateVM", a.templateVm);
    if (a.clusterEnabled) {
        for (const vmx::FixedKey& k : vmx::clusterKeys()) out.fixedSetting(k.key, k.value);
        // The disks' own mode and type, which the fixed lines stand in for, for a later session.
        for (int node : {0, 1}) {
            const Device* disk = c.devices.deviceOnNode("SCSI", 0, node);
            if (!disk || disk->type != DeviceType::HardDisk) continue;
            for (std::string_view suffix : {".mode", ".deviceType"}) {
                if (auto own = disk->settings.get(suffix))
                    out.raw(vmx::ownValueComment("scsi0:" + std::to_string(node) + std::string(suffix), *own));
            }
        }
    }
}

}  // namespace

std::string relativeToVmxFolder(const std::string& fileName, const std::string& vmxFolder) {
#ifdef _WIN32
    std::size_t sep = fileName.find_last_of("\\/");
    constexpr bool kFoldCase = true;   // Windows file names ignore case
#else
    std::size_t sep = fileName.rfind('/');
    constexpr bool kFoldCase = false;  // another case is another file
#endif
    if (sep == std::string::npos) return fileName;
    std::string_view folder(vmxFolder);
    while (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\')) folder.remove_suffix(1);
    std::string_view fileFolder(fileName.data(), sep == 0 ? 1 : sep);
    bool same = kFoldCase ? equalsIgnoreCase(fileFolder, folder) : fileFolder == folder;
    if (!folder.empty() && same) return fileName.substr(sep + 1);
    return fileName;
}

namespace {

// The whole file into `out`. A "#!" line that opened the file comes first, then the
// ".encoding" line of the opened file, as the product writes it: it says how the bytes after
// it are to be read. A file converted to UTF-8 says so there.
void writeAll(VmxLines& out, const VmConfiguration& c) {
    if (!c.fileText.firstLine.empty()) out.raw(c.fileText.firstLine);
    if (c.fileText.convertToUtf8) out.setting(".encoding", "UTF-8");
    KeptLinesToWrite kept(c.keptLines);
    kept.forEachLeft([&](std::string_view line, const std::string& key) {
        if (key == ".encoding") vmx::writeKeptWholeLine(out, line);
    });
    out.raw(vmx::kRule);
    out.raw(vmx::titleLine());
    out.raw(vmx::kShortRule);
    out.raw(vmx::kGeneratedBy);
    if (c.advanced.clusterEnabled) {
        for (const vmx::FixedKey& k : vmx::clusterKeys()) out.claim(k.key);
    }
    writeIdentity(out, c);

    const DeviceStore& s = c.devices;
    const std::string& folder = c.identity.vmxFolder;
    // Each bus: its controllers, then the devices on its nodes.
    const std::pair<std::string_view, std::string_view> busBanners[] = {
        {vmx::kIdeControllersBanner, vmx::kIdeDisksBanner},
        {vmx::kScsiControllersBanner, vmx::kScsiDisksBanner},
        {vmx::kSataControllersBanner, vmx::kSataDisksBanner},
        {vmx::kNvmeControllersBanner, vmx::kNvmeDisksBanner},
    };
    for (const BusRow& row : busRows()) {
        const auto& [controllers, disks] = busBanners[static_cast<std::size_t>(row.bus)];
        writeSection(out, controllers, sortedByNumber(s, row.controllerType), folder, kept);
        writeSection(out, disks, devicesOnBus(s, row.label), folder, kept);
    }
    writeSection(out, vmx::kNicsBanner, sortedByNumber(s, DeviceType::Network), folder, kept);
    writeSection(out, vmx::kSoundBanner, sortedByNumber(s, DeviceType::Sound), folder, kept);
    writeSection(out, vmx::kUsbBanner, sortedByNumber(s, DeviceType::Usb), folder, kept);
    writeSection(out, vmx::kFloppiesBanner, sortedByNumber(s, DeviceType::Floppy), folder, kept);
    writeSection(out, vmx::kParallelBanner, sortedByNumber(s, DeviceType::ParallelPort), folder, kept);
    writeSection(out, vmx::kSerialBanner, sortedByNumber(s, DeviceType::SerialPort), folder, kept);

    out.banner(vmx::kDisplayBanner);
    for (const Device& d : s.devices(DeviceType::Display)) writeDevice(out, d, folder, kept);
    out.banner(vmx::kMouseBanner);
    for (const Device& d : s.devices(DeviceType::Mouse)) writeDevice(out, d, folder, kept);

    writeAdvanced(out, c, kept);

    std::size_t start = out.mark();
    out.banner(vmx::kOtherParamsBanner);
    std::size_t lines = out.mark();
    kept.forEachLeft([&](std::string_view line, const std::string& key) {
        if (key.empty()) out.raw(line);
        else vmx::writeKeptWholeLine(out, line);
    });
    out.writeDeferred();
    if (out.mark() == lines) out.truncate(start);
    out.banner(vmx::kEndBanner);
}

}  // namespace

std::string writeVmxText(const VmConfiguration& c, std::optional<EncodingGap>* gap) {
    VmxLines out(&c.heldKeys);
    const TextCodec codec = codecOf(c.fileText);
    out.setEncoding(codec, c.fileText.convertToUtf8 ? TextCodec::utf8() : codec);
    writeAll(out, c);
    if (gap) *gap = out.gap();
    return out.join();
}

bool writesOwnKeys(const Device& device, const std::string& vmxFolder,
                   const std::map<std::string, std::string>& held) {
    VmxLines out(&held, false);
    return writeOwnKeys(out, device, keyPrefix(device), vmxFolder);
}

std::unordered_map<std::string, std::string> editorValues(const VmConfiguration& c) {
    VmxLines out(nullptr, false);
    writeAll(out, c);
    return std::move(out).editorValues();
}

}  // namespace arden
