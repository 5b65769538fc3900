// What a re-save keeps: format numbers, the ".encoding" line, escapes, the clustering lines,
// values the editor cannot use, lines under a device's prefix, line breaks, processor counts.
#include "core/config/VmConfiguration.h"
#include "VmxTestSupport.h"

using namespace arden;
using test::hasLine;
using test::keyLines;
using test::Lines;
using test::parseIn;
using test::resaved;

namespace {

bool noticed(const LoadResult& r, int line, std::string_view words) {
    return std::any_of(r.notices.begin(), r.notices.end(), [&](const LoadNotice& n) { return n.line == line && n.text.find(words) != std::string::npos; });
}

}  // namespace

TEST(ResaveFormatNumbers, KeptUntilTheTargetChanges) {
    LoadResult r = parseIn("config.version = \"8\"\nvirtualHW.version = \"25\"\nmemsize = \"4096\"\n");
    EXPECT_EQ(formatNote(r.config), "written for virtual hardware version 25; saving keeps it");
    EXPECT_NE(writeVmxText(r.config).find("# Platform = Workstation\r\n# Version = 17.5x\r\nconfig.version = \"8\"\r\nvirtualHW.version = \"25\"\r\n"),
              std::string::npos);
    LoadResult old = parseIn("config.version = \"7\"\nvirtualHW.version = \"3\"\n");
    EXPECT_EQ(formatNote(old.config), "") << "older than the newest target: nothing to say";
    EXPECT_TRUE(hasLine(writeVmxText(old.config), "virtualHW.version = \"3\""));
    r.config.retarget(kGsxServer, 1);  // the user picks GSX Server 3.x
    EXPECT_NE(writeVmxText(r.config).find("config.version = \"7\"\r\nvirtualHW.version = \"3\"\r\n"), std::string::npos);
    // A platform without a version takes its latest, and keeps it.
    std::string once = resaved("# Platform = GSX Server\nmemsize = \"64\"\n", 1);
    EXPECT_NE(once.find("# Platform = GSX Server\r\n# Version = 3.x\r\n"), std::string::npos);
    EXPECT_EQ(resaved(once, 1), once);
}

TEST(ResaveEncoding, FirstLineBeforeTheValuesThatNeedIt) {
    std::string once = resaved("displayName = \"Win\"\nsharedFolder0.present = \"TRUE\"\n"
                               "sharedFolder0.hostPath = \"D:\\\\\xE5\x85\xB1\xE4\xBA\xAB\"\n.encoding = \"GBK\"\n", 1);
    EXPECT_TRUE(once.starts_with(".encoding = \"GBK\"\r\n"));
    EXPECT_EQ(keyLines(once, ".encoding").size(), 1u);
    EXPECT_EQ(resaved(once, 1), once);
}

TEST(ResaveEscapes, TextsSurviveFiveSaves) {
    for (const std::string text : {"say \"hi\"", "a|b", "pipe then hex |7C and |22", "tab\there", "end|",
                                   "first line\r\nsecond line", "bell \x07 and del \x7F", "two\nlines"}) {
        VmConfiguration c = VmConfiguration::newMachine(text, "/vms/x/", "New VM", 1);
        c.identity.notes = text;
        LoadResult back = parseIn(resaved(writeVmxText(c), 5));
        EXPECT_EQ(back.config.identity.notes, text);
        EXPECT_EQ(back.config.identity.displayName, text);
        EXPECT_TRUE(back.config.keptLines.empty()) << "a line break never starts a line of its own";
    }
    VmConfiguration c = VmConfiguration::newMachine("two\nlines", "/vms/x/", "New VM", 1);
    c.identity.notes = "say \"hi\" | ok";
    c.devices.findByNumber(DeviceType::Floppy, 0)->settings.set(".fileName", "/img/a\rb.flp");
    const std::string text = writeVmxText(c);
    for (const char* line : {"annotation = \"say |22hi|22 |7C ok\"", "displayName = \"two|0Alines\"", "floppy0.fileName = \"/img/a|0Db.flp\""})
        EXPECT_TRUE(hasLine(text, line)) << line;
    EXPECT_EQ(parseIn("annotation = \"|22a|7cb|0d|0Ac\"\n").config.identity.notes, "\"a|b\r\nc");
}

TEST(ResaveClustering, FixedValuesWinOverTheDisksOwn) {
    LoadResult r = parseIn("scsi0.present = \"TRUE\"\nscsi0:0.present = \"TRUE\"\nscsi0:0.fileName = \"disk.vmdk\"\n"
                           "scsi0:0.mode = \"persistent\"\nscsi0:0.deviceType = \"scsi-hardDisk\"\n");
    r.config.advanced.clusterEnabled = true;
    const std::string text = writeVmxText(r.config);
    for (const std::string line : {"disk.locking = \"FALSE\"", "diskLib.dataCacheMaxSize = \"0\"", "diskLib.dataCacheMaxReadAheadSize = \"0\"",
                                   "diskLib.dataCacheMinReadAheadSize = \"0\"", "diskLib.dataCachePageSize = \"4096\"",
                                   "diskLib.maxUnsyncedWrites = \"0\"", "scsi0:0.sharedBus = \"virtual\"",
                                   "scsi0:0.mode = \"independent-persistent\"", "scsi0:0.deviceType = \"plainDisk\"",
                                   "scsi0:1.sharedBus = \"virtual\"", "scsi0:1.mode = \"independent-persistent\"",
                                   "scsi0:1.deviceType = \"plainDisk\""})
        EXPECT_EQ(keyLines(text, line.substr(0, line.find(" ="))), Lines{line});
    EXPECT_EQ(resaved(text, 1), text);
    EXPECT_EQ(parseIn(text).config.devices.count(DeviceType::HardDisk), 1) << "no device appears from the fixed lines";
    r.config.advanced.clusterEnabled = false;
    const std::string off = writeVmxText(r.config);
    EXPECT_TRUE(hasLine(off, "scsi0:0.mode = \"persistent\"")) << "the disk has its own values back";
    EXPECT_EQ(off.find("diskLib"), std::string::npos);
    // In a later session too: the clustered file keeps the disk's own values in comment lines.
    EXPECT_TRUE(hasLine(text, "# scsi0:0.mode = \"persistent\" (the disk's own, while clustering is off)"));
    LoadResult later = parseIn(text);
    later.config.advanced.clusterEnabled = false;
    const std::string offLater = writeVmxText(later.config);
    EXPECT_TRUE(hasLine(offLater, "scsi0:0.mode = \"persistent\""));
    EXPECT_TRUE(hasLine(offLater, "scsi0:0.deviceType = \"scsi-hardDisk\""));
    EXPECT_EQ(offLater.find("the disk's own"), std::string::npos);
}

