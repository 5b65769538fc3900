// arden-forge-cli device add | remove | node, memory: hardware edits through the editor's rules
// (add limits, node placement and moving, memory checks) and its save flow with a backup.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <random>

#include "cli/CliCommands.h"
#include "cli/ConfigFile.h"
#include "core/config/DeviceFeatures.h"
#include "core/config/HardwareFigures.h"
#include "core/hardware/DeviceDefaults.h"
#include "core/hardware/DeviceFiles.h"
#include "core/hardware/DeviceTexts.h"
#include "core/hardware/NodeAssignment.h"
#include "core/hardware/SoundAdapter.h"
#include "core/support/TextUtil.h"
#include "core/support/PathText.h"

namespace arden::cli {
namespace {

namespace fs = std::filesystem;

std::optional<DeviceType> typeFromName(std::string_view name) {
    for (int n = 0; n < kDeviceTypeCount; ++n) {
        DeviceType t = *deviceTypeFromNumber(n);
        if (equalsIgnoreCase(englishTypeName(t), name)) return t;
    }
    return std::nullopt;
}

std::string joinQuoted(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& t : texts) joined += (joined.empty() ? "\"" : ", \"") + t + "\"";
    return joined;
}

std::string typeNames(bool (*wanted)(DeviceType)) {
    std::vector<std::string> names;
    for (int n = 0; n < kDeviceTypeCount; ++n) {
        DeviceType t = *deviceTypeFromNumber(n);
        if (wanted(t)) names.emplace_back(englishTypeName(t));
    }
    return joinQuoted(names);
}

int refuse(std::string title, std::string text) {
    printMessage(Message{MessageKind::Warning, {TextPart::fixed(std::move(title))}, {TextPart::fixed(std::move(text))}});
    return Refused;
}

// Shows a refusal or notice; true when it refused (a warning).
bool show(const std::optional<Message>& message) {
    if (!message) return false;
    printMessage(*message);
    return message->kind != MessageKind::Information;
}

// "Hard Disk 1<TAB>IDE 0:0": an entry's display text and its node, on standard output.
void printEntry(const DeviceStore& store, const Device& device) {
    std::string node = placedNodeLabel(device);
    std::cout << store.displayText(device) << (node.empty() ? "" : "\t" + node) << '\n';
}

// The device whose hardware-list text is `entry` (without regard to case), or the disk-like
// device on the node `entry` names ("IDE 0:0", "SCSI 0:3").
Device* findEntry(DeviceStore& store, std::string_view entry) {
    for (const HardwareListEntry& e : store.hardwareList()) {
        if (equalsIgnoreCase(e.text, entry)) return store.find(e.type, e.identifier);
    }
    auto node = parseNodeLabel(trimBlanks(entry));
    if (!node || !node->holder.empty()) return nullptr;
    const Device* onNode = store.deviceOnNode(busName(node->bus), node->controller, node->node);
    return onNode ? store.find(onNode->type, onNode->identifier) : nullptr;
}

// The machine of FILE (args[0]) with its entry ENTRY (args[1]), for the commands that edit one
// entry; `device` is null when something was refused or wrong, and `exitCode` says what.
struct EntryEdit {
    std::optional<VmConfiguration> config;
    Device* device = nullptr;
    int exitCode = Success;
};

EntryEdit loadEntry(const Args& args, std::size_t argumentCount, const std::string& usage) {
    EntryEdit edit;
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) {
        edit.exitCode = usageError("unknown option " + unknown);
    } else if (args.size() != argumentCount) {
        edit.exitCode = usageError(usage);
    } else if (!(edit.config = loadConfiguration(args[0]))) {
        edit.exitCode = Refused;
    } else if (!(edit.device = findEntry(edit.config->devices, args[1]))) {
        std::vector<std::string> texts;
        for (const HardwareListEntry& e : edit.config->devices.hardwareList()) texts.push_back(e.text);
        edit.exitCode = refuse("No Such Device", args[0] + " has no hardware entry \"" + args[1] +
                                                     "\" and no device on such a node; its entries are " +
                                                     joinQuoted(texts));
    }
    return edit;
}

