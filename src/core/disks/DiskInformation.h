#pragma once
// Reading an existing disk's descriptor (a separate descriptor file or the one inside a
// sparse disk) for the disk summary: create type, adapter, size from the extent lines,
// geometry, hardware version and CID.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/disks/DiskTypes.h"
#include "core/support/Message.h"

namespace arden::disks {

struct DiskInformation {
    std::string folder;
    std::string name;
    std::string createType;
    int createTypeCode = -1;        // -1 for the create types shown by name only
    std::string adapterType;
    std::int64_t totalSectors = 0;  // sum of the extent lines
    std::string sizeText;           // "1.5 Gb", "500 Kb", ...
    long cylinders = 0, heads = 0, sectors = 0;
    bool biosGeometryPresent = false;
    long biosCylinders = 0, biosHeads = 0, biosSectors = 0;
    std::string hardwareVersion;
    std::string cid;
    std::string parentFileName;  // "parentFileNameHint" of a delta disk: the disk it holds the changes of
};

struct DiskReadResult {
    std::optional<DiskInformation> information;
    Message failure;  // "Unable to Read current disk" with the reason, when information is empty
};

// The largest disk size this reader accepts: a byte count must fit a signed 64-bit number
// (8 EiB); extents adding up to more describe a disk no product can have.
inline constexpr std::int64_t kMaxReadableSectors = INT64_MAX / 512;

// The code of a create type: "monolithicSparse" 0, "twoGbMaxExtentSparse" 1,
// "monolithicFlat" 2, "twoGbMaxExtentFlat" 3, "fullDevice" 4, "partitionedDevice" 5;
// -1 for the other create types VMware writes ("streamOptimized", "vmfs", "vmfsSparse",
// "vmfsThin", ...), shown by name; std::nullopt for a text no VMware product writes.
std::optional<int> createTypeCode(std::string_view createType);

// "N Gb" from 2097152 sectors up, "N Kb" below 2048, "N Mb" between; N is the quotient held
// in single precision and written in its shortest general form ("1.5", "4").
std::string diskSizeText(std::int64_t totalSectors);

// Takes the keys out of a descriptor text. On failure returns std::nullopt and says why.
std::optional<DiskInformation> parseDescriptor(std::string_view text, std::string& reason);

// Reads the disk file at `path`. An extent chosen instead of its descriptor is refused with
// the name of the descriptor beside it that names it.
DiskReadResult readDiskInformation(const std::filesystem::path& path);

// The summary lines, separated by CR LF, as the summary box shows them. A delta disk (one
// that names a parent) says so and names the parent; what it leaves to its parent (adapter,
// geometry, hardware version) is shown as the parent's rather than as empty or zero.
std::string diskSummaryText(const DiskInformation& info);

// The line shown below the summary when the disk's adapter type belongs to the other bus
// than the node the disk sits on (an "ide" disk on a SCSI node, a SCSI disk on an IDE node);
// empty when they agree or the adapter type is not one of VMware's.
std::string adapterMismatchText(std::string_view adapterType, DiskBus nodeBus);

// The summary as an information message titled "Current Disk Information", with the
// adapter mismatch line below it when the page names the node's bus.
Message diskSummaryMessage(const DiskInformation& info, std::optional<DiskBus> nodeBus = std::nullopt);

}  // namespace arden::disks
