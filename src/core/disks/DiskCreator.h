#pragma once
// Making a new disk with the external method: the single growable disk through qemu-img,
// the split growable disk's sparse extents and every preallocated extent by the program
// itself, then the descriptor. A failed or cancelled creation removes every file it made.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/disks/DiskProgress.h"
#include "core/disks/NewDisk.h"
#include "core/support/Message.h"

namespace arden::disks {

struct DiskCreationResult {
    bool created = false;
    bool cancelled = false;                   // the progress receiver asked to stop
    std::optional<Message> failure;           // set when not created and not cancelled
    std::vector<std::filesystem::path> files; // the files made, descriptor first
};

struct DiskCreationOptions {
    // Preallocate by writing zeros even where the file system could reserve the space
    // itself: the path taken on file systems without that ability, chosen here on purpose.
    bool writeZeros = false;
    // Sectors per piece of a split disk; 0 keeps the kind's own piece size, the one VMware
    // products write. Smaller pieces let a small disk be split into several.
    std::int64_t pieceSectors = 0;
};

// How much space is reserved per step of a preallocated extent (one progress report each).
inline constexpr std::int64_t kPreallocationStepBytes = std::int64_t{256} << 20;

// The size argument for qemu-img: the size in KiB (sectors / 2) in decimal, ".5" for an odd
// sector count.
std::string qemuImgSizeText(std::int64_t totalSectors);

// The arguments given to qemu-img for a single growable disk. The size carries a "K" unit,
// since a bare number is read as bytes; the adapter and hardware version are passed so that
// the disk's descriptor names them as the program's own descriptors do. A relative path
// is given as "./path", so that a name holding ":" is not taken for a protocol prefix.
std::vector<std::string> qemuImgArguments(const NewDiskRequest& request);

// Makes the disk, reporting to `progress` after each piece of work (each MiB of zeros, each
// reserved step, each extent, every 50 ms while qemu-img runs). Nothing that exists is ever
// written over: when one of the disk's files is already there the creation is refused.
DiskCreationResult createDisk(const NewDiskRequest& request, const DiskProgress& progress = {},
                              const DiskCreationOptions& options = {});

}  // namespace arden::disks
