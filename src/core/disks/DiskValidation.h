#pragma once
// The checks a new disk's size, adapter, kind and name pass before anything is written:
// refusals that stop (not numeric, too small, too large, already there) and the Yes/No
// questions that only a Yes gets past.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/disks/NewDisk.h"
#include "core/support/Message.h"

namespace arden::disks {

// Units of the size field, numbered as the dialog numbers them.
enum class SizeUnit { Sectors = 0, Kb = 1, Mb = 2, Gb = 3 };

std::int64_t sectorsPerUnit(SizeUnit unit);

// The size typed in `unit` as a count of sectors (rounded to the nearest sector, halves to
// even); std::nullopt when the text is not a number. Blanks around the number are allowed;
// sizes beyond any disk are held at a value that every maximum refuses.
std::optional<std::int64_t> sizeTextToSectors(std::string_view text, SizeUnit unit);

// A sector count expressed in `unit`, for showing the size again after the unit changes.
double sectorsInUnit(std::int64_t sectors, SizeUnit unit);

inline constexpr std::int64_t kMinimumDiskSectors = 204800;             // 100 MiB
inline constexpr std::int64_t kDefaultScsiMaximumSectors = 536870912;   // 256 GiB
inline constexpr std::int64_t kDefaultIdeMaximumSectors = 268435456;    // 128 GiB
// Above this a single preallocated disk is more than one flat piece.
inline constexpr std::int64_t kSinglePieceFlatSectors = 4193792;

// Maxima the opener of the dialog may set; 0 keeps the default.
struct DiskMaxima {
    std::int64_t scsiSectors = 0;
    std::int64_t ideSectors = 0;
};

std::int64_t maximumSectors(DiskAdapter adapter, const DiskMaxima& maxima);

struct DiskRequestCheck {
    std::optional<Message> refusal;  // set: nothing may be made
    std::vector<Message> questions;  // Yes/No questions, asked in order; a No stops
};

// "Disk Size must be Numeric!", naming what was typed.
Message notNumericMessage(std::string_view typed);

// The longest disk name (without ".vmdk"): its extent names ("-s001.vmdk") and the
// temporary file the descriptor is written through still fit a 255-byte file name.
inline constexpr std::size_t kMaxDiskNameBytes = 240;

// Refuses a disk's file name (with or without ".vmdk") that would break a reader of the
// descriptor: no name at all, a double quote (it ends the name in an extent line), a
// control character, a folder separator, or more than kMaxDiskNameBytes bytes.
std::optional<Message> checkDiskName(std::string_view fileName);

// The warning (a string-table id) the create-disk dialog shows while the chosen adapter belongs
// to the other bus than the node the disk sits on; nothing when they agree.
std::optional<int> adapterMismatchWarning(DiskAdapter adapter, DiskBus nodeBus);

// Refuses an empty folder or one that does not exist, naming it.
std::optional<Message> checkDiskFolder(const std::filesystem::path& folder);

// "100 Mb to 128 Gb": the sizes the adapter allows, shown beside the size field.
std::string sizeRangeText(DiskAdapter adapter, const DiskMaxima& maxima);

// Checks in order: the name, the folder, too small, too large, a file of the disk already
// there; then collects the questions (a large single preallocated disk, an IDE disk above
// 128 GiB).
DiskRequestCheck checkNewDisk(const NewDiskRequest& request, const DiskMaxima& maxima = {});

}  // namespace arden::disks
