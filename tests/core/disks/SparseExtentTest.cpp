// Sparse extent layout and header bytes, checked against the rounding rules and against an
// empty extent written by VMware Workstation.
#include <sys/stat.h>

#include <cstdint>

#include "TestSupport.h"
#include "core/disks/SparseExtent.h"

using namespace arden::disks;
using arden::test::ScratchDir;

namespace {

std::uint64_t le(const std::string& bytes, std::size_t offset, int width) {
    std::uint64_t v = 0;
    for (int i = width - 1; i >= 0; --i) v = (v << 8) | static_cast<unsigned char>(bytes[offset + static_cast<std::size_t>(i)]);
    return v;
}

std::string headerBytes(const SparseExtentLayout& layout) {
    auto h = sparseExtentHeader(layout);
    return std::string(reinterpret_cast<const char*>(h.data()), h.size());
}

}  // namespace

TEST(SparseExtentLayout, RoundingGivesTheExtraGrainAndTable) {
    // A full sparse piece: 32,752 grains would do, the rounding gives 32,753 and so 65 tables;
    // the metadata ends at sector 523: five grains.
    SparseExtentLayout full = sparseExtentLayout(4192256);
    EXPECT_EQ(std::tuple(full.grains, full.grainTables, full.directory, full.overhead), std::tuple(32753, 65, 262, 640));
    EXPECT_EQ(std::tuple(sparseExtentLayout(1).grains, sparseExtentLayout(1).directory, sparseExtentLayout(1).overhead), std::tuple(1, 6, 128));
    // 128 n and 128 n + 1 sectors both get n + 1 grains; 11.5 goes to the even 12.
    const std::pair<std::int64_t, std::int64_t> grains[] = {{1280, 11}, {1281, 11}, {1344, 11}, {1345, 12}};
    for (const auto& [sectors, n] : grains) EXPECT_EQ(sparseExtentLayout(sectors).grains, n) << sectors;
    EXPECT_EQ(sparseExtentLayout(128 * 511 + 1).grainTables, 2) << "512 grains need one table, yet the rounding gives 2";
    EXPECT_EQ(sparseExtentLayout(128 * 512 * 128).directorySectors, 2) << "past 128 tables the directory takes two sectors";
    EXPECT_EQ(sparseExtentLayout(128 * 512 * 127 - 128).directorySectors, 1);

    std::string h = headerBytes(full);
    EXPECT_EQ(std::tuple(le(h, 12, 8), le(h, 56, 8), le(h, 64, 8)), std::tuple(4192256u, 262u, 640u));
    EXPECT_EQ(h.substr(72), std::string("\0\n \r\n", 5) + std::string(512 - 77, '\0'));
    std::string gd = grainDirectoryBytes(full, 2);
    EXPECT_EQ(std::tuple(le(gd, 0, 4), le(gd, 4 * 64, 4), le(gd, 4 * 65, 4)), std::tuple(2u, 258u, 0u));
}

TEST(SparseExtentHeader, SameConstantsAndPlacementAsAVMwareExtent) {
    ARDEN_REQUIRE_CORPUS();
    std::string vmware = arden::test::readBytes(arden::test::corpusDir() / "vmdk" / "win10vm__Windows-10-x64-s016.vmdk");
    ASSERT_GE(vmware.size(), 1024u);
    std::int64_t capacity = static_cast<std::int64_t>(le(vmware, 12, 8));
    std::string ours = headerBytes(sparseExtentLayout(capacity));
    for (std::size_t offset : {0u, 4u, 8u, 12u, 20u, 28u, 36u, 44u, 48u}) {
        int width = (offset <= 8 || offset == 44) ? 4 : 8;
        EXPECT_EQ(le(ours, offset, width), le(vmware, offset, width)) << "header field at byte " << offset;
    }
    EXPECT_EQ(ours.substr(72, 5), vmware.substr(72, 5));
    // VMware's redundant directory also points at tables right behind it, 4 sectors apart.
    EXPECT_EQ(le(vmware, 512, 4), 2u);
    EXPECT_EQ(le(vmware, 516, 4), 6u);
    EXPECT_EQ(le(grainDirectoryBytes(sparseExtentLayout(capacity), 2), 4, 4), 6u);
}

TEST(SparseExtentWriter, WritesMetadataOnlyAndNeverOverwrites) {
    ScratchDir dir;
    auto file = dir / "x-s001.vmdk";
    ASSERT_FALSE(writeSparseExtent(file, 4192256));
    std::string bytes = arden::test::readBytes(file);
    SparseExtentLayout l = sparseExtentLayout(4192256);
    ASSERT_EQ(bytes.size(), static_cast<std::size_t>(l.overhead * 512));
    EXPECT_EQ(bytes.substr(0, 512), headerBytes(l));
    EXPECT_EQ(bytes.substr(512, 512), grainDirectoryBytes(l, 2));
    EXPECT_EQ(bytes.substr(static_cast<std::size_t>(l.directory * 512), 512), grainDirectoryBytes(l, l.directory + 1));
    // Grain tables and the rest of the overhead read as zeros.
    EXPECT_EQ(bytes.substr(1024, static_cast<std::size_t>(l.directory * 512) - 1024),
              std::string(static_cast<std::size_t>(l.directory * 512) - 1024, '\0'));

    struct stat st {};
    EXPECT_TRUE(::stat(file.c_str(), &st) == 0 && st.st_blocks * 512 <= 64 * 1024) << "the empty extent is not filled with zeros";

    std::string before = arden::test::readBytes(file);
    auto again = writeSparseExtent(file, 1000);
    ASSERT_TRUE(again);
    EXPECT_NE(again->find(file.string()), std::string::npos);
    EXPECT_EQ(arden::test::readBytes(file), before) << "an existing file is left as it was";

    auto bad = writeSparseExtent(dir / "zero.vmdk", 0);
    ASSERT_TRUE(bad);
    EXPECT_FALSE(std::filesystem::exists(dir / "zero.vmdk"));
}
