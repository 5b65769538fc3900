// Saving a machine: the checks that refuse a save, the questions asked before writing over a
// file (in use, read-only), the folder made, the backup copy, and nothing lost when a save fails.
#include "core/config/SaveFlow.h"

#include "core/config/VmxLoader.h"
#include "core/shell/GetText.h"
#include "TestSupport.h"

using namespace arden;
using test::ScratchDir;
using test::shown;
namespace fs = std::filesystem;

namespace {

VmConfiguration machineIn(const fs::path& folder) { return VmConfiguration::newMachine("Saved", folder.string() + "/", "New VM", 42); }

void addNics(VmConfiguration& c, int n, bool enabled = true) {
    for (int i = 0; i < n; ++i) c.devices.createDevice(DeviceType::Network).settings.setFlag(".present", enabled);
}

}  // namespace

TEST(SaveChecks, NameFolderAndAtMostFiveEnabledPciDevices) {
    VmConfiguration c = machineIn("/tmp");  // one network adapter and one sound adapter
    c.identity.vmxFileName.clear();
    EXPECT_EQ(shown(checkSave(c)), "Missing Data: Invalid VMX File Name and/or Folder");
    c.identity.vmxFileName = "a.vmx";
    c.identity.vmxFolder.clear();
    EXPECT_TRUE(checkSave(c));
    c.identity.vmxFolder = "/tmp/";
    addNics(c, 2);
    c.devices.createDevice(DeviceType::ScsiController);
    addNics(c, 3, false);
    EXPECT_FALSE(checkSave(c)) << "five enabled devices are accepted; disabled ones do not count";
    c.devices.createDevice(DeviceType::ScsiController);
    EXPECT_EQ(shown(checkSave(c)),
              "Too many virtual PCI Devices enabled: You currently have 6 virtual PCI devices enabled (SCSI controllers, "
              "Network adapters, Sound adapters).  VMware will only accept 5.  Please go back and Disable some devices.");
}

TEST(SaveFlow, WritesCreatesOneFolderLevelAndNeverLosesTheOldFile) {
    ScratchDir dir;
    VmConfiguration c = machineIn(dir.path() / "new");
    SaveResult r = CreateVmxFile(c);
    ASSERT_TRUE(r.written) << shown(r.refusal);
    EXPECT_EQ(r.path, (dir.path() / "new" / "Saved.vmx").string());
    EXPECT_EQ(test::readBytes(r.path), r.text);

    SaveResult deep = CreateVmxFile(machineIn(dir.path() / "a" / "b"));
    EXPECT_FALSE(deep.written);
    EXPECT_NE(shown(deep.refusal).find((dir.path() / "a" / "b").string()), std::string::npos);
    EXPECT_FALSE(fs::exists(dir.path() / "a"));

    test::writeBytes(r.path, "original");
    addNics(c, 5);
    EXPECT_FALSE(CreateVmxFile(c).written);
    EXPECT_EQ(test::readBytes(r.path), "original") << "a refused check leaves the file untouched";
}

// A folder the user cannot write to: a writable file in it is rewritten in place, with a notice;
// a read-only one is refused and kept. Permission bits do not stop root, so as root the saves
// run as the user nobody.
TEST(SaveFlow, ReadOnlyFolderSavesInPlaceOrKeepsTheOldFile) {
    ScratchDir dir;
    VmConfiguration c = machineIn(dir.path());
    ASSERT_TRUE(CreateVmxFile(c).written);
    const std::string before = test::readBytes(c.vmxPath());
    c.identity.displayName = "changed";
    auto saved = [&c](fs::perms fileMode, bool expectWritten, const std::string& notice) {
        fs::permissions(c.vmxPath(), fileMode);
        fs::permissions(c.identity.vmxFolder, fs::perms(0555));
        auto save = [&] {
            SaveResult r = CreateVmxFile(c);
            return r.written == expectWritten && shown(r.notice) == notice;
        };
        bool ok = test::runningAsRoot() ? test::asNobody(save) : save();
        fs::permissions(c.identity.vmxFolder, fs::perms::owner_all);
        return ok;
    };
    EXPECT_TRUE(saved(fs::perms(0444), false, ""));
    EXPECT_EQ(test::readBytes(c.vmxPath()), before);
    EXPECT_TRUE(saved(fs::perms(0666), true,
                      "Saved in Place: " + c.vmxPath() +
                          " was rewritten in place because its folder is not writable; no backup copy of the old "
                          "contents could be made beside it."));
    EXPECT_NE(test::readBytes(c.vmxPath()).find("displayName = \"changed\""), std::string::npos);
}

