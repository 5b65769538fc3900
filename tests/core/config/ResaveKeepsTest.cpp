// What a re-save keeps, grouped by the promise each group guards: format numbers, the
// ".encoding" line, escapes, the clustering lines, values the editor cannot use, lines under a
// device's prefix, folder comparison, line breaks, processor counts.
#include "core/config/VmConfiguration.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "core/support/TextUtil.h"
#include "TestSupport.h"
#include "VmxTestSupport.h"

using namespace arden;
using test::hasLine;
using test::parseIn;
using test::resaved;

namespace {

// How many lines of `text` set `key` (in any letter case).
int linesWithKey(const std::string& text, std::string_view key) {
    int n = 0;
    for (const std::string& line : test::linesOf(text)) {
        std::size_t eq = line.find('=');
        if (eq != std::string::npos && equalsIgnoreCase(trimBlanks(std::string_view(line).substr(0, eq)), key)) ++n;
    }
    return n;
}

bool noticed(const LoadResult& r, int line, std::string_view words) {
    for (const LoadNotice& n : r.notices) {
        if (n.line == line && n.text.find(words) != std::string::npos) return true;
    }
    return false;
}

}  // namespace

// 1. Format numbers change only when the user changes the target.
TEST(ResaveFormatNumbers, KeptUntilTheTargetChanges) {
    const std::string modern = "config.version = \"8\"\nvirtualHW.version = \"19\"\nmemsize = \"4096\"\n";
    LoadResult r = parseIn(modern);
    EXPECT_EQ(formatNote(r.config), "written for virtual hardware version 19; saving keeps it");
    std::string once = writeVmxText(r.config);
    EXPECT_NE(once.find("# Platform = Workstation\r\n# Version = 5.5x\r\nconfig.version = \"8\"\r\nvirtualHW.version = \"19\"\r\n"),
              std::string::npos);

    LoadResult old = parseIn("config.version = \"7\"\nvirtualHW.version = \"3\"\n");
    EXPECT_EQ(formatNote(old.config), "") << "older than the newest target: nothing to say";
    EXPECT_TRUE(hasLine(writeVmxText(old.config), "virtualHW.version = \"3\""));

    r.config.retarget(kGsxServer, 1);  // the user picks GSX Server 3.x
    EXPECT_NE(writeVmxText(r.config).find("config.version = \"7\"\r\nvirtualHW.version = \"3\"\r\n"), std::string::npos);
    EXPECT_EQ(formatNote(r.config), "");
}

TEST(ResaveFormatNumbers, PlatformWithoutVersionTakesItsLatestAndStays) {
    std::string once = resaved("# Platform = GSX Server\nmemsize = \"64\"\n", 1);
    EXPECT_NE(once.find("# Platform = GSX Server\r\n# Version = 3.x\r\n"), std::string::npos);
    EXPECT_EQ(resaved(once, 1), once);
}

// 2. ".encoding" is the first line, with its value as read.
TEST(ResaveEncoding, FirstLineBeforeTheValuesThatNeedIt) {
    const std::string file = "displayName = \"Win\"\n"
                             "sharedFolder0.present = \"TRUE\"\n"
                             "sharedFolder0.hostPath = \"D:\\\\\xE5\x85\xB1\xE4\xBA\xAB\"\n"
                             ".encoding = \"GBK\"\n";
    std::string once = resaved(file, 1);
    EXPECT_EQ(once.substr(0, once.find("\r\n")), ".encoding = \"GBK\"");
    EXPECT_EQ(linesWithKey(once, ".encoding"), 1);
    EXPECT_LT(once.find(".encoding"), once.find("hostPath"));
    EXPECT_EQ(resaved(once, 1), once);
}

// 3. Escapes both ways: any text round-trips, however many saves.
TEST(ResaveEscapes, TextsSurviveFiveSaves) {
    const std::string texts[] = {"say \"hi\"", "a|b", "pipe then hex |7C and |22", "tab\there", "end|",
                                 "first line\r\nsecond line", "bell \x07 and del \x7F"};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        VmConfiguration c = VmConfiguration::newMachine("M", "/vms/x/", "New VM", 1);
        c.identity.notes = text;
        c.identity.displayName = text;
        std::string written = resaved(writeVmxText(c), 5);
        LoadResult back = parseIn(written);
        EXPECT_EQ(back.config.identity.notes, text);
        EXPECT_EQ(back.config.identity.displayName, text);
    }
    VmConfiguration c = VmConfiguration::newMachine("M", "/vms/x/", "New VM", 1);
    c.identity.notes = "say \"hi\" | ok";
    EXPECT_TRUE(hasLine(writeVmxText(c), "annotation = \"say |22hi|22 |7C ok\""));
    EXPECT_EQ(parseIn("annotation = \"|22a|7cb|0d|0Ac\"\n").config.identity.notes, "\"a|b\r\nc");
}

