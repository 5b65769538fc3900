#include "core/config/SaveFlow.h"

#include <cerrno>
#include <system_error>

#include "core/config/VmxWriter.h"
#include "core/support/AtomicFile.h"

namespace arden {

int pciDeviceTally(const VmConfiguration& config) {
    int tally = 1;
    for (DeviceType t : {DeviceType::ScsiController, DeviceType::Network, DeviceType::Sound}) {
        for (const Device& d : config.devices.devices(t)) {
            if (d.enabled()) ++tally;
        }
    }
    return tally;
}

std::optional<Message> checkSave(const VmConfiguration& config) {
    if (config.identity.vmxFileName.empty() || config.identity.vmxFolder.empty()) {
        return Message{MessageKind::Warning, {TextPart::fromId(189)}, {TextPart::fromId(190)}};
    }
    int tally = pciDeviceTally(config);
    if (tally > 6) {
        return Message{MessageKind::Critical,
                       {TextPart::fromId(186)},
                       {TextPart::fromId(187), TextPart::fixed(std::to_string(tally - 1)), TextPart::fromId(188)}};
    }
    return std::nullopt;
}

std::optional<Message> inUseQuestion(const VmConfiguration& config) {
    std::filesystem::path lock = config.vmxPath() + ".lck";
    std::error_code ec;
    if (!std::filesystem::exists(lock, ec)) return std::nullopt;
    return Message{MessageKind::Question,
                   {TextPart::fixed("Virtual Machine in Use")},
                   {TextPart::fixed("The folder " + lock.string() +
                                    " shows that a VMware product has this virtual machine open; it may write over "
                                    "your changes when it closes.  Save anyway?")}};
}

SaveResult CreateVmxFile(const VmConfiguration& config) {
    SaveResult result;
    result.path = config.vmxPath();
    if (auto refusal = checkSave(config)) {
        result.refusal = std::move(refusal);
        return result;
    }
    // A missing folder is created, one level only: a missing parent makes the save fail.
    std::filesystem::path folder = config.identity.vmxFolder;
    std::error_code ec;
    if (!std::filesystem::is_directory(folder, ec)) {
        if (!std::filesystem::create_directory(folder, ec) || ec) {
            result.refusal = Message{MessageKind::Critical,
                                     {TextPart::fixed("Unable to Save")},
                                     {TextPart::fixed("Cannot create the folder " + folder.string() + ": " +
                                                      (ec ? ec.message() : std::string("it exists and is not a folder")))}};
            return result;
        }
    }
    result.text = writeVmxText(config);
    if (auto error = writeFileAtomically(result.path, result.text)) {
        result.refusal = Message{MessageKind::Critical, {TextPart::fixed("Unable to Save")}, {TextPart::fixed(*error)}};
        return result;
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
                   {TextPart::fixed("Backup file created as: " + backup.string())}};
}

}  // namespace arden
