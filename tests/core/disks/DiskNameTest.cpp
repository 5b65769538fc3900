// Disk names that would break a reader are refused up front (and a name with ":" reaches
// qemu-img as a file); the line under the summary when a disk sits on the other bus.
#include "TestSupport.h"
#include "core/disks/DiskCreator.h"
#include "core/disks/DiskInformation.h"
#include "core/disks/DiskValidation.h"
#include "core/shell/GetText.h"

using namespace arden::disks;

TEST(DiskNames, RefusedWithTheReasonAndAllowedUpTo240Bytes) {
    const std::pair<std::string, const char*> refused[] = {
        {".vmdk", "there is nothing before \".vmdk\"."},
        {"", "there is nothing before \".vmdk\"."},
        {"a\"b.vmdk", "it holds a double quote (\"), which ends the name inside the descriptor."},
        {"a\rb", "it holds a control character"},
        {std::string("a\x7f", 2), "it holds a control character"},
        {"sub/a.vmdk", "it holds a folder separator"},
        {std::string(241, 'x') + ".vmdk", "it is 241 bytes long; at most 240 are allowed."},
    };
    for (const auto& [name, why] : refused) {
        std::optional<arden::Message> m = checkDiskName(name);
        ASSERT_TRUE(m) << name;
        const std::string text = arden::resolveText(m->title, 0) + ": " + arden::resolveText(m->text, 0);
        EXPECT_EQ(text.rfind("Invalid Disk Name: The disk name \"", 0), 0u) << text;
        EXPECT_NE(text.find(why), std::string::npos) << text;
    }
    for (const std::string& fine : {std::string("Backup RW disk.vmdk"), std::string("at:10"), std::string("Überplatte.vmdk"),
                                    std::string(240, 'x') + ".vmdk", std::string(240, 'x')}) {
        EXPECT_FALSE(checkDiskName(fine)) << fine;
    }
}

TEST(DiskNames, ARelativeNameReachesQemuImgAsAFile) {
    EXPECT_EQ(qemuImgArguments({"at:10.vmdk", DiskAdapter::Ide, 204800, DiskKind::Growable, 3})[5], "./at:10.vmdk");
    EXPECT_EQ(qemuImgArguments({"/vm/at:10.vmdk", DiskAdapter::Ide, 204800, DiskKind::Growable, 3})[5], "/vm/at:10.vmdk");
}

TEST(DiskSummary, AdapterMismatchLine) {
    const std::tuple<const char*, DiskBus, const char*> cases[] = {
        {"ide", DiskBus::Scsi, "This disk was made for an IDE adapter (adapter type \"ide\"), but it sits on a SCSI node."},
        {"lsilogic", DiskBus::Ide, "This disk was made for a SCSI adapter (adapter type \"lsilogic\"), but it sits on an IDE node."},
        {"pvscsi", DiskBus::Ide, "This disk was made for a SCSI adapter (adapter type \"pvscsi\"), but it sits on an IDE node."},
        {"ide", DiskBus::Ide, ""},
        {"buslogic", DiskBus::Scsi, ""},
        {"", DiskBus::Scsi, ""},
        {"floppy", DiskBus::Ide, ""}};
    for (const auto& [adapter, bus, line] : cases) EXPECT_EQ(adapterMismatchText(adapter, bus), line) << adapter;
}
