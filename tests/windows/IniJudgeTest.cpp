// cInifile against the Windows private-profile functions: the same INI file is read and
// changed through both, and each case states, as literal text, what a user finds. Where the
// two must agree the test checks both against that text; where Wine's functions differ from
// what we keep on purpose (Wine rewrites every line of the file, where Windows and cInifile keep
// the lines nobody changed, as cInifileWrite checks), the judge leaves that to the core tests.
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "core/support/PathText.h"
#include "core/support/WindowsText.h"
#include "core/support/cInifile.h"

namespace arden {
namespace {

using test::readBytes;
using test::writeBytes;

struct Change { const char *section, *key, *value; };

struct IniCase {
    const char* name;
    std::optional<std::string> before;  // std::nullopt: the file does not exist yet
    std::vector<Change> changes;
    const char* section;  // then read this key
    const char* key;
    std::string expected;  // what both read; "<default>" when the key is missing
    std::optional<std::string> after;  // the file both leave behind (std::nullopt: not compared)
};

std::wstring wide(const char* text) { return utf8ToWide(text ? text : ""); }

// The Windows side: WritePrivateProfileStringW and GetPrivateProfileStringW.
std::string windowsRead(const std::filesystem::path& file, const char* section, const char* key) {
    wchar_t buffer[4096];
    DWORD n = GetPrivateProfileStringW(wide(section).c_str(), wide(key).c_str(), L"<default>", buffer, 4096,
                                       file.c_str());
    return wideToUtf8(std::wstring_view(buffer, n));
}

void windowsChange(const std::filesystem::path& file, const Change& c) {
    WritePrivateProfileStringW(wide(c.section).c_str(), wide(c.key).c_str(), wide(c.value).c_str(), file.c_str());
}

// Our side: cInifile, as the settings code uses it.
std::string ourRead(const std::filesystem::path& file, const char* section, const char* key) {
    cInifile ini;
    ini.setPath(pathText(file));
    ini.setSection(section);
    ini.setKey(key);
    ini.setDefault("<default>");
    return ini.Value();
}

void ourChange(const std::filesystem::path& file, const Change& c) {
    cInifile ini;
    ini.setPath(pathText(file));
    ini.setSection(c.section);
    ini.setKey(c.key);
    ASSERT_TRUE(ini.setValue(c.value)) << ini.LastError();
}

// Runs one case through both sides and compares each with the literal expectations.
void judge(const IniCase& c) {
    SCOPED_TRACE(c.name);
    test::ScratchDir dir;
    const auto ours = dir / "ours.ini", windows = dir / "windows.ini";
    if (c.before) {
        writeBytes(ours, *c.before);
        writeBytes(windows, *c.before);
    }
    for (const Change& change : c.changes) {
        ourChange(ours, change);
        windowsChange(windows, change);
    }
    EXPECT_EQ(ourRead(ours, c.section, c.key), c.expected) << "cInifile";
    EXPECT_EQ(windowsRead(windows, c.section, c.key), c.expected) << "GetPrivateProfileStringW";
    if (c.after) {
        EXPECT_EQ(readBytes(ours), *c.after) << "the file cInifile wrote";
        EXPECT_EQ(readBytes(windows), *c.after) << "the file WritePrivateProfileStringW wrote";
    }
}

TEST(IniJudge, OddLinesReadAlike) {
    for (const IniCase& c : std::vector<IniCase>{
             {"a \";\" after a value is part of it", "[General]\r\nImagePath=C:\\Images ; old\r\n", {}, "General",
              "ImagePath", "C:\\Images ; old", std::nullopt},
             {"a value in single quotes", "[General]\r\nImagePath='C:\\Images'\r\n", {}, "General", "ImagePath",
              "C:\\Images", std::nullopt},
             {"an opening quote alone stays", "[General]\r\nImagePath=\"C:\\Images\r\n", {}, "General", "ImagePath",
              "\"C:\\Images", std::nullopt},
             {"a value holding \"=\"", "[General]\r\nA=x=y\r\n", {}, "General", "A", "x=y", std::nullopt},
             {"an empty value", "[General]\r\nImagePath=\r\n", {}, "General", "ImagePath", "", std::nullopt},
             {"a missing file reads the default", std::nullopt, {}, "General", "CreateBackups", "<default>",
              std::nullopt},
         }) {
        judge(c);
    }
}

TEST(IniJudge, ASectionMadeAgainIsNotReadOrWritten) {
    const std::string file = "[General]\r\nA=1\r\n[Other]\r\nX=1\r\n[General]\r\nB=2\r\n";
    judge({"a key of the second copy is not found", file, {}, "General", "B", "<default>", std::nullopt});
    judge({"a new key goes to the first copy", file, {{"General", "C", "3"}}, "General", "C", "3",
           "[General]\r\nA=1\r\nC=3\r\n[Other]\r\nX=1\r\n[General]\r\nB=2\r\n"});
}

TEST(IniJudge, SectionNamesAndKeyListsMatchTheWindowsLists) {
    test::ScratchDir dir;
    const auto file = dir / "settings.ini";
    writeBytes(file, "[General]\r\nA=1\r\nb=2\r\n;c\r\n[Favorites]\r\nFavorite1=x\r\nFavorite0=y\r\n");

    // The Windows lists: NUL-separated names, ended by a second NUL.
    auto split = [](const wchar_t* buffer, DWORD n) {
        std::vector<std::string> names;
        for (const wchar_t* p = buffer; p < buffer + n && *p; p += wcslen(p) + 1) names.push_back(wideToUtf8(p));
        return names;
    };
    wchar_t buffer[4096];
    DWORD n = GetPrivateProfileSectionNamesW(buffer, 4096, file.c_str());
    const std::vector<std::string> sections{"General", "Favorites"};
    EXPECT_EQ(split(buffer, n), sections) << "GetPrivateProfileSectionNamesW";
    n = GetPrivateProfileStringW(L"favorites", nullptr, L"", buffer, 4096, file.c_str());
    const std::vector<std::string> keys{"Favorite1", "Favorite0"};
    EXPECT_EQ(split(buffer, n), keys) << "GetPrivateProfileStringW with no key name";

    cInifile ini;
    ini.setPath(pathText(file));
    EXPECT_EQ(ini.Sections(), sections);
    ini.setSection("favorites");
    EXPECT_EQ(ini.EnumerateCurrentSection(), keys);
}

}  // namespace
}  // namespace arden
