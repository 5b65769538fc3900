#include "core/config/ProductTables.h"

#include <set>

#include "TestSupport.h"

using namespace arden;

TEST(ProductTables, VersionsPerPlatform) {
    EXPECT_EQ(platformVersions(kGsxServer).size(), 2u);
    EXPECT_EQ(platformVersions(kWorkstation).size(), 5u);
    ASSERT_EQ(platformVersions(kPlayer).size(), 1u);
    EXPECT_EQ(platformVersions(kPlayer)[0], "1.x");
    EXPECT_EQ(platformVersions(kServer)[0], "1.x");
    EXPECT_EQ(versionFromText(kGsxServer, "3.x"), 1);
    EXPECT_EQ(versionFromText(kWorkstation, "3.x"), 0);
    EXPECT_EQ(versionFromText(kPlayer, "5.5x"), std::nullopt);
    EXPECT_EQ(lastVersion(kWorkstation), 4);
    EXPECT_EQ(platformFromName("gsx server"), kGsxServer);
    EXPECT_EQ(platformFromName("ESX"), std::nullopt);
}

TEST(ProductTables, EveryCombinationHasConsistentFigures) {
    for (int p = 0; p < kPlatformCount; ++p) {
        for (int v = 0; v < static_cast<int>(platformVersions(p).size()); ++v) {
            auto f = productFigures(p, v);
            ASSERT_TRUE(f) << p << "/" << v;
            EXPECT_EQ(f->memoryMinMb, 4);
            EXPECT_EQ(f->memoryMaxMb % 4, 0) << "memory is set in steps of 4 MB";
            EXPECT_GE(f->maxCpus, 1);
            EXPECT_GE(f->configVersion, 6);
            EXPECT_LE(f->configVersion, 8);
        }
        EXPECT_FALSE(productFigures(p, static_cast<int>(platformVersions(p).size())));
    }
    EXPECT_EQ(productFigures(kWorkstation, 4)->configVersion, 8);
    EXPECT_EQ(productFigures(kWorkstation, 4)->virtualHwVersion, 4);
    EXPECT_EQ(productFigures(kWorkstation, 1)->configVersion, 7);
    EXPECT_EQ(productFigures(kWorkstation, 0)->configVersion, 6);
}

TEST(ProductTables, SolarisAndE1000DependOnProduct) {
    auto hasSolaris = [](int p, int v) {
        auto f = offeredGuestFamilies(p, v);
        return std::find(f.begin(), f.end(), kFamilySolaris) != f.end();
    };
    EXPECT_FALSE(hasSolaris(kGsxServer, 0));
    EXPECT_TRUE(hasSolaris(kGsxServer, 1));
    EXPECT_FALSE(hasSolaris(kWorkstation, 0));
    EXPECT_FALSE(hasSolaris(kWorkstation, 1));
    EXPECT_TRUE(hasSolaris(kWorkstation, 2));
    EXPECT_TRUE(hasSolaris(kPlayer, 0));
    EXPECT_EQ(offeredGuestFamilies(kWorkstation, 0).back(), kFamilyOther);

    for (int p = 0; p < kPlatformCount; ++p) {
        for (int v = 0; v < static_cast<int>(platformVersions(p).size()); ++v) {
            bool expected = (p == kWorkstation && v == 4) || p == kPlayer || p == kServer;
            EXPECT_EQ(e1000Offered(p, v), expected) << p << "/" << v;
            EXPECT_EQ(nicTypeEntries(p, v).size(), expected ? 3u : 2u);
        }
    }
    EXPECT_EQ(nicTypeValue(2), "e1000");
    EXPECT_EQ(nicTypePosition("VMXNET"), 1);
    EXPECT_EQ(nicConnectionEntries().size(), 10u);
    EXPECT_EQ(nicConnectionEntries()[8], "VMnet8 (NAT)");
}

TEST(ProductTables, GuestTable) {
    EXPECT_EQ(guestVersions(kFamilyWindows)[9].identifier, "winXPPro");
    auto g = findGuest("WINXPPRO");
    ASSERT_TRUE(g);
    EXPECT_EQ(g->family, kFamilyWindows);
    EXPECT_EQ(g->version, 9);
    auto alias = findGuest("linux");  // older files name the generic Linux guest so
    ASSERT_TRUE(alias);
    EXPECT_EQ(guestVersions(alias->family)[static_cast<std::size_t>(alias->version)].identifier, "otherlinux");
    EXPECT_FALSE(findGuest("windows9-64"));
    // No identifier appears twice: the file value must lead back to one cell.
    std::set<std::string> seen;
    for (int f = 0; f < kGuestFamilyCount; ++f) {
        ASSERT_FALSE(guestVersions(f).empty());
        for (const auto& e : guestVersions(f)) {
            EXPECT_TRUE(seen.insert(std::string(e.identifier)).second) << e.identifier;
            EXPECT_FALSE(e.name.empty());
        }
    }
}

TEST(ProductTables, CommentLines) {
    EXPECT_EQ(platformCommentLine(kGsxServer), "# Platform = GSX Server");
    EXPECT_EQ(versionCommentLine(kWorkstation, 4), "# Version = 5.5x");
    EXPECT_EQ(versionCommentLine(kPlayer, 1), "");
    EXPECT_EQ(versionCommentLine(kGsxServer, 0), "# Version = 2.5x");
}
