#include "core/config/SaveFlow.h"

#include "core/config/VmxLoader.h"
#include "core/shell/GetText.h"
#include "TestSupport.h"

using namespace arden;
using test::ScratchDir;

namespace {

VmConfiguration machineIn(const std::filesystem::path& folder) {
    return VmConfiguration::newMachine("Saved", folder.string() + "/", "New VM", 42);
}

// Adds enabled (or disabled) PCI devices until the machine has `n` of each kind asked for.
void addNics(VmConfiguration& c, int n, bool enabled = true) {
    for (int i = 0; i < n; ++i) c.devices.createDevice(DeviceType::Network).settings.setFlag(".present", enabled);
}

}  // namespace

TEST(SaveChecks, NameAndFolderAreRequired) {
    VmConfiguration c = machineIn("/tmp");
    c.identity.vmxFileName.clear();
    auto refusal = checkSave(c);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->kind, MessageKind::Warning);
    EXPECT_EQ(refusal->title, TextParts{TextPart::fromId(189)});
    EXPECT_EQ(refusal->text, TextParts{TextPart::fromId(190)});
    c.identity.vmxFileName = "a.vmx";
    c.identity.vmxFolder.clear();
    EXPECT_TRUE(checkSave(c));
}

TEST(SaveChecks, AtMostFiveEnabledPciDevices) {
    VmConfiguration c = machineIn("/tmp");  // one network adapter and one sound adapter
    EXPECT_EQ(pciDeviceTally(c), 3);
    addNics(c, 2);
    c.devices.createDevice(DeviceType::ScsiController);
    EXPECT_EQ(pciDeviceTally(c), 6);
    EXPECT_FALSE(checkSave(c)) << "five enabled devices are accepted";
    addNics(c, 3, false);
    EXPECT_FALSE(checkSave(c)) << "disabled devices do not count";
    c.devices.createDevice(DeviceType::ScsiController);
    auto refusal = checkSave(c);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->kind, MessageKind::Critical);
    EXPECT_EQ(resolveText(refusal->title, 0), "Too many virtual PCI Devices enabled");
    EXPECT_EQ(resolveText(refusal->text, 0),
              "You currently have 6 virtual PCI devices enabled (SCSI controllers, Network adapters, Sound adapters).  "
              "VMware will only accept 5.  Please go back and Disable some devices.");
}

TEST(SaveFlow, WritesCreatesOneFolderLevelAndNeverLosesTheOldFile) {
    ScratchDir dir;
    VmConfiguration c = machineIn(dir.path() / "new");
    SaveResult r = CreateVmxFile(c);
    ASSERT_TRUE(r.written) << (r.refusal ? resolveText(r.refusal->text, 0) : "");
    EXPECT_EQ(r.path, (dir.path() / "new" / "Saved.vmx").string());
    EXPECT_EQ(test::readBytes(r.path), r.text);

    VmConfiguration deep = machineIn(dir.path() / "a" / "b");
    SaveResult refused = CreateVmxFile(deep);
    EXPECT_FALSE(refused.written);
    ASSERT_TRUE(refused.refusal);
    EXPECT_NE(resolveText(refused.refusal->text, 0).find((dir.path() / "a" / "b").string()), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(dir.path() / "a"));

    // A folder path that runs through a file cannot be written even by root: the message
    // names the file and the old file stays as it was.
    test::writeBytes(dir / "plain", "x");
    VmConfiguration blocked = machineIn(dir.path() / "plain");
    SaveResult failed = CreateVmxFile(blocked);
    EXPECT_FALSE(failed.written);
    ASSERT_TRUE(failed.refusal);
    EXPECT_EQ(test::readBytes(dir / "plain"), "x");

    // A refused check leaves the existing file untouched.
    test::writeBytes(r.path, "original");
    addNics(c, 5);
    SaveResult pci = CreateVmxFile(c);
    EXPECT_FALSE(pci.written);
    EXPECT_EQ(test::readBytes(r.path), "original");
}

// Permission bits do not stop root, so as root the save runs as the user nobody, who owns the
// read-only folder but not the file.
TEST(SaveFlow, SaveRefusedInReadOnlyFolderKeepsOldFile) {
    ScratchDir dir;
    VmConfiguration c = machineIn(dir.path());
    ASSERT_TRUE(CreateVmxFile(c).written);
    std::string before = test::readBytes(c.vmxPath());
    if (test::runningAsRoot()) {
        ASSERT_EQ(::chown(dir.path().c_str(), 65534, 65534), 0);
    }
    std::filesystem::permissions(dir.path(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    c.identity.displayName = "changed";
    auto refused = [&c] { return !CreateVmxFile(c).written; };
    EXPECT_TRUE(test::runningAsRoot() ? test::asNobody(refused) : refused());
    std::filesystem::permissions(dir.path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(test::readBytes(c.vmxPath()), before);
}

TEST(SaveFlow, BackupCopyAndInUseQuestion) {
    ScratchDir dir;
    test::writeBytes(dir / "vm1.vmx", "memsize = \"64\"\r\n");
    test::writeBytes(dir / "vm1.vmx.bak", "older backup");
    bool ok = false;
    Message notice = makeBackup(dir / "vm1.vmx", ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(notice.kind, MessageKind::Information);
    EXPECT_EQ(resolveText(notice.title, 0), "Backup Made");
    EXPECT_EQ(resolveText(notice.text, 0), "Backup file created as: " + (dir / "vm1.vmx.bak").string());
    EXPECT_EQ(test::readBytes(dir / "vm1.vmx.bak"), "memsize = \"64\"\r\n");

    Message failed = makeBackup(dir / "absent.vmx", ok);
    EXPECT_FALSE(ok);
    EXPECT_NE(resolveText(failed.text, 0).find("absent.vmx"), std::string::npos);

    VmConfiguration c = loadVmxFile(dir / "vm1.vmx").config;
    EXPECT_FALSE(inUseQuestion(c));
    std::filesystem::create_directory(dir / "vm1.vmx.lck");
    auto q = inUseQuestion(c);
    ASSERT_TRUE(q);
    EXPECT_EQ(q->kind, MessageKind::Question);
}
