#pragma once
// Adapter types against the product: the types a network adapter can be given, which of them
// the chosen platform and version offers, and fitting the adapters of a machine to a newly
// chosen version.
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "core/hardware/DeviceStore.h"
#include "core/support/Message.h"

namespace arden {

// One adapter type: its list entry, the command line's word for it and what it writes.
struct NicType {
    std::string_view name;        // fixed product name: "AMD Lance", "VMXNet", "E1000", ...
    std::string_view cliName;     // "vlance", "vmxnet", "e1000", ...
    std::string_view virtualDev;  // written as "ethernetN.virtualDev"
    std::string_view features;    // written as "ethernetN.features" ("15": the enhanced vmxnet), or empty
};

// Every type, in list order; a position names a row.
std::span<const NicType> nicTypes();

// The positions (platform, version) offers, in list order: "AMD Lance" and "VMXNet" always,
// "E1000" from Workstation 5.5x on, the later types from the hardware version that brought them.
std::vector<int> offeredNicTypes(int platform, int version);

// The type of an adapter's settings: ".virtualDev" (any letter case), and ".features" "15"
// beside "vmxnet" for the enhanced vmxnet; nothing when unset or not a type of the list.
std::optional<int> adapterNicType(const DeviceSettings& adapter);
// Stores type `position`: ".virtualDev", and ".features" for the enhanced vmxnet (another type
// drops a "15" there). False when nothing changed.
bool setAdapterNicType(DeviceSettings& adapter, int position);
// The position of a command-line word (any case), or nothing.
std::optional<int> nicTypeFromCliName(std::string_view word);

// Whether (platform, version) offers the type of `adapter` (an adapter without a type has the
// product's default and is offered).
bool adapterTypeOffered(int platform, int version, const DeviceSettings& adapter);

// Refusal of type `position` when the product does not offer it, naming what it offers; nothing
// when the type is offered.
std::optional<Message> checkNicType(int platform, int version, int position);

// Sets every adapter whose type (platform, version) lacks to the first type it offers, and
// returns the notice that tells the user which adapters changed; nothing when none did.
std::optional<Message> fitNicTypesToProduct(DeviceStore& devices, int platform, int version);

}  // namespace arden
