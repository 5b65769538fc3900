// The checks before a disk is made: size text, minimum and maxima, questions, existing files.
#include "TestSupport.h"
#include "core/disks/DiskValidation.h"
#include "core/shell/GetText.h"

using namespace arden::disks;
using arden::test::ScratchDir;

namespace {

std::string textOf(const arden::Message& m) { return arden::resolveText(m.title, 0) + ": " + arden::resolveText(m.text, 0); }

NewDiskRequest request(const std::filesystem::path& folder, std::int64_t sectors, DiskAdapter adapter = DiskAdapter::LsiLogic,
                       DiskKind kind = DiskKind::GrowableSplit) {
    return NewDiskRequest{folder / "new.vmdk", adapter, sectors, kind, 3};
}

}  // namespace

TEST(DiskSizeText, NumbersUnitsAndNonNumbers) {
    const std::tuple<const char*, SizeUnit, std::int64_t> cases[] = {
        {"204800", SizeUnit::Sectors, 204800}, {" 100 ", SizeUnit::Mb, 204800}, {"1.5", SizeUnit::Gb, 3145728},
        {"3", SizeUnit::Kb, 6},                {"0.75", SizeUnit::Kb, 2},  // 1.5 sectors, halves to even
        {"1e2", SizeUnit::Mb, 204800},         {"+7", SizeUnit::Sectors, 7}, {"-5", SizeUnit::Mb, -10240},
        {"1e-400", SizeUnit::Gb, 0},           {"-1e-400", SizeUnit::Gb, 0}, {"0.0000001e-330", SizeUnit::Gb, 0},
    };
    for (const auto& [text, unit, sectors] : cases) EXPECT_EQ(sizeTextToSectors(text, unit), sectors) << text;
    EXPECT_GT(*sizeTextToSectors("99999999999999999999", SizeUnit::Gb), kDefaultScsiMaximumSectors);
    for (const char* bad : {"", " ", "abc", "12abc", "1.2.3", "1e", "0x10", "inf", "nan", "1,5", "--1", "."}) {
        EXPECT_FALSE(sizeTextToSectors(bad, SizeUnit::Mb)) << '"' << bad << '"';
    }
}

TEST(DiskChecks, MinimumAndDefaultMaxima) {
    ScratchDir dir;
    const std::tuple<std::int64_t, DiskAdapter, bool> cases[] = {
        {204799, DiskAdapter::LsiLogic, true},     {204800, DiskAdapter::LsiLogic, false},
        {268435456, DiskAdapter::Ide, false},      {268435457, DiskAdapter::Ide, true},
        {536870912, DiskAdapter::BusLogic, false}, {536870913, DiskAdapter::BusLogic, true},
        {536870913, DiskAdapter::LsiLogic, true},
    };
    for (const auto& [sectors, adapter, refused] : cases) {
        auto check = checkNewDisk(request(dir.path(), sectors, adapter));
        EXPECT_EQ(bool(check.refusal), refused) << sectors;
        if (!refused) {
            EXPECT_TRUE(check.questions.empty()) << sectors;
        }
    }
    auto small = checkNewDisk(request(dir.path(), 204799));
    EXPECT_EQ(textOf(*small.refusal), "Invalid Disk Size: Disk Size too small!  Minimum Size is 100 Mb");
    EXPECT_EQ(small.refusal->kind, arden::MessageKind::Information);
    EXPECT_EQ(textOf(*checkNewDisk(request(dir.path(), 268435457, DiskAdapter::Ide)).refusal),
              "Invalid Disk Size: Disk Size too large!  Maximum Size is 128/256/950 Gb");
}

TEST(DiskChecks, RaisedMaximaAndTheTwoQuestions) {
    ScratchDir dir;
    DiskMaxima raised{1992294400, 1992294400};
    auto bigIde = checkNewDisk(request(dir.path(), 268435457, DiskAdapter::Ide), raised);
    EXPECT_FALSE(bigIde.refusal);
    ASSERT_EQ(bigIde.questions.size(), 1u);
    EXPECT_EQ(textOf(bigIde.questions[0]),
              "Very Large Disk: Warning - Disk size large for IDE controller - do you want to contunue?");
    EXPECT_EQ(bigIde.questions[0].kind, arden::MessageKind::Question);

    EXPECT_TRUE(checkNewDisk(request(dir.path(), 4193792, DiskAdapter::LsiLogic, DiskKind::Preallocated)).questions.empty());
    auto flat = checkNewDisk(request(dir.path(), 4193793, DiskAdapter::LsiLogic, DiskKind::Preallocated));
    ASSERT_EQ(flat.questions.size(), 1u);
    EXPECT_EQ(textOf(flat.questions[0]),
              "Disk larger than 1.99Gb: Warning - you need to have double this size available on your hard drive for "
              "temporary files.  Also, the append operation will be slow.  Do you want to continue?");
    EXPECT_TRUE(checkNewDisk(request(dir.path(), 4193793, DiskAdapter::LsiLogic, DiskKind::PreallocatedSplit)).questions.empty());

    auto both = checkNewDisk(request(dir.path(), 300000000, DiskAdapter::Ide, DiskKind::Preallocated), raised);
    ASSERT_EQ(both.questions.size(), 2u);
    EXPECT_EQ(arden::resolveText(both.questions[0].title, 0), "Disk larger than 1.99Gb");
    EXPECT_EQ(arden::resolveText(both.questions[1].title, 0), "Very Large Disk");
}

TEST(DiskChecks, AnyExistingFileOfTheDiskRefuses) {
    ScratchDir dir;
    arden::test::writeBytes(dir / "new.vmdk", "x");
    auto descriptor = checkNewDisk(request(dir.path(), 300000));
    ASSERT_TRUE(descriptor.refusal);
    EXPECT_EQ(textOf(*descriptor.refusal),
              "File Exists: Disk already exists!  Choose new name (" + (dir / "new.vmdk").string() + ")");
    std::filesystem::remove(dir / "new.vmdk");

    // A left-over second extent is found as well, so it is never written over.
    arden::test::writeBytes(dir / "new-s002.vmdk", "x");
    auto extent = checkNewDisk(request(dir.path(), 4192257));
    ASSERT_TRUE(extent.refusal);
    EXPECT_NE(textOf(*extent.refusal).find("new-s002.vmdk"), std::string::npos);
    EXPECT_FALSE(checkNewDisk(request(dir.path(), 4192256)).refusal) << "a one-extent disk has no second extent";
    std::filesystem::create_symlink(dir / "nowhere", dir / "new-f001.vmdk");
    EXPECT_TRUE(checkNewDisk(request(dir.path(), 300000, DiskAdapter::Ide, DiskKind::PreallocatedSplit)).refusal)
        << "a dangling link counts as there";
}
