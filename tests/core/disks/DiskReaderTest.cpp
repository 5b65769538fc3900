// The descriptor reader on the files that misled it: "RW " inside names and binary headers,
// commented extents, descriptors past the first kilobyte and larger than 25600 bytes, other
// create types, extents chosen instead of their descriptor, and sizes no disk can have.
#include "TestSupport.h"
#include "core/disks/DiskCreator.h"
#include "core/disks/DiskDescriptor.h"
#include "core/disks/DiskInformation.h"
#include "core/shell/GetText.h"
#include "core/support/ProcessRunner.h"

using namespace arden::disks;
using arden::test::ScratchDir;
namespace fs = std::filesystem;

namespace {

std::string failureOf(const fs::path& p) {
    DiskReadResult r = readDiskInformation(p);
    EXPECT_FALSE(r.information) << p;
    return arden::resolveText(r.failure.text, 0);
}

std::int64_t sectorsRead(const fs::path& p) {
    DiskReadResult r = readDiskInformation(p);
    EXPECT_TRUE(r.information) << p << ": " << arden::resolveText(r.failure.text, 0);
    return r.information ? r.information->totalSectors : -1;
}

const std::string kHead = "# Disk DescriptorFile\nversion=1\nCID=12345678\nparentCID=ffffffff\n";

// A hosted sparse header ("KDMV") that places the embedded descriptor at `sector`.
std::string sparseHeader(std::uint64_t capacity, std::uint64_t sector, std::uint64_t sectors) {
    std::string h(512, '\0');
    auto put = [&](std::size_t at, std::uint64_t v) {
        for (int i = 0; i < 8; ++i) h[at + static_cast<std::size_t>(i)] = static_cast<char>(v >> (8 * i));
    };
    h.replace(0, 4, "KDMV");
    h[4] = 1;
    put(12, capacity);
    put(20, 128);
    put(28, sector);
    put(36, sectors);
    return h;
}

}  // namespace

TEST(DiskReader, ExtentLinesOnlyAtTheStartOfALine) {
    std::string reason;
    auto info = parseDescriptor(kHead + "createType=\"twoGbMaxExtentFlat\"\n"
                                        "RW 4193792 FLAT \"Backup RW disk-f001.vmdk\" 0\n"
                                        "  RW 100 FLAT \"Backup RW disk-f002.vmdk\" 0\n"
                                        "#RW 999 FLAT \"old.vmdk\" 0\n"
                                        "# RW 999 FLAT \"old.vmdk\" 0\n"
                                        "ddb.comment = \"RW 5 FLAT\"\n"
                                        "ddb.adapterType = \"ide\"\n",
                                reason);
    ASSERT_TRUE(info) << reason;
    EXPECT_EQ(info->totalSectors, 4193892);
    EXPECT_EQ(info->adapterType, "ide");
}

TEST(DiskReader, EmbeddedDescriptorFromTheHeadersOffsetAndSize) {
    ScratchDir dir;
    // 2,119,506 sectors: the capacity field holds the bytes "RW " (0x52 0x57 0x20 0x00).
    std::string disk = sparseHeader(2119506, 20, 4);
    ASSERT_EQ(disk.substr(12, 3), "RW ");
    disk.resize(20 * 512, '\0');
    std::string text = kHead + "createType=\"monolithicSparse\"\nRW 2119506 SPARSE \"h.vmdk\"\n" +
                       std::string(1200, '#') + "\nddb.adapterType = \"buslogic\"\n";
    text.resize(4 * 512, '\0');
    disk += text + std::string(30000, '\0');
    arden::test::writeBytes(dir / "h.vmdk", disk);
    DiskReadResult r = readDiskInformation(dir / "h.vmdk");
    ASSERT_TRUE(r.information) << arden::resolveText(r.failure.text, 0);
    EXPECT_EQ(r.information->totalSectors, 2119506);
    EXPECT_EQ(r.information->adapterType, "buslogic") << "keys far past the first kilobyte are read";

    // A header that places the descriptor past the end of the file is refused, not followed.
    arden::test::writeBytes(dir / "bad.vmdk", sparseHeader(2048, 1u << 30, 4) + std::string(4096, '\0'));
    EXPECT_NE(failureOf(dir / "bad.vmdk").find("outside the file"), std::string::npos);
}

