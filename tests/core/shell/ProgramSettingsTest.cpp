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
};

std::string noticeText(const std::vector<Message>& notices) {
    std::string all;
    for (const Message& m : notices) all += m.text.at(0).literal + "\n";
    return all;
}

}  // namespace

TEST(LoadSettings, FirstRunStoresTheTemporaryFolderAndUsesDefaults) {
    Settings t;
    EXPECT_TRUE(LoadSettings(t.s, t.registry).empty());
    EXPECT_EQ(t.s.IniLocation, t.s.TempFolder);
    EXPECT_EQ(t.storedIniLocation(), t.s.TempFolder);
    EXPECT_TRUE(t.s.CreateBackups);
    EXPECT_EQ(t.s.LanguageOffset, 0);
    EXPECT_TRUE(t.s.Favorites.empty());
    EXPECT_EQ(settingsFilePath(t.s.TempFolder), t.s.TempFolder + "/ArdenForge.ini") << "the doubled separator stays";
}

TEST(LoadSettings, ReadsAWindowsFileCollapsingDuplicateNames) {
    Settings t;
    writeBytes(t.iniFile(),
               "[general]\r\ncreatebackups = 0\r\nLaunchApplication=C:\\vmware.exe\r\nLanguageOffset=1000\r\n"
               "ImagePath=D:\\iso\r\n[Favorites]\r\nFavorite0=XP\tC:\\a.vmx\t8\r\nOther=W2K\tC:\\b.vmx\t6\r\n"
               "Favorite7=XP\tC:\\c.vmx\t7\textra\r\n");
    EXPECT_TRUE(LoadSettings(t.s, t.registry).empty());
    EXPECT_EQ(std::tuple(t.s.CreateBackups, t.s.LaunchApplication, t.s.LanguageOffset, t.s.ImagePath),
              std::tuple(false, "C:\\vmware.exe", 1000, "D:\\iso"));
    ASSERT_EQ(t.s.Favorites.size(), 2u);
    EXPECT_EQ(t.s.Favorites[0], (FavoriteRecord{"XP", "C:\\c.vmx", 7, 0})) << "the later entry wins, in place";
    EXPECT_EQ(t.s.Favorites[1], (FavoriteRecord{"W2K", "C:\\b.vmx", 6, 0}));
}

TEST(LoadSettings, BadInputStillStartsWithDefaults) {
    Settings t;
    writeBytes(t.iniFile(), "[Favorites]\r\nFavorite0=A\t/a.vmx\tx\r\nFavorite1=B only\t/b.vmx\r\nFavorite2=C\t/c\t8\r\n"
                            "[General]\r\nLanguageOffset=700\r\nCreateBackups=maybe\r\n");
    auto notices = LoadSettings(t.s, t.registry);
    ASSERT_EQ(t.s.Favorites.size(), 1u) << "loading stops at the short favourite";
    EXPECT_EQ(t.s.Favorites[0].ConfigVersion, 0) << "a version that is not a number reads as 0";
    EXPECT_EQ(t.s.LanguageOffset, 0);
    EXPECT_TRUE(t.s.CreateBackups);
    std::string text = noticeText(notices);
    EXPECT_NE(text.find("Favorite1 holds fewer than three"), std::string::npos) << text;
    EXPECT_NE(text.find("LanguageOffset \"700\""), std::string::npos) << text;
    EXPECT_NE(text.find("CreateBackups \"maybe\""), std::string::npos) << text;

    Settings binary;
    writeBytes(binary.iniFile(), std::string("\x7f" "ELF\x02\x01\x00\x00[General]\xff\n\x00\x00", 20));
    auto binaryNotices = LoadSettings(binary.s, binary.registry);
    EXPECT_TRUE(binary.s.CreateBackups);
    EXPECT_NE(noticeText(binaryNotices).find("binary data"), std::string::npos);
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
    EXPECT_TRUE(t.s.Favorites.empty());

    t.s.LanguageOffset = 1500;
    t.s.CreateBackups = false;
    AddFavorite(t.s.Favorites, {"One", "/one.vmx", 8, 0});
    AddFavorite(t.s.Favorites, {"Two", "/two.vmx", 6, 0});
    AddFavorite(t.s.Favorites, {"One", "/moved.vmx", 8, 0});
    ASSERT_TRUE(SaveSettings(t.s, t.registry).empty());
    EXPECT_EQ(readBytes(t.iniFile()),
              "; mine\r\n[General]\r\nCreateBackups=0\r\nLaunchApplication=\r\nLanguageOffset=1500\r\nImagePath=\r\n"
              "\r\n[Favorites]\r\nFavorite0=One\t/moved.vmx\t8\r\nFavorite1=Two\t/two.vmx\t6\r\n");
    EXPECT_EQ(readBytes(t.dir / "elsewhere" / "ArdenForge.ini"), "[General]\r\nLanguageOffset=500\r\n")
        << "the chosen settings folder is not where a save goes";
    EXPECT_EQ(t.storedIniLocation(), (t.dir / "elsewhere").string());

    RemoveFavorite(t.s.Favorites, "One");
    RemoveFavorite(t.s.Favorites, "Two");
    ASSERT_TRUE(SaveSettings(t.s, t.registry).empty());
    EXPECT_EQ(readBytes(t.iniFile()).find("Favorite"), std::string::npos);
    t.s.IniLocation = t.s.TempFolder;
    LoadSettings(t.s, t.registry);
    EXPECT_TRUE(t.s.Favorites.empty());
}

