#include "core/config/SaveFlow.h"

#include <cerrno>
#include <system_error>

#include "core/config/ProductLimits.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "core/hardware/NodeAssignment.h"
#include "core/support/AtomicFile.h"
#include "core/support/TextUtil.h"

namespace arden {

namespace {

// "the character "位" (U+4F4D) of displayName cannot be written in windows-1252, the encoding of FILE"
std::string gapText(const VmConfiguration& config, const EncodingGap& gap) {
    return "the character " + gap.character.describe() + " of " + gap.key + " cannot be written in " +
           config.fileText.encoding + ", the encoding of " + config.vmxPath();
}

std::optional<EncodingGap> encodingGap(const VmConfiguration& config) {
    // UTF-8 holds every character: no text needs to be written to know it.
    if (config.fileText.convertToUtf8 || codecOf(config.fileText).isUtf8()) return std::nullopt;
    std::optional<EncodingGap> gap;
    writeVmxText(config, &gap);
    return gap;
}

}  // namespace

int pciDeviceTally(const VmConfiguration& config) {
    int tally = 1;
    for (DeviceType t : {DeviceType::ScsiController, DeviceType::SataController, DeviceType::NvmeController,
                         DeviceType::Network, DeviceType::Sound}) {
        for (const Device& d : config.devices.devices(t)) {
            if (d.enabled()) ++tally;
        }
    }
    return tally;
}

namespace {

Message unableToSave(std::string text) {
    return Message{MessageKind::Critical, {TextPart::fixed("Unable to Save")}, {TextPart::fixed(std::move(text))}};
}

}  // namespace

std::optional<Message> checkDevicesWritable(const VmConfiguration& config) {
    const DeviceStore& store = config.devices;
    for (DeviceType t : {DeviceType::HardDisk, DeviceType::CdRom, DeviceType::GenericScsi}) {
        for (const Device& d : store.devices(t)) {
            const std::string name = store.displayText(d);
            if (placedNodeLabel(d).empty()) {
                // A product with SATA has more buses than the original IDE and SCSI.
                const std::string_view buses = store.busOptions.modernPlacement ? "node" : "IDE or SCSI node";
                return unableToSave(name + " sits on no " + std::string(buses) + ", so the file would not hold it. "
                                           "Choose a free node on its page, or remove it. Nothing was written.");
            }
            if (t == DeviceType::HardDisk && d.enabled() && trimBlanks(d.settings.text(".fileName")).empty()) {
                return unableToSave(name + " (" + placedNodeLabel(d) + ") names no disk file, and a machine with "
                                           "such a disk does not start. Choose its disk file on its page, or remove "
                                           "it. Nothing was written.");
            }
        }
    }
    return std::nullopt;
}

std::optional<Message> checkWrittenSize(const std::string& text) {
    if (text.size() > kMaxVmxFileBytes) {
        return unableToSave("The file would be " + std::to_string(text.size()) +
                            " bytes long, and a configuration file is read up to " + std::to_string(kMaxVmxFileBytes) +
                            " bytes: it could not be opened again. Shorten the longest texts (names, folders, "
                            "notes). Nothing was written.");
    }
    std::size_t start = 0;
    for (std::size_t line = 1; start < text.size(); ++line) {
        std::size_t end = std::min(text.find('\n', start), text.size());
        std::size_t length = end - start - (end > start && text[end - 1] == '\r' ? 1 : 0);
        if (length > kMaxVmxLineBytes) {
            return unableToSave("Line " + std::to_string(line) + " would be " + std::to_string(length) +
                                " bytes long, and configuration lines are read up to " +
                                std::to_string(kMaxVmxLineBytes) +
                                " bytes: the file could not be opened again. Shorten that text. Nothing was written.");
        }
        start = end + 1;
    }
    return std::nullopt;
}

std::optional<Message> clusteringRefusal(const VmConfiguration& config) {
    if (!config.advanced.clusterEnabled) return std::nullopt;
    for (int node : {0, 1}) {
        const Device* d = config.devices.deviceOnNode("SCSI", 0, node);
        if (!d || d->type == DeviceType::HardDisk) continue;
        return Message{MessageKind::Warning, {TextPart::fixed("Clustering Not Possible")},
                       {TextPart::fixed("Clustering makes the devices on SCSI 0:0 and SCSI 0:1 shared disks of a "
                                        "cluster, and " + config.devices.displayText(*d) + " stands on SCSI 0:" +
                                        std::to_string(node) + ". Move it to another node first.")}};
    }
    return std::nullopt;
}

std::optional<Message> checkSave(const VmConfiguration& config) {
    if (!config.fileText.readOnlyReason.empty()) {
        return Message{MessageKind::Critical, {TextPart::fixed("Read-only Configuration")},
                       {TextPart::fixed(config.vmxPath() + " cannot be saved or changed: " +
                                        config.fileText.readOnlyReason + ". Nothing was written.")}};
    }
    if (config.identity.vmxFileName.empty() || config.identity.vmxFolder.empty()) {
        return Message{MessageKind::Warning, {TextPart::fromId(189)}, {TextPart::fromId(190)}};
    }
    if (auto device = checkDevicesWritable(config)) return device;
    if (auto clustering = clusteringRefusal(config)) return clustering;
    // Only products without PCI bridges (hardware versions 3 and 4) stop at five devices.
    int tally = pciDeviceTally(config);
    if (config.figures().fivePciDevices() && tally > 6) {
        return Message{MessageKind::Critical,
                       {TextPart::fromId(186)},
                       {TextPart::fromId(187), TextPart::fixed(std::to_string(tally - 1)), TextPart::fromId(188)}};
    }
    if (auto limits = checkProductLimits(config)) return limits;
    if (auto gap = encodingGap(config)) {
        return Message{MessageKind::Critical, {TextPart::fixed("Unable to Save")},
                       {TextPart::fixed("Not saved: " + gapText(config, *gap) + ".")}};
    }
    return std::nullopt;
}

namespace {

// The lock beside `file` whose name is the file's name and ".lck" in any letter case, and what it is.
std::optional<std::pair<std::filesystem::path, std::string>> findLock(const std::filesystem::path& file) {
    namespace fs = std::filesystem;
    const std::string wanted = pathText(file.filename()) + ".lck";
    fs::path folder = file.parent_path().empty() ? fs::path(".") : file.parent_path();
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        if (!equalsIgnoreCase(pathText(it->path().filename()), wanted)) continue;
        fs::file_status st = fs::symlink_status(it->path(), ec);
        std::string kind = fs::is_symlink(st) ? "link" : fs::is_directory(st) ? "folder" : "file";
        return std::make_pair(it->path(), kind);
    }
    return std::nullopt;
}

}  // namespace

