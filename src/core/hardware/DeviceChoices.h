#pragma once
// How the choices of the device pages are stored: the connection of a floppy drive, port or
// DVD/CD-ROM drive (physical device, file or image, named pipe) and the mode of a hard disk
// (Persistent / Non-Persistent, Independent).
#include <optional>
#include <string_view>

#include "core/hardware/DeviceTypes.h"

namespace arden {

enum class Connection { Device, File, Pipe };

// The setting that holds a type's connection: ".fileType" for floppy drives and ports,
// ".deviceType" for DVD/CD-ROM drives; empty for other types.
std::string_view connectionKey(DeviceType type);

// The text written for a connection of `type` ("device", "file", "pipe"; a DVD/CD-ROM drive
// writes "cdrom-raw" and "cdrom-image"); empty when the type has no such connection.
std::string_view connectionValue(DeviceType type, Connection connection);

// The connection a stored text stands for (any case). A DVD/CD-ROM drive reads
// "atapi-cdrom", "cdrom-raw" and "device" as a physical drive, "cdrom-image" and "file" as
// an image; only serial ports know "pipe". Nothing for other texts.
std::optional<Connection> connectionOf(DeviceType type, std::string_view stored);

// A DVD/CD-ROM drive on a physical drive either passes commands through ("cdrom-raw") or
// uses legacy emulation ("atapi-cdrom"). An image or an unknown text is not legacy.
std::string_view physicalDriveKind(bool legacyEmulation);
bool legacyEmulation(std::string_view stored);

// A hard disk's mode: Independent, and Persistent (true) or Non-Persistent (false).
struct DiskMode {
    bool independent = false;
    bool persistent = true;
    bool operator==(const DiskMode&) const = default;
};

// "persistent", "independent-persistent" or "independent-nonpersistent". A disk that is not
// independent is always persistent: snapshots carry its changes.
std::string_view diskModeValue(DiskMode mode);

// The mode a stored text stands for (any case); an unknown or empty text reads as persistent.
DiskMode diskModeOf(std::string_view stored);

}  // namespace arden