// 4. Clustering writes exactly the twelve fixed lines.
TEST(ResaveClustering, FixedValuesWinOverTheDisksOwn) {
    const std::string file = "scsi0.present = \"TRUE\"\n"
                             "scsi0:0.present = \"TRUE\"\n"
                             "scsi0:0.fileName = \"disk.vmdk\"\n"
                             "scsi0:0.mode = \"persistent\"\n"
                             "scsi0:0.deviceType = \"scsi-hardDisk\"\n";
    LoadResult r = parseIn(file);
    r.config.advanced.clusterEnabled = true;
    std::string text = writeVmxText(r.config);
    const char* fixed[] = {"disk.locking = \"FALSE\"", "diskLib.dataCacheMaxSize = \"0\"",
                           "diskLib.dataCacheMaxReadAheadSize = \"0\"", "diskLib.dataCacheMinReadAheadSize = \"0\"",
                           "diskLib.dataCachePageSize = \"4096\"", "diskLib.maxUnsyncedWrites = \"0\"",
                           "scsi0:0.sharedBus = \"virtual\"", "scsi0:0.mode = \"independent-persistent\"",
                           "scsi0:0.deviceType = \"plainDisk\"", "scsi0:1.sharedBus = \"virtual\"",
                           "scsi0:1.mode = \"independent-persistent\"", "scsi0:1.deviceType = \"plainDisk\""};
    for (const char* line : fixed) {
        EXPECT_TRUE(hasLine(text, line)) << line;
        EXPECT_EQ(linesWithKey(text, std::string_view(line).substr(0, std::string_view(line).find(" ="))), 1) << line;
    }
    EXPECT_EQ(resaved(text, 1), text);
    EXPECT_EQ(parseIn(text).config.devices.count(DeviceType::HardDisk), 1) << "no device appears from the fixed lines";
    // Turning clustering off gives the disk its own values back.
    r.config.advanced.clusterEnabled = false;
    EXPECT_TRUE(hasLine(writeVmxText(r.config), "scsi0:0.mode = \"persistent\""));
}

