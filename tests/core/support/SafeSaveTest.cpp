// Writing a file safely and only over regular files: a whole new file renamed over the old one,
// or, where a rename would break what the user has (a link, other names, an owner that cannot be
// kept), the old file rewritten in place; failures name the file and leave it as it was.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <tuple>

#include "core/support/AtomicFile.h"
#include "TestSupport.h"

using arden::readWholeFile;
using arden::writeFileAtomically;
using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::writeBytes;
namespace fs = std::filesystem;

namespace {

int entriesIn(const fs::path& dir) { return static_cast<int>(std::distance(fs::directory_iterator(dir), fs::directory_iterator{})); }

}  // namespace

TEST(SafeSave, ReplacesTheWholeFileOrNamesWhyNot) {
    ScratchDir dir;
    writeBytes(dir / "a.vmx", "old contents that are longer than the new ones");
    arden::FileWriteReport report{true, "x"};
    EXPECT_FALSE(writeFileAtomically(dir / "a.vmx", "new", &report));
    EXPECT_EQ(readBytes(dir / "a.vmx"), "new");
    EXPECT_FALSE(report.inPlace);
    EXPECT_EQ(entriesIn(dir.path()), 1) << "no temporary file is left";
    auto error = writeFileAtomically(dir / "missing-folder" / "a.vmx", "x");
    ASSERT_TRUE(error);
    EXPECT_EQ(*error, "Cannot write " + (dir / "missing-folder" / "a.vmx").string() + ": No such file or directory");
    std::string reason;
    writeBytes(dir / "b", std::string("a\0b", 3));
    EXPECT_EQ(readWholeFile(dir / "b", reason), std::string("a\0b", 3));
}

TEST(SafeSave, LinksStayLinksAndHardLinksStayOneFile) {
    ScratchDir dir;
    fs::create_directory(dir / "real");
    writeBytes(dir / "real" / "vm.vmx", "old");
    fs::create_symlink("real/vm.vmx", dir / "vm.vmx");
    EXPECT_FALSE(writeFileAtomically(dir / "vm.vmx", "new"));
    EXPECT_TRUE(fs::is_symlink(fs::symlink_status(dir / "vm.vmx")));
    EXPECT_EQ(readBytes(dir / "real" / "vm.vmx"), "new");

    fs::create_hard_link(dir / "real" / "vm.vmx", dir / "b.vmx");
    arden::FileWriteReport report;
    EXPECT_FALSE(writeFileAtomically(dir / "b.vmx", "newer", &report));
    EXPECT_EQ(readBytes(dir / "real" / "vm.vmx"), "newer");
    EXPECT_EQ(fs::hard_link_count(dir / "b.vmx"), 2u);
    EXPECT_TRUE(report.inPlace);
    EXPECT_EQ(report.reason, "it has other hard links");
}

// Giving a file to another user needs root; the user nobody then saves over root's file.
TEST(SafeSave, ModeOwnerAndGroupOfAnotherUsersFileAreKept) {
    if (!arden::test::runningAsRoot()) ARDEN_CANNOT_RUN("giving a file to another user needs root");
    ScratchDir dir;
    fs::permissions(dir.path(), fs::perms::all);
    writeBytes(dir / "theirs.vmx", "old");
    ASSERT_EQ(::chown((dir / "theirs.vmx").c_str(), 65534, 65534), 0);
    ASSERT_EQ(::chmod((dir / "theirs.vmx").c_str(), 0646), 0);
    EXPECT_FALSE(writeFileAtomically(dir / "theirs.vmx", "new"));
    struct stat st {};
    ASSERT_EQ(::stat((dir / "theirs.vmx").c_str(), &st), 0);
    EXPECT_EQ(std::tuple(st.st_uid, st.st_gid, st.st_mode & 07777), std::tuple(65534u, 65534u, 0646u));
    EXPECT_EQ(readBytes(dir / "theirs.vmx"), "new");

    ASSERT_EQ(::chown((dir / "theirs.vmx").c_str(), 0, 0), 0);
    EXPECT_TRUE(arden::test::asNobody([&] {
        arden::FileWriteReport report;
        return !writeFileAtomically(dir / "theirs.vmx", "by nobody", &report) &&
               report.reason == "its owner or group could not be kept on a new file";
    }));
    ASSERT_EQ(::stat((dir / "theirs.vmx").c_str(), &st), 0);
    EXPECT_EQ(st.st_uid, 0u) << "the file still belongs to root";
    EXPECT_EQ(readBytes(dir / "theirs.vmx"), "by nobody");
}

TEST(SafeSave, OnlyRegularFilesAreReadOrReplacedAndNothingWaits) {
    ScratchDir dir;
    ASSERT_EQ(::mkfifo((dir / "pipe.vmx").c_str(), 0644), 0);
    fs::create_directory(dir / "folder.vmx");
    const std::pair<fs::path, std::string> cases[] = {{dir / "pipe.vmx", "it is a FIFO (named pipe), not a regular file"},
                                                      {"/dev/null", "it is a character device, not a regular file"},
                                                      {dir / "folder.vmx", "it is a folder, not a regular file"}};
    for (const auto& [path, kind] : cases) {
        auto started = std::chrono::steady_clock::now();
        std::string error;
        EXPECT_FALSE(readWholeFile(path, error));
        EXPECT_EQ(error, "Cannot read " + path.string() + ": " + kind + "; only regular files are read");
        EXPECT_EQ(writeFileAtomically(path, "new"), "Cannot write " + path.string() + ": " + kind + "; only regular files are replaced");
        EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(5));
    }
    EXPECT_TRUE(fs::is_fifo(dir / "pipe.vmx"));
    EXPECT_TRUE(fs::is_directory(dir / "folder.vmx"));
}
