// The disk descriptor reader and the disk summary on any bytes: nothing may crash, and a
// descriptor that is read gives a size that is not negative.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzCheck.h"
#include "core/disks/DiskInformation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace arden::disks;
    std::string_view text(reinterpret_cast<const char*>(data), size);
    std::string reason;
    std::optional<DiskInformation> info = parseDescriptor(text, reason);
    if (!info) {
        if (reason.empty()) arden::fuzz::fail("a refused descriptor gives no reason", "a reason", reason);
        return 0;
    }
    if (info->totalSectors < 0) {
        arden::fuzz::fail("the disk size is negative", "0 sectors or more", std::to_string(info->totalSectors));
    }
    diskSummaryMessage(*info);
    return 0;
}
