#pragma once
// Devices that use a file of the host, and what pointing one at a file writes: a hard disk's
// disk file, a DVD/CD-ROM drive's ISO image, a floppy image, the output file of a serial or
// parallel port, a generic SCSI device's host device (/dev/sg0).
#include <string>

#include "core/hardware/Device.h"

namespace arden {

bool takesFile(DeviceType type);

// Hard disks and generic SCSI devices are nothing without their file or host device.
bool needsFile(DeviceType type);

// Points `device` at `path` and switches it to its file connection: ".fileName" for all;
// ".deviceType" "cdrom-image" (and no drive detection) for a DVD/CD-ROM drive; ".fileType"
// "file" for a floppy drive or port, with bidirectional mode off for a parallel port (a file
// cannot answer). Returns false, changing nothing, for a type that takes no file.
bool useFile(Device& device, const std::string& path);

}  // namespace arden
