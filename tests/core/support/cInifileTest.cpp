#include "core/support/cInifile.h"

#include "TestSupport.h"

using arden::cInifile;
using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::writeBytes;

namespace {

cInifile at(const std::filesystem::path& file, const std::string& section, const std::string& key = {}) {
    cInifile ini;
    ini.setPath(file.string());
    ini.setSection(section);
    ini.setKey(key);
    return ini;
}

// A file as Windows programs and people leave them: CR LF, other letter case, blanks around
// "=", comments, a key written twice, quotes, a value with a tab inside.
const std::string kWindowsFile =
    "; settings\r\n"
    "[General]\r\n"
    "  CreateBackups = 0  \r\n"
    "imagepath=\"C:\\Images\\ \"\r\n"
    "Note=a\tb\t\r\n"
    "Twice=first\r\n"
    "TWICE=second\r\n"
    "\r\n"
    "[ favorites ]\r\n"
    "; old entries\r\n"
    "Favorite1=B\tC:\\b.vmx\t8\r\n"
    "favorite0=A\tC:\\a.vmx\t7\r\n"
    "not a key\r\n";

}  // namespace

TEST(cInifileRead, FollowsThePrivateProfileRules) {
    ScratchDir dir;
    writeBytes(dir / "a.ini", kWindowsFile);
    cInifile ini = at(dir / "a.ini", "general", "createbackups");
    EXPECT_EQ(ini.Value(), "0");
    EXPECT_TRUE(ini.Success());
    ini.setKey("ImagePath");
    EXPECT_EQ(ini.Value(), "C:\\Images\\ ") << "quotes dropped, blanks inside them kept";
    ini.setKey("Note");
    EXPECT_EQ(ini.Value(), "a\tb") << "a tab inside a value stays, a trailing one is trimmed";
    ini.setKey("twice");
    EXPECT_EQ(ini.Value(), "first");
    ini.setKey("Missing");
    ini.setDefault("dflt  ");
    EXPECT_EQ(ini.Value(), "dflt");
    EXPECT_FALSE(ini.Success());

    ini.setSection("Favorites");
    EXPECT_EQ(ini.EnumerateCurrentSection(), (std::vector<std::string>{"Favorite1", "favorite0"}));
    ini.setSection("General");
    EXPECT_EQ(ini.EnumerateCurrentSection(),
              (std::vector<std::string>{"CreateBackups", "imagepath", "Note", "Twice", "TWICE"}));
    EXPECT_EQ(ini.INISection(), "CreateBackups=0\r\nimagepath=C:\\Images\\ \r\nNote=a\tb\r\nTwice=first\r\nTWICE=second\r\n");

    writeBytes(dir / "lf.ini", "[S]\nk = v\n");
    EXPECT_EQ(at(dir / "lf.ini", "s", "K").Value(), "v");
}

TEST(cInifileWrite, ChangesOnlyItsOwnLine) {
    ScratchDir dir;
    writeBytes(dir / "a.ini", kWindowsFile);
    cInifile ini = at(dir / "a.ini", "GENERAL", "createbackups");
    ASSERT_TRUE(ini.setValue("-1"));
    std::string expected = kWindowsFile;
    expected.replace(expected.find("  CreateBackups = 0  "), 21, "CreateBackups=-1");
    EXPECT_EQ(readBytes(dir / "a.ini"), expected) << "the key keeps its spelling; every other line stays";

    ini.setKey("twice");
    ASSERT_TRUE(ini.setValue("third"));
    EXPECT_NE(readBytes(dir / "a.ini").find("Twice=third\r\nTWICE=second\r\n"), std::string::npos);

    ini.setKey("New");
    ASSERT_TRUE(ini.setValue("n"));
    EXPECT_NE(readBytes(dir / "a.ini").find("TWICE=second\r\nNew=n\r\n\r\n[ favorites ]"), std::string::npos)
        << "a new key goes after the section's last line, before the blank line";

    ini.setSection("Other");
    ini.setKey("K");
    ASSERT_TRUE(ini.setValue("v"));
    const std::string tail = "not a key\r\n\r\n[Other]\r\nK=v\r\n";
    std::string text = readBytes(dir / "a.ini");
    EXPECT_EQ(text.substr(text.size() - tail.size()), tail) << "a new section goes at the end after a blank line";
}

