// What the connection and disk-mode choices of the device pages write, and how stored texts
// written by VMware products read back.
#include <gtest/gtest.h>

#include "core/hardware/DeviceChoices.h"

namespace arden {
namespace {

TEST(DeviceChoices, ConnectionsWriteTheProductsWordsAndReadTheirVariants) {
    struct Case {
        DeviceType type;
        std::string_view stored;
        std::optional<Connection> read;
    };
    const Case cases[] = {
        {DeviceType::Floppy, "device", Connection::Device},
        {DeviceType::Floppy, "FILE", Connection::File},
        {DeviceType::Floppy, "pipe", std::nullopt},
        {DeviceType::ParallelPort, "file", Connection::File},
        {DeviceType::SerialPort, "Pipe", Connection::Pipe},
        {DeviceType::SerialPort, "thinprint", std::nullopt},
        {DeviceType::CdRom, "atapi-cdrom", Connection::Device},
        {DeviceType::CdRom, "cdrom-raw", Connection::Device},
        {DeviceType::CdRom, "device", Connection::Device},
        {DeviceType::CdRom, "cdrom-image", Connection::File},
        {DeviceType::CdRom, "file", Connection::File},
        {DeviceType::HardDisk, "file", std::nullopt},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(connectionOf(c.type, c.stored), c.read) << c.stored;
    }
    EXPECT_EQ(connectionKey(DeviceType::SerialPort), ".fileType");
    EXPECT_EQ(connectionKey(DeviceType::CdRom), ".deviceType");
    EXPECT_EQ(connectionKey(DeviceType::Sound), "");
    EXPECT_EQ(connectionValue(DeviceType::CdRom, Connection::Device), "cdrom-raw");
    EXPECT_EQ(connectionValue(DeviceType::CdRom, Connection::File), "cdrom-image");
    EXPECT_EQ(connectionValue(DeviceType::SerialPort, Connection::Pipe), "pipe");
    EXPECT_EQ(connectionValue(DeviceType::ParallelPort, Connection::Pipe), "");
    EXPECT_EQ(physicalDriveKind(true), "atapi-cdrom");
    EXPECT_EQ(physicalDriveKind(false), "cdrom-raw");
    EXPECT_TRUE(legacyEmulation("ATAPI-CDROM"));
    EXPECT_FALSE(legacyEmulation("cdrom-image"));
}

TEST(DeviceChoices, DiskModeNeedsIndependentForNonPersistent) {
    EXPECT_EQ(diskModeValue({false, true}), "persistent");
    EXPECT_EQ(diskModeValue({false, false}), "persistent");
    EXPECT_EQ(diskModeValue({true, true}), "independent-persistent");
    EXPECT_EQ(diskModeValue({true, false}), "independent-nonpersistent");
    EXPECT_EQ(diskModeOf("Independent-NonPersistent"), (DiskMode{true, false}));
    EXPECT_EQ(diskModeOf("independent-persistent"), (DiskMode{true, true}));
    EXPECT_EQ(diskModeOf("undoable"), (DiskMode{false, true}));
}

}  // namespace
}  // namespace arden
