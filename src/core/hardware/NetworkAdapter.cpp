#include "core/hardware/NetworkAdapter.h"

#include <map>
#include <vector>

#include "core/support/TextUtil.h"

namespace arden {
namespace {

// ".connectionType" values in the order of the connection options.
constexpr std::string_view kConnectionValues[] = {"bridged", "hostonly", "nat", "custom"};
constexpr std::string_view kVnetPrefix = "VMnet";

}  // namespace

NicConnection adapterConnection(const DeviceSettings& nic) {
    const std::string value = nic.text(".connectionType");
    for (int i = 0; i < 4; ++i) {
        if (equalsIgnoreCase(value, kConnectionValues[i])) return static_cast<NicConnection>(i);
    }
    return NicConnection::Bridged;
}

int adapterVirtualNetwork(const DeviceSettings& nic) { return parseVirtualNetwork(nic.text(".vnet")).value_or(-1); }

void setAdapterConnection(DeviceSettings& nic, NicConnection connection, int network) {
    nic.set(".connectionType", std::string(kConnectionValues[static_cast<int>(connection)]));
    if (connection == NicConnection::Custom) nic.set(".vnet", std::string(kVnetPrefix) + std::to_string(network));
}

std::optional<int> parseVirtualNetwork(std::string_view text) {
    if (text.size() != kVnetPrefix.size() + 1 || !startsWithIgnoreCase(text, kVnetPrefix)) return std::nullopt;
    const char digit = text.back();
    if (digit < '0' || digit > '9') return std::nullopt;
    return digit - '0';
}

MacBoxes chooseAdapterMacMode(DeviceSettings& nic, MacMode mode) {
    MacBoxes boxes = macBoxesForMode(mode, storedMacAddress(nic, mode));
    nic.set(".addressType", std::string(macModeValue(mode)));
    return boxes;
}

void setAdapterMacAddress(DeviceSettings& nic, const std::string& address) {
    nic.set(macAddressKey(adapterMacMode(nic)), address);
}

std::optional<Message> duplicateStaticMacQuestion(const DeviceStore& devices) {
    // Addresses compare without regard to case: a file may hold "00:50:56:3f:..".
    std::map<std::string, std::vector<int>> holders;
    for (const Device& d : devices.devices(DeviceType::Network)) {
        if (adapterMacMode(d.settings) != MacMode::Static) continue;
        const std::string address = d.settings.text(".address");
        if (!address.empty()) holders[toLowerAscii(address)].push_back(d.number);
    }
    std::string clashes;
    for (const auto& [address, numbers] : holders) {
        if (numbers.size() < 2) continue;
        std::string names;
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            names += (i == 0 ? "" : i + 1 == numbers.size() ? " and " : ", ") + ("ethernet" + std::to_string(numbers[i]));
        }
        std::string upperAddress = address;
        for (char& c : upperAddress) c = (c >= 'a' && c <= 'f') ? static_cast<char>(c - 'a' + 'A') : c;
        clashes += "\n" + names + " use " + upperAddress + ".";
    }
    if (clashes.empty()) return std::nullopt;
    return Message{MessageKind::Question,
                   {TextPart::fixed("Duplicate Static MAC Address")},
                   {TextPart::fixed("More than one network adapter of this virtual machine has the same static MAC "
                                    "address:" + clashes +
                                    "\nThe adapters will disturb each other on the network.  Save anyway?")}};
}

}  // namespace arden
