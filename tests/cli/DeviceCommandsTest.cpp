// arden-forge-cli device, memory, nic, share and favorites: one case per rule proves that the
// command reaches core (whose tests hold the full tables), plus the command line's own refusals.
#include "CliRunner.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// A new Workstation 5.5x machine in `dir` (DVD/CD-ROM drive on IDE 1:0, one network adapter).
std::string newMachine(const ScratchDir& dir) {
    EXPECT_EQ(runCli({"new", dir.path().string(), "M"}).exitCode, 0);
    return (dir / "M.vmx").string();
}

struct Refusal { std::vector<std::string> args; int exitCode; std::string err; };

// Runs each refused command on `file` and checks that the file did not change.
void expectRefusals(const std::string& file, std::initializer_list<Refusal> refusals) {
    const std::string before = readBytes(file);
    for (const Refusal& r : refusals) {
        std::vector<std::string> args = r.args;
        std::replace(args.begin(), args.end(), std::string("@"), file);
        auto run = runCli(args);
        EXPECT_EQ(run.exitCode, r.exitCode) << r.err;
        EXPECT_TRUE(has(run.err, r.err)) << run.err;
    }
    EXPECT_EQ(readBytes(file), before);
    EXPECT_FALSE(fs::exists(file + ".bak")) << "no backup when nothing is written";
}

}  // namespace

TEST(CliDevice, AddNodeRemoveAndMemory) {
    ScratchDir dir;
    const std::string file = newMachine(dir);
    const std::string before = readBytes(file);
    auto add = runCli({"device", "add", file, "Hard Disk", "--file", (dir / "a.vmdk").string()});
    ASSERT_EQ(add.exitCode, 0) << add.err;
    EXPECT_EQ(add.out, "Hard Disk 1\tIDE 0:0\n");
    EXPECT_EQ(add.err, "Backup Made: Backup file created as: " + file + ".bak\n");
    EXPECT_EQ(readBytes(file + ".bak"), before);
    EXPECT_TRUE(has(readBytes(file), "ide0:0.present = \"TRUE\"\r\nide0:0.fileName = \"a.vmdk\"\r\n"));

    auto node = runCli({"device", "node", file, "Hard Disk 1", "IDE 1:0"});
    EXPECT_EQ(node.out, "Hard Disk 1\tIDE 1:0\nCD-ROM 1\tIDE 0:1\n") << node.err;
    EXPECT_TRUE(has(readBytes(file), "ide1:0.fileName = \"a.vmdk\""));
    EXPECT_EQ(runCli({"device", "remove", file, "cd-rom 1"}).out, "Removed CD-ROM 1\n");
    EXPECT_FALSE(has(readBytes(file), "ide0:1"));

    auto memory = runCli({"memory", file, "258"});
    EXPECT_EQ(memory.out, "Memory: 256 MB\n");
    EXPECT_TRUE(has(memory.err, "258 MB was rounded down to 256 MB")) << memory.err;
    EXPECT_TRUE(has(readBytes(file), "memsize = \"256\"\r\n"));

    ASSERT_EQ(runCli({"device", "add", file, "Floppy Drive", "--file", "boot.img"}).exitCode, 0);
    EXPECT_TRUE(has(readBytes(file), "floppy1.fileName = \"" + (fs::current_path() / "boot.img").string() + "\"\r\n"))
        << "a name from the current folder is written with its folder";
    fs::remove(file + ".bak");
    expectRefusals(file, {
        {{"device", "node", "@", "Hard Disk 1", "SCSI 0:7"}, 1,
         "Invalid Node Selection: SCSI 0:7 is not a node of this machine. Free nodes: IDE 0:0, IDE 0:1, IDE 1:1\n"
         "Hard Disk 1 stays on IDE 1:0: nothing was written.\n"},
        {{"device", "node", "@", "Floppy 1", "IDE 0:1"}, 1,
         "Floppy 1 sits on no node; only \"Hard Disk\", \"DVD/CD-ROM Drive\", \"Generic SCSI Device\" do"},
        {{"device", "remove", "@", "CPU 1"}, 1,
         "Device Not Removable: CPU 1 cannot be removed: a machine keeps its memory and at least one CPU\n"},
        {{"device", "add", "@", "Tape Drive"}, 2, "unknown device type \"Tape Drive\""},
    });
}

