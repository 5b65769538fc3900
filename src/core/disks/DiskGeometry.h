#pragma once
// The cylinder/head/sector geometry written into a new disk's descriptor, chosen from the
// disk's size and its adapter.
#include <cstdint>

#include "core/disks/DiskTypes.h"

namespace arden::disks {

struct DiskGeometry {
    std::int64_t cylinders = 0;
    int heads = 0;
    int sectors = 0;
    bool operator==(const DiskGeometry&) const = default;
};

// IDE disks cap their cylinders at this count, as an IDE BIOS cannot address more.
inline constexpr std::int64_t kIdeMaxCylinders = 16383;

// IDE: 16 heads, 63 sectors. SCSI adapters: 64/32 up to 1 GiB, 128/32 up to 2 GiB,
// 255/63 above. Cylinders are the total divided by heads x sectors, rounded to the nearest
// integer (halves to even), capped for IDE.
DiskGeometry geometryFor(std::int64_t totalSectors, DiskAdapter adapter);

}  // namespace arden::disks