std::optional<Message> inUseQuestion(const VmConfiguration& config) {
    // The product locks the path it opened; a file reached through a link is looked at on both sides.
    const std::filesystem::path given = filePath(config.vmxPath());
    auto lock = findLock(given);
    if (!lock) {
        std::filesystem::path real = followLinks(given);
        if (real != given) lock = findLock(real);
    }
    if (!lock) return std::nullopt;
    return Message{MessageKind::Question,
                   {TextPart::fixed("Virtual Machine in Use")},
                   {TextPart::fixed("The lock " + lock->second + " " + pathText(lock->first) +
                                    " shows that a VMware product has this virtual machine open; it may write over "
                                    "your changes when it closes.  Save anyway?")}};
}

std::optional<Message> readOnlyQuestion(const VmConfiguration& config) {
    namespace fs = std::filesystem;
    std::error_code ec;
    fs::file_status st = fs::status(config.vmxPath(), ec);
    if (!fs::is_regular_file(st)) return std::nullopt;
    const fs::perms write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if ((st.permissions() & write) != fs::perms::none) return std::nullopt;
    return Message{MessageKind::Question,
                   {TextPart::fixed("Read-only File")},
                   {TextPart::fixed("The file " + config.vmxPath() + " is read-only.  Save over it anyway?")}};
}

