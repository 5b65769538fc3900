#include "core/config/NetworkAdapterTypes.h"

#include <string>

#include "core/config/ProductTables.h"

namespace arden {
namespace {

// "AMD Lance", "VMXNet", "E1000" for a written value; the value itself when unknown.
std::string typeName(std::string_view value) {
    auto position = nicTypePosition(value);
    if (!position) return std::string(value);
    return std::string(nicTypeName(*position));
}

}  // namespace

bool nicTypeOffered(int platform, int version, std::string_view value) {
    auto position = nicTypePosition(value);
    return position && static_cast<std::size_t>(*position) < nicTypeEntries(platform, version).size();
}

std::optional<Message> checkNicType(int platform, int version, std::string_view value) {
    if (nicTypeOffered(platform, version, value)) return std::nullopt;
    std::string offered;
    const std::size_t count = nicTypeEntries(platform, version).size();
    for (std::size_t i = 0; i < count; ++i) {
        offered += (i == 0 ? "" : i + 1 == count ? " or " : ", ") + std::string(nicTypeValue(static_cast<int>(i)));
    }
    return Message{MessageKind::Warning, {TextPart::fixed("Invalid Adapter Type")},
                   {TextPart::fixed(productText(platform, version) + " does not offer the adapter type \"" +
                                    std::string(value) + "\"; use " + offered + ".")}};
}

std::optional<Message> fitNicTypesToProduct(DeviceStore& devices, int platform, int version) {
    const std::string first(nicTypeValue(0));
    std::string changed;
    for (const Device& d : devices.devices(DeviceType::Network)) {
        const std::string type = d.settings.text(".virtualDev");
        // An adapter without a type of its own gets the product's default and needs no change.
        if (type.empty() || nicTypeOffered(platform, version, type)) continue;
        changed += "\n" + devices.displayText(d) + ": " + typeName(type) + " is now " + typeName(first) + ".";
        devices.find(DeviceType::Network, d.identifier)->settings.set(".virtualDev", first);
    }
    if (changed.empty()) return std::nullopt;
    return Message{MessageKind::Information, {TextPart::fixed("Adapter Type Changed")},
                   {TextPart::fixed(productText(platform, version) +
                                    " does not offer every network adapter type this machine used:" + changed)}};
}

}  // namespace arden