TEST(ResaveUnusableValues, KeptAsWrittenWithANotice) {
    for (const std::string line : {"memsize = \" 256 \"", "debug = \"maybe\"", "powerType.powerOff = \"off\"", "priority.ungrabbed = \"low\"",
                                   "MemTrimRate = \"10\"", "sharedFolder.maxNum = \"many\"", "numvcpus = \"0\"", "numvcpus = \"160\""}) {
        LoadResult r = parseIn("displayName = \"u\"\n" + line + "\n");
        EXPECT_TRUE(noticed(r, 2, "the line is kept as written")) << line;
        const std::string text = writeVmxText(r.config);
        EXPECT_EQ(keyLines(text, line.substr(0, line.find(" ="))), Lines{line}) << "the editor's own key is not written beside it";
        EXPECT_EQ(resaved(text, 2), text);
    }
    // Two processors on a version that offers one are kept as written too.
    LoadResult ws50 = parseIn("# Platform = Workstation\n# Version = 5.0x\nnumvcpus = \"2\"\n");
    EXPECT_EQ(ws50.config.devices.count(DeviceType::Cpu), 1);
    EXPECT_EQ(keyLines(writeVmxText(ws50.config), "numvcpus"), Lines{"numvcpus = \"2\""});
    EXPECT_EQ(keyLines(resaved("numvcpus = \"2\"\n", 1), "numvcpus"), Lines{"numvcpus =\"2\""});

    LoadResult lots = parseIn("memsize = \"lots\"\n");
    lots.config.devices.find(DeviceType::Memory, lots.config.devices.devices(DeviceType::Memory)[0].identifier)->settings.setNumber("memsize", 512);
    EXPECT_EQ(keyLines(writeVmxText(lots.config), "memsize"), Lines{"memsize = \"512\""}) << "the user's own change replaces the kept line";
}

TEST(ResaveUnusableValues, MissingKeysAreNotGainedAndTheLastLineCounts) {
    std::string text = resaved("memsize = \"64\"\n", 1);
    EXPECT_EQ(keyLines(text, "guestOS").size() + keyLines(text, "displayName").size() + keyLines(text, "numvcpus").size(), 0u);
    EXPECT_EQ(keyLines(resaved("memsize = \"128\"\nmemsize = \"x\"\n", 1), "memsize"), Lines{"memsize = \"x\""});
    EXPECT_EQ(keyLines(resaved("memsize = \"x\"\nmemsize = \"128\"\n", 1), "memsize"), Lines{"memsize = \"128\""});
    EXPECT_EQ(keyLines(resaved("ethernet0.present = \"TRUE\"\nethernet0.virtualDev = \"e1000\"\nethernet0.virtualDev = \"vmxnet3\"\n", 1),
                       "ethernet0.virtualDev"),
              Lines{"ethernet0.virtualDev = \"vmxnet3\""});
}

TEST(ResaveDeviceLines, FollowRenumberingAndGoWithTheDevice) {
    LoadResult r = parseIn("ethernet0.present = \"TRUE\"\nethernet0.pvnID = \"aa\"\nethernet1.present = \"TRUE\"\nethernet1.pvnID = \"bb\"\n"
                           "sharedFolder1.present = \"TRUE\"\nsharedFolder1.hostPath = \"/srv\"\nsharedFolder1.followSymlinks = \"TRUE\"\n");
    VmConfiguration& c = r.config;
    std::string text = writeVmxText(c);
    EXPECT_TRUE(hasLine(text, "sharedFolder0.followSymlinks = \"TRUE\"")) << "the folder is numbered from 0";
    EXPECT_TRUE(keyLines(text, "sharedFolder1.followSymlinks").empty());
    c.devices.remove(DeviceType::Network, c.devices.findByNumber(DeviceType::Network, 0)->identifier);
    c.devices.findByNumber(DeviceType::Network, 1)->number = 0;
    c.sharedFolders.folders.clear();
    text = writeVmxText(c);
    EXPECT_EQ(keyLines(text, "ethernet0.pvnID"), Lines{"ethernet0.pvnID = \"bb\""});
    EXPECT_EQ(text.find("\"aa\""), std::string::npos) << "a removed adapter takes its lines along";
    EXPECT_EQ(text.find("followSymlinks"), std::string::npos);
}

TEST(ResaveLineBreaks, CarriageReturnOnlyFilesAreReadLineByLine) {
    LoadResult r = parseIn("displayName = \"cr\"\rmemsize = \"64\"\rguestOS = \"otherlinux\"\r");
    EXPECT_EQ(r.config.identity.displayName + " " + r.config.product.guestId, "cr otherlinux");
    EXPECT_TRUE(noticed(r, 1, "carriage return alone"));
    EXPECT_TRUE(r.config.keptLines.empty());
}
