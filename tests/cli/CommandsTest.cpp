// arden-forge-cli as a user runs it: one scripted session over one machine shows that each
// command reaches core and prints what core decides (exit 1 for a refusal, 2 for a usage
// error); core's own tests hold the full tables of each rule. Then the command line's own ways:
// questions answered No without --yes, notes that name the file and line, favourites across runs.
#include "CliRunner.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// One command: "@" stands for the machine's path, "DIR" for its folder; `out` and `err` are
// parts of what it prints, `written` a part of the machine's file afterwards (empty: not checked).
struct Step { std::vector<std::string> args; int exitCode; std::string out, err, written = {}; };

// Runs the steps in order over the machine `file` in `dir`; a refused command writes nothing.
void runSteps(const std::string& file, const std::string& dir, const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        std::vector<std::string> args = step.args;
        for (std::string& a : args) a = a == "@" ? file : a == "DIR" ? dir : a;
        const std::string before = fs::exists(file) ? readBytes(file) : "";
        auto r = runCli(args);
        SCOPED_TRACE(args[0] + " " + (args.size() > 3 ? args[3] : "") + "\n" + r.out + r.err);
        EXPECT_EQ(r.exitCode, step.exitCode);
        EXPECT_TRUE(has(r.out, step.out) && has(r.err, step.err));
        EXPECT_TRUE(step.exitCode == 0 || (fs::exists(file) ? readBytes(file) : "") == before) << "a refused command writes nothing";
        EXPECT_TRUE(step.written.empty() || has(readBytes(file), step.written)) << step.written;
    }
}

}  // namespace

