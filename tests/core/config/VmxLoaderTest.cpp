#include "core/config/VmxLoader.h"

#include "core/config/VmxWriter.h"

#include "TestSupport.h"
#include "VmxTestSupport.h"

using namespace arden;
using test::hasLine;

namespace {

LoadResult parse(const std::string& text) { return parseVmxText(text, "/vms/x/", "x.vmx", "/vms/x/x.vmx"); }

const Device* onNode(const VmConfiguration& c, const char* bus, int ctl, int node) {
    return c.devices.deviceOnNode(bus, ctl, node);
}

}  // namespace

TEST(VmxLoader, SplitsKeysAndValuesAsTheProductDoes) {
    auto r = parse("displayName = \"My \"quoted\" VM\"\n" "   GuestOS= \"winNetStandard\"  \r\n" "MEMSIZE=\"512\"\n"
                   "numvcpus =\"2\"\n" "paevm = \"TRUE\"\n" "annotation = \"one|0D|0Atwo|0Athree\"\n"
                   "workingDir = \"..\\work\"\n");
    ASSERT_TRUE(r.ok);
    const VmConfiguration& c = r.config;
    EXPECT_EQ(std::tuple(c.identity.displayName, c.identity.notes, c.identity.workingDir),
              std::tuple("My quoted VM", "one\r\ntwo\nthree", "..\\work"));
    EXPECT_EQ(std::tuple(c.product.guestId, c.product.guestFamily, c.product.guestVersion), std::tuple("winNetStandard", kFamilyWindows, 12));
    EXPECT_EQ(c.devices.count(DeviceType::Cpu), 2);
    EXPECT_TRUE(c.devices.devices(DeviceType::Cpu)[0].settings.flag("pae", false));
    EXPECT_EQ(c.devices.devices(DeviceType::Memory)[0].settings.number("memsize"), 512);
    EXPECT_TRUE(c.keptLines.empty());
}

TEST(VmxLoader, PlatformAndVersionComments) {
    auto gsx = parse("# Platform = GSX Server\n# Version = 3.x\n");
    EXPECT_EQ((std::pair<int, int>(gsx.config.product.platform, gsx.config.product.version)), (std::pair<int, int>(kGsxServer, 1)));
    auto ws = parse("# Platform = Workstation\n# Version = 3.x\n");
    EXPECT_EQ((std::pair<int, int>(ws.config.product.platform, ws.config.product.version)), (std::pair<int, int>(kWorkstation, 0)));
    auto odd = parse("# Platform = Player\n# Version = 4.5x\n");
    EXPECT_EQ(odd.config.product.platform, kPlayer);
    EXPECT_EQ(odd.config.keptLines, std::vector<std::string>{"# Version = 4.5x"});
}

TEST(VmxLoader, DeviceKinds) {
    auto r = parse("ide0:0.fileName = \"disk.vmdk\"\n"
                   "ide0:1.deviceType = \"ata-hardDisk\"\nide0:1.fileName = \"data.VMDK\"\n"
                   "ide1:0.deviceType = \"cdrom-image\"\nide1:0.fileName = \"x.iso\"\n"
                   "ide1:1.deviceType = \"scsi-passthru\"\nide1:1.fileName = \"/dev/sg0\"\n"
                   "scsi0:2.deviceType = \"scsi-passthru\"\nscsi0:2.fileName = \"/dev/sg1\"\n"
                   "scsi0:3.deviceType = \"atapi-cdrom\"\n" "scsi0:4.fileName = \"boot.iso\"\n"
                   "scsi0:5.deviceType = \"rawDisk\"\n" "scsi0:6.redo = \"\"\n");
    ASSERT_TRUE(r.ok);
    const VmConfiguration& c = r.config;
    EXPECT_EQ(onNode(c, "IDE", 0, 0)->type, DeviceType::HardDisk);
    EXPECT_EQ(onNode(c, "IDE", 0, 1)->type, DeviceType::HardDisk);
    EXPECT_EQ(onNode(c, "IDE", 0, 1)->settings.text(".deviceType"), "ata-hardDisk") << "kept as read";
    EXPECT_EQ(onNode(c, "IDE", 1, 0)->type, DeviceType::CdRom);
    EXPECT_EQ(onNode(c, "IDE", 1, 1)->type, DeviceType::HardDisk) << "pass-through is SCSI only";
    EXPECT_EQ(onNode(c, "SCSI", 0, 2)->type, DeviceType::GenericScsi);
    EXPECT_EQ(onNode(c, "SCSI", 0, 3)->type, DeviceType::CdRom);
    EXPECT_EQ(onNode(c, "SCSI", 0, 4)->type, DeviceType::CdRom);
    EXPECT_EQ(onNode(c, "SCSI", 0, 5)->type, DeviceType::HardDisk);
    EXPECT_EQ(onNode(c, "SCSI", 0, 6), nullptr) << "a sub-key the editor does not manage creates no device";
    EXPECT_EQ(c.keptLines, std::vector<std::string>{"scsi0:6.redo = \"\""});
}

