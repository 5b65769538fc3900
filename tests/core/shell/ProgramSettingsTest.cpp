// The program's settings file in the temporary folder, the registry value that names its
// folder, favourites (added one at a time or many at once), and the Home list's rows.
#include "core/shell/ProgramSettings.h"

#include <tuple>

#include "TestSupport.h"
#include "core/shell/Favorites.h"
#include "core/support/cRegistry.h"

using namespace arden;
using namespace arden::test;

namespace {

// Settings whose temporary folder and registry store are inside one scratch folder.
struct Settings {
    ScratchDir dir;
    cRegistry registry{openFileRegistryStore(dir / "store" / "registry.ini", dir / "dev")};
    ProgramSettings s;
    Settings() { std::filesystem::create_directory(dir / "tmp"); s.TempFolder = (dir / "tmp").string() + "/"; }
    std::filesystem::path iniFile() const { return dir / "tmp" / "ArdenForge.ini"; }
    std::string storedIniLocation() {
        return registry.ValueEx(RegistryRoot::CurrentUser, kSettingsRegistryKey, kIniLocationValue, RegType::String, "");
    }
    std::string load(const std::string& file) {
        writeBytes(iniFile(), file);
        std::string all;
        for (const Message& m : LoadSettings(s, registry)) all += m.text.at(0).literal + "\n";
        return all;
    }
};

FavoriteRecord fav(const char* name, const char* path, std::int16_t version = 8) { return {name, path, version, 0}; }

}  // namespace

TEST(LoadSettings, FirstRunStoresTheTemporaryFolderAndUsesDefaults) {
    Settings t;
    EXPECT_TRUE(LoadSettings(t.s, t.registry).empty());
    EXPECT_EQ(t.storedIniLocation(), t.s.TempFolder);
    EXPECT_EQ(std::tuple(t.s.CreateBackups, t.s.LanguageOffset, t.s.Favorites.size()), std::tuple(true, 0, 0u));
}

TEST(LoadSettings, ReadsAWindowsFileAndStartsWithDefaultsOnBadInput) {
    Settings t;
    EXPECT_EQ(t.load("[general]\r\ncreatebackups = 0\r\nLaunchApplication=C:\\vmware.exe\r\nLanguageOffset=1000\r\n"
                     "ImagePath=D:\\iso\r\n[Favorites]\r\nFavorite0=XP\tC:\\a.vmx\t8\r\nOther=W2K\tC:\\b.vmx\t6\r\n"
                     "Favorite7=XP\tC:\\c.vmx\t7\textra\r\n"),
              "");
    EXPECT_EQ(std::tuple(t.s.CreateBackups, t.s.LaunchApplication, t.s.LanguageOffset, t.s.ImagePath),
              std::tuple(false, "C:\\vmware.exe", 1000, "D:\\iso"));
    EXPECT_EQ(t.s.Favorites, (std::vector<FavoriteRecord>{fav("XP", "C:\\c.vmx", 7), fav("W2K", "C:\\b.vmx", 6)}))
        << "a name listed twice keeps the later entry in place";

    Settings bad;
    std::string notices = bad.load("[Favorites]\r\nFavorite0=A\t/a.vmx\tx\r\nFavorite1=B only\t/b.vmx\r\nFavorite2=C\t/c\t8\r\n"
                                   "[General]\r\nLanguageOffset=700\r\nCreateBackups=maybe\r\n");
    EXPECT_EQ(bad.s.Favorites, std::vector<FavoriteRecord>{fav("A", "/a.vmx", 0)}) << "loading stops at the short favourite";
    EXPECT_EQ(std::tuple(bad.s.LanguageOffset, bad.s.CreateBackups), std::tuple(0, true));
    for (const char* said : {"Favorite1 holds fewer than three", "LanguageOffset \"700\"", "CreateBackups \"maybe\""})
        EXPECT_NE(notices.find(said), std::string::npos) << notices;
    Settings binary;
    EXPECT_NE(binary.load(std::string("\x7f" "ELF\x02\x01\x00\x00[General]\xff\n\x00\x00", 20)).find("binary data"), std::string::npos);
}

