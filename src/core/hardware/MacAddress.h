#pragma once
// MAC addresses of network adapters. Generated addresses lie in 00:0C:29:xx:yy:zz; static
// ones in 00:50:56:00:00:00-00:50:56:3F:FF:FF. Addresses are kept as six upper-case two-digit
// hexadecimal octets joined by ":".
#include <cstdint>
#include <string>

namespace arden {

// A generated-range address whose last three octets come from the low 24 bits of `seed`.
std::string generatedMacAddress(std::uint32_t seed);

}  // namespace arden
