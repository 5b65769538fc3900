// Reading a disk's descriptor for its summary: real descriptors of VMware and other writers,
// the embedded descriptor of sparse disks, "RW " inside names and binary headers, extents chosen
// instead of their descriptor, sizes no disk can have, and files that are not disks at all.
#include "TestSupport.h"
#include "core/disks/DiskCreator.h"
#include "core/disks/DiskDescriptor.h"
#include "core/disks/DiskInformation.h"
#include "core/shell/GetText.h"

using namespace arden::disks;
using arden::test::ScratchDir;
namespace fs = std::filesystem;

namespace {

fs::path corpusDisk(const std::string& name) { return arden::test::corpusDir() / "vmdk" / name; }

DiskInformation readOk(const fs::path& p) {
    DiskReadResult r = readDiskInformation(p);
    EXPECT_TRUE(r.information) << p << ": " << arden::resolveText(r.failure.text, 0);
    return r.information.value_or(DiskInformation{});
}

std::string failureOf(const fs::path& p) {
    DiskReadResult r = readDiskInformation(p);
    EXPECT_FALSE(r.information) << p;
    return arden::test::shown(r.failure);
}

std::string parseFailure(const std::string& text) {
    std::string reason;
    EXPECT_FALSE(parseDescriptor(text, reason)) << text;
    return reason;
}

const std::string kHead = "# Disk DescriptorFile\nversion=1\nCID=12345678\nparentCID=ffffffff\n";

// A hosted sparse header ("KDMV") that places the embedded descriptor at `sector`.
std::string sparseHeader(std::uint64_t capacity, std::uint64_t sector, std::uint64_t sectors) {
    std::string h(512, '\0');
    auto put = [&](std::size_t at, std::uint64_t v) {
        for (int i = 0; i < 8; ++i) h[at + static_cast<std::size_t>(i)] = static_cast<char>(v >> (8 * i));
    };
    h.replace(0, 5, "KDMV\x01");
    put(12, capacity);
    put(20, 128);
    put(28, sector);
    put(36, sectors);
    return h;
}

}  // namespace

TEST(DiskReader, SummaryOfTwoExtentsAndSizeTexts) {
    std::string reason;
    auto info = parseDescriptor(kHead + "createType=\"twoGbMaxExtentSparse\"\r\n\r\nRW 4192256 SPARSE \"a-s001.vmdk\"\r\n"
                                "RW 4096 SPARSE \"a-s002.vmdk\"\r\n  RW 100 SPARSE \"x\"\r\n#RW 999 FLAT \"old.vmdk\" 0\r\n"
                                "ddb.comment = \"RW 5 FLAT\"\r\nddb.virtualHWVersion = \"3\"\r\nddb.geometry.cylinders = \"1024\"\r\n"
                                "ddb.geometry.heads = \"128\"\r\nddb.geometry.sectors = \"32\"\r\nddb.adapterType = \"lsilogic\"\r\n",
                                reason);
    ASSERT_TRUE(info) << reason;
    info->folder = "/vm";
    info->name = "a.vmdk";
    EXPECT_EQ(diskSummaryText(*info),
              "Disk Path: /vm\r\nDisk Name: a.vmdk\r\nDisk Type: twoGbMaxExtentSparse (1)\r\nAdapter Type: lsilogic\r\n"
              "Size: 4196452 sectors (2.001024 Gb)\r\nGeometry: Cylinders 1024, Heads 128, Sectors 32\r\n"
              "Hardware Version: 3\r\nCID: 12345678")
        << "a commented extent and \"RW \" inside a value do not count";
    const std::pair<std::int64_t, const char*> sizes[] = {{0, "0 Kb"}, {2047, "1023.5 Kb"}, {3072, "1.5 Mb"},
                                                          {2097151, "1024 Mb"}, {2097152, "1 Gb"}, {8384513, "3.998047 Gb"}};
    for (const auto& [sectors, text] : sizes) EXPECT_EQ(diskSizeText(sectors), text) << sectors;
}