TEST(SaveFlow, QuestionsBeforeWritingOverAFile) {
    struct Case { std::string lock; std::string kind; };
    const Case cases[] = {{"M.VMX.LCK", "folder"}, {"m.vmx.lck", "file"}, {"m.vmx.lck", "link"}};
    for (const Case& c : cases) {
        ScratchDir dir;
        test::writeBytes(dir / "m.vmx", "memsize = \"64\"\r\n");
        VmConfiguration config = loadVmxFile(dir / "m.vmx").config;
        EXPECT_FALSE(inUseQuestion(config));
        if (c.kind == "folder") fs::create_directory(dir / c.lock);
        else if (c.kind == "file") test::writeBytes(dir / c.lock, "");
        else fs::create_symlink(dir / "gone", dir / c.lock);
        auto question = inUseQuestion(config);
        ASSERT_TRUE(question) << c.lock;
        EXPECT_EQ(question->kind, MessageKind::Question);
        EXPECT_EQ(shown(question), "Virtual Machine in Use: The lock " + c.kind + " " + (dir / c.lock).string() +
                                       " shows that a VMware product has this virtual machine open; it may write over "
                                       "your changes when it closes.  Save anyway?");
    }
    ScratchDir dir;
    // A machine opened through a link: the product may have locked the file the link points to.
    fs::create_directory(dir / "real");
    test::writeBytes(dir / "real" / "m.vmx", "memsize = \"64\"\r\n");
    fs::create_symlink("real/m.vmx", dir / "link.vmx");
    fs::create_directory(dir / "real" / "m.vmx.lck");
    EXPECT_TRUE(shown(inUseQuestion(loadVmxFile(dir / "link.vmx").config))
                    .starts_with("Virtual Machine in Use: The lock folder " + (dir / "real" / "m.vmx.lck").string() + " shows"));
    test::writeBytes(dir / "ro.vmx", "memsize = \"64\"\r\n");
    VmConfiguration config = loadVmxFile(dir / "ro.vmx").config;
    EXPECT_FALSE(readOnlyQuestion(config));
    fs::permissions(dir / "ro.vmx", fs::perms(0444));
    EXPECT_EQ(shown(readOnlyQuestion(config)),
              "Read-only File: The file " + (dir / "ro.vmx").string() + " is read-only.  Save over it anyway?");
}


TEST(SaveFlow, TheBackupIsReportedAsItWent) {
    ScratchDir dir;
    test::writeBytes(dir / "m.vmx", "memsize = \"64\"\r\n");
    bool ok = false;
    EXPECT_EQ(shown(makeBackup(dir / "m.vmx", ok)), "Backup Made: Backup file created as: " + (dir / "m.vmx.bak").string());
    EXPECT_TRUE(ok);
    EXPECT_EQ(test::readBytes(dir / "m.vmx.bak"), "memsize = \"64\"\r\n");
    EXPECT_EQ(shown(makeBackup(dir / "gone.vmx", ok)),
              "Backup Failed: No backup was made: Cannot read " + (dir / "gone.vmx").string() + ": No such file or directory");
    EXPECT_FALSE(ok);
    EXPECT_FALSE(fs::exists(dir / "gone.vmx.bak"));
}

// A save never leaves a device out of the file, nor writes a disk without its file, nor a
// text the loader would not read back; each refusal names what is wrong.
TEST(SaveChecks, DevicesWithoutNodeOrDiskAndTextsTooLargeAreRefused) {
    VmConfiguration c = machineIn("/tmp");
    Device& disk = c.devices.createDevice(DeviceType::HardDisk);
    disk.settings.setFlag(".present", true);
    EXPECT_EQ(shown(checkSave(c)), "Unable to Save: Hard Disk 1 sits on no IDE or SCSI node, so the file would not hold it. "
                                   "Choose a free node on its page, or remove it. Nothing was written.");
    c.devices.busOptions.modernPlacement = true;  // as on a product with SATA and NVMe
    EXPECT_EQ(shown(checkSave(c)), "Unable to Save: Hard Disk 1 sits on no node, so the file would not hold it. "
                                   "Choose a free node on its page, or remove it. Nothing was written.");
    c.devices.busOptions.modernPlacement = false;
    disk.node.setControllerType("IDE");
    disk.node.setControllerNumber(0);
    disk.node.setNodeNumber(1);
    EXPECT_EQ(shown(checkSave(c)), "Unable to Save: Hard Disk 1 (IDE 0:1) names no disk file, and a machine with such a "
                                   "disk does not start. Choose its disk file on its page, or remove it. Nothing was written.");
    disk.settings.set(".fileName", "a.vmdk");
    EXPECT_FALSE(checkSave(c));

    EXPECT_FALSE(checkWrittenSize(std::string(1048576, 'x') + "\r\n"));
    EXPECT_EQ(shown(checkWrittenSize("a = \"b\"\r\n" + std::string(1048577, 'x') + "\r\n")),
              "Unable to Save: Line 2 would be 1048577 bytes long, and configuration lines are read up to 1048576 bytes: "
              "the file could not be opened again. Shorten that text. Nothing was written.");
    std::string big;
    for (int i = 0; i < 24; ++i) big += std::string(720000, 'n') + "\r\n";
    EXPECT_EQ(shown(checkWrittenSize(big)),
              "Unable to Save: The file would be 17280048 bytes long, and a configuration file is read up to 16777216 bytes: "
              "it could not be opened again. Shorten the longest texts (names, folders, notes). Nothing was written.");
}

TEST(SaveChecks, ATooLargeMachineIsNotWritten) {
    ScratchDir dir;
    VmConfiguration c = machineIn(dir.path());
    for (int i = 0; i < 24; ++i) c.sharedFolders.folders.push_back(SharedFolder{std::string(720000, 'a' + i % 26), "/srv"});
    SaveResult result = arden::CreateVmxFile(c);
    EXPECT_FALSE(result.written);
    EXPECT_TRUE(shown(result.refusal).starts_with("Unable to Save: The file would be ")) << shown(result.refusal);
    EXPECT_FALSE(fs::exists(c.vmxPath()));
}
