#include "core/hardware/DeviceChoices.h"

#include <array>
#include <span>

#include "core/support/TextUtil.h"

namespace arden {
namespace {

struct StoredConnection {
    Connection connection;
    std::string_view text;
};

// The first text of each connection is the one written; the others are read as well.
constexpr std::array<StoredConnection, 3> kPortConnections{{
    {Connection::Device, "device"}, {Connection::File, "file"}, {Connection::Pipe, "pipe"}}};
constexpr std::array<StoredConnection, 5> kCdRomConnections{{{Connection::Device, "cdrom-raw"},
                                                             {Connection::Device, "atapi-cdrom"},
                                                             {Connection::Device, "device"},
                                                             {Connection::File, "cdrom-image"},
                                                             {Connection::File, "file"}}};

std::span<const StoredConnection> connections(DeviceType type) {
    switch (type) {
        case DeviceType::Floppy:
        case DeviceType::ParallelPort: return std::span(kPortConnections).first(2);
        case DeviceType::SerialPort: return kPortConnections;
        case DeviceType::CdRom: return kCdRomConnections;
        default: return {};
    }
}

struct StoredMode {
    DiskMode mode;
    std::string_view text;
};

constexpr std::array<StoredMode, 3> kDiskModes{{{{false, true}, "persistent"},
                                                {{true, true}, "independent-persistent"},
                                                {{true, false}, "independent-nonpersistent"}}};

}  // namespace

std::string_view connectionKey(DeviceType type) {
    if (type == DeviceType::CdRom) return ".deviceType";
    return connections(type).empty() ? std::string_view{} : ".fileType";
}

std::string_view connectionValue(DeviceType type, Connection connection) {
    for (const StoredConnection& c : connections(type)) {
        if (c.connection == connection) return c.text;
    }
    return {};
}

std::optional<Connection> connectionOf(DeviceType type, std::string_view stored) {
    for (const StoredConnection& c : connections(type)) {
        if (equalsIgnoreCase(c.text, stored)) return c.connection;
    }
    return std::nullopt;
}

std::string_view physicalDriveKind(bool legacy) { return legacy ? "atapi-cdrom" : "cdrom-raw"; }

bool legacyEmulation(std::string_view stored) { return equalsIgnoreCase(stored, "atapi-cdrom"); }

std::string_view diskModeValue(DiskMode mode) {
    if (!mode.independent) mode.persistent = true;
    for (const StoredMode& m : kDiskModes) {
        if (m.mode == mode) return m.text;
    }
    return kDiskModes[0].text;
}

DiskMode diskModeOf(std::string_view stored) {
    for (const StoredMode& m : kDiskModes) {
        if (equalsIgnoreCase(m.text, stored)) return m.mode;
    }
    return kDiskModes[0].mode;
}

}  // namespace arden
