#pragma once
// Reading an existing disk's descriptor (a separate descriptor file or the one inside a
// sparse disk) for the disk summary: create type, adapter, size from the extent lines,
// geometry, hardware version and CID.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/support/Message.h"

namespace arden::disks {

struct DiskInformation {
    std::string folder;
    std::string name;
    std::string createType;
    int createTypeCode = -1;
    std::string adapterType;
    std::int64_t totalSectors = 0;  // sum of the "RW " extent lines
    std::string sizeText;           // "1.5 Gb", "500 Kb", ...
    long cylinders = 0, heads = 0, sectors = 0;
    bool biosGeometryPresent = false;
    long biosCylinders = 0, biosHeads = 0, biosSectors = 0;
    std::string hardwareVersion;
    std::string cid;
};

struct DiskReadResult {
    std::optional<DiskInformation> information;
    Message failure;  // "Unable to Read current disk" with the reason, when information is empty
};

// A file larger than this holds its descriptor inside a sparse disk; then only the first
// kEmbeddedReadBytes bytes are read, and keys beyond them are not seen.
inline constexpr std::uintmax_t kDescriptorFileMaxBytes = 25600;
inline constexpr std::size_t kEmbeddedReadBytes = 1024;

// The code of a create type: "monolithicSparse" 0, "twoGbMaxExtentSparse" 1,
// "monolithicFlat" 2, "twoGbMaxExtentFlat" 3, "fullDevice" 4, "partitionedDevice" 5;
// std::nullopt for any other text (compared exactly).
std::optional<int> createTypeCode(std::string_view createType);

// "N Gb" from 2097152 sectors up, "N Kb" below 2048, "N Mb" between; N is the quotient held
// in single precision and written in its shortest general form ("1.5", "4").
std::string diskSizeText(std::int64_t totalSectors);

// Takes the keys out of a descriptor text. On failure returns std::nullopt and says why.
std::optional<DiskInformation> parseDescriptor(std::string_view text, std::string& reason);

// Reads the disk file at `path`.
DiskReadResult readDiskInformation(const std::filesystem::path& path);

// The summary lines, separated by CR LF, as the summary box shows them.
std::string diskSummaryText(const DiskInformation& info);

// The summary as an information message titled "Current Disk Information".
Message diskSummaryMessage(const DiskInformation& info);

}  // namespace arden::disks
