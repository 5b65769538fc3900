// The descriptor reader and the summary: real descriptors of VMware, qemu-img and other
// tools, the embedded descriptor of sparse disks, and files that are not disks at all.
#include "TestSupport.h"
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
    return arden::resolveText(r.failure.title, 0) + ": " + arden::resolveText(r.failure.text, 0);
}

}  // namespace

TEST(DiskSummarySize, UnitsAndShortestForm) {
    const std::pair<std::int64_t, const char*> cases[] = {{0, "0 Kb"}, {1000, "500 Kb"}, {2047, "1023.5 Kb"}, {2048, "1 Mb"},
                                                          {3072, "1.5 Mb"}, {2097151, "1024 Mb"},  // 1023.9995, seven digits
                                                          {2097152, "1 Gb"}, {8384513, "3.998047 Gb"}};
    for (const auto& [sectors, text] : cases) EXPECT_EQ(diskSizeText(sectors), text) << sectors;
}

TEST(DiskDescriptorReader, TwoExtentsAddUpAndTheSummaryLines) {
    std::string reason;
    auto info = parseDescriptor(
        "# Disk DescriptorFile\r\nversion=1\r\nCID=1a2b3c4d\r\nparentCID=ffffffff\r\ncreateType=\"twoGbMaxExtentSparse\"\r\n\r\n"
        "RW 4192256 SPARSE \"a-s001.vmdk\"\r\nRW 4096 SPARSE \"a-s002.vmdk\"\r\n\r\n"
        "ddb.virtualHWVersion = \"3\"\r\nddb.geometry.cylinders = \"1024\"\r\nddb.geometry.heads = \"128\"\r\n"
        "ddb.geometry.sectors = \"32\"\r\nddb.adapterType = \"lsilogic\"\r\n",
        reason);
    ASSERT_TRUE(info) << reason;
    info->folder = "/vm";
    info->name = "a.vmdk";
    EXPECT_EQ(diskSummaryText(*info),
              "Disk Path: /vm\r\nDisk Name: a.vmdk\r\nDisk Type: twoGbMaxExtentSparse (1)\r\nAdapter Type: lsilogic\r\n"
              "Size: 4196352 sectors (2.000977 Gb)\r\nGeometry: Cylinders 1024, Heads 128, Sectors 32\r\n"
              "Hardware Version: 3\r\nCID: 1a2b3c4d");
}

TEST(DiskDescriptorReader, VMwareDescriptorsOfTheCorpus) {
    ARDEN_REQUIRE_CORPUS();
    DiskInformation win10 = readOk(corpusDisk("win10vm__Windows-10-x64.vmdk"));
    win10.folder = "/vm";
    EXPECT_EQ(diskSummaryText(win10),
              "Disk Path: /vm\r\nDisk Name: win10vm__Windows-10-x64.vmdk\r\nDisk Type: twoGbMaxExtentSparse (1)\r\nAdapter Type: lsilogic\r\n"
              "Size: 125829120 sectors (60 Gb)\r\nGeometry: Cylinders 7832, Heads 255, Sectors 63\r\nHardware Version: 16\r\n"
              "CID: 18518344");

    DiskInformation parts = readOk(corpusDisk("ubuntuforumsarchive__Windows-XP-Home-Edition.vmdk"));
    EXPECT_EQ(parts.createTypeCode, 5);
    EXPECT_EQ(parts.totalSectors, 192426570) << "FLAT and ZERO lines with the RW access all count";
    EXPECT_EQ(parts.sizeText, "91.75614 Gb");
    EXPECT_NE(diskSummaryText(parts).find("\r\nBios Geometry: Cylinders 11978, Heads 255, Sectors 63\r\nHardware Version: 4\r\n"),
              std::string::npos);

    // A VMware sparse disk: the descriptor inside it is found where its header says.
    DiskInformation hda = readOk(corpusDisk("cosmos__hda-server-2008-03.vmdk"));
    EXPECT_EQ(std::tuple(hda.createType, hda.totalSectors, hda.cylinders), std::tuple("monolithicSparse", 524288, 520));
    EXPECT_EQ(readOk(corpusDisk("vmdkrs__twoGbMaxExtentFlat.vmdk")).createTypeCode, 3);
}