TEST(CliNic, EditsTheAdapterAndRefusesWhatCoreRefuses) {
    ScratchDir dir;
    const std::string file = newMachine(dir);
    auto r = runCli({"nic", file, "0", "--type", "e1000", "--connection", "VMnet3", "--mac", "00:50:56:3f:0a:0b"});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    std::string text = readBytes(file);
    EXPECT_TRUE(has(text, "ethernet0.virtualDev = \"e1000\"\r\n"));
    EXPECT_TRUE(has(text, "ethernet0.connectionType = \"custom\"\r\nethernet0.vnet = \"VMnet3\"\r\n"));
    EXPECT_TRUE(has(text, "ethernet0.addressType = \"static\"\r\nethernet0.address = \"00:50:56:3F:0A:0B\"\r\n"));
    fs::remove(file + ".bak");
    expectRefusals(file, {
        {{"nic", "@", "0", "--mac", "00:50:56:40:00:00"}, 1,
         "Invalid Static MAC Address: The static MAC address range is 00:50:56:00:00:00-00:50:56:3F:FF:FF"},
        {{"nic", "@", "0", "--offset", "4"}, 1,
         "ethernet0 has a static address; an offset applies to generated addresses only (add --mac generated)."},
        {{"nic", "@", "1", "--enabled", "no"}, 1, "has no network adapter ethernet1; its adapters are ethernet0."},
    });
}

TEST(CliShare, AddListRemove) {
    ScratchDir dir;
    const std::string file = newMachine(dir);
    const std::string host = dir.path().string();
    ASSERT_EQ(runCli({"share", "add", file, "Music", host, "--read-only"}).exitCode, 0);
    auto asked = runCli({"share", "add", file, "Later", "/no/such folder", "--this-session", "--disabled"});
    EXPECT_EQ(asked.exitCode, 1);
    EXPECT_TRUE(has(asked.err, "Shared Folder: The folder /no/such folder does not exist on this computer.")) << asked.err;
    ASSERT_EQ(runCli({"share", "add", file, "Later", "/no/such folder", "--this-session", "--disabled", "--yes"}).exitCode, 0);
    EXPECT_EQ(runCli({"share", "list", file}).out,
              "Music\t" + host + "\tEnabled, Read-Only\nLater\t/no/such folder\tDisabled, Disable after this session\n");
    EXPECT_TRUE(has(readBytes(file), "sharedFolder.maxNum = \"2\"\r\n"));
    ASSERT_EQ(runCli({"share", "remove", file, "Music"}).exitCode, 0);
    EXPECT_EQ(runCli({"share", "list", file}).out, "Later\t/no/such folder\tDisabled, Disable after this session\n");
    fs::remove(file + ".bak");
    expectRefusals(file, {{{"share", "add", "@", "a=b", host}, 1, "contains \"=\""},
                          {{"share", "remove", "@", "Music"}, 1, "has no shared folder named \"Music\"; its shared folders are \"Later\"."},
                          {{"share", "move", "@"}, 2, ""}});
}

TEST(CliFavorites, AddListRemoveAcrossRuns) {
    ScratchDir dir;
    fs::create_directories(dir / "tmp");
    const std::string env = "TMPDIR=" + shellQuote((dir / "tmp").string()) + " XDG_CONFIG_HOME=" + shellQuote((dir / "cfg").string());
    auto run = [&](const std::vector<std::string>& args) { return runCli(args, env); };
    ASSERT_EQ(run({"favorites", "add", "My XP", "/vms/xp.vmx"}).exitCode, 0);
    ASSERT_EQ(run({"favorites", "add", "Old", "/vms/old.vmx", "6"}).exitCode, 0);
    ASSERT_EQ(run({"favorites", "add", "My XP", "/vms/moved.vmx"}).exitCode, 0);
    EXPECT_EQ(run({"favorites", "list"}).out, "My XP\t/vms/moved.vmx\t8\nOld\t/vms/old.vmx\t6\n");
    EXPECT_TRUE(has(run({"favorites", "remove", "my xp"}).err, "No favourite is named 'my xp'"));
    ASSERT_EQ(run({"favorites", "remove", "My XP"}).exitCode, 0);
    EXPECT_EQ(run({"favorites"}).out, "Old\t/vms/old.vmx\t6\n");
}
