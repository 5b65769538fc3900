// The settings file class: reads as the platform's private-profile functions do, writes only
// its own line, reports failures through Success and LastError, and sees changes others make.
#include "core/support/cInifile.h"

#include <tuple>

#include "IniReadCases.h"
#include "TestSupport.h"

using arden::cInifile;
using namespace arden::test;

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
    "; settings\r\n[General]\r\n  CreateBackups = 0  \r\nimagepath=\"C:\\Images\\ \"\r\nNote=a\tb\t\r\n"
    "Twice=first\r\nTWICE=second\r\n\r\n[ favorites ]\r\n; old entries\r\nFavorite1=B\tC:\\b.vmx\t8\r\n"
    "favorite0=A\tC:\\a.vmx\t7\r\nnot a key\r\n";

}  // namespace

TEST(cInifileRead, FollowsThePrivateProfileRules) {
    ScratchDir dir;
    int n = 0;
    for (const IniReadCase& c : kIniReadCases) {
        const auto file = dir / ("case" + std::to_string(++n) + ".ini");
        if (c.file) writeBytes(file, c.file);
        cInifile ini = at(file, c.section, c.key);
        ini.setDefault("<default>");
        EXPECT_EQ(ini.Value(), c.expected) << (c.file ? c.file : "no file");
        EXPECT_EQ(ini.Success(), c.expected != std::string("<default>"));
    }
    writeBytes(dir / "a.ini", kWindowsFile);
    cInifile ini = at(dir / "a.ini", "general", "Missing");
    ini.setDefault("dflt  ");
    EXPECT_EQ(ini.Value(), "dflt");
    EXPECT_FALSE(ini.Success());
    ini.setSection("Favorites");
    EXPECT_EQ(ini.EnumerateCurrentSection(), (std::vector<std::string>{"Favorite1", "favorite0"}));
    ini.setSection("General");
    EXPECT_EQ(ini.INISection(), "CreateBackups=0\r\nimagepath=C:\\Images\\ \r\nNote=a\tb\r\nTwice=first\r\nTWICE=second\r\n");
}

TEST(cInifileWrite, ChangesOnlyItsOwnLine) {
    ScratchDir dir;
    writeBytes(dir / "a.ini", kWindowsFile);
    cInifile ini = at(dir / "a.ini", "GENERAL", "createbackups");
    ASSERT_TRUE(ini.setValue("-1"));
    ini.setKey("twice");
    ASSERT_TRUE(ini.setValue("third"));
    ini.setKey("New");
    ASSERT_TRUE(ini.setValue("n"));
    std::string expected = kWindowsFile;
    expected.replace(expected.find("  CreateBackups = 0  "), 21, "CreateBackups=-1");
    expected.replace(expected.find("Twice=first\r\nTWICE=second\r\n"), 27, "Twice=third\r\nTWICE=second\r\nNew=n\r\n");
    EXPECT_EQ(readBytes(dir / "a.ini"), expected);

    cInifile made = at(dir / "new.ini", "S", "K");
    ASSERT_TRUE(made.setValue("v"));
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
    ASSERT_TRUE(f.setValue("z"));
    EXPECT_EQ(readBytes(dir / "twice.ini"), "[G]\r\ng=1\r\n\r\n[F]\r\nFavorite0=z\r\n");
    f.setSection("G");
    ASSERT_TRUE(f.setINISection("k1=v1\nk2 = v2\r\n\0k3=v3"));
    EXPECT_EQ(f.EnumerateCurrentSection(), (std::vector<std::string>{"k1", "k2"})) << "a NUL ends the entries";
}

TEST(cInifileFailures, ReportThroughSuccessAndKeepTheFile) {
    ScratchDir dir;
    writeBytes(dir / "plain", "not a folder");
    cInifile under = at(dir / "plain" / "x.ini", "S", "K");
    EXPECT_FALSE(under.setValue("v"));
    EXPECT_FALSE(under.Success());
    EXPECT_NE(under.LastError().find((dir / "plain" / "x.ini").string()), std::string::npos);
    EXPECT_FALSE(at(dir / "a.ini", "S", "K").setValue("two\nlines"));
    EXPECT_FALSE(at(dir / "a.ini", "S", "a=b").setValue("v"));
    EXPECT_FALSE(std::filesystem::exists(dir / "a.ini"));
    std::filesystem::create_directory(dir / "dir.ini");
    EXPECT_FALSE(at(dir / "dir.ini", "S", "K").setValue("v"));
    EXPECT_TRUE(std::filesystem::is_directory(dir / "dir.ini"));
}

TEST(cInifileFormPosition, SavesAndLoadsByWindowState) {
    ScratchDir dir;
    cInifile ini = at(dir / "w.ini", "frmMain");
    ASSERT_TRUE(ini.SaveFormPosition({10, -20, 800, 600, false, false}));
    const std::string saved = "[frmMain]\r\nMaximised=0\r\nLeft=10\r\nTop=-20\r\nWidth=800\r\nHeight=600\r\n";
    EXPECT_EQ(readBytes(dir / "w.ini"), saved);
    ASSERT_TRUE(ini.SaveFormPosition({0, 0, 0, 0, false, true}));
    EXPECT_EQ(readBytes(dir / "w.ini"), saved) << "a minimised window writes nothing";
    ASSERT_TRUE(ini.SaveFormPosition({5, 5, 5, 5, true, false}));
    EXPECT_NE(readBytes(dir / "w.ini").find("Maximised=-1\r\nLeft=10\r\n"), std::string::npos)
        << "a maximised window keeps the normal position it had";
    writeBytes(dir / "bad.ini", "[F]\r\nLeft=abc\r\nTop=-7\r\nWidth=2.5\r\nMaximised=True\r\n");
    arden::WindowPlacement w{100, 200, 300, 400, false, true};
    at(dir / "bad.ini", "f").LoadFormPosition(w);
    EXPECT_EQ(std::tuple(w.Left, w.Top, w.Width, w.Height, w.Maximised, w.Minimised), std::tuple(100, -7, 2, 400, true, false))
        << "what cannot be read leaves the field; halves round to even";
}

TEST(cInifileWrite, StartsFromTheFileAsOthersLeftIt) {
    ScratchDir dir;
    writeBytes(dir / "a.ini", "[S]\r\nK=1\r\n");
    cInifile ini = at(dir / "a.ini", "S", "K");
    EXPECT_EQ(ini.Value(), "1");
    writeBytes(dir / "a.ini", "[S]\r\nK=4\r\nL=5\r\n");
    ini.setKey("L");
    ASSERT_TRUE(ini.setValue("6"));
    EXPECT_EQ(readBytes(dir / "a.ini"), "[S]\r\nK=4\r\nL=6\r\n") << "a write starts from the file as it is now";
}
