#include "core/disks/SparseExtent.h"

#include <limits>

#include "core/disks/DiskTypes.h"
#include "core/support/PathText.h"

namespace arden::disks {

namespace {

constexpr std::uint32_t kMagic = 0x564D444B;  // "KDMV" on disk
constexpr std::uint32_t kVersion = 1;
constexpr std::uint32_t kFlags = 3;           // valid new-line test, redundant grain tables in use
constexpr std::int64_t kEntryBytes = 4;

template <class Buffer>
void putLittleEndian(Buffer& out, std::size_t offset, std::uint64_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out[offset + static_cast<std::size_t>(i)] = static_cast<unsigned char>(value >> (8 * i));
}

}  // namespace

SparseExtentLayout sparseExtentLayout(std::int64_t sectors) {
    SparseExtentLayout l;
    l.capacity = sectors;
    l.grains = roundHalfEven(static_cast<double>(sectors + kGrainSectors - 1) / kGrainSectors);
    l.grainTables = roundHalfEven(static_cast<double>(kGrainTableEntries + l.grains - 1) / kGrainTableEntries);
    l.tableSectors = (kGrainTableEntries * kEntryBytes + 511) >> 9;
    l.directorySectors = (l.grainTables * kEntryBytes + 511) >> 9;
    l.directory = l.redundantDirectory + l.directorySectors + l.tableSectors * l.grainTables;
    std::int64_t metadataEnd = l.directory + l.directorySectors + l.tableSectors * l.grainTables;
    l.overhead = roundHalfEven(static_cast<double>(metadataEnd + kGrainSectors - 1) / kGrainSectors) * kGrainSectors;
    return l;
}

std::array<unsigned char, 512> sparseExtentHeader(const SparseExtentLayout& layout) {
    std::array<unsigned char, 512> h{};
    putLittleEndian(h, 0, kMagic, 4);
    putLittleEndian(h, 4, kVersion, 4);
    putLittleEndian(h, 8, kFlags, 4);
    putLittleEndian(h, 12, static_cast<std::uint64_t>(layout.capacity), 8);
    putLittleEndian(h, 20, kGrainSectors, 8);
    putLittleEndian(h, 28, 0, 8);  // no embedded descriptor
    putLittleEndian(h, 36, 0, 8);  // its size
    putLittleEndian(h, 44, kGrainTableEntries, 4);
    putLittleEndian(h, 48, static_cast<std::uint64_t>(layout.redundantDirectory), 8);
    putLittleEndian(h, 56, static_cast<std::uint64_t>(layout.directory), 8);
    putLittleEndian(h, 64, static_cast<std::uint64_t>(layout.overhead), 8);
    h[72] = 0;  // closed cleanly
    h[73] = '\n';
    h[74] = ' ';
    h[75] = '\r';
    h[76] = '\n';
    return h;
}

std::string grainDirectoryBytes(const SparseExtentLayout& layout, std::int64_t firstTableSector) {
    std::string bytes(static_cast<std::size_t>(layout.directorySectors * kSectorBytes), '\0');
    for (std::int64_t i = 0; i < layout.grainTables; ++i) {
        putLittleEndian(bytes, static_cast<std::size_t>(i * kEntryBytes),
                        static_cast<std::uint64_t>(firstTableSector + i * layout.tableSectors), 4);
    }
    return bytes;
}

FileError writeSparseExtent(const std::filesystem::path& path, std::int64_t sectors) {
    SparseExtentLayout layout = sparseExtentLayout(sectors);
    // Grain and table positions are 32-bit sector numbers.
    if (sectors <= 0 || layout.overhead + layout.grains * kGrainSectors > std::numeric_limits<std::uint32_t>::max()) {
        return "Cannot write " + pathText(path) + ": an extent of " + std::to_string(sectors) +
               " sectors is outside what a sparse extent can hold";
    }
    FileError error;
    DiskFile file = DiskFile::createNew(path, error);
    if (error) return error;

    std::array<unsigned char, 512> header = sparseExtentHeader(layout);
    std::string start(reinterpret_cast<const char*>(header.data()), header.size());
    start += grainDirectoryBytes(layout, layout.redundantDirectory + layout.directorySectors);
    std::string directory = grainDirectoryBytes(layout, layout.directory + layout.directorySectors);
    if (!(error = file.writeAt(0, start)) && !(error = file.writeAt(layout.directory * kSectorBytes, directory)) &&
        !(error = file.setLength(layout.overhead * kSectorBytes)) && !(error = file.close())) {
        return std::nullopt;
    }
    file.discard();
    return error;
}

}  // namespace arden::disks
