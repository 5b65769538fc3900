// What the connection and disk-mode choices of the device pages write, and how stored texts
// written by VMware products read back.
#include <gtest/gtest.h>

#include "core/hardware/DeviceChoices.h"

namespace arden {
namespace {

TEST(DeviceChoices, ConnectionsWriteTheProductsWordsAndReadTheirVariants) {
    const std::tuple<DeviceType, std::string_view, std::optional<Connection>> read[] = {
        {DeviceType::Floppy, "FILE", Connection::File},        {DeviceType::Floppy, "pipe", std::nullopt},
        {DeviceType::ParallelPort, "file", Connection::File},  {DeviceType::SerialPort, "Pipe", Connection::Pipe},
        {DeviceType::SerialPort, "thinprint", std::nullopt},   {DeviceType::CdRom, "atapi-cdrom", Connection::Device},
        {DeviceType::CdRom, "cdrom-raw", Connection::Device},  {DeviceType::CdRom, "cdrom-image", Connection::File},
        {DeviceType::HardDisk, "file", std::nullopt},
    };
    for (const auto& [type, stored, connection] : read) EXPECT_EQ(connectionOf(type, stored), connection) << stored;
    EXPECT_EQ(connectionValue(DeviceType::CdRom, Connection::File), "cdrom-image");
    EXPECT_EQ(connectionValue(DeviceType::SerialPort, Connection::Pipe), "pipe");
    EXPECT_EQ(std::string(physicalDriveKind(true)) + " " + std::string(physicalDriveKind(false)), "atapi-cdrom cdrom-raw");
    EXPECT_TRUE(legacyEmulation("ATAPI-CDROM"));
}

TEST(DeviceChoices, DiskModeNeedsIndependentForNonPersistent) {
    EXPECT_EQ(diskModeValue({false, false}), "persistent");
    EXPECT_EQ(diskModeValue({true, true}), "independent-persistent");
    EXPECT_EQ(diskModeValue({true, false}), "independent-nonpersistent");
    EXPECT_EQ(diskModeOf("Independent-NonPersistent"), (DiskMode{true, false}));
    EXPECT_EQ(diskModeOf("undoable"), (DiskMode{false, true}));
}

}  // namespace
}  // namespace arden
