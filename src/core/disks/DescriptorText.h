#pragma once
// The lines of a disk descriptor (the text form that names a disk's extents and holds its
// "ddb." keys), and finding that text in a file: a separate descriptor file is text through
// and through; a sparse disk ("KDMV" at its start) may carry it at the place its header names.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arden::disks {

// One extent line: access, size in sectors (as written), type and file name.
struct ExtentLine {
    std::string access;    // "RW", "RDONLY" or "NOACCESS"
    std::string sizeText;
    std::string type;      // "SPARSE", "FLAT", "VMFS", ...
    std::string fileName;  // without the quotes
};

struct DescriptorLines {
    std::vector<std::pair<std::string, std::string>> keys;  // key and value, quotes removed, in file order
    std::vector<ExtentLine> extents;
    // The value of the first line whose key is `key` (compared exactly).
    std::optional<std::string> value(std::string_view key) const;
};

// Splits a descriptor into key lines and extent lines. An extent line starts, after leading
// blanks, with an access word and a blank; lines starting with "#" are comments. Text after
// a NUL byte (the padding of an embedded descriptor) is not read.
DescriptorLines descriptorLines(std::string_view text);

// A text descriptor larger than this is not a descriptor: even a split disk of 64 TiB in
// 2 GiB pieces needs under 2 MiB of text.
inline constexpr std::uintmax_t kMaxDescriptorBytes = std::uintmax_t{16} << 20;

// The descriptor text of the disk file at `path`; std::nullopt with `reason` set when the
// file holds none (a data extent, a sparse extent without an embedded descriptor, not a
// disk at all, or a file that cannot be read).
std::optional<std::string> readDescriptorText(const std::filesystem::path& path, std::string& reason);

// The descriptor beside `extent` (in the same folder) that names it as one of its extents.
std::optional<std::filesystem::path> descriptorNamingExtent(const std::filesystem::path& extent);

}  // namespace arden::disks
