#pragma once
// MAC addresses of network adapters. Generated addresses lie in 00:0C:29:xx:yy:zz; static
// ones in 00:50:56:00:00:00-00:50:56:3F:FF:FF. Addresses are kept as six upper-case two-digit
// hexadecimal octets joined by ":".
//
// The network page edits an address in six two-character boxes, one per octet. These rules
// decide what the boxes show when a mode is chosen, which octet texts a box accepts, when the
// boxes make a complete address, and what the offset box accepts.
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/hardware/Device.h"
#include "core/support/Message.h"

namespace arden {

enum class MacMode { Generated, Static };

// "generated" / "static", as written in ".addressType".
std::string_view macModeValue(MacMode mode);
std::optional<MacMode> macModeFromValue(std::string_view value);  // case-insensitive

// The fixed first three octets of a mode, with the trailing ":" ("00:0C:29:", "00:50:56:").
std::string_view macPrefix(MacMode mode);

// The range shown in the refusal messages; it begins with a blank that separates it from
// the sentence before it (" 00:0C:29:xx:yy:zz", " 00:50:56:00:00:00-00:50:56:3F:FF:FF").
std::string_view macRangeText(MacMode mode);

using MacBoxes = std::array<std::string, 6>;

// The boxes a mode shows for `storedAddress`: its six octets when the address begins with the
// mode's prefix, six empty boxes otherwise.
MacBoxes macBoxesForMode(MacMode mode, std::string_view storedAddress);

// Checks the text of box `position` (0-5) in `mode`. An empty box is accepted as it is; any
// other text must be two characters that fit the position. On acceptance `accepted` holds the
// upper-cased octet.
bool checkMacOctet(MacMode mode, int position, std::string_view text, std::string& accepted);

// Joins the boxes into "XX:XX:XX:XX:XX:XX". An empty box stops the join: nothing is returned
// and the address stays incomplete.
std::optional<std::string> joinMacBoxes(const MacBoxes& boxes);

// Checks a whole address typed in one piece (the command line) by the same octet rules.
// On acceptance `accepted` holds the upper-cased address.
bool checkMacAddress(MacMode mode, std::string_view text, std::string& accepted);

// The information message of a refused octet: "Invalid Static MAC Address" / "The static MAC
// address range is" + range (ids 180, 181), or the generated pair (ids 182, 183).
Message macRangeMessage(MacMode mode);

// The generated-address offset: a whole number stored as a 32-bit signed integer, any value.
// A non-numeric text is refused with "Must be numeric!" titled "Invalid Address Offset"
// (ids 184, 185); a number too large for 32 bits is refused under the same title, naming
// the limits.
struct OffsetCheck {
    std::optional<int> value;
    std::optional<Message> refusal;
};
OffsetCheck checkMacOffset(std::string_view text);

// A generated-range address whose last three octets come from the low 24 bits of `seed`.
std::string generatedMacAddress(std::uint32_t seed);

// A static-range address whose last three octets come from the low 22 bits of `seed`, so the
// fourth octet stays within 00-3F.
std::string staticMacAddress(std::uint32_t seed);

// The settings keys of an adapter's address in a mode (".generatedAddress" / ".address").
std::string_view macAddressKey(MacMode mode);

// The mode an adapter is in (".addressType"; generated when unset or unknown).
MacMode adapterMacMode(const DeviceSettings& nic);

// The address an adapter holds for `mode`: that mode's own address when it has one, else the
// address of the mode it is in, so choosing the other mode sees the address held so far.
std::string storedMacAddress(const DeviceSettings& nic, MacMode mode);

}  // namespace arden