// Files of older products: their keys and device kinds, and prefixes in any letter case.
TEST(VmxLoader, OlderKeysAndDeviceKindsInAnyLetterCase) {
    auto r = parse("guestOS = \"whistler\"\n" "isolation.tools.copy.enable = \"FALSE\"\n" "MKS.enable3d = \"TRUE\"\n"
                   "IDE1:0.deviceType = \"cdrom-raw\"\n" "ide1:0.FILENAME = \"/dev/hdc\"\n"
                   "Scsi0:1.fileName = \"auto detect\"\n" "SharedFolder0.Present = \"TRUE\"\n"
                   "sharedfolder0.enabled = \"FALSE\"\n" "sharedFolder0.guestName = \"old\"\n");
    ASSERT_TRUE(r.ok);
    const VmConfiguration& c = r.config;
    EXPECT_EQ(guestVersions(c.product.guestFamily)[static_cast<std::size_t>(c.product.guestVersion)].identifier, "winXPHome");
    EXPECT_FALSE(c.isolation.copyAllowed);
    ASSERT_EQ(c.devices.count(DeviceType::Display), 1);
    EXPECT_TRUE(c.devices.devices(DeviceType::Display)[0].settings.flag("mks.enable3d", false));
    EXPECT_EQ(onNode(c, "IDE", 1, 0)->type, DeviceType::CdRom);
    EXPECT_EQ(onNode(c, "IDE", 1, 0)->settings.text(".fileName"), "/dev/hdc");
    EXPECT_EQ(onNode(c, "SCSI", 0, 1)->type, DeviceType::CdRom) << "the drive selector without a type";
    ASSERT_EQ(c.sharedFolders.folders.size(), 1u);
    EXPECT_EQ(std::tuple(c.sharedFolders.folders[0].name, c.sharedFolders.folders[0].present, c.sharedFolders.folders[0].enabled),
              std::tuple("old", true, false));
    EXPECT_TRUE(c.keptLines.empty()) << c.keptLines.size();
}

TEST(VmxLoader, OptionKeysAndUnmappedValues) {
    auto r = parse("isolation.tools.paste.enabled = \"FALSE\"\n" "isolation.tools.copy.disable = \"true\"\n"
                   "snapshot.action = \"AUTOCOMMIT\"\n" "snapshot.disabled = \"TRUE\"\n" "priority.ungrabbed = \"idle\"\n"
                   "priority.grabbed = \"superhigh\"\n" "MemTrimRate = \"0\"\n" "disk.locking = \"false\"\n"
                   "gui.fullScreenAtPowerOn = \"TRUE\"\n" "gui.restricted = \"TRUE\"\n"
                   "ethernet0.virtualDev = \"ne2000\"\n" "ethernet0.present = \"TRUE\"\n" "sharedFolder.maxNum = \"0\"\n"
                   "sharedFolder0.hostPath = \"/srv\"\n" "sharedFolder0.writeAccess = \"FALSE\"\n"
                   "sharedFolder0.expiration = \"session\"\n");
    ASSERT_TRUE(r.ok);
    const VmConfiguration& c = r.config;
    EXPECT_EQ(std::tuple(c.isolation.pasteAllowed, c.isolation.copyAllowed, c.isolation.dragAndDropAllowed), std::tuple(false, false, true));
    EXPECT_EQ(std::pair(c.snapshots.action, c.snapshots.allowed), std::pair(2, false));
    EXPECT_EQ(c.advanced.ungrabbedPriority, 0);
    EXPECT_EQ(c.advanced.grabbedPriority, 0) << "an unknown word leaves the new-machine value";
    EXPECT_EQ(c.heldKeys.count("priority.grabbed"), 1u) << "and the file's own line stands in for it";
    EXPECT_TRUE(c.advanced.memPageTrim && c.advanced.clusterEnabled && c.power.fullScreenAfterPowerOn);
    ASSERT_EQ(c.sharedFolders.folders.size(), 1u);
    EXPECT_TRUE(c.sharedFolders.folders[0].readOnly && c.sharedFolders.folders[0].disableAfterSession);
    const Device* nic = c.devices.findByNumber(DeviceType::Network, 0);
    ASSERT_TRUE(nic && !nic->settings.has(".virtualDev"));
    // Lines whose values the editor cannot show are kept and written back as they stand.
    EXPECT_EQ(c.keptLines, (std::vector<std::string>{"priority.grabbed = \"superhigh\"", "gui.restricted = \"TRUE\"",
                                                     "sharedFolder.maxNum = \"0\""}));
    EXPECT_EQ(nic->keptLines, (std::vector<KeptKeyLine>{{".virtualDev", " = \"ne2000\""}}));
    std::string text = writeVmxText(c);
    EXPECT_EQ(test::keyLines(text, "priority.grabbed"), test::Lines{"priority.grabbed = \"superhigh\""});
    EXPECT_TRUE(hasLine(text, "ethernet0.virtualDev = \"ne2000\"") && hasLine(text, "gui.restricted = \"TRUE\""));
}