TEST(CliSession, EachCommandReachesCore) {
    ScratchDir dir;
    const std::string file = (dir / "M.vmx").string(), host = dir.path().string();
    runSteps(file, host, {
        {{"new", "DIR", "M"}, 0, file + "\n", ""},
        {{"new", "DIR", "M"}, 1, "", "File Exists: " + file + " already exists"},
        {{"new", "DIR", "X", "--platform", "Player", "--version", "5.5x"}, 2, "", "\"1.x\""},
        {{"show", "@"}, 0, "Product: Workstation 5.5x, hardware version 4\n", ""},
        {{"show", "@"}, 0, "Guest: Microsoft Windows, Windows XP Professional (winXPPro)\nMemory: 256 MB\n", ""},
        {{"show", "@"}, 0, "  CD-ROM 1\tIDE 1:0, auto detect\tIDE 1:0\n", ""},
        {{"resave", "@", "--backup"}, 0, "", "Backup Made: Backup file created as: " + file + ".bak\n"},
        {{"device", "add", "@", "Hard Disk", "--file", (dir / "a.vmdk").string()}, 0, "Hard Disk 1\tIDE 0:0\n", "Backup Made: "},
        {{"device", "node", "@", "Hard Disk 1", "IDE 1:0"}, 0, "Hard Disk 1\tIDE 1:0\nCD-ROM 1\tIDE 0:1\n", ""},
        {{"device", "node", "@", "Hard Disk 1", "SCSI 0:7"}, 1, "", "Invalid Node Selection: SCSI 0:7 is not a node of this machine. "
                                                                    "Free nodes: IDE 0:0, IDE 1:1\nHard Disk 1 stays on IDE 1:0: nothing was written.\n"},
        {{"device", "node", "@", "Floppy 1", "IDE 0:1"}, 1, "", "Floppy 1 sits on no node; only \"Hard Disk\", \"DVD/CD-ROM Drive\""},
        {{"device", "remove", "@", "cd-rom 1"}, 0, "Removed CD-ROM 1\n", ""},
        {{"device", "remove", "@", "CPU 1"}, 1, "", "Device Not Removable: CPU 1 cannot be removed: a machine keeps its memory and at least one CPU\n"},
        {{"device", "add", "@", "Floppy Drive", "--file", "boot.img"}, 0, "Floppy 2\n", ""},
        {{"device", "add", "@", "Tape Drive"}, 2, "", "unknown device type \"Tape Drive\""},
        {{"memory", "@", "258"}, 0, "Memory: 256 MB\n", "258 MB was rounded down to 256 MB"},
        {{"memory", "@", "3604"}, 1, "", "Invalid Memory Size: RAM size out of valid range for Selected Product/Version\n"},
        {{"nic", "@", "0", "--type", "e1000", "--connection", "VMnet3", "--mac", "00:50:56:3f:0a:0b"}, 0, "", ""},
        {{"set", "@", "--platform", "GSX Server", "--version", "2.5x", "--guest", "solaris10"}, 1, "",
         "Invalid Guest Operating System: GSX Server 2.5x does not offer Solaris guests"},
        {{"set", "@", "--name", "Renamed", "--version", "5.0x", "--guest", "RHEL4"}, 1, "",
         "Change of Product: Workstation 5.0x cannot hold everything this machine has:\n"
         "- Network Adapter 1: Workstation 5.0x does not offer the adapter type \"e1000\"; becomes \"vlance\"\n"
         "Change the machine to fit the new product?\nNothing was written; --yes accepts these changes.\n"},
        {{"set", "@", "--name", "Renamed", "--version", "5.0x", "--guest", "RHEL4", "--yes"}, 0,
         "Display name: Renamed\nProduct: Workstation 5.0x, hardware version 4\nGuest: Linux, Red Hat Enterprise Linux 4 (rhel4)\n",
         "Adapter Type Changed: Workstation 5.0x does not offer every network adapter type this machine used:\n"
         "Network Adapter 1: E1000 is now AMD Lance.\n"},
        {{"nic", "@", "0", "--mac", "00:50:56:40:00:00"}, 1, "", "Invalid Static MAC Address: The static MAC address range is "
                                                               "00:50:56:00:00:00-00:50:56:3F:FF:FF"},
        {{"nic", "@", "0", "--offset", "4"}, 1, "", "ethernet0 has a static address; an offset applies to generated addresses only"},
        {{"nic", "@", "1", "--enabled", "no"}, 1, "", "has no network adapter ethernet1; its adapters are ethernet0."},
        {{"option", "@", "snapshots", "no", "When-Powering-Off", "Ask", "debug", "on"}, 0,
         "snapshots\tno\nwhen-powering-off\task\ndebug\tyes\n", ""},
        {{"option", "@", "reset", "medium"}, 2, "", "reset takes hard or soft, not \"medium\""},
        {{"option", "@"}, 0, "reset\thard\n", ""},
        {{"share", "add", "@", "Music", host, "--read-only"}, 0, "", ""},
        {{"share", "add", "@", "Later", "/no/such folder"}, 1, "", "Shared Folder: The folder /no/such folder does not exist on this computer."},
        {{"share", "add", "@", "Later", "/no/such folder", "--this-session", "--disabled", "--yes"}, 0, "", ""},
        {{"share", "add", "@", "a=b", host}, 1, "", "contains \"=\""},
        {{"share", "list", "@"}, 0, "Music\t" + host + "\tEnabled, Read-Only\nLater\t/no/such folder\tDisabled, Disable after this session\n", ""},
        {{"frobnicate"}, 2, "", "arden-forge-cli: "},
    });
    const std::string text = readBytes(file);
    for (const std::string& line : std::vector<std::string>{"ide1:0.fileName = \"a.vmdk\"\r\n", "memsize = \"256\"\r\n", "ethernet0.virtualDev = \"vlance\"\r\n",
                                   "displayName = \"Renamed\"\r\n# Platform = Workstation\r\n# Version = 5.0x\r\n",
                                   "guestOS = \"rhel4\"\r\n", "debug = \"TRUE\"\r\n",
                                   "snapshot.disabled = \"TRUE\"\r\nsnapshot.Action = \"prompt\"\r\n",
                                   "ethernet0.connectionType = \"custom\"\r\nethernet0.vnet = \"VMnet3\"\r\n",
                                   "ethernet0.addressType = \"static\"\r\nethernet0.address = \"00:50:56:3F:0A:0B\"\r\n",
                                   "sharedFolder.maxNum = \"2\"\r\n", "fileName = \"" + (fs::current_path() / "boot.img").string() + "\"\r\n"})
        EXPECT_TRUE(has(text, line)) << line << "a name from the current folder is written with its folder";
}

