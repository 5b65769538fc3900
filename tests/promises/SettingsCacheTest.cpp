// The settings file is parsed once while it stays the same; a file rewritten by someone else
// is read again even when its size did not change.
#include "core/support/cInifile.h"

#include <chrono>

#include "TestSupport.h"

using arden::cInifile;
using namespace arden::test;
namespace fs = std::filesystem;

TEST(SettingsFileCache, NoticesAFileRewrittenWithTheSameSize) {
    ScratchDir dir;
    const fs::path file = dir / "ArdenForge.ini";
    writeBytes(file, "[General]\r\nCreateBackups=0\r\n");
    cInifile ini;
    ini.setPath(file.string());
    ini.setSection("General");
    ini.setKey("CreateBackups");
    EXPECT_EQ(ini.Value(), "0");

    // Another program writes the file: same length, a later modification time.
    const auto before = fs::last_write_time(file);
    writeBytes(file, "[General]\r\nCreateBackups=1\r\n");
    fs::last_write_time(file, before + std::chrono::seconds(2));
    EXPECT_EQ(ini.Value(), "1");
}