TEST(cInifileWrite, CreatesTheFileAndDeletesKeysAndSections) {
    ScratchDir dir;
    cInifile ini = at(dir / "new.ini", "S", "K");
    ASSERT_TRUE(ini.setValue("v"));
    EXPECT_EQ(readBytes(dir / "new.ini"), "[S]\r\nK=v\r\n");

    writeBytes(dir / "lf.ini", "[A]\nx=1\ny=2\n[B]\nz=3");
    cInifile lf = at(dir / "lf.ini", "a", "X");
    ASSERT_TRUE(lf.DeleteKey());
    lf.setSection("B");
    lf.setKey("w");
    ASSERT_TRUE(lf.setValue("4"));
    EXPECT_EQ(readBytes(dir / "lf.ini"), "[A]\ny=2\n[B]\nz=3\nw=4\n") << "new lines end like the file's";

    // A section deleted and made again holds only the new keys, wherever both copies were.
    writeBytes(dir / "twice.ini", "[F]\r\nFavorite5=x\r\n[G]\r\ng=1\r\n[f]\r\nFavorite9=y\r\n");
    cInifile f = at(dir / "twice.ini", "F", "Favorite0");
    ASSERT_TRUE(f.DeleteSection());
    EXPECT_EQ(f.EnumerateAllSections(), (std::vector<std::string>{"G"}));
    ASSERT_TRUE(f.setValue("z"));
    EXPECT_EQ(readBytes(dir / "twice.ini"), "[G]\r\ng=1\r\n\r\n[F]\r\nFavorite0=z\r\n");
    EXPECT_EQ(f.EnumerateCurrentSection(), std::vector<std::string>{"Favorite0"});
}

TEST(cInifileSections, ListsAndReplacesSections) {
    ScratchDir dir;
    writeBytes(dir / "s.ini", "[A]\r\na=1\r\n[b]\r\n[a]\r\nc=2\r\n");
    cInifile ini = at(dir / "s.ini", "B");
    EXPECT_EQ(ini.Sections(), (std::vector<std::string>{"A", "b"}));
    EXPECT_EQ(ini.EnumerateAllSections(), (std::vector<std::string>{"A", "b", "a"}));
    ASSERT_TRUE(ini.setINISection("k1=v1\nk2 = v2\r\n\0k3=v3"));
    ini.setKey("k2");
    EXPECT_EQ(ini.Value(), "v2");
    EXPECT_EQ(ini.EnumerateCurrentSection(), (std::vector<std::string>{"k1", "k2"}))
        << "a NUL ends the entries, as in the platform's section buffers";
}

TEST(cInifileFailures, ReportThroughSuccessAndKeepTheFile) {
    ScratchDir dir;
    writeBytes(dir / "plain", "not a folder");
    cInifile under = at(dir / "plain" / "x.ini", "S", "K");
    EXPECT_FALSE(under.setValue("v"));
    EXPECT_FALSE(under.Success());
    EXPECT_EQ(under.LastReturnCode(), 0);
    EXPECT_NE(under.LastError().find((dir / "plain" / "x.ini").string()), std::string::npos);

    cInifile ini = at(dir / "a.ini", "S", "K");
    EXPECT_FALSE(ini.setValue("two\nlines"));
    ini.setKey("a=b");
    EXPECT_FALSE(ini.setValue("v"));
    EXPECT_FALSE(std::filesystem::exists(dir / "a.ini"));

    // A folder where the file should be cannot be read, so it is never written over.
    std::filesystem::create_directory(dir / "dir.ini");
    cInifile folder = at(dir / "dir.ini", "S", "K");
    EXPECT_EQ(folder.Value(), "");
    EXPECT_FALSE(folder.LastError().empty());
    EXPECT_FALSE(folder.setValue("v"));
    EXPECT_TRUE(std::filesystem::is_directory(dir / "dir.ini"));
}

