// Saving in place, safely, and only over regular files: what a write keeps of the file it
// replaces (the link, the other names, mode, owner and group), and what it refuses at once.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

#include "core/support/AtomicFile.h"
#include "TestSupport.h"

using arden::readWholeFile;
using arden::writeFileAtomically;
using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::writeBytes;
namespace fs = std::filesystem;

namespace {

struct stat statOf(const fs::path& p) {
    struct stat st {};
    ::stat(p.c_str(), &st);
    return st;
}

}  // namespace

// 8. A symlink stays a link and the file it points to changes.
TEST(SafeSaveInPlace, ThroughASymlinkTheTargetChanges) {
    ScratchDir dir;
    fs::create_directory(dir / "real");
    writeBytes(dir / "real" / "vm.vmx", "old");
    fs::create_symlink("real/vm.vmx", dir / "vm.vmx");
    arden::FileWriteReport report;
    EXPECT_FALSE(writeFileAtomically(dir / "vm.vmx", "new", &report));
    EXPECT_TRUE(fs::is_symlink(fs::symlink_status(dir / "vm.vmx")));
    EXPECT_EQ(readBytes(dir / "real" / "vm.vmx"), "new");
    EXPECT_FALSE(report.inPlace);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir / "real"), fs::directory_iterator{}), 1)
        << "no temporary file is left beside the target";
}

TEST(SafeSaveInPlace, HardLinksStayOneFile) {
    ScratchDir dir;
    writeBytes(dir / "a.vmx", "old contents, longer than the new");
    fs::create_hard_link(dir / "a.vmx", dir / "b.vmx");
    arden::FileWriteReport report;
    EXPECT_FALSE(writeFileAtomically(dir / "a.vmx", "new", &report));
    EXPECT_EQ(readBytes(dir / "b.vmx"), "new");
    EXPECT_EQ(fs::hard_link_count(dir / "a.vmx"), 2u);
    EXPECT_TRUE(report.inPlace);
    EXPECT_EQ(report.reason, "it has other hard links");
}

TEST(SafeSaveInPlace, ModeOwnerAndGroupOfAnotherUsersFileAreKept) {
    if (!arden::test::runningAsRoot()) GTEST_SKIP() << "giving a file to another user needs root";
    ScratchDir dir;
    writeBytes(dir / "theirs.vmx", "old");
    ASSERT_EQ(::chown((dir / "theirs.vmx").c_str(), 65534, 65534), 0);
    ASSERT_EQ(::chmod((dir / "theirs.vmx").c_str(), 0640), 0);
    EXPECT_FALSE(writeFileAtomically(dir / "theirs.vmx", "new"));
    struct stat st = statOf(dir / "theirs.vmx");
    EXPECT_EQ(st.st_uid, 65534u);
    EXPECT_EQ(st.st_gid, 65534u);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
    EXPECT_EQ(readBytes(dir / "theirs.vmx"), "new");
}

TEST(SafeSaveInPlace, LongNamesStayWithinTheNameLimit) {
    ScratchDir dir;
    std::string name(251, 'n');
    name += ".vmx";  // 255 bytes, the longest name a file system takes
    writeBytes(dir / name, "old");
    EXPECT_FALSE(writeFileAtomically(dir / name, "new"));
    EXPECT_EQ(readBytes(dir / name), "new");
}

// 9. Only regular files: a FIFO, a device or a folder is refused at once, and stays what it was.
TEST(SafeSaveRegularFilesOnly, OthersAreRefusedWithoutWaiting) {
    ScratchDir dir;
    ASSERT_EQ(::mkfifo((dir / "pipe.vmx").c_str(), 0644), 0);
    fs::create_directory(dir / "folder.vmx");
    struct Case { fs::path path; std::string kind; };
    const Case cases[] = {{dir / "pipe.vmx", "it is a FIFO (named pipe), not a regular file"},
                          {"/dev/null", "it is a character device, not a regular file"},
                          {dir / "folder.vmx", "it is a folder, not a regular file"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path.string());
        auto started = std::chrono::steady_clock::now();
        std::string error;
        EXPECT_FALSE(readWholeFile(c.path, error));
        EXPECT_EQ(error, "Cannot read " + c.path.string() + ": " + c.kind + "; only regular files are read");
        auto refusal = writeFileAtomically(c.path, "new");
        ASSERT_TRUE(refusal);
        EXPECT_EQ(*refusal, "Cannot write " + c.path.string() + ": " + c.kind + "; only regular files are replaced");
        EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(5));
    }
    EXPECT_TRUE(fs::is_fifo(dir / "pipe.vmx"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_TRUE(fs::is_directory(dir / "folder.vmx"));
}
