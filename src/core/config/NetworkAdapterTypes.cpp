#include "core/config/NetworkAdapterTypes.h"

#include <algorithm>
#include <array>
#include <string>

#include "core/config/DeviceFeatures.h"
#include "core/config/ProductTables.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

constexpr std::string_view kVirtualDev = ".virtualDev";
constexpr std::string_view kFeatures = ".features";
constexpr std::string_view kEnhanced = "15";

// Which products offer a type: every product, those of the 64-bit era (E1000), or those with
// a later feature.
enum class Gate { Always, Era64, Feature };

struct NicTypeRow {
    NicType type;
    Gate gate;
    DeviceFeature feature;  // for Gate::Feature
};

constexpr std::array<NicTypeRow, 6> kRows{{
    {{"AMD Lance", "vlance", "vlance", ""}, Gate::Always, {}},
    {{"VMXNet", "vmxnet", "vmxnet", ""}, Gate::Always, {}},
    {{"Enhanced VMXNet", "vmxnet-enhanced", "vmxnet", kEnhanced}, Gate::Feature, DeviceFeature::NicEnhancedVmxnet},
    {{"E1000", "e1000", "e1000", ""}, Gate::Era64, {}},
    {{"E1000e", "e1000e", "e1000e", ""}, Gate::Feature, DeviceFeature::NicE1000e},
    {{"VMXNET 3", "vmxnet3", "vmxnet3", ""}, Gate::Feature, DeviceFeature::NicVmxnet3},
}};

const std::array<NicType, kRows.size()> kTypes = [] {
    std::array<NicType, kRows.size()> types{};
    for (std::size_t i = 0; i < kRows.size(); ++i) types[i] = kRows[i].type;
    return types;
}();

bool offered(const NicTypeRow& row, int platform, int version) {
    switch (row.gate) {
        case Gate::Always: return true;
        case Gate::Era64: return e1000Offered(platform, version);
        case Gate::Feature: return hasFeature(platform, version, row.feature);
    }
    return false;
}

// "AMD Lance", "VMXNet", ... for an adapter; the written value itself when unknown.
std::string typeName(const DeviceSettings& adapter) {
    auto position = adapterNicType(adapter);
    if (!position) return adapter.text(kVirtualDev);
    return std::string(kTypes[static_cast<std::size_t>(*position)].name);
}

}  // namespace

std::span<const NicType> nicTypes() { return kTypes; }

std::vector<int> offeredNicTypes(int platform, int version) {
    std::vector<int> positions;
    for (std::size_t i = 0; i < kRows.size(); ++i) {
        if (offered(kRows[i], platform, version)) positions.push_back(static_cast<int>(i));
    }
    return positions;
}

std::optional<int> adapterNicType(const DeviceSettings& adapter) {
    const auto dev = adapter.get(kVirtualDev);
    if (!dev) return std::nullopt;
    const bool enhanced = adapter.text(kFeatures) == kEnhanced;
    for (std::size_t i = 0; i < kTypes.size(); ++i) {
        // A "15" beside any type but vmxnet means nothing to the products: the type stays itself.
        if (equalsIgnoreCase(kTypes[i].virtualDev, *dev) &&
            (!equalsIgnoreCase(*dev, "vmxnet") || (kTypes[i].features == kEnhanced) == enhanced))
            return static_cast<int>(i);
    }
    return std::nullopt;
}

bool setAdapterNicType(DeviceSettings& adapter, int position) {
    if (position < 0 || static_cast<std::size_t>(position) >= kTypes.size()) return false;
    if (adapterNicType(adapter) == position) return false;
    const NicType& t = kTypes[static_cast<std::size_t>(position)];
    adapter.set(kVirtualDev, std::string(t.virtualDev));
    if (!t.features.empty()) adapter.set(kFeatures, std::string(t.features));
    else if (adapter.text(kFeatures) == kEnhanced) adapter.unset(kFeatures);
    return true;
}

std::optional<int> nicTypeFromCliName(std::string_view word) {
    for (std::size_t i = 0; i < kTypes.size(); ++i) {
        if (equalsIgnoreCase(kTypes[i].cliName, word)) return static_cast<int>(i);
    }
    return std::nullopt;
}

bool adapterTypeOffered(int platform, int version, const DeviceSettings& adapter) {
    if (!adapter.has(kVirtualDev)) return true;
    auto position = adapterNicType(adapter);
    return position && offered(kRows[static_cast<std::size_t>(*position)], platform, version);
}

std::optional<Message> checkNicType(int platform, int version, int position) {
    const auto positions = offeredNicTypes(platform, version);
    if (std::find(positions.begin(), positions.end(), position) != positions.end()) return std::nullopt;
    std::string offeredWords;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        offeredWords += (i == 0 ? "" : i + 1 == positions.size() ? " or " : ", ") +
                        std::string(kTypes[static_cast<std::size_t>(positions[i])].cliName);
    }
    return Message{MessageKind::Warning, {TextPart::fixed("Invalid Adapter Type")},
                   {TextPart::fixed(productText(platform, version) + " does not offer the adapter type \"" +
                                    std::string(kTypes[static_cast<std::size_t>(position)].cliName) + "\"; use " +
                                    offeredWords + ".")}};
}

std::optional<Message> fitNicTypesToProduct(DeviceStore& devices, int platform, int version) {
    const int first = offeredNicTypes(platform, version).front();
    std::string changed;
    for (const Device& d : devices.devices(DeviceType::Network)) {
        // An adapter without a type of its own gets the product's default and needs no change.
        if (adapterTypeOffered(platform, version, d.settings)) continue;
        changed += "\n" + devices.displayText(d) + ": " + typeName(d.settings) + " is now " +
                   std::string(kTypes[static_cast<std::size_t>(first)].name) + ".";
        setAdapterNicType(devices.find(DeviceType::Network, d.identifier)->settings, first);
    }
    if (changed.empty()) return std::nullopt;
    return Message{MessageKind::Information, {TextPart::fixed("Adapter Type Changed")},
                   {TextPart::fixed(productText(platform, version) +
                                    " does not offer every network adapter type this machine used:" + changed)}};
}

}  // namespace arden