TEST(cInifileFormPosition, SavesAndLoadsByWindowState) {
    ScratchDir dir;
    cInifile ini = at(dir / "w.ini", "frmMain");
    ASSERT_TRUE(ini.SaveFormPosition({10, -20, 800, 600, false, false}));
    EXPECT_EQ(readBytes(dir / "w.ini"), "[frmMain]\r\nMaximised=0\r\nLeft=10\r\nTop=-20\r\nWidth=800\r\nHeight=600\r\n");
    arden::WindowPlacement loaded{1, 2, 3, 4, false, false};
    ini.LoadFormPosition(loaded);
    EXPECT_EQ(loaded.Left, 10);
    EXPECT_EQ(loaded.Top, -20);
    EXPECT_EQ(loaded.Height, 600);

    std::string before = readBytes(dir / "w.ini");
    ASSERT_TRUE(ini.SaveFormPosition({0, 0, 0, 0, false, true}));
    EXPECT_EQ(readBytes(dir / "w.ini"), before) << "a minimised window writes nothing";
    ASSERT_TRUE(ini.SaveFormPosition({5, 5, 5, 5, true, false}));
    EXPECT_NE(readBytes(dir / "w.ini").find("Maximised=-1\r\nLeft=10\r\n"), std::string::npos)
        << "a maximised window keeps the normal position it had";

    writeBytes(dir / "bad.ini", "[F]\r\nLeft=abc\r\nTop=7\r\nMaximised=True\r\n");
    cInifile bad = at(dir / "bad.ini", "f");
    arden::WindowPlacement w{100, 200, 300, 400, false, true};
    bad.LoadFormPosition(w);
    EXPECT_EQ(w.Left, 100) << "a value that is not a number leaves the field as it was";
    EXPECT_EQ(w.Top, 7);
    EXPECT_EQ(w.Width, 300) << "a missing key leaves the field as it was";
    EXPECT_TRUE(w.Maximised);
    EXPECT_FALSE(w.Minimised);
}

TEST(cInifileConversions, TextToNumberAndBoolean) {
    EXPECT_EQ(cInifile::CLngDefault(" -42 ", 7), -42);
    EXPECT_EQ(cInifile::CLngDefault("+3", 7), 3);
    EXPECT_EQ(cInifile::CLngDefault("2.5", 7), 2);
    EXPECT_EQ(cInifile::CLngDefault("3.5", 7), 4);
    EXPECT_EQ(cInifile::CLngDefault("2.51", 7), 3);
    EXPECT_EQ(cInifile::CLngDefault("2147483647", 7), 2147483647);
    EXPECT_EQ(cInifile::CLngDefault("-2147483648", 7), -2147483647 - 1);
    for (const char* bad : {"", "-", ".", "12a", "0x10", "2147483648", "99999999999999999999", "1 2"}) {
        EXPECT_EQ(cInifile::CLngDefault(bad, 7), 7) << bad;
    }
    EXPECT_TRUE(cInifile::CBoolDefault("-1", false));
    EXPECT_TRUE(cInifile::CBoolDefault("TRUE", false));
    EXPECT_FALSE(cInifile::CBoolDefault(" 0 ", true));
    EXPECT_FALSE(cInifile::CBoolDefault("false", true));
    EXPECT_TRUE(cInifile::CBoolDefault("yes", true));
    EXPECT_FALSE(cInifile::CBoolDefault("yes", false));
}

TEST(cInifileRead, SeesChangesMadeByOthersBetweenReads) {
    ScratchDir dir;
    writeBytes(dir / "a.ini", "[S]\r\nK=1\r\n");
    cInifile ini = at(dir / "a.ini", "S", "K");
    EXPECT_EQ(ini.Value(), "1");
    writeBytes(dir / "a.ini", "[S]\r\nK=22\r\n");
    EXPECT_EQ(ini.Value(), "22");
    std::filesystem::remove(dir / "a.ini");
    ini.setDefault("gone");
    EXPECT_EQ(ini.Value(), "gone");
    ASSERT_TRUE(ini.setValue("3"));
    writeBytes(dir / "a.ini", "[S]\r\nK=4\r\nL=5\r\n");
    ini.setKey("L");
    ASSERT_TRUE(ini.setValue("6"));
    EXPECT_EQ(readBytes(dir / "a.ini"), "[S]\r\nK=4\r\nL=6\r\n") << "a write starts from the file as it is now";
}
