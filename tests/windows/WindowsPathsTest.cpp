// Paths on Windows: the temporary folder as GetTempPathW gives it, the settings file beside it
// with the doubled "\" kept, folders named with non-ASCII letters, and atomic replacement.
#include <windows.h>

#include <string>

#include "TestSupport.h"
#include "core/shell/ProgramSettings.h"
#include "core/support/AtomicFile.h"
#include "core/support/PathText.h"
#include "core/support/TempFolder.h"
#include "core/support/cInifile.h"

namespace arden {
namespace {

TEST(WindowsPaths, TheTemporaryFolderEndsInABackslash) {
    std::string folder = TempFolder();
    ASSERT_GE(folder.size(), 4u) << folder;
    EXPECT_EQ(folder.substr(1, 2), ":\\") << folder;
    EXPECT_EQ(folder.back(), '\\') << folder;
}

TEST(WindowsPaths, SettingsFileKeepsTheDoubledSeparator) {
    EXPECT_EQ(settingsFilePath("C:\\users\\J\xC3\xB6rg\\Temp\\"), "C:\\users\\J\xC3\xB6rg\\Temp\\\\ArdenForge.ini");
    // The doubled separator reaches the same file: written through it, read without it.
    test::ScratchDir dir;
    const std::string folder = pathText(dir.path()) + "\\";
    cInifile ini;
    ini.setPath(settingsFilePath(folder));
    ini.setSection("General");
    ini.setKey("LanguageOffset");
    ASSERT_TRUE(ini.setValue("500")) << ini.LastError();
    EXPECT_EQ(test::readBytes(dir / "ArdenForge.ini"), "[General]\r\nLanguageOffset=500\r\n");
}

TEST(WindowsPaths, AFolderNamedWithNonAsciiLettersIsThatFolder) {
    test::ScratchDir dir;
    const std::string name = "Pr\xC3\xBC" "fung \xE2\x98\x83";  // "Prüfung ☃" in UTF-8
    const std::string folder = pathText(dir.path()) + "\\" + name;
    ASSERT_TRUE(CreateDirectoryW((dir.path() / L"Pr\u00FCfung \u2603").c_str(), nullptr));
    cInifile ini;
    ini.setPath(folder + "\\ArdenForge.ini");
    ini.setSection("General");
    ini.setKey("ImagePath");
    ASSERT_TRUE(ini.setValue(folder)) << ini.LastError();
    EXPECT_TRUE(std::filesystem::exists(dir.path() / L"Pr\u00FCfung \u2603" / L"ArdenForge.ini"));
    EXPECT_EQ(ini.Value(), folder);
    EXPECT_EQ(pathText(filePath(folder)), folder);
}

TEST(WindowsPaths, AFailedWriteNamesTheFileAndLeavesNothing) {
    test::ScratchDir dir;
    auto missing = dir / "missing-folder" / "a.vmx";
    auto error = writeFileAtomically(missing, "x");
    ASSERT_TRUE(error);
    // The system's own text: Wine words it "Path not found.", Windows "The system cannot find
    // the path specified.".
    const std::string start = "Cannot write " + pathText(missing) + ": ";
    EXPECT_TRUE(*error == start + "Path not found." || *error == start + "The system cannot find the path specified.")
        << *error;

    auto kept = dir / "kept.vmx";
    test::writeBytes(kept, "old");
    ASSERT_FALSE(writeFileAtomically(kept, "new"));
    EXPECT_EQ(test::readBytes(kept), "new");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1) << "a temporary file was left";
}

// Saving over a read-only file is asked first; once the user says yes the file is replaced and
// stays read-only, as it does on other systems.
TEST(WindowsPaths, AReadOnlyFileIsReplacedAndStaysReadOnly) {
    test::ScratchDir dir;
    const auto file = dir / "ro.vmx";
    test::writeBytes(file, "old");
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE));
    EXPECT_EQ(writeFileAtomically(file, "new"), std::nullopt);
    EXPECT_EQ(test::readBytes(file), "new");
    EXPECT_EQ(GetFileAttributesW(file.c_str()) & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE),
              static_cast<DWORD>(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE));
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
}

}  // namespace
}  // namespace arden
