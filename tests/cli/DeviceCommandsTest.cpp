// arden-forge-cli device add | remove | node and memory, run as a user runs them.
#include "CliRunner.h"

using arden::test::readBytes;
using arden::test::runCli;
using arden::test::ScratchDir;

namespace {

// A new Workstation 5.5x machine (its DVD/CD-ROM drive on IDE 1:0); returns its path.
std::string newMachine(const ScratchDir& dir, const std::vector<std::string>& options = {}) {
    std::vector<std::string> args{"new", dir.path().string(), "M"};
    args.insert(args.end(), options.begin(), options.end());
    EXPECT_EQ(runCli(args).exitCode, 0);
    return (dir / "M.vmx").string();
}

// Runs a command that must succeed and returns what it printed on standard output.
std::string ok(const std::vector<std::string>& args) {
    auto r = runCli(args);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    return r.out;
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST(CliDevice, AddPlacesDisksAndWritesABackupFirst) {
    ScratchDir dir;
    std::string file = newMachine(dir);
    std::string before = readBytes(file);
    auto r = runCli({"device", "add", file, "Hard Disk", "--file", (dir / "a.vmdk").string()});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "Hard Disk 1\tIDE 0:0\n");
    EXPECT_EQ(r.err, "Backup Made: Backup file created as: " + file + ".bak\n");
    EXPECT_EQ(readBytes(file + ".bak"), before);
    std::string text = readBytes(file);
    EXPECT_TRUE(contains(text, "ide0:0.present = \"TRUE\"\r\nide0:0.fileName = \"a.vmdk\"\r\nide0:0.deviceType = \"disk\"\r\n"));

    EXPECT_EQ(ok({"device", "add", file, "dvd/cd-rom drive"}), "CD-ROM 2\tIDE 0:1\n") << "type names in any case";
    EXPECT_EQ(ok({"device", "add", file, "Hard Disk", "--file", (dir / "b.vmdk").string(), "--node", "IDE 1:1"}), "Hard Disk 2\tIDE 1:1\n");
    EXPECT_EQ(ok({"device", "add", file, "SCSI Controller"}), "SCSI Controller 0\n");
    // IDE is full now: the notice is shown and the disk goes on to SCSI.
    auto scsi = runCli({"device", "add", file, "Hard Disk", "--file", (dir / "c.vmdk").string()});
    ASSERT_EQ(scsi.exitCode, 0) << scsi.err;
    EXPECT_EQ(scsi.out, "Hard Disk 3\tSCSI 0:0\n");
    EXPECT_TRUE(contains(scsi.err, "No Available Nodes: No available IDE nodes!\n"));
    EXPECT_EQ(ok({"device", "add", file, "Generic SCSI Device", "--file", "/dev/sg1"}), "Gen SCSI 1\tSCSI 0:1\n");
    EXPECT_EQ(ok({"device", "add", file, "Serial Port", "--file", (dir / "com.txt").string()}), "Serial Port 1\n");

    auto show = ok({"show", file});
    EXPECT_TRUE(contains(show, "  Hard Disk 3\tSCSI 0:0, c.vmdk (persistent)\tSCSI 0:0\n"));
    EXPECT_TRUE(contains(show, "  Serial Port 1\tFile com.txt\t\n"));
}

TEST(CliDevice, NamesWithBlanksQuotesAndAccentsAreReadBackEqual) {
    ScratchDir dir;
    std::string file = newMachine(dir);
    const std::string name = "/media/my \"old\" disks/Bücher é.vmdk";
    ASSERT_EQ(ok({"device", "add", file, "Hard Disk", "--file", name}), "Hard Disk 1\tIDE 0:0\n");
    EXPECT_TRUE(contains(readBytes(file), "ide0:0.fileName = \"/media/my |22old|22 disks/Bücher é.vmdk\"\r\n"));
    EXPECT_TRUE(contains(ok({"show", file}), "  Hard Disk 1\tIDE 0:0, " + name + " (persistent)\tIDE 0:0\n"));
    std::string saved = readBytes(file);
    ok({"resave", file});
    EXPECT_EQ(readBytes(file), saved);
}

TEST(CliDevice, NodeMovesTheHolderOutOfTheWay) {
    ScratchDir dir;
    std::string file = newMachine(dir);
    ok({"device", "add", file, "Hard Disk", "--file", (dir / "a.vmdk").string()});
    auto r = runCli({"device", "node", file, "Hard Disk 1", "IDE 1:0"});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "Hard Disk 1\tIDE 1:0\nCD-ROM 1\tIDE 0:1\n");
    std::string text = readBytes(file);
    EXPECT_TRUE(contains(text, "ide0:1.present = \"TRUE\"\r\nide0:1.fileName = \"auto detect\""));
    EXPECT_TRUE(contains(text, "ide1:0.fileName = \"a.vmdk\""));
}