int runAdd(Args args) {
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    bool missing = false;
    auto node = takeOption(args, "--node", missing);
    auto file = takeOption(args, "--file", missing);
    if (missing) return usageError("--node and --file need a value");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 2) return usageError("device add needs a FILE and a TYPE");
    auto type = typeFromName(args[1]);
    if (!type) return usageError("unknown device type \"" + args[1] + "\"; use one of " + typeNames([](DeviceType) { return true; }));
    const std::string name(englishTypeName(*type));
    if (file && !takesFile(*type)) return usageError("--file applies to " + typeNames(takesFile) + ", not to \"" + name + "\"");
    if (!file && needsFile(*type)) return usageError("a " + name + " needs --file (the disk file or host device it uses)");
    if (node && !isNodeDevice(*type)) return usageError("--node applies to " + typeNames(isNodeDevice) + ", not to \"" + name + "\"");

    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    DeviceStore& store = config->devices;
    AddHardwareInfo info = addHardwareInfo(*type, store.count(*type), deviceMaxima(*config));
    if (!info.okEnabled) {
        printMessage(Message{MessageKind::Warning, {TextPart::fromId(90)}, info.text});
        return Refused;
    }
    Device& device = store.createDevice(*type);
    if (*type == DeviceType::Network) giveGeneratedAddress(store, device, std::random_device{}());
    if (file) useFile(device, pathText(fs::absolute(filePath(*file))));
    if (node) {
        if (trimBlanks(*node) == kNoNodeLabel) {
            return refuse("Invalid Node Selection", "\"N/A\" places a device on no node, and a " + name +
                                                        " needs one: give a free node (" + freeNodesText(store, *type) +
                                                        ") or leave --node out for the first free one. Nothing was written.");
        }
        NodeChoice choice = chooseNode(store, *type, device.identifier, *node);
        show(choice.message);
        if (!choice.changed) {
            std::cerr << "Nothing was written.\n";
            return Refused;
        }
    } else if (isNodeDevice(*type)) {
        Placement placement = placeOnFirstFreeNode(store, device);
        for (const Message& notice : placement.notices) printMessage(notice);
        if (!placement.placed) {
            return refuse("No Available Nodes", store.displayText(device) + " was not added: " +
                                                    (store.busOptions.modernPlacement
                                                         ? "it needs a free node (a SCSI, SATA or NVMe Controller adds more)"
                                                         : "it needs a free IDE or SCSI node (each SCSI Controller adds seven)"));
        }
    }
    if (int rc = saveEditedConfiguration(args[0], *config, yes, dryRun); rc != Success || dryRun) return rc;
    printEntry(store, device);
    return Success;
}

int runRemove(Args args) {
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    const bool withDevices = takeFlag(args, "--with-devices");
    EntryEdit edit = loadEntry(args, 2, "device remove needs a FILE and an ENTRY");
    if (!edit.device) return edit.exitCode;
    DeviceStore& store = edit.config->devices;
    Device& device = *edit.device;
    const std::string text = store.displayText(device);
    if (!canRemoveDevice(device.type, store.count(device.type))) {
        return refuse("Device Not Removable", text + " cannot be removed: a machine keeps its memory and at least one CPU");
    }
    std::vector<std::string> report;
    if (const auto bus = busOfController(device.type); bus && busRow(*bus).declaredControllers) {
        std::vector<std::string> held;
        for (const Device* d : devicesOnController(store, *bus, device.number))
            held.push_back(store.displayText(*d) + " (" + placedNodeLabel(*d) + ")");
        if (!held.empty() && !withDevices) {
            return refuse("Controller Holds Devices",
                          text + " holds " + joinQuoted(held) + "; give --with-devices to move each to a free node of "
                          "another bus, or remove it with the controller where none is free. Nothing was written.");
        }
        report = removeController(store, device.type, device.identifier);
    } else {
        store.remove(device.type, device.identifier);
    }
    if (int rc = saveEditedConfiguration(args[0], *edit.config, yes, dryRun); rc != Success || dryRun) return rc;
    std::cout << "Removed " << text << '\n';
    for (const std::string& line : report) std::cout << line << '\n';
    return Success;
}

