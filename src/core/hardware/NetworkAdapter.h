#pragma once
// Editing one network adapter: its connection, its address mode and address, its offset.
// The network page and the command line both change an adapter only through these
// functions, so both keep the same settings for the same choices.
#include <optional>
#include <string>
#include <string_view>

#include "core/hardware/Device.h"
#include "core/hardware/DeviceStore.h"
#include "core/hardware/MacAddress.h"

namespace arden {

// The four connection options in page order: bridged, host-only, NAT, custom.
enum class NicConnection { Bridged = 0, HostOnly = 1, Nat = 2, Custom = 3 };

// Host networks "VMnet0" to "VMnet9" that a custom connection may use.
constexpr int kVirtualNetworkCount = 10;

// The connection an adapter uses (".connectionType"; bridged when unset, as the product
// reads a missing key) and its virtual network number (".vnet" "VMnetN"; -1 when none).
NicConnection adapterConnection(const DeviceSettings& nic);
int adapterVirtualNetwork(const DeviceSettings& nic);

// Sets the connection; a custom connection also sets ".vnet" to "VMnet" + `network`.
void setAdapterConnection(DeviceSettings& nic, NicConnection connection, int network = 0);

// Reads "VMnet" + a number 0-9 (any letter case). Nothing for other texts.
std::optional<int> parseVirtualNetwork(std::string_view text);

// Chooses the address mode: sets ".addressType" and returns what the six boxes show for the
// adapter's stored address (see macBoxesForMode).
MacBoxes chooseAdapterMacMode(DeviceSettings& nic, MacMode mode);

// Stores a complete address for the adapter's current mode.
void setAdapterMacAddress(DeviceSettings& nic, const std::string& address);

// The question asked before a save when two adapters of the machine carry the same static
// address: it names the address and the adapters. Nothing when every static address is
// unique. Only a Yes answer lets the save go ahead.
std::optional<Message> duplicateStaticMacQuestion(const DeviceStore& devices);

}  // namespace arden
