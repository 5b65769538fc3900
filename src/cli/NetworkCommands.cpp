// arden-forge-cli nic, share: network adapters and shared folders through the editor's rules
// (adapter types of the product, MAC address ranges, offset, share checks) and its save flow
// with a backup. Every value is checked before anything is changed: a refusal stores nothing.
#include <iostream>

#include "cli/CliCommands.h"
#include "cli/ConfigFile.h"
#include "core/config/NetworkAdapterTypes.h"
#include "core/config/ProductTables.h"
#include "core/hardware/DeviceKeys.h"
#include "core/hardware/NetworkAdapter.h"
#include "core/hardware/SharedFolderRules.h"
#include "core/shell/GetText.h"
#include "core/support/TextUtil.h"

namespace arden::cli {
namespace {

int refuse(const Message& message) {
    printMessage(message);
    return Refused;
}

int refuse(std::string title, std::string text) {
    return refuse(Message{MessageKind::Warning, {TextPart::fixed(std::move(title))}, {TextPart::fixed(std::move(text))}});
}

std::string adapterNames(const DeviceStore& store) {
    std::string names;
    for (const Device& d : store.devices(DeviceType::Network))
        names += (names.empty() ? "" : ", ") + ("ethernet" + std::to_string(d.number));
    return names.empty() ? "it has none" : "its adapters are " + names;
}

// Applies --connection: "bridged", "hostonly", "nat" or "VMnet0" to "VMnet9" (custom).
int applyConnection(DeviceSettings& nic, const std::string& text) {
    constexpr std::pair<std::string_view, NicConnection> kWords[] = {
        {"bridged", NicConnection::Bridged}, {"hostonly", NicConnection::HostOnly}, {"nat", NicConnection::Nat}};
    for (const auto& [word, connection] : kWords) {
        if (equalsIgnoreCase(text, word)) {
            setAdapterConnection(nic, connection);
            return Success;
        }
    }
    if (auto network = parseVirtualNetwork(text)) {
        setAdapterConnection(nic, NicConnection::Custom, *network);
        return Success;
    }
    return refuse("Invalid Connection", "\"" + text + "\" is not a connection; use bridged, hostonly, nat or a host "
                                       "network VMnet0 to VMnet9.");
}

// Applies --mac: "generated", or a static address in 00:50:56:00:00:00-00:50:56:3F:FF:FF.
int applyMac(DeviceSettings& nic, const std::string& text) {
    if (equalsIgnoreCase(text, macModeValue(MacMode::Generated))) {
        chooseAdapterMacMode(nic, MacMode::Generated);
        return Success;
    }
    std::string address;
    if (!checkMacAddress(MacMode::Static, text, address)) return refuse(macRangeMessage(MacMode::Static));
    chooseAdapterMacMode(nic, MacMode::Static);
    setAdapterMacAddress(nic, address);
    return Success;
}

int editAdapter(VmConfiguration& config, Device& nic, Args& args) {
    bool missing = false;
    auto type = takeOption(args, "--type", missing);
    auto connection = takeOption(args, "--connection", missing);
    auto mac = takeOption(args, "--mac", missing);
    auto offset = takeOption(args, "--offset", missing);
    auto enabled = takeOption(args, "--enabled", missing);
    if (missing) return usageError("--type, --connection, --mac, --offset and --enabled need a value");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (!type && !connection && !mac && !offset && !enabled) return usageError("nic needs at least one option to change");

    DeviceSettings& s = nic.settings;
    if (enabled) {
        bool on = false;
        if (!parseFlag(*enabled, on)) return usageError("--enabled takes yes or no, not \"" + *enabled + "\"");
        s.setFlag(".present", on);
    }
    if (type) {
        const auto position = nicTypeFromCliName(*type);
        if (!position) {
            std::string words;
            for (const NicType& t : nicTypes()) words += (words.empty() ? "" : ", ") + std::string(t.cliName);
            return usageError("--type takes " + words + ", not \"" + *type + "\"");
        }
        if (auto refusal = checkNicType(config.product.platform, config.product.version, *position)) return refuse(*refusal);
        setAdapterNicType(s, *position);
    }
    if (connection) {
        if (int rc = applyConnection(s, *connection); rc != Success) return rc;
    }
    if (mac) {
        if (int rc = applyMac(s, *mac); rc != Success) return rc;
    }
    if (offset) {
        OffsetCheck check = checkMacOffset(*offset);
        if (check.refusal) return refuse(*check.refusal);
        // As on the network page, the offset belongs to generated addresses only.
        if (adapterMacMode(s) != MacMode::Generated)
            return refuse("Invalid Address Offset", "ethernet" + std::to_string(nic.number) +
                                                        " has a static address; an offset applies to generated "
                                                        "addresses only (add --mac generated).");
        s.setNumber(".generatedAddressOffset", *check.value);
    }
    return Success;
}

int runShareAdd(Args args) {
    const bool readOnly = takeFlag(args, "--read-only");
    const bool thisSession = takeFlag(args, "--this-session");
    const bool disabled = takeFlag(args, "--disabled");
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 3) return usageError("share add needs a FILE, a NAME and a HOSTPATH");
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    auto& folders = config->sharedFolders.folders;
    std::vector<std::string> names;
    for (const SharedFolder& f : folders) names.push_back(f.name);
    ShareCheck check = checkShare(args[1], args[2], names);
    if (check.refusal) return refuse(*check.refusal);
    if (check.question) {
        printMessage(*check.question);
        if (!yes) {
            std::cerr << "Answered No: nothing was written (--yes answers Yes).\n";
            return Refused;
        }
    }
    SharedFolder share;
    share.name = args[1];
    share.hostPath = args[2];
    share.readOnly = readOnly;
    share.disableAfterSession = thisSession;
    share.enabled = !disabled;
    folders.push_back(std::move(share));
    // --yes also converts a file whose encoding cannot hold the name or the folder.
    return saveEditedConfiguration(args[0], *config, yes, dryRun);
}

int runShareRemove(Args args) {
    const bool yes = takeFlag(args, "--yes");
    const bool dryRun = takeFlag(args, "--dry-run");
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 2) return usageError("share remove needs a FILE and a NAME");
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    auto& folders = config->sharedFolders.folders;
    std::string names;
    for (auto f = folders.begin(); f != folders.end(); ++f) {
        if (f->name == args[1]) {
            folders.erase(f);
            return saveEditedConfiguration(args[0], *config, yes, dryRun);
        }
        names += (names.empty() ? "\"" : ", \"") + f->name + "\"";
    }
    return refuse("No Such Shared Folder", args[0] + " has no shared folder named \"" + args[1] + "\"; " +
                                               (names.empty() ? "it has none." : "its shared folders are " + names + "."));
}