int runNode(Args args) {
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    EntryEdit edit = loadEntry(args, 3, "device node needs a FILE, an ENTRY and a NODE");
    if (!edit.device) return edit.exitCode;
    std::optional<VmConfiguration>& config = edit.config;
    DeviceStore& store = config->devices;
    Device* device = edit.device;
    if (!isNodeDevice(device->type)) {
        return refuse("Invalid Node Selection", store.displayText(*device) + " sits on no node; only " +
                                                    typeNames(isNodeDevice) + " do");
    }
    NodeChoice choice = chooseNode(store, device->type, device->identifier, args[2]);
    show(choice.message);
    if (!choice.changed) {
        std::cerr << store.displayText(*device) << " stays on " << placedNodeLabel(*device) << ": nothing was written.\n";
        return choice.message ? Refused : Success;
    }
    if (int rc = saveEditedConfiguration(args[0], *config, yes, dryRun); rc != Success || dryRun) return rc;
    printEntry(store, *device);
    if (choice.movedType) printEntry(store, *store.find(*choice.movedType, choice.movedIdentifier));
    return Success;
}

}  // namespace

int runDevice(Args args) {
    if (args.empty()) return usageError("device needs add, remove or node");
    std::string action = args[0];
    args.erase(args.begin());
    if (action == "add") return runAdd(std::move(args));
    if (action == "remove") return runRemove(std::move(args));
    if (action == "node") return runNode(std::move(args));
    return usageError("unknown device action '" + action + "'; use add, remove or node");
}

int runMemory(Args args) {
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 2) return usageError("memory needs a FILE and a size in MB");
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    MemoryCheck check = checkMemorySize(args[1], memoryRange(*config));
    if (show(check.refusal)) return Refused;
    if (!check.megabytes) return usageError("memory needs a size in MB");
    DeviceStore& store = config->devices;
    // A loaded machine always has its memory entry (the product's default when the file has none).
    Device* memory = store.find(DeviceType::Memory, store.devices(DeviceType::Memory)[0].identifier);
    memory->settings.setNumber("memsize", *check.megabytes);
    if (check.rounded) {
        std::cerr << "Memory is a multiple of 4 MB: " << trimBlanks(args[1]) << " MB was rounded down to "
                  << *check.megabytes << " MB.\n";
    }
    if (int rc = saveEditedConfiguration(args[0], *config, yes, dryRun); rc != Success || dryRun) return rc;
    std::cout << "Memory: " << *check.megabytes << " MB\n";
    return Success;
}

int runSound(Args args) {
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    std::string words;
    for (const SoundAdapterType& t : soundAdapterTypes()) words += (words.empty() ? "" : ", ") + std::string(t.cliName);
    if (args.size() != 2) return usageError("sound needs a FILE and an adapter type (" + words + ")");
    const auto position = soundAdapterFromCliName(args[1]);
    if (!position) return usageError("unknown sound adapter type \"" + args[1] + "\"; use " + words);
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    DeviceStore& store = config->devices;
    if (store.count(DeviceType::Sound) == 0)
        return refuse("No Sound Adapter", args[0] + " has no sound adapter; add one with: device add FILE \"Sound Adapter\"");
    const auto offered = offeredSoundAdapters(config->figures());
    if (std::find(offered.begin(), offered.end(), *position) == offered.end())
        return refuse("Invalid Adapter Type", productText(config->product.platform, config->product.version) +
                                                  " does not offer the sound adapter type \"" + args[1] + "\"");
    Device& sound = *store.find(DeviceType::Sound, store.devices(DeviceType::Sound)[0].identifier);
    if (setSoundAdapter(sound.settings, *position)) {
        if (int rc = saveEditedConfiguration(args[0], *config, yes, dryRun); rc != Success || dryRun) return rc;
    }
    std::cout << "Sound Adapter: " << soundAdapterTypes()[static_cast<std::size_t>(*position)].name << '\n';
    return Success;
}

}  // namespace arden::cli
