#pragma once
// Empty growable extents in VMware's hosted sparse format ("KDMV", version 1): a header in
// sector 0, a redundant grain directory with its grain tables, then the grain directory with
// its grain tables. No grain is allocated; the file is only extended to cover the metadata,
// so an empty extent of any size takes a few kilobytes of real space.
#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

#include "core/disks/DiskFile.h"

namespace arden::disks {

inline constexpr std::int64_t kGrainSectors = 128;        // 64 KiB grains
inline constexpr std::int64_t kGrainTableEntries = 512;   // 4-byte entries: one table is 4 sectors
inline constexpr std::int64_t kRedundantDirectorySector = 1;

// Positions and counts of one extent, all in sectors unless said otherwise.
struct SparseExtentLayout {
    std::int64_t capacity = 0;          // the extent's own size
    std::int64_t grains = 0;
    std::int64_t grainTables = 0;       // entries of each grain directory
    std::int64_t tableSectors = 0;      // sectors of one grain table
    std::int64_t directorySectors = 0;  // sectors of one grain directory
    std::int64_t redundantDirectory = kRedundantDirectorySector;
    std::int64_t directory = 0;
    std::int64_t overhead = 0;          // metadata rounded to whole grains: the first grain sector
    bool operator==(const SparseExtentLayout&) const = default;
};

// Grains are (S + 127) / 128 and grain tables (512 + G - 1) / 512, both rounded to the nearest
// integer rather than truncated, so a size that is a whole number of grains gets one grain
// more than it needs; the overhead is rounded the same way. Directory and table sizes in
// sectors use truncating division.
SparseExtentLayout sparseExtentLayout(std::int64_t sectors);

// The 512-byte header of an extent, little-endian on every host.
std::array<unsigned char, 512> sparseExtentHeader(const SparseExtentLayout& layout);

// A grain directory: one 32-bit little-endian entry per grain table, the first pointing at
// `firstTableSector` and each next one a table further; padded with zeros to whole sectors.
std::string grainDirectoryBytes(const SparseExtentLayout& layout, std::int64_t firstTableSector);

// Writes a new empty extent of `sectors` sectors to `path` (which must not exist).
FileError writeSparseExtent(const std::filesystem::path& path, std::int64_t sectors);

}  // namespace arden::disks
