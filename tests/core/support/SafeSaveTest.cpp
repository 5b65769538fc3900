// Writing a file safely and only over regular files: a whole new file renamed over the old one,
// or, where a rename would break what the user has (a link, other names, an owner that cannot be
// kept), the old file rewritten in place; failures name the file and leave it as it was.
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <csignal>
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
}

// A file with another hard link keeps its inode: its bytes are replaced in place, a shorter text
// leaving nothing of the longer one behind.
TEST(SafeSave, AHardLinkedFileIsRewrittenInPlaceToTheNewLength) {
    ScratchDir dir;
    writeBytes(dir / "a.vmx", "memsize = \"64\"\r\n");
    fs::create_hard_link(dir / "a.vmx", dir / "b.vmx");
    for (const std::string text : {"displayName = \"a longer text than before\"\r\n", "x = \"1\"\r\n"}) {
        arden::FileWriteReport report;
        EXPECT_FALSE(writeFileAtomically(dir / "b.vmx", text, &report));
        EXPECT_EQ(readBytes(dir / "a.vmx"), text);
        EXPECT_EQ(fs::hard_link_count(dir / "b.vmx"), 2u);
        EXPECT_TRUE(report.inPlace);
        EXPECT_EQ(report.reason, "it has other hard links");
    }
    EXPECT_EQ(entriesIn(dir.path()), 2);
}

// A file in a folder the user cannot write to is rewritten in place, longer or shorter. Permission
// bits do not stop root, so as root the writes run as the user nobody.
TEST(SafeSave, AFileInAReadOnlyFolderIsRewrittenInPlace) {
    ScratchDir dir;
    writeBytes(dir / "a.vmx", "memsize = \"64\"\r\n");
    fs::permissions(dir / "a.vmx", fs::perms(0666));
    fs::permissions(dir.path(), fs::perms(0555));
    auto rewrite = [&] {
        for (const std::string text : {"displayName = \"a longer text than before\"\r\n", "x = \"1\"\r\n"}) {
            arden::FileWriteReport report;
            if (writeFileAtomically(dir / "a.vmx", text, &report) || readBytes(dir / "a.vmx") != text ||
                report.reason != "its folder is not writable")
                return false;
        }
        return true;
    };
    EXPECT_TRUE(arden::test::runningAsRoot() ? arden::test::asNobody(rewrite) : rewrite());
    EXPECT_EQ(entriesIn(dir.path()), 1);
}

// A write that stops half-way (here at a file-size limit, as `ulimit -f` sets it) puts the old
// bytes back in place and says so; a replaced file is left as it was with no temporary file.
// The limit is set in a child process, which reports what it saw through its exit code.
TEST(SafeSave, AWriteThatFailsHalfWayLeavesTheOldBytes) {
    ScratchDir dir;
    const std::string old = "memsize = \"64\"\r\n";
    writeBytes(dir / "linked.vmx", old);
    fs::create_hard_link(dir / "linked.vmx", dir / "other.vmx");
    writeBytes(dir / "plain.vmx", old);
    const std::string longText(4096, 'x');
    pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = 1024;
        int failures = ::setrlimit(RLIMIT_FSIZE, &limit) == 0 ? 0 : 8;
        auto linked = writeFileAtomically(dir / "linked.vmx", longText);
        if (linked != "Cannot write " + (dir / "linked.vmx").string() + ": File too large; its old contents were put back")
            failures |= 1;
        if (writeFileAtomically(dir / "plain.vmx", longText) != "Cannot write " + (dir / "plain.vmx").string() + ": File too large")
            failures |= 2;
        ::_exit(failures);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status) & 1, 0) << "the in-place failure's message";
    EXPECT_EQ(WEXITSTATUS(status) & 2, 0) << "the replacement's failure message";
    EXPECT_EQ(WEXITSTATUS(status) & 8, 0) << "the size limit could not be set";
    EXPECT_EQ(readBytes(dir / "other.vmx"), old);
    EXPECT_EQ(readBytes(dir / "plain.vmx"), old);
    EXPECT_EQ(entriesIn(dir.path()), 3) << "no temporary file is left";
}

// A new file takes the mode the user's umask allows, as any program's new file does.
TEST(SafeSave, ANewFileTakesTheModeTheUmaskAllows) {
    ScratchDir dir;
    const mode_t previous = ::umask(027);
    auto error = writeFileAtomically(dir / "new.vmx", "x");
    ::umask(previous);
    ASSERT_FALSE(error) << *error;
    struct stat st {};
    ASSERT_EQ(::stat((dir / "new.vmx").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
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
