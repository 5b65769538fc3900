#pragma once
// The two disk actions of the hard-disk page, and all the page needs to call them.
//
//   "Create New" (cmdHDCreate):
//       CreateDiskRequest preset;
//       preset.folder = <the machine's folder>;
//       preset.adapter = disks::adapterForNode(<bus of the disk's node>, <the SCSI controller's virtualDev>);
//       preset.nodeBus = <bus of the disk's node>;
//       preset.languageOffset = <LanguageOffset>;
//       QString path;
//       if (createDiskFor(this, preset, path)) { txtHDFile->setText(path); <mark the change> }
//
//   The disk-information action beside txtHDFile:
//       showDiskInformation(this, txtHDFile->text(), <bus of the disk's node>, <LanguageOffset>);
#include <QString>
#include <cstdint>
#include <optional>

#include "core/disks/DiskTypes.h"

class QWidget;

namespace arden::gui {

// What the opener of the create-disk dialog presets.
struct CreateDiskRequest {
    QString folder;                                      // the machine's folder: where the disk goes
    disks::DiskAdapter adapter = disks::DiskAdapter::Ide;  // from the node's bus or SCSI controller type
    std::optional<disks::DiskBus> nodeBus = std::nullopt;  // the node's bus: warned of while another adapter is chosen
    std::int64_t scsiMaximumSectors = 0;                 // 0: 536,870,912 sectors (256 GiB)
    std::int64_t ideMaximumSectors = 0;                  // 0: 268,435,456 sectors (128 GiB)
    int hardwareVersion = 0;                             // 0: version 3
    int languageOffset = 0;
};

// Shows frmCreateHD with the preset. When the user made a disk, returns true and sets
// `descriptorPath` to the new descriptor's full path; on Cancel (or a cancelled or failed
// creation that the user gave up on) returns false and leaves it unchanged.
bool createDiskFor(QWidget* parent, const CreateDiskRequest& preset, QString& descriptorPath);

// Reads the disk at `path` and shows the summary box "Current Disk Information" (with a
// line below it when the disk's adapter type belongs to the other bus than `nodeBus`), or
// "Unable to Read current disk" with the reason.
void showDiskInformation(QWidget* parent, const QString& path, disks::DiskBus nodeBus, int languageOffset = 0);

}  // namespace arden::gui