int runShareList(Args args) {
    if (auto unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 1) return usageError("share list needs one FILE");
    auto config = loadConfiguration(args[0]);
    if (!config) return Refused;
    for (const SharedFolder& f : config->sharedFolders.folders) {
        std::cout << f.name << '\t' << f.hostPath << '\t'
                  << resolveText(shareAttributes(f.enabled, f.readOnly, f.disableAfterSession), languageOffset()) << '\n';
    }
    return Success;
}

}  // namespace

int runNic(Args args) {
    const bool yes = takeFlag(args, "--yes");
    if (args.size() < 2 || args[0].starts_with("--") || args[1].starts_with("--"))
        return usageError("nic needs a FILE and an adapter number N (ethernetN)");
    int number = -1;
    if (!parseInt32(args[1], number) || number < 0)
        return usageError("the adapter number must be 0 or more (ethernetN), not \"" + args[1] + "\"");
    const std::string file = args[0];
    args.erase(args.begin(), args.begin() + 2);
    const bool dryRun = takeFlag(args, "--dry-run");
    auto config = loadConfiguration(file);
    if (!config) return Refused;
    Device* nic = config->devices.findByNumber(DeviceType::Network, number);
    if (!nic)
        return refuse("No Such Adapter", file + " has no network adapter ethernet" + std::to_string(number) + "; " +
                                             adapterNames(config->devices) + ".");
    if (int rc = editAdapter(*config, *nic, args); rc != Success) return rc;
    return saveEditedConfiguration(file, *config, yes, dryRun);
}

int runShare(Args args) {
    if (args.empty()) return usageError("share needs add, remove or list");
    const std::string action = args[0];
    args.erase(args.begin());
    if (action == "add") return runShareAdd(std::move(args));
    if (action == "remove") return runShareRemove(std::move(args));
    if (action == "list") return runShareList(std::move(args));
    return usageError("unknown share action '" + action + "'; use add, remove or list");
}

}  // namespace arden::cli
