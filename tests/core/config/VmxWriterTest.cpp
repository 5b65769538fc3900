// The written .vmx text: banners and sections in their fixed order, the identity lines, the
// option keys (some written inverted), device keys, and kept lines that never repeat a key.
#include "core/config/VmxWriter.h"

#include "TestSupport.h"
#include "VmxTestSupport.h"

using namespace arden;
using test::hasLine;
using test::linesOf;

namespace {

VmConfiguration machine() { return VmConfiguration::newMachine("Test VM", "/vms/test/", "New VM", 0xABCDEF); }

// A hard disk of `file` on SCSI 0:0.
void addScsiDisk(VmConfiguration& c, const std::string& file) {
    Device& disk = c.devices.createDevice(DeviceType::HardDisk);
    disk.node.setControllerType("SCSI");
    disk.node.setControllerNumber(0);
    disk.node.setNodeNumber(0);
    disk.settings.set(".fileName", file);
}

}  // namespace

TEST(VmxWriter, TextFormOfANewMachine) {
    const std::string text = writeVmxText(machine());
    auto lines = linesOf(text);
    ASSERT_GT(lines.size(), 12u);
    EXPECT_EQ(std::vector<std::string>(lines.begin() + 4, lines.begin() + 12),
              (std::vector<std::string>{"", "####### identity/general ##############", "displayName = \"Test VM\"",
                                        "# Platform = Workstation", "# Version = 5.5x", "config.version = \"8\"",
                                        "virtualHW.version = \"4\"", "guestOS = \"winXPPro\""}));
    EXPECT_TRUE(hasLine(text, "numvcpus =\"1\""));
    EXPECT_EQ(text.find("\n\n"), std::string::npos) << "every line ends with CR LF";
    EXPECT_TRUE(text.ends_with("\r\n\r\n####### end of file ###################\r\n"));
}

TEST(VmxWriter, SectionsInTheirFixedOrderWithTheKeptLinesLast) {
    VmConfiguration c = machine();
    addScsiDisk(c, "/vms/test/disk.vmdk");
    c.devices.createDevice(DeviceType::ScsiController).settings.set(".virtualDev", "lsilogic");
    c.devices.createDevice(DeviceType::ParallelPort);
    Device& serial = c.devices.createDevice(DeviceType::SerialPort);
    serial.settings.set(".fileType", "pipe");
    serial.settings.set(".pipe.endPoint", "server");
    Device& nic = *c.devices.findByNumber(DeviceType::Network, 0);
    nic.settings.set(".connectionType", "custom");
    nic.settings.set(".vnet", "VMnet3");
    c.keptLines = {"uuid.bios = \"56 4d\"", "# a comment of the user", "MEMSIZE = \"64\"", "uuid.BIOS = \"56 4e\""};
    std::string text = writeVmxText(c);
    for (const char* line : {"scsi0:0.fileName = \"disk.vmdk\"", "scsi0:0.mode = \"persistent\"", "scsi0.virtualDev = \"lsilogic\"",
                             "ide1:0.autodetect = \"TRUE\"", "ethernet0.vnet = \"VMnet3\"", "serial0.pipe.endPoint = \"server\"",
                             "uuid.BIOS = \"56 4e\"", "# a comment of the user"})
        EXPECT_TRUE(hasLine(text, line)) << line;
    EXPECT_FALSE(hasLine(text, "uuid.bios = \"56 4d\"")) << "of a key kept twice the last line counts";
    EXPECT_FALSE(hasLine(text, "MEMSIZE = \"64\"")) << "memsize is the editor's own";
    nic.settings.set(".connectionType", "bridged");
    EXPECT_EQ(writeVmxText(c).find("ethernet0.vnet"), std::string::npos) << "the host network is written for custom only";
}

TEST(VmxWriter, IdentityLines) {
    VmConfiguration c = machine();
    c.identity.notes = "first line\r\nsecond line";
    c.identity.displayName = "say \"hi\"";
    c.devices.createDevice(DeviceType::Cpu).settings.setFlag("pae", true);
    std::string text = writeVmxText(c);
    for (const char* line : {"annotation = \"first line|0D|0Asecond line\"", "numvcpus =\"2\"", "paevm = \"TRUE\"",
                             "displayName = \"say |22hi|22\""})
        EXPECT_TRUE(hasLine(text, line)) << line;
    c.identity.notes.clear();
    while (c.devices.count(DeviceType::Cpu) > 0) c.devices.remove(DeviceType::Cpu, c.devices.devices(DeviceType::Cpu)[0].identifier);
    c.product.platform = kPlayer;
    c.product.version = 99;  // a version the platform does not have stands for its latest
    text = writeVmxText(c);
    for (const char* key : {"annotation", "numvcpus", "paevm"}) EXPECT_EQ(text.find(key), std::string::npos) << key;
    EXPECT_NE(text.find("# Platform = Player\r\n# Version = 17.5x\r\nconfig.version = \"8\""), std::string::npos);
}

