#pragma once
// What the user asked for when making a new disk, and the files that request produces.
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/disks/DiskTypes.h"
#include "core/support/Message.h"

namespace arden::disks {

struct NewDiskRequest {
    std::filesystem::path descriptorPath;  // folder / name + ".vmdk"
    DiskAdapter adapter = DiskAdapter::Ide;
    std::int64_t totalSectors = 0;
    DiskKind kind = DiskKind::GrowableSplit;
    int hardwareVersion = 3;
};

// The descriptor's file name without ".vmdk" (the base of the extent names).
std::string diskBaseName(const NewDiskRequest& request);

// Every file the request makes: the descriptor first, then the extents in order (split into
// pieces of `pieceSectors` as extentPieces does).
std::vector<std::filesystem::path> diskFiles(const NewDiskRequest& request, std::int64_t pieceSectors = 0);

// A message of the disk code: title and text from the string table, optionally followed by
// a fixed detail in brackets (the file concerned, the system's reason).
Message diskMessage(MessageKind kind, int titleId, int textId, const std::string& detail = {});

}  // namespace arden::disks
