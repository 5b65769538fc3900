// --dry-run on every editing command: the file keeps its bytes and its time, no backup is made,
// and the printed diff, applied with patch to a copy of the file, gives exactly what the same
// command writes without --dry-run; a command that would be refused is refused the same way.
#include <filesystem>

#include "CliRunner.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

// LF line ends, a line the editor keeps, a share, and no line break after the last line: a
// re-save changes every line, and patch must take all of it.
const char* const kMachine =
    "config.version = \"8\"\nvirtualHW.version = \"4\"\ndisplayName = \"Dry\"\nguestOS = \"winxppro\"\n"
    "memsize = \"256\"\nide1:0.present = \"TRUE\"\nide1:0.fileName = \"auto detect\"\n"
    "ide1:0.deviceType = \"cdrom-raw\"\nethernet0.present = \"TRUE\"\nethernet0.addressType = \"static\"\n"
    "ethernet0.address = \"00:50:56:00:00:01\"\nsharedFolder.maxNum = \"1\"\nsharedFolder0.present = \"TRUE\"\n"
    "sharedFolder0.enabled = \"TRUE\"\nsharedFolder0.hostPath = \"/srv/docs\"\nsharedFolder0.guestName = \"Docs\"\n"
    "custom.key = \"kept\"";

const fs::file_time_type kOldTime = fs::file_time_type::clock::now() - std::chrono::hours(24 * 400);

fs::path machineIn(const fs::path& folder) {
    fs::create_directories(folder);
    writeBytes(folder / "vm.vmx", kMachine);
    fs::last_write_time(folder / "vm.vmx", kOldTime);
    return folder / "vm.vmx";
}

std::vector<std::string> withFile(std::vector<std::string> args, const fs::path& file) {
    for (std::string& a : args) if (a == "@") a = file.string();
    return args;
}

}  // namespace

TEST(CliDryRun, EveryEditingCommandPrintsWhatPatchTurnsIntoTheRealWrite) {
    ScratchDir dir;
    const std::string host = dir.path().string();
    const std::vector<std::vector<std::string>> commands = {
        {"resave", "@"},
        {"set", "@", "--name", "Renamed", "--version", "5.0x", "--yes"},
        {"option", "@", "snapshots", "no", "debug", "yes"},
        {"device", "add", "@", "Hard Disk", "--file", host + "/disk.vmdk"},
        {"device", "remove", "@", "CD-ROM 1"},
        {"device", "node", "@", "CD-ROM 1", "IDE 0:0"},
        {"memory", "@", "512"},
        {"nic", "@", "0", "--connection", "nat", "--mac", "00:50:56:01:02:03"},
        {"share", "add", "@", "Music", host, "--read-only"},
        {"share", "remove", "@", "Docs"},
    };
    int n = 0;
    for (const auto& command : commands) {
        const std::string name = command[0] + " " + command[1];
        const fs::path dry = machineIn(dir / ("dry" + std::to_string(n)));
        const fs::path real = machineIn(dir / ("real" + std::to_string(n)));
        const fs::path patched = machineIn(dir / ("patched" + std::to_string(n)));
        ++n;
        std::vector<std::string> args = withFile(command, dry);
        args.push_back("--dry-run");
        CliResult r = runCli(args);
        EXPECT_EQ(r.exitCode, 0) << name << ": " << r.err;
        EXPECT_EQ(readBytes(dry), kMachine) << name;
        EXPECT_EQ(fs::last_write_time(dry), kOldTime) << name;
        EXPECT_FALSE(fs::exists(dry.string() + ".bak")) << name;
        EXPECT_EQ(r.out.substr(0, 4 + dry.string().size()), "--- " + dry.string()) << name << ": " << r.out;

        ASSERT_EQ(runCli(withFile(command, real)).exitCode, 0) << name;
        writeBytes(patched.parent_path() / "diff", r.out);
        const std::string apply = "patch -s --no-backup-if-mismatch " + shellQuote(patched.string()) + " < " +
                                  shellQuote((patched.parent_path() / "diff").string());
        EXPECT_EQ(std::system(apply.c_str()), 0) << name;
        EXPECT_EQ(readBytes(patched), readBytes(real)) << name << "\n" << r.out;
    }
}

TEST(CliDryRun, AWouldBeRefusalIsTheUsualRefusal) {
    ScratchDir dir;
    const fs::path file = machineIn(dir.path());
    struct Case { std::vector<std::string> args; int exitCode; std::string err; };
    const Case cases[] = {
        {{"memory", "@", "3604", "--dry-run"}, 1, "Invalid Memory Size: RAM size out of valid range for Selected Product/Version\n"},
        {{"device", "remove", "@", "CPU 1", "--dry-run"}, 1, "Device Not Removable: CPU 1 cannot be removed"},
        {{"share", "list", "@", "--dry-run"}, 2, "arden-forge-cli: unknown option --dry-run\n"},
        {{"resave", "@", "--output", (dir / "out.vmx").string(), "--dry-run"}, 0, ""},
    };
    for (const Case& c : cases) {
        CliResult r = runCli(withFile(c.args, file));
        EXPECT_EQ(r.exitCode, c.exitCode) << c.args[0] << ": " << r.err;
        EXPECT_EQ(r.err.substr(0, c.err.size()), c.err) << c.args[0];
    }
    // A file not there yet is shown whole, from /dev/null, and not made.
    CliResult r = runCli({"resave", file.string(), "--output", (dir / "out.vmx").string(), "--dry-run"});
    EXPECT_EQ(r.out.substr(0, 18 + (dir / "out.vmx").string().size()), "--- /dev/null\n+++ " + (dir / "out.vmx").string());
    EXPECT_FALSE(fs::exists(dir / "out.vmx"));

    // The questions come first, as without --dry-run: a machine in use is answered No.
    fs::create_directory(dir / "vm.vmx.lck");
    r = runCli({"memory", file.string(), "512", "--dry-run"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("Answered No: nothing was written."), std::string::npos) << r.err;
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(readBytes(file), kMachine);
    EXPECT_EQ(fs::last_write_time(file), kOldTime);

    // Nothing to change: no diff, and a word on standard error.
    fs::remove(dir / "vm.vmx.lck");
    ASSERT_EQ(runCli({"resave", file.string()}).exitCode, 0);
    r = runCli({"resave", file.string(), "--dry-run"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, file.string() + ": a save would change nothing.\n");
}
