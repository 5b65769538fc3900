#pragma once
// The texts the device store hands out for a device: its identifier stem, display text and
// one-line summary. Display texts are fixed English: the writer finds disks, drives, generic
// SCSI devices and SCSI controllers by the beginning of these texts.
#include <string>
#include <string_view>

#include "core/hardware/Device.h"

namespace arden {

std::string_view englishTypeName(DeviceType type);   // "Hard Disk", "DVD/CD-ROM Drive" ...
std::string_view identifierStem(DeviceType type);    // "hd", "cd", "nic" ...
std::string deviceDisplayText(const Device& device); // "Hard Disk 1", "CD-ROM 1", "SCSI Controller 0"
std::string deviceSummary(const Device& device);

// "IDE 0:1" / "SCSI 1:3" for a placed disk-like device, empty when not placed.
std::string nodeLabel(const clsNodeDevice& node);

}  // namespace arden