// The edit commands' own choices: each word or name reaches the field it names, the last
// device of a kind is the limit, a share is removed by its name, and an edit whose backup
// cannot be made writes nothing.
TEST(CliSession, EditCommandsStoreWhatTheyName) {
    ScratchDir dir;
    const std::string file = (dir / "M.vmx").string(), host = dir.path().string();
    runSteps(file, host, {
        {{"new", "DIR", "M"}, 0, file + "\n", ""},
        {{"device", "add", "@", "Floppy Drive", "--file", "b.img"}, 0, "Floppy 2\n", ""},
        {{"device", "add", "@", "Floppy Drive", "--file", "c.img"}, 1, "",
         "Add New Hardware: The maximum number ofFloppy Drives has already been added to this virtual machine.\n"},
        {{"nic", "@", "0", "--connection", "hostonly"}, 0, "", "", "ethernet0.connectionType = \"hostonly\"\r\n"},
        {{"nic", "@", "0", "--connection", "NAT"}, 0, "", "", "ethernet0.connectionType = \"nat\"\r\n"},
        {{"nic", "@", "0", "--mac", "00:50:56:01:02:03"}, 0, "", "", "ethernet0.addressType = \"static\"\r\n"},
        {{"nic", "@", "0", "--mac", "generated"}, 0, "", "", "ethernet0.addressType = \"generated\"\r\n"},
        {{"nic", "@", "0", "--enabled", "no"}, 0, "", "", "ethernet0.present = \"FALSE\"\r\n"},
        {{"option", "@", "paste", "no", "input-ungrabbed-priority", "low"}, 0, "paste\tno\n", "", "priority.ungrabbed = \"idle\"\r\n"},
        {{"option", "@"}, 0, "drag-and-drop\tyes\npaste\tno\ncopy\tyes\n", ""},
        {{"option", "@", "log-folder", "two\nlines"}, 2, "", "log-folder takes a folder on one line, not \"two\nlines\"\n"},
        {{"set", "@", "--notes", "Kept for tests"}, 0, "", "", "annotation = \"Kept for tests\"\r\n"},
        {{"share", "add", "@", "A", host}, 0, "", ""},
        {{"share", "add", "@", "B", host}, 0, "", ""},
        {{"share", "add", "@", "C", host}, 0, "", ""},
        {{"share", "remove", "@", "B"}, 0, "", ""},
        {{"share", "remove", "@", "b"}, 1, "", "No Such Shared Folder: " + file + " has no shared folder named \"b\"; "
                                               "its shared folders are \"A\", \"C\".\n"},
    });
    // An edit whose backup cannot be made (a folder holds the backup's name) writes nothing.
    fs::remove(file + ".bak");
    fs::create_directory(file + ".bak");
    runSteps(file, host, {{{"memory", "@", "128"}, 1, "", "Backup Failed: No backup was made: Cannot write " + file +
                                                          ".bak: it is a folder, not a regular file; only regular files are replaced\n"}});
}

TEST(CliCheck, ACoreRefusalIsPrintedAndNothingIsWritten) {
    ScratchDir dir;
    std::string text = "displayName = \"pci\"\r\nsound.present = \"TRUE\"\r\n";
    for (int i = 0; i < 5; ++i) text += "ethernet" + std::to_string(i) + ".present = \"TRUE\"\r\n";
    writeBytes(dir / "pci.vmx", text);
    for (const char* command : {"check", "resave"}) {
        auto r = runCli({command, (dir / "pci.vmx").string()});
        EXPECT_EQ(r.exitCode, 1) << command;
        EXPECT_EQ(r.err, "Too many virtual PCI Devices enabled: You currently have 6 virtual PCI devices enabled (SCSI controllers, "
                         "Network adapters, Sound adapters).  VMware will only accept 5.  Please go back and Disable some devices.\n");
    }
    EXPECT_EQ(readBytes(dir / "pci.vmx"), text);
}

TEST(CliBadInput, ClearMessagesAndNothingChanges) {
    ScratchDir dir;
    const std::string garbage("\x7f" "ELF\x02\x01\x01\x00\x00\x00garbage\xff\xfe", 19);
    writeBytes(dir / "bin.vmx", garbage);
    auto bin = runCli({"resave", (dir / "bin.vmx").string()});
    EXPECT_EQ(bin.exitCode, 1);
    EXPECT_TRUE(has(bin.err, "binary")) << bin.err;
    EXPECT_EQ(readBytes(dir / "bin.vmx"), garbage);
    writeBytes(dir / "odd.vmx", "memsize = \"64\"\nno equals here\nx = \"open\n");
    auto odd = runCli({"show", (dir / "odd.vmx").string()});
    EXPECT_EQ(odd.exitCode, 0);
    EXPECT_TRUE(has(odd.err, (dir / "odd.vmx").string() + ":2: ")) << odd.err;
    EXPECT_TRUE(has(odd.out, "Kept lines: 2"));
}

TEST(CliResave, QuestionsAreAnsweredNoWithoutYes) {
    ScratchDir dir;
    const fs::path file = dir / "m.vmx";
    const std::string machine = "displayName = \"m\"\r\nmemsize = \"64\"\r\n";
    writeBytes(file, machine);
    const auto readOnly = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    fs::permissions(file, readOnly);
    auto no = runCli({"resave", file.string(), "--backup"});
    EXPECT_EQ(no.exitCode, 1);
    EXPECT_EQ(no.err, "Read-only File: The file " + file.string() + " is read-only.  Save over it anyway?\nAnswered No: nothing was written.\n");
    EXPECT_EQ(readBytes(file), machine);
    EXPECT_FALSE(fs::exists(dir / "m.vmx.bak")) << "asked before the backup is made";
    auto yes = runCli({"resave", file.string(), "--yes"});
    EXPECT_EQ(yes.exitCode, 0) << yes.err;
    EXPECT_TRUE(has(readBytes(file), "####### end of file"));
    EXPECT_EQ(fs::status(file).permissions() & fs::perms::all, readOnly);
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