// 5. A value the editor cannot use is kept as it was written; missing keys are not gained.
TEST(ResaveUnusableValues, KeptAsWrittenWithANotice) {
    struct Case { std::string line; std::string key; };
    const Case cases[] = {
        {"memsize = \" 256 \"", "memsize"},
        {"debug = \"maybe\"", "debug"},
        {"powerType.powerOff = \"off\"", "powerType.powerOff"},
        {"priority.ungrabbed = \"low\"", "priority.ungrabbed"},
        {"MemTrimRate = \"10\"", "MemTrimRate"},
        {"sharedFolder.maxNum = \"many\"", "sharedFolder.maxNum"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        LoadResult r = parseIn("displayName = \"u\"\n" + c.line + "\n");
        EXPECT_TRUE(noticed(r, 2, "the line is kept as written"));
        std::string text = writeVmxText(r.config);
        EXPECT_TRUE(hasLine(text, c.line));
        EXPECT_EQ(linesWithKey(text, c.key), 1) << "the editor's own key is not written beside it";
        EXPECT_EQ(resaved(text, 2), text);
    }
}

TEST(ResaveUnusableValues, TheUsersOwnChangeReplacesTheKeptLine) {
    LoadResult r = parseIn("memsize = \"lots\"\n");
    r.config.devices.find(DeviceType::Memory, r.config.devices.devices(DeviceType::Memory)[0].identifier)->settings.setNumber("memsize", 512);
    std::string text = writeVmxText(r.config);
    EXPECT_TRUE(hasLine(text, "memsize = \"512\""));
    EXPECT_EQ(linesWithKey(text, "memsize"), 1);
}

TEST(ResaveUnusableValues, MissingKeysAreNotGainedAndTheLastLineCounts) {
    std::string text = resaved("memsize = \"64\"\n", 1);
    EXPECT_EQ(linesWithKey(text, "guestOS") + linesWithKey(text, "displayName") + linesWithKey(text, "numvcpus"), 0);

    std::string laterBad = resaved("memsize = \"128\"\nmemsize = \"x\"\n", 1);
    EXPECT_TRUE(hasLine(laterBad, "memsize = \"x\""));
    EXPECT_EQ(linesWithKey(laterBad, "memsize"), 1);
    std::string laterGood = resaved("memsize = \"x\"\nmemsize = \"128\"\n", 1);
    EXPECT_TRUE(hasLine(laterGood, "memsize = \"128\""));
    EXPECT_EQ(linesWithKey(laterGood, "memsize"), 1);
    std::string device = resaved("ethernet0.present = \"TRUE\"\nethernet0.virtualDev = \"e1000\"\n"
                                 "ethernet0.virtualDev = \"vmxnet3\"\n", 1);
    EXPECT_TRUE(hasLine(device, "ethernet0.virtualDev = \"vmxnet3\""));
    EXPECT_EQ(linesWithKey(device, "ethernet0.virtualDev"), 1);
}

// 6. Kept lines follow their device.
TEST(ResaveDeviceLines, FollowRenumberingAndGoWithTheDevice) {
    LoadResult r = parseIn("ethernet0.present = \"TRUE\"\nethernet0.pvnID = \"aa\"\n"
                           "ethernet1.present = \"TRUE\"\nethernet1.pvnID = \"bb\"\n"
                           "sharedFolder1.present = \"TRUE\"\nsharedFolder1.hostPath = \"/srv\"\n"
                           "sharedFolder1.followSymlinks = \"TRUE\"\n");
    VmConfiguration& c = r.config;
    std::string text = writeVmxText(c);
    EXPECT_TRUE(hasLine(text, "sharedFolder0.followSymlinks = \"TRUE\"")) << "the folder is numbered from 0";
    EXPECT_EQ(linesWithKey(text, "sharedFolder1.followSymlinks"), 0);

    std::string first = c.devices.findByNumber(DeviceType::Network, 0)->identifier;
    c.devices.remove(DeviceType::Network, first);
    c.devices.findByNumber(DeviceType::Network, 1)->number = 0;
    c.sharedFolders.folders.clear();
    text = writeVmxText(c);
    EXPECT_TRUE(hasLine(text, "ethernet0.pvnID = \"bb\""));
    EXPECT_EQ(text.find("\"aa\""), std::string::npos) << "a removed adapter takes its lines along";
    EXPECT_EQ(linesWithKey(text, "ethernet1.pvnID"), 0);
    EXPECT_EQ(text.find("followSymlinks"), std::string::npos);
}

// 10. Line breaks and control characters never start a new line; CR-only files are read by line.
TEST(ResaveLineBreaks, ADisplayNameWithALineBreakStaysOneLine) {
    VmConfiguration c = VmConfiguration::newMachine("two\nlines", "/vms/x/", "New VM", 1);
    c.devices.findByNumber(DeviceType::Floppy, 0)->settings.set(".fileName", "/img/a\rb.flp");
    std::string text = resaved(writeVmxText(c), 3);
    EXPECT_TRUE(hasLine(text, "displayName = \"two|0Alines\""));
    EXPECT_TRUE(hasLine(text, "floppy0.fileName = \"/img/a|0Db.flp\""));
    LoadResult back = parseIn(text);
    EXPECT_EQ(back.config.identity.displayName, "two\nlines");
    EXPECT_EQ(back.config.keptLines, std::vector<std::string>{}) << "nothing was injected";
}

TEST(ResaveLineBreaks, CarriageReturnOnlyFilesAreReadLineByLine) {
    LoadResult r = parseIn("displayName = \"cr\"\rmemsize = \"64\"\rguestOS = \"otherlinux\"\r");
    EXPECT_EQ(r.config.identity.displayName, "cr");
    EXPECT_EQ(r.config.product.guestId, "otherlinux");
    EXPECT_TRUE(noticed(r, 1, "carriage return alone"));
    EXPECT_TRUE(r.config.keptLines.empty());
}

// 11. Processors the lists cannot show are kept as written.
TEST(ResaveProcessors, CountsOutsideTheListAreKept) {
    struct Case { std::string file; int cpus; bool kept; };
    const Case cases[] = {
        {"numvcpus = \"0\"\n", 1, true},
        {"numvcpus = \"160\"\n", 1, true},
        {"numvcpus = \"2\"\n", 2, false},
        {"# Platform = Workstation\n# Version = 5.0x\nnumvcpus = \"2\"\n", 1, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        LoadResult r = parseIn(c.file);
        EXPECT_EQ(r.config.devices.count(DeviceType::Cpu), c.cpus);
        std::string text = writeVmxText(r.config);
        std::string line = c.file.substr(c.file.find("numvcpus"));
        line.pop_back();
        EXPECT_EQ(hasLine(text, line), c.kept);
        EXPECT_EQ(linesWithKey(text, "numvcpus"), 1);
        EXPECT_EQ(r.notices.empty(), !c.kept);
    }
}
