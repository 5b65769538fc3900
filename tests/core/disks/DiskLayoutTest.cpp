// Geometry, extent split, extent names, CID and the descriptor text of new disks.
#include <gtest/gtest.h>

#include "core/disks/DiskCid.h"
#include "core/disks/DiskDescriptor.h"
#include "core/disks/DiskGeometry.h"

using namespace arden::disks;

TEST(DiskGeometry, HeadsAndSectorsFollowAdapterAndSize) {
    // SCSI adapters change heads/sectors at 1 GiB and 2 GiB; the boundary itself stays below.
    const std::tuple<std::int64_t, DiskAdapter, DiskGeometry> cases[] = {
        {2097152, DiskAdapter::LsiLogic, {1024, 64, 32}}, {2097153, DiskAdapter::BusLogic, {512, 128, 32}},
        {4194304, DiskAdapter::LsiLogic, {1024, 128, 32}}, {4194305, DiskAdapter::LsiLogic, {261, 255, 63}},
        {4194305, DiskAdapter::Ide, {4161, 16, 63}}};
    for (const auto& [sectors, adapter, geometry] : cases) EXPECT_EQ(geometryFor(sectors, adapter), geometry) << sectors;
}

TEST(DiskGeometry, CylindersRoundToNearestWithHalvesToEvenAndIdeCap) {
    // 1008 sectors per IDE cylinder: 504 over a whole count is exactly one half.
    EXPECT_EQ(geometryFor(1008 * 202 + 504, DiskAdapter::Ide).cylinders, 202);  // 202.5 -> 202
    EXPECT_EQ(geometryFor(1008 * 203 + 504, DiskAdapter::Ide).cylinders, 204);  // 203.5 -> 204
    EXPECT_EQ(geometryFor(1008 * 203 + 503, DiskAdapter::Ide).cylinders, 203);  // not truncated below
    EXPECT_EQ(geometryFor(204800, DiskAdapter::Ide).cylinders, 203);            // 203.17
    // 950 GiB on IDE: computed 1,976,483 cylinders, capped; SCSI keeps its computed count.
    EXPECT_EQ(geometryFor(1992294400, DiskAdapter::Ide), (DiskGeometry{16383, 16, 63}));
    EXPECT_EQ(geometryFor(1992294400, DiskAdapter::LsiLogic).cylinders, 124015);
}

TEST(ExtentSplit, PiecesOfTheKindsSizeOrSmaller) {
    // Split pieces hold 4,193,792 sectors when flat and 4,192,256 when sparse (see the descriptor
    // texts below); a smaller piece size may be asked for, a larger one than the kind allows is not taken.
    EXPECT_EQ(extentPieces(DiskKind::PreallocatedSplit, "d", 5000, 2048),
              (std::vector<ExtentPiece>{{2048, "d-f001.vmdk"}, {2048, "d-f002.vmdk"}, {904, "d-f003.vmdk"}}));
    EXPECT_EQ(extentPieces(DiskKind::GrowableSplit, "d", 4192257, 9000000).size(), 2u);
    EXPECT_EQ(extentPieces(DiskKind::GrowableSplit, "m", 1992294400).back(), (ExtentPiece{1992294400 - 475 * 4192256, "m-s476.vmdk"}));
    EXPECT_EQ(extentPieces(DiskKind::Preallocated, "d", 9000000), (std::vector<ExtentPiece>{{9000000, "d-flat.vmdk"}}));
}

TEST(DiskCid, EightLowerHexDigitsNeverStartingWithZero) {
    for (int n = 0; n < 500; ++n) {
        std::string cid = makeCid();
        ASSERT_TRUE(cid.size() == 8 && cid[0] != '0' && cid.find_first_not_of("0123456789abcdef") == std::string::npos) << cid;
    }
}

TEST(DiskDescriptor, SplitSparseTextLineByLine) {
    DescriptorFields f{"Disk A", 4192257, DiskAdapter::BusLogic, DiskKind::GrowableSplit, 3, "1a2b3c4d"};
    EXPECT_EQ(descriptorText(f),
              "# Disk DescriptorFile\r\nversion=1\r\nCID=1a2b3c4d\r\nparentCID=ffffffff\r\n"
              "createType=\"twoGbMaxExtentSparse\"\r\n\r\n# Extent description\r\n"
              "RW 4192256 SPARSE \"Disk A-s001.vmdk\"\r\nRW 1 SPARSE \"Disk A-s002.vmdk\"\r\n"
              "\r\n# The Disk Data Base\r\n#DDB\r\n\r\n"
              "ddb.virtualHWVersion = \"3\"\r\nddb.geometry.cylinders = \"1024\"\r\n"
              "ddb.geometry.heads = \"128\"\r\nddb.geometry.sectors = \"32\"\r\nddb.adapterType = \"buslogic\"\r\n");
}

TEST(DiskDescriptor, FlatKindsAndTheKindWithoutCreateType) {
    DescriptorFields f{"f", 300000, DiskAdapter::Ide, DiskKind::Preallocated, 4, "11111111"};
    std::string flat = descriptorText(f);
    EXPECT_NE(flat.find("createType=\"monolithicFlat\"\r\n"), std::string::npos);
    EXPECT_NE(flat.find("\r\nRW 300000 FLAT \"f-flat.vmdk\" 0\r\n"), std::string::npos);
    EXPECT_NE(flat.find("ddb.virtualHWVersion = \"4\"\r\n"), std::string::npos);

    f.kind = DiskKind::PreallocatedSplit;
    f.totalSectors = 4193793;
    std::string split = descriptorText(f);
    EXPECT_NE(split.find("RW 4193792 FLAT \"f-f001.vmdk\" 0\r\nRW 1 FLAT \"f-f002.vmdk\" 0\r\n"), std::string::npos);

    f.kind = DiskKind::Growable;
    std::string none = descriptorText(f);
    EXPECT_NE(none.find("parentCID=ffffffff\r\n\r\n# The Disk Data Base\r\n"), std::string::npos) << "no createType, no extents";
    // No line is ended by a bare line feed.
    for (const std::string& t : {flat, split, none}) {
        for (std::size_t at = t.find('\n'); at != std::string::npos; at = t.find('\n', at + 1)) {
            ASSERT_EQ(t[at - 1], '\r');
        }
    }
}
