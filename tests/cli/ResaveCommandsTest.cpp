// arden-forge-cli on files that a save must not harm: read-only files, files of other users,
// FIFOs and devices, locks of a machine in use, files newer than any target.
#include <sys/stat.h>
#include <unistd.h>

#include "CliRunner.h"

using arden::test::readBytes;
using arden::test::runCli;
using arden::test::ScratchDir;
using arden::test::writeBytes;
namespace fs = std::filesystem;

namespace {

const std::string kMachine = "displayName = \"m\"\r\nmemsize = \"64\"\r\n";

std::string asNobody() {
    return arden::test::runningAsRoot() ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
}

}  // namespace

// 1. The format numbers of a newer file are shown and kept.
TEST(CliResaveFormat, ShowSaysTheNumbersAreKept) {
    ScratchDir dir;
    writeBytes(dir / "new.vmx", "config.version = \"8\"\r\nvirtualHW.version = \"19\"\r\n");
    auto show = runCli({"show", (dir / "new.vmx").string()});
    EXPECT_NE(show.out.find("Product: Workstation 5.5x\nFormat: written for virtual hardware version 19; saving keeps it\n"),
              std::string::npos)
        << show.out;
    ASSERT_EQ(runCli({"resave", (dir / "new.vmx").string()}).exitCode, 0);
    EXPECT_NE(readBytes(dir / "new.vmx").find("virtualHW.version = \"19\"\r\n"), std::string::npos);
}

// 8. Saving in place: read-only files are asked about; another user's file keeps its owner.
TEST(CliResaveInPlace, ReadOnlyFileOnlyAfterYes) {
    ScratchDir dir;
    fs::path file = dir / "ro.vmx";
    writeBytes(file, kMachine);
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    auto no = runCli({"resave", file.string()});
    EXPECT_EQ(no.exitCode, 1);
    EXPECT_EQ(no.err, "Read-only File: The file " + file.string() +
                          " is read-only.  Save over it anyway?\nAnswered No: nothing was written.\n");
    EXPECT_EQ(readBytes(file), kMachine);
    auto yes = runCli({"resave", file.string(), "--yes"});
    EXPECT_EQ(yes.exitCode, 0) << yes.err;
    EXPECT_NE(readBytes(file), kMachine);
    EXPECT_EQ(fs::status(file).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
}

TEST(CliResaveInPlace, AnotherUsersFileKeepsItsOwner) {
    if (!arden::test::runningAsRoot() || std::system("command -v setpriv >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "needs root to hand the file to root and setpriv to save it as another user";
    ScratchDir dir;
    fs::permissions(dir.path(), fs::perms::all);
    fs::path file = dir / "shared.vmx";
    writeBytes(file, kMachine);
    fs::permissions(file, fs::perms::all & ~(fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec));
    auto r = runCli({"resave", file.string()}, asNobody());
    EXPECT_EQ(r.exitCode, 0) << r.err;
    struct stat st {};
    ASSERT_EQ(::stat(file.c_str(), &st), 0);
    EXPECT_EQ(st.st_uid, 0u) << "the file still belongs to root";
    EXPECT_EQ(st.st_mode & 0777, 0666u);
    EXPECT_NE(readBytes(file).find("####### end of file"), std::string::npos);
    EXPECT_NE(r.err.find("because its owner or group could not be kept on a new file"), std::string::npos) << r.err;
}

// 9. Only regular files are read or written; nothing waits on a FIFO.
TEST(CliResaveRegularFiles, FifoAndDevicesAreRefusedAtOnce) {
    ScratchDir dir;
    ASSERT_EQ(::mkfifo((dir / "pipe.vmx").c_str(), 0644), 0);
    writeBytes(dir / "m.vmx", kMachine);
    auto show = runCli({"show", (dir / "pipe.vmx").string()});
    EXPECT_EQ(show.exitCode, 1);
    EXPECT_EQ(show.err, "Unable to Open Configuration: Cannot read " + (dir / "pipe.vmx").string() +
                            ": it is a FIFO (named pipe), not a regular file; only regular files are read\n");
    for (const std::string& out : {(dir / "pipe.vmx").string(), std::string("/dev/null")}) {
        auto r = runCli({"resave", (dir / "m.vmx").string(), "--output", out, "--backup"});
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_NE(r.err.find(out + " is a"), std::string::npos) << r.err;
        EXPECT_FALSE(fs::exists(dir / "m.vmx.bak")) << "refused before anything is written";
    }
    EXPECT_TRUE(fs::is_fifo(dir / "pipe.vmx"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(readBytes(dir / "m.vmx"), kMachine);
}

// 12. The lock: found in any letter case or as a dangling link, named as what it is, asked
// about before anything is written.
TEST(CliResaveLock, AskedBeforeTheBackupAndNamedAsWhatItIs) {
    struct Case { std::string name; std::string kind; };
    const Case cases[] = {{"M.VMX.LCK", "folder"}, {"m.vmx.lck", "file"}, {"m.vmx.lck", "link"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name + " " + c.kind);
        ScratchDir dir;
        fs::path file = dir / "m.vmx";
        writeBytes(file, kMachine);
        fs::path lock = dir / c.name;
        if (c.kind == "folder") fs::create_directory(lock);
        else if (c.kind == "file") writeBytes(lock, "");
        else fs::create_symlink(dir / "gone", lock);
        auto r = runCli({"resave", file.string(), "--backup"});
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_EQ(r.err, "Virtual Machine in Use: The lock " + c.kind + " " + lock.string() +
                             " shows that a VMware product has this virtual machine open; it may write over your "
                             "changes when it closes.  Save anyway?\nAnswered No: nothing was written.\n");
        EXPECT_FALSE(fs::exists(dir / "m.vmx.bak"));
        EXPECT_EQ(readBytes(file), kMachine);
    }
}
