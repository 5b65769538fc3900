// cInifile against the Windows private-profile functions: the same INI file is read and
// changed through both, and each case states, as literal text, what a user finds. The read
// cases are the ones the core cInifile tests hold on every system. Where Wine's functions differ
// from what we keep on purpose (Wine rewrites every line of the file, where Windows and cInifile
// keep the lines nobody changed, as cInifileWrite checks), the judge leaves that to the core tests.
#include <windows.h>

#include <string>
#include <vector>

#include "core/support/IniReadCases.h"  // tests/core/support
#include "TestSupport.h"
#include "core/support/PathText.h"
#include "core/support/WindowsText.h"
#include "core/support/cInifile.h"

namespace arden {
namespace {

using test::readBytes;
using test::writeBytes;

std::wstring wide(const char* text) { return utf8ToWide(text); }

cInifile ours(const std::filesystem::path& file, const char* section, const char* key) {
    cInifile ini;
    ini.setPath(pathText(file));
    ini.setSection(section);
    ini.setKey(key);
    ini.setDefault("<default>");
    return ini;
}

TEST(IniJudge, ReadsAlike) {
    test::ScratchDir dir;
    int n = 0;
    for (const test::IniReadCase& c : test::kIniReadCases) {
        SCOPED_TRACE(c.file ? c.file : "no file");
        const auto file = dir / ("case" + std::to_string(++n) + ".ini");
        if (c.file) writeBytes(file, c.file);
        wchar_t buffer[4096];
        DWORD length = GetPrivateProfileStringW(wide(c.section).c_str(), wide(c.key).c_str(), L"<default>", buffer, 4096,
                                                file.c_str());
        EXPECT_EQ(wideToUtf8(std::wstring_view(buffer, length)), c.expected) << "GetPrivateProfileStringW";
        EXPECT_EQ(ours(file, c.section, c.key).Value(), c.expected) << "cInifile";
    }
}

// Writing one key: a missing file is made, and a new key of a section the file holds twice goes
// to the first copy. Both sides leave the same bytes.
TEST(IniJudge, WritesAlike) {
    struct Case { const char* before; const char *section, *key, *value, *after; };
    const Case cases[] = {
        {nullptr, "General", "CreateBackups", "0", "[General]\r\nCreateBackups=0\r\n"},
        {"[General]\r\nA=1\r\n[Other]\r\nX=1\r\n[General]\r\nB=2\r\n", "General", "C", "3",
         "[General]\r\nA=1\r\nC=3\r\n[Other]\r\nX=1\r\n[General]\r\nB=2\r\n"},
    };
    for (const Case& c : cases) {
        test::ScratchDir dir;
        const auto windows = dir / "windows.ini", mine = dir / "ours.ini";
        if (c.before) {
            writeBytes(windows, c.before);
            writeBytes(mine, c.before);
        }
        WritePrivateProfileStringW(wide(c.section).c_str(), wide(c.key).c_str(), wide(c.value).c_str(), windows.c_str());
        cInifile ini = ours(mine, c.section, c.key);
        ASSERT_TRUE(ini.setValue(c.value)) << ini.LastError();
        EXPECT_EQ(readBytes(windows), c.after) << "WritePrivateProfileStringW";
        EXPECT_EQ(readBytes(mine), c.after) << "cInifile";
    }
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

    cInifile ini = ours(file, "favorites", "");
    EXPECT_EQ(ini.Sections(), sections);
    EXPECT_EQ(ini.EnumerateCurrentSection(), keys);
}

}  // namespace
}  // namespace arden
