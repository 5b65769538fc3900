// Edits that must keep what the user has, each command a process of its own: device names
// that hold from one run to the next, devices that never lose their node or disk, SCSI
// controllers removed with their devices, clustering that takes over no other device, values
// written back as read, and saves that write only what can be read back.
#include "CliRunner.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// A writable copy of a corpus file in `dir`, named `name`.
fs::path corpusCopy(const ScratchDir& dir, const std::string& source, const std::string& name) {
    fs::path file = dir / name;
    fs::copy_file(corpusDir() / "vmx" / source, file);
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
    return file;
}

fs::path newMachine(const ScratchDir& dir, std::vector<std::string> options = {}) {
    std::vector<std::string> args = {"new", dir.path().string(), "M"};
    args.insert(args.end(), options.begin(), options.end());
    EXPECT_EQ(runCli(args).exitCode, 0);
    return dir / "M.vmx";
}

}  // namespace

// A name printed by one run is the name the next run finds the same device by.
TEST(DeviceNames, APrintedNameRemovesThatDeviceInTheNextRun) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    const std::string file = corpusCopy(dir, "jahyung-ansible__CentOS-7-64-bit.vmx", "c.vmx").string();
    const std::string scratch = (dir / "scratch.vmdk").string();
    CliResult added = runCli({"device", "add", file, "Hard Disk", "--file", scratch, "--node", "IDE 0:0"});
    ASSERT_EQ(added.exitCode, 0) << added.err;
    EXPECT_EQ(added.out, "Hard Disk 1\tIDE 0:0\n");  // IDE comes before the system disk on SCSI 0:0
    EXPECT_TRUE(has(runCli({"show", file}).out, "  Hard Disk 2\tSCSI 0:0, CentOS 7 64-bit-000001.vmdk\tSCSI 0:0\n"));
    CliResult removed = runCli({"device", "remove", file, "Hard Disk 1"});
    ASSERT_EQ(removed.exitCode, 0) << removed.err;
    const std::string text = readBytes(file);
    EXPECT_FALSE(has(text, "scratch.vmdk"));
    EXPECT_TRUE(has(text, "scsi0:0.fileName = \"CentOS 7 64-bit-000001.vmdk\""));
    // The remaining disk is numbered again, in this run and the next.
    EXPECT_TRUE(has(runCli({"show", file}).out, "  Hard Disk 1\tSCSI 0:0, CentOS 7 64-bit-000001.vmdk\tSCSI 0:0\n"));
}

TEST(DeviceNames, NodeMovesAndSecondDrivesPrintTheNamesOfTheNextRun) {
    ScratchDir dir;
    const std::string file = newMachine(dir).string();
    ASSERT_EQ(runCli({"device", "add", file, "SCSI Controller"}).exitCode, 0);
    // A second drive on IDE 0:0 comes before the first one (IDE 1:0): it is CD-ROM 1 now.
    EXPECT_EQ(runCli({"device", "add", file, "DVD/CD-ROM Drive", "--node", "IDE 0:0"}).out, "CD-ROM 1\tIDE 0:0\n");
    EXPECT_EQ(runCli({"device", "node", file, "CD-ROM 1", "SCSI 0:2"}).out, "CD-ROM 2\tSCSI 0:2\n");
    CliResult shown = runCli({"show", file});
    EXPECT_TRUE(has(shown.out, "  CD-ROM 1\tIDE 1:0, auto detect\tIDE 1:0\n")) << shown.out;
    EXPECT_TRUE(has(shown.out, "  CD-ROM 2\tSCSI 0:2, auto detect\tSCSI 0:2\n")) << shown.out;
    EXPECT_EQ(runCli({"device", "remove", file, "CD-ROM 2"}).exitCode, 0);
    EXPECT_FALSE(has(readBytes(file), "scsi0:2."));
    EXPECT_TRUE(has(readBytes(file), "ide1:0.fileName = \"auto detect\""));
}