TEST(DiskReader, DescriptorsOfTheCorpus) {
    ARDEN_REQUIRE_CORPUS();
    const std::pair<const char*, const char*> cases[] = {
        {"win10vm__Windows-10-x64.vmdk", "Disk Type: twoGbMaxExtentSparse (1)\r\nAdapter Type: lsilogic\r\nSize: 125829120 sectors "
                                         "(60 Gb)\r\nGeometry: Cylinders 7832, Heads 255, Sectors 63\r\nHardware Version: 16\r\nCID: 18518344"},
        {"ubuntuforumsarchive__Windows-XP-Home-Edition.vmdk", "Disk Type: partitionedDevice (5)\r\nAdapter Type: buslogic\r\nSize: "
         "192426570 sectors (91.75614 Gb)\r\nGeometry: Cylinders 11978, Heads 255, Sectors 63\r\nBios Geometry: Cylinders 11978, Heads 255, Sectors 63\r\n"},
        {"cosmos__hda-server-2008-03.vmdk", "Disk Type: monolithicSparse (0)\r\nAdapter Type: ide\r\nSize: 524288 sectors (256 Mb)"},
        {"vmdkrs__twoGbMaxExtentFlat.vmdk", "Disk Type: twoGbMaxExtentFlat (3)\r\n"},
        {"secronin__mono_flat.vmdk", "Adapter Type: ide\r\nSize: 2048 sectors (1 Mb)\r\n"},
        {"nos__disk.vmdk", "Disk Type: fullDevice (4)\r\nAdapter Type: ide\r\nSize: 8388608 sectors (4 Gb)\r\nGeometry: Cylinders 8322, Heads 16, "
                           "Sectors 63\r\nBios Geometry: Cylinders 522, Heads 255, Sectors 63"},
        {"secronin__tw_sparse_data.vmdk", "Disk Type: twoGbMaxExtentSparse (1)\r\n"},
        {"virtmanager__test-vmdk-desc.vmdk", "Disk Type: vmfs\r\n"},
        // A delta names its parent and shows what it leaves to the parent as the parent's.
        {"vmdkrs__vmfs_thick-000001.vmdk",
         "Disk Type: vmfsSparse\r\nParent Disk: vmfs_thick.vmdk\r\nThis disk is a delta of its parent: it holds only the "
         "changes made since vmfs_thick.vmdk was last written, and needs it beside it.\r\nAdapter Type: as its parent disk\r\n"
         "Size: 4096 sectors (2 Mb)\r\nGeometry: as its parent disk\r\nHardware Version: as its parent disk\r\nCID: 8f67ca74"},
        {"govmomi__ttylinux-pc_i486-16.1-disk1.embedded-descriptor.vmdk", "Disk Type: streamOptimized\r\nAdapter Type: lsilogic\r\nSize: 61440 sectors (30 Mb)"},
    };
    for (const auto& [file, lines] : cases) {
        const std::string summary = diskSummaryText(readOk(corpusDisk(file)));
        EXPECT_NE(summary.find(lines), std::string::npos) << file << "\n" << summary;
    }
    // Every corpus file either reads or is refused with a reason that names it.
    for (const auto& file : arden::test::corpusFiles("vmdk", ".vmdk")) {
        DiskReadResult r = readDiskInformation(file);
        EXPECT_TRUE(r.information || arden::resolveText(r.failure.text, 0).find("(" + file.string()) != std::string::npos) << file;
    }
}