TEST(CliDevice, RefusalsChangeNothing) {
    ScratchDir dir;
    std::string file = newMachine(dir);
    ok({"device", "add", file, "Hard Disk", "--file", (dir / "a.vmdk").string()});
    ok({"device", "add", file, "SCSI Controller"});
    ok({"device", "add", file, "Floppy Drive"});
    std::filesystem::remove(file + ".bak");
    const std::string before = readBytes(file);
    struct Case {
        std::vector<std::string> args;
        std::string err;
    };
    const Case cases[] = {
        {{"device", "node", file, "Hard Disk 1", "SCSI 3:9"},
         "Invalid Node Selection: SCSI 3:9 is not a node of this machine. Free nodes: IDE 0:1, IDE 1:1, SCSI 0:0, SCSI 0:1, "
         "SCSI 0:2, SCSI 0:3, SCSI 0:4, SCSI 0:5, SCSI 0:6\nHard Disk 1 stays on IDE 0:0: nothing was written.\n"},
        {{"device", "node", file, "Hard Disk 1", "SCSI 0:7"},
         "Invalid Node Selection: Node already occupied - cannot move\nHard Disk 1 stays on IDE 0:0: nothing was written.\n"},
        {{"device", "node", file, "Floppy 1", "IDE 0:1"},
         "Invalid Node Selection: Floppy 1 sits on no node; only \"Hard Disk\", \"DVD/CD-ROM Drive\", \"Generic SCSI Device\" do\n"},
        {{"device", "add", file, "Floppy Drive"},
         "Add New Hardware: The maximum number ofFloppy Drives has already been added to this virtual machine.\n"},
        {{"device", "add", file, "DVD/CD-ROM Drive", "--node", "SCSI 0:7"},
         "Invalid Node Selection: Node already occupied - cannot move\nNothing was written.\n"},
        {{"device", "remove", file, "Memory"},
         "Device Not Removable: Memory cannot be removed: a machine keeps its memory and at least one CPU\n"},
        {{"device", "remove", file, "CPU 1"},
         "Device Not Removable: CPU 1 cannot be removed: a machine keeps its memory and at least one CPU\n"},
        {{"memory", file, "abc"}, "Invalid Entry: RAM size must be numeric\n"},
        {{"memory", file, "2"}, "Invalid Memory Size: RAM size out of valid range for Selected Product/Version\n"},
        {{"memory", file, "3604"}, "Invalid Memory Size: RAM size out of valid range for Selected Product/Version\n"},
    };
    for (const Case& c : cases) {
        auto r = runCli(c.args);
        EXPECT_EQ(r.exitCode, 1) << c.args[3];
        EXPECT_EQ(r.err, c.err);
        EXPECT_EQ(r.out, "");
    }
    auto unknown = runCli({"device", "remove", file, "Tape Drive 1"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_TRUE(contains(unknown.err, "No Such Device: " + file + " has no hardware entry \"Tape Drive 1\"; its entries are \"CPU 1\", \"Memory\","));
    EXPECT_EQ(readBytes(file), before);
    EXPECT_FALSE(std::filesystem::exists(file + ".bak")) << "no backup when nothing is written";
}

TEST(CliDevice, UsageErrors) {
    ScratchDir dir;
    std::string file = newMachine(dir);
    const std::string before = readBytes(file);
    struct Case {
        std::vector<std::string> args;
        std::string says;
    };
    const Case cases[] = {
        {{"device", "add", file, "Tape Drive"}, "unknown device type \"Tape Drive\"; use one of \"CPU\", \"Memory\","},
        {{"device", "add", file, "Sound Adapter", "--file", "x"}, "--file applies to \"Floppy Drive\", \"Parallel Port\", \"Serial Port\", \"Hard Disk\", \"DVD/CD-ROM Drive\", \"Generic SCSI Device\", not to \"Sound Adapter\""},
        {{"device", "add", file, "Hard Disk"}, "a Hard Disk needs --file"},
        {{"device", "add", file, "Serial Port", "--node", "IDE 0:0"}, "--node applies to"},
        {{"device", "add", file}, "device add needs a FILE and a TYPE"},
        {{"device", "eject", file}, "unknown device action 'eject'"},
        {{"device"}, "device needs add, remove or node"},
        {{"memory", file}, "memory needs a FILE and a size in MB"},
    };
    for (const Case& c : cases) {
        auto r = runCli(c.args);
        EXPECT_EQ(r.exitCode, 2) << c.says;
        EXPECT_TRUE(contains(r.err, c.says)) << r.err;
    }
    EXPECT_EQ(readBytes(file), before);
}

TEST(CliDevice, RemoveAndMemory) {
    ScratchDir dir;
    std::string file = newMachine(dir);
    EXPECT_EQ(ok({"device", "remove", file, "cd-rom 1"}), "Removed CD-ROM 1\n");
    EXPECT_FALSE(contains(readBytes(file), "ide1:0")) << "the drive's keys are gone";

    auto rounded = runCli({"memory", file, "258"});
    ASSERT_EQ(rounded.exitCode, 0) << rounded.err;
    EXPECT_EQ(rounded.out, "Memory: 256 MB\n");
    EXPECT_TRUE(contains(rounded.err, "258 MB was rounded down to 256 MB"));
    EXPECT_TRUE(contains(readBytes(file), "memsize = \"256\"\r\n"));
    EXPECT_EQ(ok({"memory", file, "4"}), "Memory: 4 MB\n");
    EXPECT_TRUE(contains(readBytes(file), "memsize = \"4\"\r\n"));

    // GSX Server 2.5x allows 2048 MB, Workstation 5.5x 3600 MB.
    ScratchDir gsxDir;
    std::string gsx = newMachine(gsxDir, {"--platform", "GSX Server", "--version", "2.5x"});
    EXPECT_EQ(ok({"memory", gsx, "2048"}), "Memory: 2048 MB\n");
    EXPECT_EQ(runCli({"memory", gsx, "2052"}).exitCode, 1);
    EXPECT_EQ(ok({"memory", file, "3600"}), "Memory: 3600 MB\n");
}

TEST(CliDevice, ADiskWithoutAnyFreeNodeIsNotAdded) {
    ScratchDir dir;
    std::string file = newMachine(dir);
    for (const char* n : {"a", "b", "c"}) ok({"device", "add", file, "Hard Disk", "--file", (dir / n).string()});
    const std::string before = readBytes(file);
    auto r = runCli({"device", "add", file, "Hard Disk", "--file", (dir / "d").string()});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err,
              "No Available Nodes: No available IDE nodes!\nNo Available Nodes: No available SCSI nodes either!\n"
              "No Available Nodes: Hard Disk 4 was not added: it needs a free IDE or SCSI node (each SCSI Controller adds seven)\n");
    EXPECT_EQ(readBytes(file), before);
}

TEST(CliDevice, AFileNamedFromTheCurrentFolderIsWrittenWithItsFolder) {
    ScratchDir dir;
    std::string file = newMachine(dir);
    ok({"device", "add", file, "Floppy Drive", "--file", "boot.img"});
    const std::string full = (std::filesystem::current_path() / "boot.img").string();
    EXPECT_TRUE(contains(readBytes(file), "floppy1.fileType = \"file\"\r\nfloppy1.fileName = \"" + full + "\"\r\n"));
}
