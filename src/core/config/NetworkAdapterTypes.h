#pragma once
// Adapter types against the product: which types an adapter may use on the chosen platform
// and version, and fitting the adapters of a machine to a newly chosen version.
#include <optional>
#include <string_view>

#include "core/hardware/DeviceStore.h"
#include "core/support/Message.h"

namespace arden {

// Whether (platform, version) offers the adapter type written as `value` ("vlance",
// "vmxnet", "e1000"; any letter case).
bool nicTypeOffered(int platform, int version, std::string_view value);

// Refusal of an adapter type the product does not offer, naming what it offers; nothing
// when the type is offered.
std::optional<Message> checkNicType(int platform, int version, std::string_view value);

// Sets every adapter whose type (platform, version) lacks to the first type it offers, and
// returns the notice that tells the user which adapters changed; nothing when none did.
std::optional<Message> fitNicTypesToProduct(DeviceStore& devices, int platform, int version);

}  // namespace arden
