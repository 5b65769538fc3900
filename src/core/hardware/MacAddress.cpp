#include "core/hardware/MacAddress.h"

#include <cstdio>

namespace arden {

std::string generatedMacAddress(std::uint32_t seed) {
    char buf[18];
    std::snprintf(buf, sizeof buf, "00:0C:29:%02X:%02X:%02X", (seed >> 16) & 0xFFu, (seed >> 8) & 0xFFu,
                  seed & 0xFFu);
    return buf;
}

}  // namespace arden