TEST(VmxLoader, NoticesForOddLinesAndRefusalsForNonText) {
    auto r = parse("\xEF\xBB\xBFmemsize = \"64\"\nTHIS IS NEW INFORMATION.\nfoo = \"unbalanced\n= \"nokey\"\n");
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(r.config.devices.devices(DeviceType::Memory)[0].settings.number("memsize"), 64) << "a byte-order mark is not part of the first key";
    ASSERT_EQ(r.notices.size(), 3u);
    EXPECT_EQ(std::pair(r.notices[0].line, r.notices[1].line), std::pair(2, 3));
    EXPECT_NE(r.notices[1].text.find("unbalanced"), std::string::npos);
    EXPECT_EQ(r.config.keptLines[0], "THIS IS NEW INFORMATION.");

    auto binary = parse(std::string("memsize = \"64\"\n\x7f" "ELF\x02\x01\x00\x00", 24));
    ASSERT_TRUE(!binary.ok && binary.error);
    EXPECT_NE(binary.error->text[0].literal.find("/vms/x/x.vmx"), std::string::npos);
    EXPECT_NE(binary.error->text[0].literal.find("binary"), std::string::npos);

    auto huge = parse("annotation = \"" + std::string(10 * 1024 * 1024, 'a') + "\"\n");
    EXPECT_FALSE(huge.ok);
    EXPECT_NE(huge.error->text[0].literal.find("line 1"), std::string::npos);

    // Bytes of another code page in a file without ".encoding" are read as the Western code
    // page, and kept exactly while not edited.
    auto korean = parse("displayName = \"\xBD\xC7\xC7\xE0\"\nunknown.key = \"\xE5\xA4?\"\n");
    EXPECT_EQ(korean.config.identity.displayName, "\xC2\xBD\xC3\x87\xC3\x87\xC3\xA0");
    EXPECT_EQ(korean.config.keptLines[0], "unknown.key = \"\xE5\xA4?\"");
    EXPECT_NE(writeVmxText(korean.config).find("\r\ndisplayName = \"\xBD\xC7\xC7\xE0\"\r\n"), std::string::npos);
}

// A file of junk lines lists its first hundred notices and counts the rest in one more.
TEST(VmxLoader, NoticesStopAtAHundredAndCountTheRest) {
    std::string junk = "memsize = \"64\"\n";
    for (int i = 0; i < 150; ++i) junk += "no equals sign here\n";
    auto r = parse(junk);
    ASSERT_TRUE(r.ok);
    ASSERT_EQ(r.notices.size(), 101u);
    EXPECT_EQ(r.notices[99].line, 101);
    EXPECT_EQ(r.notices[100].line, 102);
    EXPECT_EQ(r.notices[100].text, "50 more notices from this line on are not listed");
    EXPECT_EQ(r.config.keptLines.size(), 150u) << "every line is still kept";
}


// Lines of a device the editor reads but would not write go back with the device, in the
// order the file has them.
TEST(VmxLoader, ADevicesUnwrittenLinesKeepTheFilesOrder) {
    const std::string text = arden::test::resaved("ethernet0.present = \"TRUE\"\nethernet0.connectionType = \"bridged\"\n"
                                     "ethernet0.vnet = \"VMnet2\"\nethernet0.addressType = \"static\"\n"
                                     "ethernet0.address = \"00:50:56:00:00:01\"\n"
                                     "ethernet0.generatedAddress = \"00:0c:29:aa:bb:cc\"\n", 1);
    EXPECT_NE(text.find("ethernet0.vnet = \"VMnet2\"\r\nethernet0.generatedAddress = \"00:0c:29:aa:bb:cc\"\r\n"),
              std::string::npos) << text;
}

// Lines of devices the writer cannot place where it read them: a second save writes what the
// first wrote, and nothing the file said is lost or renamed.
TEST(VmxLoader, OddDeviceLinesComeBackTheSameOnASecondSave) {
    struct Case {
        std::string text;
        std::string line;  // a line both saves hold
    };
    const Case cases[] = {
        // a device with no key of its own left, beside one the file never declares
        {"scsi0.present=TRUE\nide2:0.autodetect=TRUe\nscsi0.present=\n", "ide2:0.autodetect=TRUe"},
        // a device number with a leading zero names no device
        {"scsi00.virtualDev=lsilogic\nscsi0.virtualDev=\n", "scsi00.virtualDev=lsilogic"},
        // folder 4 is written as folder 0: its unreadable path goes with it, as read
        {".encoding = \"UTF-8\"\nsharedFolder4.present = \"TRUE\"\nsharedFolder4.hostPath = \"/h\xe5\"\n"
         "sharedFolder4.guestName = \"g\"\n",
         "sharedFolder0.hostPath = \"/h\xe5\""},
        // a line of a folder number no folder has goes with the folder written under it
        {"sharedFolder4.hostPath=\rsharedFolder0=\n", "sharedFolder0="},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const std::string first = test::resaved(c.text, 1);
        EXPECT_EQ(test::resaved(first, 1), first);
        EXPECT_TRUE(hasLine(first, c.line)) << first;
    }
}
