// The checks before a disk is made: size text, minimum and maxima, the two questions, files
// that already exist, names that would break a reader; and the summary's adapter line.
#include "TestSupport.h"
#include "core/disks/DiskInformation.h"
#include "core/disks/DiskValidation.h"
#include "core/shell/GetText.h"

using namespace arden::disks;
using arden::test::ScratchDir;
using arden::test::shown;

namespace {

DiskRequestCheck check(const ScratchDir& dir, std::int64_t sectors, DiskAdapter adapter = DiskAdapter::LsiLogic,
                       DiskKind kind = DiskKind::GrowableSplit, DiskMaxima maxima = {}) {
    return checkNewDisk(NewDiskRequest{dir / "new.vmdk", adapter, sectors, kind, 3}, maxima);
}

const std::string kTooSmall = "Invalid Disk Size: Disk Size too small!  Minimum Size is 100 Mb";
const std::string kTooLarge = "Invalid Disk Size: Disk Size too large!  Maximum Size is 128/256/950 Gb";
const std::string kLargeFlat = "Disk larger than 1.99Gb: A single file larger than 2 GB cannot be kept on a host file system that "
                               "limits the size of a file (FAT32 holds at most 4 GB).  \"Preallocated virtual disk, split into "
                               "files\" makes pieces of 2 GB.  Do you want to continue?";
const std::string kLargeIde = "Very Large Disk: Warning - Disk size large for IDE controller - do you want to contunue?";

}  // namespace

TEST(DiskSizeText, NumbersUnitsAndNonNumbers) {
    const std::tuple<const char*, SizeUnit, std::int64_t> cases[] = {
        {"204800", SizeUnit::Sectors, 204800}, {" 100 ", SizeUnit::Mb, 204800}, {"1.5", SizeUnit::Gb, 3145728},
        {"0.75", SizeUnit::Kb, 2} /* 1.5 sectors, halves to even */, {"1e2", SizeUnit::Mb, 204800},
        {"-5", SizeUnit::Mb, -10240}, {"1e-400", SizeUnit::Gb, 0}, {"-1e-400", SizeUnit::Gb, 0},
    };
    for (const auto& [text, unit, sectors] : cases) EXPECT_EQ(sizeTextToSectors(text, unit), sectors) << text;
    EXPECT_GT(*sizeTextToSectors("1e400", SizeUnit::Gb), 536870912);
    for (const char* bad : {"", " ", "abc", "12abc", "1.2.3", "1e", "0x10", "inf", "nan", "1,5", "."})
        EXPECT_FALSE(sizeTextToSectors(bad, SizeUnit::Mb)) << '"' << bad << '"';
}

TEST(DiskChecks, SizesAndQuestions) {
    ScratchDir dir;
    const DiskMaxima raised{1992294400, 1992294400};
    struct Case {
        std::int64_t sectors;
        DiskAdapter adapter;
        DiskKind kind;
        DiskMaxima maxima;
        std::string refusal;
        std::vector<std::string> questions;
    };
    const Case cases[] = {
        {204799, DiskAdapter::LsiLogic, DiskKind::GrowableSplit, {}, kTooSmall, {}},
        {204800, DiskAdapter::LsiLogic, DiskKind::GrowableSplit, {}, "", {}},
        {268435456, DiskAdapter::Ide, DiskKind::GrowableSplit, {}, "", {}},
        {268435457, DiskAdapter::Ide, DiskKind::GrowableSplit, {}, kTooLarge, {}},
        {536870912, DiskAdapter::BusLogic, DiskKind::PreallocatedSplit, {}, "", {}},
        {536870913, DiskAdapter::LsiLogic, DiskKind::GrowableSplit, {}, kTooLarge, {}},
        {268435457, DiskAdapter::Ide, DiskKind::GrowableSplit, raised, "", {kLargeIde}},
        {4193792, DiskAdapter::LsiLogic, DiskKind::Preallocated, {}, "", {}},
        {4193793, DiskAdapter::LsiLogic, DiskKind::Preallocated, {}, "", {kLargeFlat}},
        {300000000, DiskAdapter::Ide, DiskKind::Preallocated, raised, "", {kLargeFlat, kLargeIde}},
    };
    for (const Case& c : cases) {
        DiskRequestCheck r = check(dir, c.sectors, c.adapter, c.kind, c.maxima);
        EXPECT_EQ(shown(r.refusal), c.refusal) << c.sectors;
        std::vector<std::string> asked;
        for (const arden::Message& q : r.questions) asked.push_back(shown(q));
        EXPECT_EQ(asked, c.questions) << c.sectors;
    }
}

TEST(DiskChecks, AnyExistingFileOfTheDiskRefuses) {
    ScratchDir dir;
    arden::test::writeBytes(dir / "new.vmdk", "x");
    EXPECT_EQ(shown(check(dir, 300000).refusal), "File Exists: Disk already exists!  Choose new name (" + (dir / "new.vmdk").string() + ")");
    std::filesystem::remove(dir / "new.vmdk");
    arden::test::writeBytes(dir / "new-s002.vmdk", "x");
    EXPECT_NE(shown(check(dir, 4192257).refusal).find("new-s002.vmdk"), std::string::npos) << "a left-over extent is never written over";
    EXPECT_FALSE(check(dir, 4192256).refusal) << "a one-extent disk has no second extent";
    std::filesystem::create_symlink(dir / "nowhere", dir / "new-f001.vmdk");
    EXPECT_TRUE(check(dir, 300000, DiskAdapter::Ide, DiskKind::PreallocatedSplit).refusal) << "a dangling link counts as there";
}

TEST(DiskNames, RefusedWithTheReasonAndAllowedUpTo240Bytes) {
    const std::pair<std::string, const char*> refused[] = {
        {"a\"b.vmdk", "it holds a double quote (\"), which ends the name inside the descriptor."},
        {"a\rb", "it holds a control character"}, {std::string("a\x7f", 2), "it holds a control character"},
        {"sub/a.vmdk", "it holds a folder separator"},
        {std::string(241, 'x') + ".vmdk", "it is 241 bytes long; at most 240 are allowed."},
    };
    for (const auto& [name, why] : refused) {
        const std::string text = shown(checkDiskName(name));
        EXPECT_TRUE(text.starts_with("Invalid Disk Name: The disk name \"")) << text;
        EXPECT_NE(text.find(why), std::string::npos) << text;
    }
    EXPECT_EQ(shown(checkDiskName(".vmdk")),
              "Invalid Disk Name: The new disk has no name: type one in Disk Name (\".vmdk\" is added to it).");
    for (const std::string& fine : {std::string("Backup RW disk.vmdk"), std::string("at:10"), std::string("Überplatte.vmdk"),
                                    std::string(240, 'x') + ".vmdk"})
        EXPECT_FALSE(checkDiskName(fine)) << fine;
}

TEST(DiskSummary, AdapterMismatchLine) {
    const std::tuple<const char*, DiskBus, const char*> cases[] = {
        {"ide", DiskBus::Scsi, "This disk was made for an IDE adapter (adapter type \"ide\"), but it sits on a SCSI node."},
        {"pvscsi", DiskBus::Ide, "This disk was made for a SCSI adapter (adapter type \"pvscsi\"), but it sits on an IDE node."},
        {"ide", DiskBus::Ide, ""}, {"buslogic", DiskBus::Scsi, ""}, {"", DiskBus::Scsi, ""}, {"floppy", DiskBus::Ide, ""}};
    for (const auto& [adapter, bus, line] : cases) EXPECT_EQ(adapterMismatchText(adapter, bus), line) << adapter;
}
