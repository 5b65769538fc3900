// Adding many favourites at once keeps the one-at-a-time rules: a name already listed is
// overwritten in place (the last entry of that name when the list holds several), a new name is
// appended; and reading the settings file keeps the private-profile rule that a key written
// twice reads its first value.
#include "core/shell/Favorites.h"

#include "TestSupport.h"
#include "core/shell/ProgramSettings.h"
#include "core/support/cRegistry.h"

using namespace arden;

namespace {

FavoriteRecord fav(const char* name, const char* path, std::int16_t version = 8) { return {name, path, version, 0}; }

}  // namespace

TEST(AddFavorites, MatchesAddingOneAtATime) {
    struct Case {
        const char* what;
        std::vector<FavoriteRecord> list, records, expected;
    };
    const Case cases[] = {
        {"new names append in order", {fav("A", "/a")}, {fav("B", "/b"), fav("C", "/c")},
         {fav("A", "/a"), fav("B", "/b"), fav("C", "/c")}},
        {"a listed name is overwritten in place", {fav("A", "/a"), fav("B", "/b")}, {fav("A", "/a2", 7)},
         {fav("A", "/a2", 7), fav("B", "/b")}},
        {"a name twice among the records keeps the later", {}, {fav("X", "/1"), fav("Y", "/y"), fav("X", "/2", 6)},
         {fav("X", "/2", 6), fav("Y", "/y")}},
        {"of two listed entries the last is overwritten", {fav("D", "/d1"), fav("D", "/d2")}, {fav("D", "/d3")},
         {fav("D", "/d1"), fav("D", "/d3")}},
        {"names compare exactly", {fav("e", "/e")}, {fav("E", "/E")}, {fav("e", "/e"), fav("E", "/E")}},
    };
    for (const Case& c : cases) {
        std::vector<FavoriteRecord> bulk = c.list, single = c.list;
        AddFavorites(bulk, c.records);
        for (const FavoriteRecord& r : c.records) AddFavorite(single, r);
        EXPECT_EQ(bulk, c.expected) << c.what;
        EXPECT_EQ(single, c.expected) << c.what;
    }
}

TEST(AddFavorites, LoadingAKeyWrittenTwiceReadsItsFirstValue) {
    test::ScratchDir dir;
    std::filesystem::create_directory(dir / "tmp");
    cRegistry registry{openFileRegistryStore(dir / "store" / "registry.ini", dir / "dev")};
    ProgramSettings s;
    s.TempFolder = (dir / "tmp").string() + "/";
    test::writeBytes(dir / "tmp" / "ArdenForge.ini",
                     "[Favorites]\r\nFavorite0=A\t/a.vmx\t8\r\nFavorite1=B\t/b.vmx\t7\r\nFAVORITE0=C\t/c.vmx\t8\r\n");
    EXPECT_TRUE(LoadSettings(s, registry).empty());
    EXPECT_EQ(s.Favorites, (std::vector<FavoriteRecord>{fav("A", "/a.vmx"), fav("B", "/b.vmx", 7)}))
        << "FAVORITE0 reads as Favorite0 does";
}