TEST(SaveSettings, ReportsWhatCouldNotBeWritten) {
    Settings t;
    writeBytes(t.dir / "plain", "x");
    t.s.TempFolder = (t.dir / "plain").string() + "/";
    t.s.IniLocation = t.s.TempFolder;
    auto failures = SaveSettings(t.s, t.registry);
    ASSERT_EQ(failures.size(), 1u);
    EXPECT_EQ(failures[0].title.at(0), TextPart::fromId(1));
    EXPECT_NE(failures[0].text.at(0).literal.find("The settings could not be saved: Cannot write " + t.s.TempFolder +
                                                  "/ArdenForge.ini"),
              std::string::npos)
        << failures[0].text.at(0).literal;
    EXPECT_EQ(t.storedIniLocation(), t.s.TempFolder) << "the registry value is still written";
}

TEST(Favorites, StatusIconsAndRows) {
    ScratchDir dir;
    writeBytes(dir / "here.vmx", "config.version = \"8\"\r\n");
    std::vector<FavoriteRecord> favorites = {{"Here", (dir / "here.vmx").string(), 8, 0},
                                             {"Gone", (dir / "gone.vmx").string(), 9, 0},
                                             {"Old", (dir / "here.vmx").string(), 7, 0},
                                             {"OldGone", dir.path().string(), 6, 0},
                                             {"Empty", "", 8, 0}};
    auto rows = favoriteListRows(favorites);
    ASSERT_EQ(rows.size(), 5u);
    const char* icons[] = {"VM", "VMMissing", "OldVM", "OldVMMissing" /* a folder is not a configuration */, "VMMissing"};
    for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(rows[i].IconKey, icons[i]) << rows[i].DisplayName;
    EXPECT_EQ(rows[2].ConfigVersion, "7");
}

TEST(CarrySettingsFile, CopiesOnlyIntoAFolderWithoutOne) {
    Settings t;
    for (const char* folder : {"old", "empty", "own", "none-here"}) std::filesystem::create_directory(t.dir / folder);
    writeBytes(t.dir / "old" / "ArdenForge.ini", "[Favorites]\r\nFavorite0=A\t/a.vmx\t8\r\n");
    writeBytes(t.dir / "own" / "ArdenForge.ini", "[General]\r\n");
    const std::string old = (t.dir / "old").string();

    EXPECT_FALSE(carrySettingsFile(old, (t.dir / "empty").string()));
    EXPECT_EQ(readBytes(t.dir / "empty" / "ArdenForge.ini"), "[Favorites]\r\nFavorite0=A\t/a.vmx\t8\r\n");
    EXPECT_FALSE(carrySettingsFile(old, (t.dir / "own").string()));
    EXPECT_EQ(readBytes(t.dir / "own" / "ArdenForge.ini"), "[General]\r\n") << "a folder's own file is kept";
    EXPECT_FALSE(carrySettingsFile((t.dir / "none-here").string(), (t.dir / "own2").string()));
    EXPECT_FALSE(std::filesystem::exists(t.dir / "own2")) << "nothing to copy";

    auto failed = carrySettingsFile(old, (t.dir / "missing" / "deeper").string());
    ASSERT_TRUE(failed);
    EXPECT_EQ(failed->kind, MessageKind::Warning);
    EXPECT_NE(noticeText({*failed}).find((t.dir / "missing" / "deeper" / "ArdenForge.ini").string()), std::string::npos)
        << noticeText({*failed});
}
