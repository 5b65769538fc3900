#pragma once
// The text descriptor of a new disk (the ".vmdk" file that names the extents) and the
// extent files it names.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/disks/DiskTypes.h"

namespace arden::disks {

struct ExtentPiece {
    std::int64_t sectors = 0;
    std::string fileName;  // without folder
    bool operator==(const ExtentPiece&) const = default;
};

// Extent numbers: at least three digits, zero-filled ("001", "042", "1000").
std::string extentNumberText(int number);

// The extent files of a disk of `totalSectors` whose descriptor is `baseName` + ".vmdk":
// split kinds give full pieces of `pieceSectors` (0 or more than the kind allows: the kind's
// own piece size) in order and one last piece with the rest; the single preallocated kind gives
// one "-flat" file. The single growable kind gives none: its one file is written whole by the
// back-end.
std::vector<ExtentPiece> extentPieces(DiskKind kind, std::string_view baseName, std::int64_t totalSectors,
                                      std::int64_t pieceSectors = 0);

struct DescriptorFields {
    std::string baseName;            // file name of the descriptor without ".vmdk" and folder
    std::int64_t totalSectors = 0;
    DiskAdapter adapter = DiskAdapter::Ide;
    DiskKind kind = DiskKind::GrowableSplit;
    int hardwareVersion = 3;
    std::string cid;
    std::int64_t pieceSectors = 0;   // as for extentPieces
};

// The descriptor text, every line ended by CR LF.
std::string descriptorText(const DescriptorFields& fields);

}  // namespace arden::disks