TEST(SaveSettings, WritesTheTemporaryFoldersFileWithGapFreeFavorites) {
    Settings t;
    std::filesystem::create_directory(t.dir / "elsewhere");
    writeBytes(t.dir / "elsewhere" / "ArdenForge.ini", "[General]\r\nLanguageOffset=500\r\n");
    writeBytes(t.iniFile(), "; mine\r\n[Favorites]\r\nFavorite3=A\t/a\t8\r\nMy=B\t/b\t8\r\nFavorite9=C\t/c\t6\r\n");
    ASSERT_FALSE(t.registry.setValueEx(RegistryRoot::CurrentUser, kSettingsRegistryKey, kIniLocationValue,
                                      RegType::String, (t.dir / "elsewhere").string()));
    ASSERT_TRUE(LoadSettings(t.s, t.registry).empty());
    EXPECT_EQ(t.s.LanguageOffset, 500) << "read from the folder the registry names";

    t.s.LanguageOffset = 1500;
    t.s.CreateBackups = false;
    AddFavorite(t.s.Favorites, fav("One", "/one.vmx"));
    AddFavorite(t.s.Favorites, fav("Two", "/two.vmx", 6));
    AddFavorite(t.s.Favorites, fav("One", "/moved.vmx"));
    ASSERT_TRUE(SaveSettings(t.s, t.registry).empty());
    EXPECT_EQ(readBytes(t.iniFile()),
              "; mine\r\n[General]\r\nCreateBackups=0\r\nLaunchApplication=\r\nLanguageOffset=1500\r\nImagePath=\r\n"
              "\r\n[Favorites]\r\nFavorite0=One\t/moved.vmx\t8\r\nFavorite1=Two\t/two.vmx\t6\r\n");
    EXPECT_EQ(readBytes(t.dir / "elsewhere" / "ArdenForge.ini"), "[General]\r\nLanguageOffset=500\r\n");
    RemoveFavorite(t.s.Favorites, "One");
    RemoveFavorite(t.s.Favorites, "Two");
    ASSERT_TRUE(SaveSettings(t.s, t.registry).empty());
    EXPECT_EQ(readBytes(t.iniFile()).find("Favorite"), std::string::npos);

    writeBytes(t.dir / "plain", "x");
    t.s.TempFolder = (t.dir / "plain").string() + "/";
    auto failures = SaveSettings(t.s, t.registry);
    ASSERT_EQ(failures.size(), 1u);
    EXPECT_NE(failures[0].text.at(0).literal.find("The settings could not be saved: Cannot write " + t.s.TempFolder +
                                                  "/ArdenForge.ini"),
              std::string::npos) << failures[0].text.at(0).literal;
}

TEST(AddFavorites, ManyAtOnceMatchOneAtATime) {
    struct Case { std::vector<FavoriteRecord> list, records, expected; };
    const Case cases[] = {
        {{fav("A", "/a"), fav("B", "/b")}, {fav("C", "/c"), fav("A", "/a2", 7)}, {fav("A", "/a2", 7), fav("B", "/b"), fav("C", "/c")}},
        {{}, {fav("X", "/1"), fav("Y", "/y"), fav("X", "/2", 6)}, {fav("X", "/2", 6), fav("Y", "/y")}},
        {{fav("D", "/d1"), fav("D", "/d2")}, {fav("D", "/d3")}, {fav("D", "/d1"), fav("D", "/d3")}},
        {{fav("e", "/e")}, {fav("E", "/E")}, {fav("e", "/e"), fav("E", "/E")}},
    };
    for (const Case& c : cases) {
        std::vector<FavoriteRecord> bulk = c.list, single = c.list;
        AddFavorites(bulk, c.records);
        for (const FavoriteRecord& r : c.records) AddFavorite(single, r);
        EXPECT_EQ(bulk, c.expected);
        EXPECT_EQ(single, c.expected);
    }
}

TEST(Favorites, StatusIconsAndRows) {
    ScratchDir dir;
    writeBytes(dir / "here.vmx", "config.version = \"8\"\r\n");
    const std::string here = (dir / "here.vmx").string(), gone = (dir / "gone.vmx").string();
    auto rows = favoriteListRows({{"Here", here, 8, 0}, {"Gone", gone, 9, 0}, {"Old", here, 7, 0},
                                  {"OldGone", dir.path().string(), 6, 0}, {"Empty", "", 8, 0}});
    std::string icons;
    for (const auto& row : rows) icons += std::string(row.IconKey) + " ";
    EXPECT_EQ(icons, "VM VMMissing OldVM OldVMMissing VMMissing ") << "a folder is not a configuration";
    EXPECT_EQ(rows[2].ConfigVersion, "7");
}

TEST(CarrySettingsFile, CopiesOnlyIntoAFolderWithoutOne) {
    Settings t;
    for (const char* folder : {"old", "empty", "own"}) std::filesystem::create_directory(t.dir / folder);
    writeBytes(t.dir / "old" / "ArdenForge.ini", "[Favorites]\r\nFavorite0=A\t/a.vmx\t8\r\n");
    writeBytes(t.dir / "own" / "ArdenForge.ini", "[General]\r\n");
    const std::string old = (t.dir / "old").string();
    EXPECT_FALSE(carrySettingsFile(old, (t.dir / "empty").string()));
    EXPECT_EQ(readBytes(t.dir / "empty" / "ArdenForge.ini"), "[Favorites]\r\nFavorite0=A\t/a.vmx\t8\r\n");
    EXPECT_FALSE(carrySettingsFile(old, (t.dir / "own").string()));
    EXPECT_EQ(readBytes(t.dir / "own" / "ArdenForge.ini"), "[General]\r\n") << "a folder's own file is kept";
    auto failed = carrySettingsFile(old, (t.dir / "missing" / "deeper").string());
    ASSERT_TRUE(failed);
    EXPECT_NE(failed->text.at(0).literal.find((t.dir / "missing" / "deeper" / "ArdenForge.ini").string()), std::string::npos);
}