TEST(DiskReader, DisksThisProgramMakesWithAwkwardNamesAndSizes) {
    ScratchDir dir;
    const std::string name = "Backup RW disk";
    struct Case {
        DiskKind kind;
        std::int64_t sectors;
    };
    const Case cases[] = {{DiskKind::GrowableSplit, 4192256 + 2119506}, {DiskKind::Preallocated, 204800}};
    for (const Case& c : cases) {
        fs::path folder = dir / std::to_string(static_cast<int>(c.kind));
        fs::create_directories(folder);
        auto made = createDisk({folder / (name + ".vmdk"), DiskAdapter::LsiLogic, c.sectors, c.kind, 3});
        ASSERT_TRUE(made.created);
        EXPECT_EQ(sectorsRead(folder / (name + ".vmdk")), c.sectors) << static_cast<int>(c.kind);
    }
    // A 950 GiB split descriptor is 33 KB of text, read whole.
    const std::int64_t big = std::int64_t{950} * 2097152;
    std::string text = descriptorText({name + " of the accounts server", big, DiskAdapter::Ide, DiskKind::GrowableSplit, 3, "1a2b3c4d"});
    ASSERT_GT(text.size(), 25600u);
    arden::test::writeBytes(dir / "big.vmdk", text);
    EXPECT_EQ(sectorsRead(dir / "big.vmdk"), big);

    if (!arden::findProgram("qemu-img")) ARDEN_CANNOT_RUN("qemu-img is not installed");
    auto grown = createDisk({dir / (name + ".vmdk"), DiskAdapter::Ide, 2119506, DiskKind::Growable, 3});
    ASSERT_TRUE(grown.created);
    EXPECT_EQ(arden::test::readBytes(dir / (name + ".vmdk")).substr(12, 3), "RW ");
    EXPECT_EQ(sectorsRead(dir / (name + ".vmdk")), 2119506);
}

TEST(DiskReader, CreateTypesVMwareWritesAreShownByName) {
    ARDEN_REQUIRE_CORPUS();
    const std::pair<const char*, const char*> cases[] = {
        {"virtmanager__test-vmdk-desc.vmdk", "Disk Type: vmfs\r\n"},
        {"vmdkrs__vmfs_thick-000001.vmdk", "Disk Type: vmfsSparse\r\n"},
        {"govmomi__ttylinux-pc_i486-16.1-disk1.embedded-descriptor.vmdk", "Disk Type: streamOptimized\r\nAdapter Type: lsilogic\r\nSize: 61440 sectors (30 Mb)"},
        {"vmdkrs__monolithicFlat.vmdk", "Disk Type: monolithicFlat (2)\r\n"}};
    for (const auto& [file, line] : cases) {
        DiskReadResult r = readDiskInformation(arden::test::corpusDir() / "vmdk" / file);
        ASSERT_TRUE(r.information) << file;
        EXPECT_NE(diskSummaryText(*r.information).find(line), std::string::npos) << diskSummaryText(*r.information);
    }
    std::string reason;
    EXPECT_FALSE(parseDescriptor(kHead + "createType=\"vmfsBogus\"\n", reason));
    EXPECT_NE(reason.find("\"vmfsBogus\" is not one VMware writes"), std::string::npos);
}

TEST(DiskReader, AnExtentChosenDirectlyNamesItsDescriptor) {
    ScratchDir dir;
    ASSERT_TRUE(createDisk({dir / "d.vmdk", DiskAdapter::Ide, 4192256 + 1000, DiskKind::GrowableSplit, 3}).created);
    ASSERT_TRUE(createDisk({dir / "f.vmdk", DiskAdapter::Ide, 204800, DiskKind::Preallocated, 3}).created);
    EXPECT_NE(failureOf(dir / "d-s002.vmdk").find("it is an extent of the disk d.vmdk; choose " + (dir / "d.vmdk").string() + " instead"),
              std::string::npos);
    EXPECT_NE(failureOf(dir / "f-flat.vmdk").find("choose " + (dir / "f.vmdk").string() + " instead"), std::string::npos);
    fs::remove(dir / "d.vmdk");
    EXPECT_NE(failureOf(dir / "d-s001.vmdk").find("a sparse extent without a descriptor of its own"), std::string::npos);
}

TEST(DiskReader, SizesNoDiskCanHaveAreRefused) {
    const std::pair<const char*, const char*> cases[] = {
        {"RW 9223372036854775807 FLAT \"a\" 0\nRW 1 FLAT \"b\" 0\n", "a size no disk can have"},
        {"RW 99999999999999999999 FLAT \"a\" 0\n", "a size no disk can have"},
        {"RW 18014398509481983 FLAT \"a\" 0\nRW 1 FLAT \"b\" 0\n", "a size no disk can have"},
        {"RW -5 FLAT \"a\" 0\n", "\"-5\" is not a number of sectors"},
        {"RW 12x FLAT \"a\" 0\n", "\"12x\" is not a number of sectors"}};
    for (const auto& [extents, why] : cases) {
        std::string reason;
        EXPECT_FALSE(parseDescriptor(kHead + "createType=\"monolithicFlat\"\n" + extents, reason)) << extents;
        EXPECT_NE(reason.find(why), std::string::npos) << reason;
    }
    std::string reason;
    EXPECT_EQ(parseDescriptor(kHead + "createType=\"monolithicFlat\"\nRW 18014398509481983 FLAT \"a\" 0\n", reason)->totalSectors,
              18014398509481983);
}