TEST(DeviceNames, ANodeLabelNamesTheDeviceOnIt) {
    ScratchDir dir;
    const std::string file = newMachine(dir).string();
    EXPECT_EQ(runCli({"device", "node", file, "IDE 1:0", "IDE 0:1"}).out, "CD-ROM 1\tIDE 0:1\n");
    CliResult missing = runCli({"device", "remove", file, "IDE 1:1"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(has(missing.err, "has no hardware entry \"IDE 1:1\" and no device on such a node")) << missing.err;
    EXPECT_EQ(runCli({"device", "remove", file, "IDE 0:1"}).out, "Removed CD-ROM 1\n");
}

// No disk-like device without a node, and no hard disk without its disk.
TEST(DeviceNodes, NoNodeMeansNothingIsAddedAndNothingWritten) {
    ScratchDir dir;
    const std::string file = newMachine(dir, {"--version", "5.5x"}).string();
    const std::string before = readBytes(file);
    CliResult na = runCli({"device", "add", file, "Hard Disk", "--file", "x.vmdk", "--node", "N/A"});
    EXPECT_EQ(na.exitCode, 1);
    EXPECT_TRUE(has(na.err, "Invalid Node Selection: \"N/A\" places a device on no node, and a Hard Disk needs one: "
                            "give a free node (IDE 0:0, IDE 0:1, IDE 1:1) or leave --node out for the first free one. "
                            "Nothing was written.")) << na.err;
    CliResult generic = runCli({"device", "add", file, "Generic SCSI Device", "--file", "/dev/sg0"});
    EXPECT_EQ(generic.exitCode, 1);
    EXPECT_TRUE(has(generic.err, "No available SCSI nodes!")) << generic.err;
    for (const char* disk : {"a.vmdk", "b.vmdk", "c.vmdk"})
        ASSERT_EQ(runCli({"device", "add", file, "Hard Disk", "--file", (dir / disk).string()}).exitCode, 0);
    CliResult fourth = runCli({"device", "add", file, "Hard Disk", "--file", (dir / "d.vmdk").string()});
    EXPECT_EQ(fourth.exitCode, 1);
    EXPECT_FALSE(has(readBytes(file), "d.vmdk"));
    EXPECT_NE(readBytes(file), before);
}

// Removing a SCSI controller asks for its devices; undeclared controllers are told.
TEST(ScsiControllers, RemovingOneThatHoldsDevicesNeedsWithDevices) {
    ScratchDir dir;
    const std::string file = newMachine(dir).string();
    ASSERT_EQ(runCli({"device", "add", file, "SCSI Controller"}).exitCode, 0);
    ASSERT_EQ(runCli({"device", "add", file, "Hard Disk", "--file", (dir / "a.vmdk").string(), "--node", "SCSI 0:0"}).exitCode, 0);
    ASSERT_EQ(runCli({"device", "add", file, "Generic SCSI Device", "--file", "/dev/sg0"}).exitCode, 0);
    const std::string before = readBytes(file);
    CliResult refused = runCli({"device", "remove", file, "SCSI Controller 0"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(has(refused.err, "Controller Holds Devices: SCSI Controller 0 holds \"Hard Disk 1 (SCSI 0:0)\", "
                                 "\"Gen SCSI 1 (SCSI 0:1)\"; give --with-devices")) << refused.err;
    EXPECT_EQ(readBytes(file), before);
    CliResult removed = runCli({"device", "remove", file, "SCSI Controller 0", "--with-devices"});
    EXPECT_EQ(removed.exitCode, 0) << removed.err;
    EXPECT_EQ(removed.out, "Removed SCSI Controller 0\nHard Disk 1 (SCSI 0:0) moved to IDE 0:0\n"
                           "Gen SCSI 1 (SCSI 0:1) removed with the controller\n");
    const std::string text = readBytes(file);
    EXPECT_TRUE(has(text, "ide0:0.fileName = \"a.vmdk\""));
    EXPECT_FALSE(has(text, "scsi0"));
    EXPECT_EQ(runCli({"check", file}).exitCode, 0);
}

TEST(ScsiControllers, DevicesOnAnUndeclaredControllerAreToldAndCheckFails) {
    ScratchDir dir;
    const fs::path file = dir / "u.vmx";
    writeBytes(file, "config.version = \"8\"\nvirtualHW.version = \"4\"\nmemsize = \"256\"\n"
                     "scsi1:0.present = \"TRUE\"\nscsi1:0.fileName = \"a.vmdk\"\n");
    CliResult check = runCli({"check", file.string()});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_TRUE(has(check.err, "u.vmx:4: Hard Disk 1 sits on SCSI 1:0, but the file declares no SCSI controller 1 "
                               "(scsi1.present); the product does not see it")) << check.err;
    EXPECT_TRUE(has(check.err, "Undeclared Controller: Hard Disk 1 sits on SCSI 1:0")) << check.err;
}

// Clustering takes over SCSI 0:0 and 0:1 only while they are free or hold hard disks.
TEST(Clustering, ItNeverTakesOverAnotherDevice) {
    ScratchDir dir;
    const std::string file = newMachine(dir).string();
    ASSERT_EQ(runCli({"device", "add", file, "SCSI Controller"}).exitCode, 0);
    ASSERT_EQ(runCli({"device", "add", file, "DVD/CD-ROM Drive", "--node", "SCSI 0:1"}).exitCode, 0);
    const std::string before = readBytes(file);
    CliResult refused = runCli({"option", file, "clustering", "yes"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(has(refused.err, "Clustering Not Possible: Clustering makes the devices on SCSI 0:0 and SCSI 0:1 shared "
                                 "disks of a cluster, and CD-ROM 2 stands on SCSI 0:1. Move it to another node first."))
        << refused.err;
    EXPECT_EQ(readBytes(file), before);
    ASSERT_EQ(runCli({"device", "node", file, "SCSI 0:1", "SCSI 0:4"}).exitCode, 0);
    ASSERT_EQ(runCli({"device", "add", file, "Hard Disk", "--file", (dir / "a.vmdk").string(), "--node", "SCSI 0:0"}).exitCode, 0);
    EXPECT_EQ(runCli({"option", file, "clustering", "yes"}).exitCode, 0);
    EXPECT_TRUE(has(readBytes(file), "scsi0:0.mode = \"independent-persistent\""));
    EXPECT_EQ(runCli({"option", file, "clustering", "no"}).exitCode, 0);
    const std::string text = readBytes(file);
    EXPECT_FALSE(has(text, "independent-persistent"));
    EXPECT_FALSE(has(text, "plainDisk"));
    EXPECT_TRUE(has(text, "scsi0:4.deviceType = \"cdrom-raw\"") || has(text, "scsi0:4.fileName = \"auto detect\""));
}

TEST(Clustering, OnThenOffInTwoRunsGivesTheDisksTheirOwnModeAndType) {
    ScratchDir dir;
    const fs::path file = dir / "k.vmx";
    writeBytes(file, "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\nscsi0.present = \"TRUE\"\r\n"
                     "scsi0:0.present = \"TRUE\"\r\nscsi0:0.fileName = \"a.vmdk\"\r\nscsi0:0.mode = \"persistent\"\r\n"
                     "scsi0:0.deviceType = \"scsi-hardDisk\"\r\n");
    ASSERT_EQ(runCli({"option", file.string(), "clustering", "yes"}).exitCode, 0);
    EXPECT_TRUE(has(readBytes(file), "scsi0:0.deviceType = \"plainDisk\""));
    ASSERT_EQ(runCli({"option", file.string(), "clustering", "no"}).exitCode, 0);
    const std::string text = readBytes(file);
    EXPECT_TRUE(has(text, "scsi0:0.mode = \"persistent\"\r\n")) << text;
    EXPECT_TRUE(has(text, "scsi0:0.deviceType = \"scsi-hardDisk\"\r\n")) << text;
    EXPECT_FALSE(has(text, "plainDisk"));
}

// Values are written back as read.
TEST(ValuesAsRead, AutodetectFollowsTheWrittenNameOfADrive) {
    ScratchDir dir;
    const std::string file = newMachine(dir).string();
    EXPECT_TRUE(has(readBytes(file), "ide1:0.autodetect = \"TRUE\""));
    ASSERT_EQ(runCli({"device", "remove", file, "CD-ROM 1"}).exitCode, 0);
    ASSERT_EQ(runCli({"device", "add", file, "DVD/CD-ROM Drive", "--file", (dir / "os.iso").string()}).exitCode, 0);
    ASSERT_EQ(runCli({"device", "add", file, "Hard Disk", "--file", (dir / "auto detect").string()}).exitCode, 0);
    ASSERT_EQ(runCli({"resave", file}).exitCode, 0);
    const std::string text = readBytes(file);
    EXPECT_TRUE(has(text, "ide0:1.fileName = \"auto detect\"")) << text;
    EXPECT_FALSE(has(text, "autodetect")) << text;
}

TEST(ValuesAsRead, SharesKeepTheirKeysAndReadAccess) {
    ScratchDir dir;
    const fs::path file = dir / "s.vmx";
    const std::string shares =
        "sharedFolder.maxNum = \"2\"\r\n"
        "sharedFolder0.present = \"TRUE\"\r\nsharedFolder0.enabled = \"TRUE\"\r\nsharedFolder0.readAccess = \"FALSE\"\r\n"
        "sharedFolder0.writeAccess = \"TRUE\"\r\nsharedFolder0.hostPath = \"/srv\"\r\nsharedFolder0.guestName = \"srv\"\r\n"
        "sharedFolder1.present = \"FALSE\"\r\n";
    writeBytes(file, "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\n" + shares);
    ASSERT_EQ(runCli({"resave", file.string()}).exitCode, 0);
    const std::string text = readBytes(file);
    EXPECT_TRUE(has(text, "sharedFolder0.readAccess = \"FALSE\"")) << text;
    EXPECT_TRUE(has(text, "sharedFolder1.present = \"FALSE\"\r\n")) << text;
    EXPECT_FALSE(has(text, "sharedFolder1.guestName")) << text;
    EXPECT_FALSE(has(text, "sharedFolder1.hostPath")) << text;
    EXPECT_FALSE(has(text, "sharedFolder0.expiration")) << text;
    ASSERT_EQ(runCli({"share", "add", file.string(), "music", dir.path().string()}).exitCode, 0);
    EXPECT_TRUE(has(readBytes(file), "sharedFolder2.readAccess = \"TRUE\""));
}

// SATA and NVMe from the command line: controllers added within the product's four, drives and
// disks put on their nodes by label, found and removed by node label, listed at their nodes.
TEST(BusCommands, SataAndNvmeControllersDrivesAndDisksByNodeLabel) {
    ScratchDir dir;
    const std::string file = newMachine(dir, {"--platform", "Workstation", "--version", "17.5x"}).string();
    EXPECT_EQ(runCli({"device", "add", file, "SATA Controller"}).out, "SATA Controller 0\n");
    EXPECT_EQ(runCli({"device", "add", file, "NVMe Controller"}).out, "NVMe Controller 0\n");
    const std::string disk = (dir / "system.vmdk").string();
    EXPECT_EQ(runCli({"device", "add", file, "Hard Disk", "--file", disk}).out, "Hard Disk 1\tNVMe 0:0\n");
    EXPECT_EQ(runCli({"device", "add", file, "DVD/CD-ROM Drive", "--node", "SATA 0:1"}).out, "CD-ROM 2\tSATA 0:1\n");
    CliResult refused = runCli({"device", "node", file, "CD-ROM 2", "NVMe 0:1"});
    EXPECT_NE(refused.exitCode, 0);
    EXPECT_TRUE(has(refused.err, "A DVD/CD-ROM Drive sits on IDE, SCSI or SATA nodes only, not on NVMe 0:1")) << refused.err;
    const std::string shown = runCli({"show", file}).out;
    for (const char* line : {"  Hard Disk 1\tNVMe 0:0, system.vmdk (persistent)\tNVMe 0:0\n",
                             "  CD-ROM 2\tSATA 0:1, auto detect\tSATA 0:1\n", "  SATA Controller 0\tEnabled\t\n",
                             "  NVMe Controller 0\tEnabled\t\n"})
        EXPECT_TRUE(has(shown, line)) << line << shown;
    const std::string text = readBytes(file);
    EXPECT_TRUE(has(text, "nvme0:0.fileName = \"system.vmdk\"\r\n")) << text;
    EXPECT_TRUE(has(text, "sata0:1.deviceType = \"cdrom-raw\"\r\n"));

    CliResult held = runCli({"device", "remove", file, "NVMe Controller 0"});
    EXPECT_TRUE(has(held.err, "NVMe Controller 0 holds \"Hard Disk 1 (NVMe 0:0)\"")) << held.err;
    CliResult moved = runCli({"device", "remove", file, "NVMe Controller 0", "--with-devices"});
    EXPECT_EQ(moved.out, "Removed NVMe Controller 0\nHard Disk 1 (NVMe 0:0) moved to IDE 0:0\n");
    EXPECT_EQ(runCli({"device", "remove", file, "SATA 0:1"}).out, "Removed CD-ROM 2\n");
    for (int i = 1; i < 4; ++i) EXPECT_EQ(runCli({"device", "add", file, "SATA Controller"}).exitCode, 0);
    CliResult fifth = runCli({"device", "add", file, "SATA Controller"});
    EXPECT_NE(fifth.exitCode, 0);
    EXPECT_TRUE(has(fifth.err, "The maximum number ofSATA Controllers has already been added")) << fifth.err;
    EXPECT_TRUE(has(runCli({"__complete", "nodes", file}).out, "SATA 3:29\n"));
}

TEST(BusCommands, AWorkstation55MachineRefusesSataAndNvme) {
    ScratchDir dir;
    const std::string file = newMachine(dir).string();
    for (const char* type : {"SATA Controller", "NVMe Controller"}) {
        CliResult r = runCli({"device", "add", file, type});
        EXPECT_NE(r.exitCode, 0) << type;
        EXPECT_TRUE(has(r.err, "The maximum number of" + std::string(type) + "s has already been added")) << r.err;
    }
    CliResult node = runCli({"device", "node", file, "CD-ROM 1", "SATA 0:0"});
    EXPECT_TRUE(has(node.err, "SATA 0:0 is not a node of this machine")) << node.err;
}