std::optional<Message> readOnlyNotice(const VmConfiguration& config) {
    if (config.fileText.readOnlyReason.empty()) return std::nullopt;
    return Message{MessageKind::Warning, {TextPart::fixed("Opened Read-only")},
                   {TextPart::fixed(config.vmxPath() + " is opened read-only: " + config.fileText.readOnlyReason +
                                    ". It cannot be changed or saved.")}};
}

std::optional<Message> encodingQuestion(const VmConfiguration& config) {
    auto gap = encodingGap(config);
    if (!gap) return std::nullopt;
    std::string text = gapText(config, *gap);
    text[0] = 'T';
    return Message{MessageKind::Question, {TextPart::fixed("Convert to UTF-8")},
                   {TextPart::fixed(text + ".  Convert the whole file to UTF-8 (\".encoding = \"UTF-8\"\", every "
                                           "line written in UTF-8)?")}};
}

Message convertToUtf8(VmConfiguration& config) {
    config.fileText.convertToUtf8 = true;
    return Message{MessageKind::Information, {TextPart::fixed("Converted to UTF-8")},
                   {TextPart::fixed(config.vmxPath() + " is written in UTF-8 instead of " + config.fileText.encoding +
                                    ": \".encoding = \"UTF-8\"\", and every line, the kept ones included, in UTF-8.")}};
}

SaveResult CreateVmxFile(const VmConfiguration& config) {
    SaveResult result;
    result.path = config.vmxPath();
    if (auto refusal = checkSave(config)) {
        result.refusal = std::move(refusal);
        return result;
    }
    // A missing folder is created, one level only: a missing parent makes the save fail.
    std::filesystem::path folder = filePath(config.identity.vmxFolder);
    std::error_code ec;
    if (!std::filesystem::is_directory(folder, ec)) {
        if (!std::filesystem::create_directory(folder, ec) || ec) {
            result.refusal = Message{MessageKind::Critical,
                                     {TextPart::fixed("Unable to Save")},
                                     {TextPart::fixed("Cannot create the folder " + pathText(folder) + ": " +
                                                      (ec ? ec.message() : std::string("it exists and is not a folder")))}};
            return result;
        }
    }
    result.text = writeVmxText(config);
    if (auto refusal = checkWrittenSize(result.text)) {
        result.refusal = std::move(refusal);
        return result;
    }
    FileWriteReport report;
    if (auto error = writeFileAtomically(filePath(result.path), result.text, &report)) {
        result.refusal = Message{MessageKind::Critical, {TextPart::fixed("Unable to Save")}, {TextPart::fixed(*error)}};
        return result;
    }
    if (report.inPlace) {
        result.notice = Message{MessageKind::Information, {TextPart::fixed("Saved in Place")},
                                {TextPart::fixed(result.path + " was rewritten in place because " + report.reason +
                                                 "; no backup copy of the old contents could be made beside it.")}};
    }
    result.written = true;
    return result;
}

Message makeBackup(const std::filesystem::path& vmxPath, bool& ok) {
    std::filesystem::path backup = vmxPath;
    backup += ".bak";
    std::string error;
    auto bytes = readWholeFile(vmxPath, error);
    if (bytes) {
        if (auto writeError = writeFileAtomically(backup, *bytes)) error = *writeError;
    }
    ok = error.empty();
    if (!ok) {
        return Message{MessageKind::Warning, {TextPart::fixed("Backup Failed")},
                       {TextPart::fixed("No backup was made: " + error)}};
    }
    return Message{MessageKind::Information, {TextPart::fixed("Backup Made")},
                   {TextPart::fixed("Backup file created as: " + pathText(backup))}};
}

}  // namespace arden
