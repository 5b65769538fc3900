#include "core/disks/DiskGeometry.h"

#include <algorithm>

namespace arden::disks {

namespace {

constexpr std::int64_t kOneGiBSectors = 2097152;
constexpr std::int64_t kTwoGiBSectors = 4194304;

struct HeadsSectors {
    int heads;
    int sectors;
};

HeadsSectors headsAndSectors(std::int64_t totalSectors, DiskAdapter adapter) {
    if (adapter == DiskAdapter::Ide) return {16, 63};
    if (totalSectors <= kOneGiBSectors) return {64, 32};
    if (totalSectors > kTwoGiBSectors) return {255, 63};
    return {128, 32};
}

}  // namespace

DiskGeometry geometryFor(std::int64_t totalSectors, DiskAdapter adapter) {
    HeadsSectors hs = headsAndSectors(totalSectors, adapter);
    double exact = static_cast<double>(totalSectors) / (static_cast<double>(hs.heads) * hs.sectors);
    std::int64_t cylinders = roundHalfEven(exact);
    if (adapter == DiskAdapter::Ide) cylinders = std::min(cylinders, kIdeMaxCylinders);
    return {cylinders, hs.heads, hs.sectors};
}

}  // namespace arden::disks