TEST(DiskReader, EmbeddedDescriptorFromTheHeadersOffsetAndSize) {
    ScratchDir dir;
    // 2,119,506 sectors: the capacity field holds the bytes "RW " (0x52 0x57 0x20 0x00).
    std::string disk = sparseHeader(2119506, 20, 4);
    ASSERT_EQ(disk.substr(12, 3), "RW ");
    disk.resize(20 * 512, '\0');
    std::string text = kHead + "createType=\"monolithicSparse\"\nRW 2119506 SPARSE \"h.vmdk\"\n" + std::string(1200, '#') +
                       "\nddb.adapterType = \"buslogic\"\n";
    text.resize(4 * 512, '\0');
    arden::test::writeBytes(dir / "h.vmdk", disk + text + std::string(30000, '\0'));
    DiskInformation h = readOk(dir / "h.vmdk");
    EXPECT_EQ(std::pair(h.totalSectors, h.adapterType), std::pair(std::int64_t{2119506}, std::string("buslogic")))
        << "keys far past the first kilobyte are read";
    arden::test::writeBytes(dir / "bad.vmdk", sparseHeader(2048, 1u << 30, 4) + std::string(4096, '\0'));
    EXPECT_NE(failureOf(dir / "bad.vmdk").find("outside the file"), std::string::npos);

    // A 950 GiB split descriptor is 33 KB of text, read whole.
    const std::int64_t big = std::int64_t{950} * 2097152;
    std::string large = descriptorText({"Backup RW disk of the accounts server", big, DiskAdapter::Ide, DiskKind::GrowableSplit, 3, "1a2b3c4d"});
    ASSERT_GT(large.size(), 25600u);
    arden::test::writeBytes(dir / "big.vmdk", large);
    EXPECT_EQ(readOk(dir / "big.vmdk").totalSectors, big);
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

TEST(DiskReader, BadSizesTypesAndFilesThatAreNotDisks) {
    const std::pair<const char*, const char*> cases[] = {
        {"RW 9223372036854775807 FLAT \"a\" 0\nRW 1 FLAT \"b\" 0\n", "a size no disk can have"},
        {"RW 99999999999999999999 FLAT \"a\" 0\n", "a size no disk can have"},
        {"RW 18014398509481983 FLAT \"a\" 0\nRW 1 FLAT \"b\" 0\n", "a size no disk can have"},
        {"RW -5 FLAT \"a\" 0\n", "\"-5\" is not a number of sectors"}, {"RW 12x FLAT \"a\" 0\n", "\"12x\" is not a number of sectors"}};
    for (const auto& [extents, why] : cases)
        EXPECT_NE(parseFailure(kHead + "createType=\"monolithicFlat\"\n" + extents).find(why), std::string::npos) << extents;
    std::string reason;
    EXPECT_EQ(parseDescriptor(kHead + "createType=\"monolithicFlat\"\nRW 18014398509481983 FLAT \"a\" 0\n", reason)->totalSectors,
              18014398509481983);
    EXPECT_NE(parseFailure(kHead + "createType=\"vmfsBogus\"\n").find("\"vmfsBogus\" is not one VMware writes"), std::string::npos);

    ScratchDir dir;
    std::string garbage;
    for (int i = 0; i < 30000; ++i) garbage += static_cast<char>((i * 7919 + 13) % 256);
    arden::test::writeBytes(dir / "garbage.vmdk", garbage);
    EXPECT_EQ(failureOf(dir / "garbage.vmdk").rfind("Current Disk Information: Unable to Read current disk (" + (dir / "garbage.vmdk").string(), 0), 0u);
    const std::string good = kHead + "createType=\"monolithicFlat\"\nRW 204800 FLAT \"t-flat.vmdk\" 0\n\nddb.adapterType = \"ide\"\n";
    const std::pair<std::size_t, const char*> cuts[] = {{60, "no createType"}, {good.find("Flat"), "\"monolithic\""}};
    for (const auto& [cut, why] : cuts) {
        arden::test::writeBytes(dir / "cut.vmdk", good.substr(0, cut));
        EXPECT_NE(failureOf(dir / "cut.vmdk").find(why), std::string::npos) << cut;
    }
    arden::test::writeBytes(dir / "cut.vmdk", good.substr(0, good.size() - 2));
    EXPECT_EQ(readOk(dir / "cut.vmdk").adapterType, "ide") << "what is there is read, no line end needed";
    EXPECT_NE(failureOf(dir / "absent.vmdk").find("absent.vmdk"), std::string::npos);
}