TEST(DiskDescriptorReader, OtherWritersOfTheCorpus) {
    ARDEN_REQUIRE_CORPUS();
    DiskInformation monoFlat = readOk(corpusDisk("secronin__mono_flat.vmdk"));  // qemu-img
    EXPECT_EQ(std::tuple(monoFlat.totalSectors, monoFlat.sizeText, monoFlat.adapterType), std::tuple(2048, "1 Mb", "ide"));
    // VirtualBox writes key="value" without blanks; the values still come out whole.
    DiskInformation vbox = readOk(corpusDisk("nos__disk.vmdk"));
    EXPECT_EQ(std::tuple(vbox.createTypeCode, vbox.adapterType, vbox.cylinders, vbox.biosCylinders), std::tuple(4, "ide", 8322, 522));
    // NUL padding after the text and a qemu-img sparse file with its embedded descriptor.
    EXPECT_EQ(readOk(corpusDisk("secronin__tw_sparse_data.vmdk")).createTypeCode, 1);
    EXPECT_EQ(readOk(corpusDisk("secronin__minimal.vmdk")).createTypeCode, 0);

    // Every corpus file either reads or is refused with a reason; none crashes the reader.
    for (const auto& file : arden::test::corpusFiles("vmdk", ".vmdk")) {
        DiskReadResult r = readDiskInformation(file);
        if (!r.information) {
            EXPECT_NE(arden::resolveText(r.failure.text, 0).find("Unable to Read current disk (" + file.string()),
                      std::string::npos);
        }
    }
}

TEST(DiskDescriptorReader, GarbageTruncatedAndMissingFiles) {
    ScratchDir dir;
    std::string garbage;
    for (int i = 0; i < 30000; ++i) garbage += static_cast<char>((i * 7919 + 13) % 256);
    arden::test::writeBytes(dir / "garbage.vmdk", garbage);
    arden::test::writeBytes(dir / "small-garbage.vmdk", garbage.substr(0, 5000));
    EXPECT_NE(failureOf(dir / "garbage.vmdk").find("garbage.vmdk"), std::string::npos);
    failureOf(dir / "small-garbage.vmdk");

    std::string good = "# Disk DescriptorFile\nversion=1\nCID=12345678\nparentCID=ffffffff\ncreateType=\"monolithicFlat\"\n"
                       "RW 204800 FLAT \"t-flat.vmdk\" 0\n\nddb.virtualHWVersion = \"3\"\nddb.adapterType = \"ide\"\n";
    for (std::size_t cut : {std::size_t{10}, std::size_t{60}}) {
        arden::test::writeBytes(dir / "cut.vmdk", good.substr(0, cut));
        EXPECT_NE(failureOf(dir / "cut.vmdk").find("no createType"), std::string::npos) << cut;
    }
    arden::test::writeBytes(dir / "cut.vmdk", good.substr(0, good.find("Flat")));
    EXPECT_NE(failureOf(dir / "cut.vmdk").find("\"monolithic\""), std::string::npos);
    // Cut inside the extent size: the size is not a number.
    arden::test::writeBytes(dir / "cut.vmdk", good.substr(0, good.find("204800") + 3) + "x");
    EXPECT_NE(failureOf(dir / "cut.vmdk").find("\"204x\""), std::string::npos);
    // Cut after the extents: what is there is read, the rest stays empty, no line end needed.
    arden::test::writeBytes(dir / "cut.vmdk", good.substr(0, good.size() - 2));
    DiskInformation cut = readOk(dir / "cut.vmdk");
    EXPECT_EQ(std::tuple(cut.adapterType, cut.totalSectors, cut.heads), std::tuple("ide", 204800, 0));

    EXPECT_NE(failureOf(dir / "absent.vmdk").find("absent.vmdk"), std::string::npos);
    arden::test::writeBytes(dir / "empty.vmdk", "");
    failureOf(dir / "empty.vmdk");
}