TEST(VmxWriter, OptionsAndTheirInvertedKeys) {
    VmConfiguration c = machine();
    std::string text = writeVmxText(c);
    for (const char* line : {"isolation.tools.hgfs.disable = \"FALSE\"", "snapshot.disabled = \"FALSE\"", "snapshot.Action = \"keep\"",
                             "priority.ungrabbed = \"normal\"", "MemTrimRate = \"30\"", "logging = \"TRUE\""})
        EXPECT_TRUE(hasLine(text, line)) << line;
    EXPECT_EQ(text.find("disk.locking"), std::string::npos);
    c.sharedFolders.allowed = false;
    c.snapshots = {false, 1};
    c.isolation = {false, true, false};
    c.advanced.ungrabbedPriority = 0;
    c.advanced.memPageTrim = true;
    c.power.powerOff = 1;
    c.sharedFolders.folders.push_back({"share", "/srv/share", true, true, true, true});
    text = writeVmxText(c);
    for (const char* line : {"isolation.tools.hgfs.disable = \"TRUE\"", "snapshot.disabled = \"TRUE\"",
                             "snapshot.Action = \"autoRevert\"", "isolation.tools.dnd.disable = \"TRUE\"",
                             "isolation.tools.paste.disable = \"FALSE\"", "isolation.tools.copy.disable = \"TRUE\"",
                             "priority.ungrabbed = \"idle\"", "MemTrimRate = \"0\"", "powerType.powerOff = \"soft\"",
                             "sharedFolder.maxNum = \"1\"", "sharedFolder0.writeAccess = \"FALSE\"", "sharedFolder0.expiration = \"session\""})
        EXPECT_TRUE(hasLine(text, line)) << line;
}

TEST(VmxWriter, FileNamesInTheMachinesFolderAreWrittenRelative) {
    EXPECT_EQ(relativeToVmxFolder("/vms/a/disk.vmdk", "/vms/a"), "disk.vmdk");
    EXPECT_EQ(relativeToVmxFolder("/vms/b/disk.vmdk", "/vms/a/"), "/vms/b/disk.vmdk");
    EXPECT_EQ(relativeToVmxFolder("/vms/a/sub/disk.vmdk", "/vms/a/"), "/vms/a/sub/disk.vmdk");
    EXPECT_EQ(relativeToVmxFolder("/VMS/A/disk.vmdk", "/vms/a/"), "/VMS/A/disk.vmdk") << "compared with case, as the file system does";
    EXPECT_EQ(relativeToVmxFolder("auto detect", "/vms/a/"), "auto detect");
}

// A kept line under the prefix of a device or folder added after the file was opened is read
// as that device's line when the file is opened again: it is written with the device, so a
// second save is the same as the first, and it stays in the kept lines while nothing owns it.
TEST(VmxWriter, KeptLinesOfANodeOrNumberGoWithTheDeviceAddedThere) {
    LoadResult opened = test::parseIn("scsi0.present = \"TRUE\"\nscsi0:0.redo = \"\"\nEthernet0.pciSlotNumber = \"33\"\n"
                                      "sharedFolder0.foo = \"x\"\nuuid.bios = \"56 4d\"\n");
    VmConfiguration& c = opened.config;
    const std::string before = writeVmxText(c);
    const std::string kept = before.substr(before.find("##### other params"));
    for (const char* line : {"scsi0:0.redo = \"\"", "Ethernet0.pciSlotNumber = \"33\"", "sharedFolder0.foo = \"x\""})
        EXPECT_TRUE(hasLine(kept, line)) << "no device or folder owns it yet: " << line;

    addScsiDisk(c, "/vms/x/d.vmdk");
    c.devices.createDevice(DeviceType::Network).settings.set(".connectionType", "nat");
    c.sharedFolders.folders.push_back(SharedFolder{"g", "/h"});
    const std::string first = writeVmxText(c);
    EXPECT_NE(first.find("scsi0:0.fileName = \"d.vmdk\"\r\nscsi0:0.deviceType = \"disk\"\r\nscsi0:0.mode = \"persistent\"\r\n"
                         "scsi0:0.redo = \"\"\r\n"),
              std::string::npos)
        << first;
    EXPECT_NE(first.find("ethernet0.connectionType = \"nat\"\r\nethernet0.addressType = \"generated\"\r\nethernet0.pciSlotNumber = \"33\"\r\n"), std::string::npos)
        << first;
    EXPECT_NE(first.find("sharedFolder0.expiration = \"never\"\r\nsharedFolder0.foo = \"x\"\r\n"), std::string::npos) << first;
    EXPECT_TRUE(hasLine(first.substr(first.find("##### other params")), "uuid.bios = \"56 4d\""));
    EXPECT_EQ(test::resaved(first, 1), first);
}
