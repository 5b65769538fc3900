// What an undo step is called and where it is shown: the edits the editor's twenty-step undo
// test does not name (removals, device modes, a product change alone, keys it keeps), the device
// a node choice moved rather than the one moved aside, typing marked as typing; and what a save
// would change in the file on disk, and a file another program wrote.
#include <filesystem>

#include "VmxTestSupport.h"
#include "core/config/ChangeNames.h"
#include "core/config/SavePreview.h"
#include "core/hardware/NodeAssignment.h"

namespace arden::test {
namespace {

const char* const kMachine =
    "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\ndisplayName = \"Named\"\r\nguestOS = \"winxppro\"\r\n"
    "memsize = \"256\"\r\nide0:0.present = \"TRUE\"\r\nide0:0.fileName = \"a.vmdk\"\r\nide0:1.present = \"TRUE\"\r\n"
    "ide0:1.fileName = \"b.vmdk\"\r\nide1:0.present = \"TRUE\"\r\nide1:0.fileName = \"auto detect\"\r\n"
    "ide1:0.deviceType = \"cdrom-raw\"\r\nsharedFolder.maxNum = \"1\"\r\nsharedFolder0.present = \"TRUE\"\r\n"
    "sharedFolder0.hostPath = \"/srv\"\r\nsharedFolder0.guestName = \"srv\"\r\n";

Device& first(VmConfiguration& c, DeviceType type, int nth = 0) {
    return *c.devices.find(type, c.devices.devices(type)[static_cast<std::size_t>(nth)].identifier);
}

// The change's name in English, "-" when nothing changed.
std::string named(const VmConfiguration& before, const VmConfiguration& after) {
    auto change = describeChange(before, after);
    return change ? resolveText(change->name, 0) : "-";
}

TEST(ChangeNames, EachEditIsNamedAsTheMenuShowsIt) {
    const VmConfiguration opened = parseIn(kMachine).config;
    using Edit = std::function<void(VmConfiguration&)>;
    const std::pair<Edit, std::string> cases[] = {
        {[](VmConfiguration&) {}, "-"},
        {[](VmConfiguration& c) { c.devices.remove(DeviceType::HardDisk, first(c, DeviceType::HardDisk, 1).identifier); },
         "Remove Hard Disk 2"},
        {[](VmConfiguration& c) { first(c, DeviceType::HardDisk).settings.set(".mode", "persistent"); },
         "Hard Disk 1 IDE 0:0, a.vmdk (persistent)"},
        {[](VmConfiguration& c) { first(c, DeviceType::HardDisk).settings.set(".writeThrough", "TRUE"); }, "Hard Disk 1"},
        {[](VmConfiguration& c) { c.snapshots.action = 3; }, "When Powering Off Ask me"},
        {[](VmConfiguration& c) { c.power.runToolsBeforeSuspend = true; }, "Run Vmware Tools scripts: Before suspending"},
        {[](VmConfiguration& c) { c.identity.displayName = "Web"; }, "Display Name Web"},
        {[](VmConfiguration& c) { c.retarget(kGsxServer, 1); }, "Target Platform GSX Server 3.x"},
        {[](VmConfiguration& c) { c.sharedFolders.folders.clear(); }, "Remove srv"},
        {[](VmConfiguration& c) { c.sharedFolders.folders[0].readOnly = true; }, "Shared Folders srv"},
        {[](VmConfiguration& c) { c.heldKeys["x"] = "y"; }, "Virtual Machine Configuration"},
    };
    for (const auto& [edit, name] : cases) {
        VmConfiguration after = opened;
        edit(after);
        EXPECT_EQ(named(opened, after), name);
    }
    // The other language's words, the device's own fixed English.
    VmConfiguration after = opened;
    after.devices.remove(DeviceType::CdRom, first(after, DeviceType::CdRom).identifier);
    EXPECT_EQ(resolveText(describeChange(opened, after)->name, 500), GetText(706) + " CD-ROM 1");
}

TEST(ChangeNames, TheStepShowsWhereTheChangeIsAndMarksTyping) {
    const VmConfiguration opened = parseIn(kMachine).config;
    VmConfiguration typed = opened;
    typed.identity.displayName = "Name";
    auto change = describeChange(opened, typed);
    EXPECT_EQ(change->typedField, "displayName");
    EXPECT_EQ(change->optionPage, 0);
    EXPECT_FALSE(change->onHardware);

    VmConfiguration logged = opened;
    logged.advanced.logFolder = "/var/log";
    EXPECT_EQ(describeChange(opened, logged)->typedField, "logFolder");
    EXPECT_EQ(describeChange(opened, logged)->optionPage, 5);

    VmConfiguration clicked = opened;
    clicked.isolation.copyAllowed = false;
    EXPECT_EQ(describeChange(opened, clicked)->typedField, "") << "a click is a step of its own";
    EXPECT_EQ(describeChange(opened, clicked)->optionPage, 4);

    // A node taken from another device: the step is the device the user moved, on its new node.
    VmConfiguration moved = opened;
    const std::string cd = first(moved, DeviceType::CdRom).identifier;
    NodeChoice choice = chooseNode(moved.devices, DeviceType::CdRom, cd, "IDE 0:1");
    ASSERT_TRUE(choice.changed && choice.movedType);
    change = describeChange(opened, moved);
    EXPECT_EQ(resolveText(change->name, 0), "CD-ROM 1 IDE 0:1, auto detect");
    EXPECT_TRUE(change->onHardware);
    EXPECT_EQ(change->deviceType, DeviceType::CdRom);
    EXPECT_EQ(change->deviceIdentifier, cd);
}

TEST(SavePreview, ShowsWhatASaveWouldChangeAndWritesNothing) {
    ScratchDir dir;
    const auto file = dir / "x.vmx";
    writeBytes(file, kMachine);
    LoadResult opened = loadVmxFile(file);
    ASSERT_TRUE(opened.ok);
    VmConfiguration c = opened.config;
    const std::string resave = writeVmxText(c);
    first(c, DeviceType::Memory).settings.setNumber("memsize", 512);

    SavePreview preview = previewSave(c);
    EXPECT_EQ(preview.path, file.string());
    EXPECT_TRUE(preview.fileExists);
    EXPECT_EQ(readBytes(file), kMachine) << "nothing written";
    EXPECT_EQ(preview.written, writeVmxText(c));
    EXPECT_NE(preview.diff.find("\n+memsize = \"512\"\r\n"), std::string::npos) << preview.diff;

    writeBytes(file, resave);
    first(c, DeviceType::Memory).settings.setNumber("memsize", 256);
    EXPECT_EQ(previewSave(c).diff, "") << "the file already holds what a save writes";

    std::filesystem::remove(file);
    EXPECT_FALSE(previewSave(c).fileExists);

    writeBytes(file, ".encoding = \"windows-1252\"\r\nmemsize = \"64\"\r\n");
    EXPECT_EQ(previewSave(loadVmxFile(file).config).encoding, "windows-1252");
}

TEST(SavePreview, AFileWrittenByAnotherProgramIsNoticed) {
    ScratchDir dir;
    const std::string file = (dir / "x.vmx").string();
    writeBytes(file, kMachine);
    FileBaseline baseline;
    EXPECT_FALSE(baseline.changedOnDisk(file)) << "nothing remembered yet";
    baseline.take(file);
    EXPECT_FALSE(baseline.changedOnDisk(file));
    writeBytes(file, std::string(kMachine) + "# another program\r\n");
    EXPECT_TRUE(baseline.changedOnDisk(file));
    EXPECT_FALSE(baseline.changedOnDisk((dir / "other.vmx").string())) << "another path is another file";
    writeBytes(file, kMachine);
    EXPECT_FALSE(baseline.changedOnDisk(file)) << "the same bytes again are no change";
    std::filesystem::remove(file);
    EXPECT_TRUE(baseline.changedOnDisk(file)) << "removed";

    baseline.take(file, "written\r\n");  // what a save wrote
    writeBytes(file, "written\r\n");
    EXPECT_FALSE(baseline.changedOnDisk(file));
    baseline.take((dir / "new.vmx").string());  // a new machine: not there yet
    EXPECT_FALSE(baseline.changedOnDisk((dir / "new.vmx").string()));
    writeBytes(dir / "new.vmx", "x = \"1\"\r\n");
    EXPECT_TRUE(baseline.changedOnDisk((dir / "new.vmx").string())) << "made by another program meanwhile";
}

}  // namespace
}  // namespace arden::test
