// Making disks: files and sizes of every kind, real space for preallocated extents, cancel and
// failures that leave nothing behind.
#include <sys/mount.h>
#include <sys/stat.h>

#include <cstring>

#include "TestSupport.h"
#include "core/disks/DiskCreator.h"
#include "core/disks/DiskDescriptor.h"
#include "core/disks/DiskInformation.h"
#include "core/shell/GetText.h"
#include "core/support/ProcessRunner.h"

using namespace arden::disks;
using arden::test::ScratchDir;
namespace fs = std::filesystem;

namespace {

std::int64_t allocatedBytes(const fs::path& p) {
    struct stat st {};
    return ::stat(p.c_str(), &st) == 0 ? static_cast<std::int64_t>(st.st_blocks) * 512 : -1;
}

std::vector<std::string> namesIn(const fs::path& dir) {
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(dir)) names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string textOf(const arden::Message& m) { return arden::resolveText(m.title, 0) + ": " + arden::resolveText(m.text, 0); }

}  // namespace

TEST(DiskCreator, SplitGrowableDiskIsSmallAndReadsBack) {
    ScratchDir dir;
    std::vector<std::string> reports;
    NewDiskRequest r{dir / "g.vmdk", DiskAdapter::BusLogic, 8384513, DiskKind::GrowableSplit, 3};
    auto result = createDisk(r, [&](const DiskProgressState& s) {
        reports.push_back(progressStepText(s.step) + " " + fs::path(s.currentFile).filename().string());
        return true;
    });
    ASSERT_TRUE(result.created) << (result.failure ? textOf(*result.failure) : "");
    EXPECT_EQ(result.files, (std::vector<fs::path>{dir / "g.vmdk", dir / "g-s001.vmdk", dir / "g-s002.vmdk", dir / "g-s003.vmdk"}));
    EXPECT_EQ(reports, (std::vector<std::string>{"Writing g-s001.vmdk", "Writing g-s002.vmdk", "Writing g-s003.vmdk",
                                                 "Writing the descriptor g.vmdk"}));
    for (const auto& f : result.files) EXPECT_LT(allocatedBytes(f), 128 * 1024) << f;
    EXPECT_NE(arden::test::readBytes(r.descriptorPath).find("ddb.adapterType = \"buslogic\""), std::string::npos);
}

TEST(DiskCreator, PreallocatedKindsReserveEverySector) {
    ScratchDir dir;
    NewDiskRequest split{dir / "p.vmdk", DiskAdapter::Ide, 4193792 + 2048, DiskKind::PreallocatedSplit, 3};
    auto a = createDisk(split);
    ASSERT_TRUE(a.created) << (a.failure ? textOf(*a.failure) : "");
    EXPECT_EQ(fs::file_size(dir / "p-f001.vmdk"), 4193792u * 512);
    EXPECT_EQ(fs::file_size(dir / "p-f002.vmdk"), 2048u * 512);
    EXPECT_GE(allocatedBytes(dir / "p-f001.vmdk"), 4193792 * 512) << "the space is really reserved";

    NewDiskRequest single{dir / "s.vmdk", DiskAdapter::LsiLogic, 4193793, DiskKind::Preallocated, 3};
    std::int64_t last = 0, total = 0;
    auto b = createDisk(single, [&](const DiskProgressState& s) {
        EXPECT_GE(s.bytesDone, last);
        last = s.bytesDone;
        total = s.bytesTotal;
        return true;
    });
    ASSERT_TRUE(b.created);
    EXPECT_EQ(namesIn(dir.path()), (std::vector<std::string>{"p-f001.vmdk", "p-f002.vmdk", "p.vmdk", "s-flat.vmdk", "s.vmdk"}))
        << "no temporary pieces are left";
    EXPECT_EQ(fs::file_size(dir / "s-flat.vmdk"), 4193793u * 512);
    EXPECT_EQ(last, 4193793 * 512);
    EXPECT_EQ(total, 4193793 * 512);
    EXPECT_NE(arden::test::readBytes(dir / "s.vmdk").find("RW 4193793 FLAT \"s-flat.vmdk\" 0\r\n"), std::string::npos);
}

TEST(DiskCreator, CancelRemovesEveryFileMade) {
    ScratchDir dir;
    int calls = 0;
    auto stopSecond = [&](const DiskProgressState&) { return ++calls < 2; };
    auto flat = createDisk({dir / "c.vmdk", DiskAdapter::Ide, 4193792 * 2, DiskKind::PreallocatedSplit, 3}, stopSecond);
    EXPECT_TRUE(flat.cancelled && !flat.created && !flat.failure);

    calls = 0;
    auto sparse = createDisk({dir / "c.vmdk", DiskAdapter::Ide, 4192256 * 3, DiskKind::GrowableSplit, 3}, stopSecond);
    EXPECT_TRUE(sparse.cancelled);
    EXPECT_TRUE(namesIn(dir.path()).empty()) << namesIn(dir.path()).size() << " files left";
}

TEST(DiskCreator, RefusesToTouchExistingFiles) {
    ScratchDir dir;
    arden::test::writeBytes(dir / "e-s002.vmdk", "keep me");
    auto r = createDisk({dir / "e.vmdk", DiskAdapter::Ide, 4192257, DiskKind::GrowableSplit, 3});
    ASSERT_TRUE(r.failure);
    EXPECT_NE(textOf(*r.failure).find("File Exists: Disk already exists!  Choose new name"), std::string::npos);
    EXPECT_EQ(arden::test::readBytes(dir / "e-s002.vmdk"), "keep me");
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"e-s002.vmdk"});
}

TEST(DiskCreator, UnwritableFolderIsNamedAndNothingIsLeft) {
    ScratchDir dir;
    arden::test::writeBytes(dir / "plain", "a file, not a folder");
    for (DiskKind kind : {DiskKind::GrowableSplit, DiskKind::PreallocatedSplit, DiskKind::Preallocated}) {
        auto r = createDisk({dir / "plain" / "d.vmdk", DiskAdapter::Ide, 300000, kind, 3});
        ASSERT_TRUE(r.failure);
        std::string text = textOf(*r.failure);
        EXPECT_NE(text.find("Create New Hard Disk: Cannot write " + (dir / "plain").string()), std::string::npos) << text;
        EXPECT_NE(text.find("Not a directory"), std::string::npos) << text;
    }
}

TEST(DiskCreator, LackOfSpaceFailsCleanly) {
    if (!arden::test::runningAsRoot()) GTEST_SKIP() << "mounting a small tmpfs needs root";
    ScratchDir dir;
    fs::path small = dir / "small";
    fs::create_directories(small);
    if (::mount("tmpfs", small.c_str(), "tmpfs", 0, "size=2m") != 0)
        ARDEN_CANNOT_RUN("cannot mount a small tmpfs here: " << std::strerror(errno));
    struct Unmount {
        fs::path at;
        ~Unmount() { ::umount(at.c_str()); }
    } unmount{small};
    for (DiskKind kind : {DiskKind::PreallocatedSplit, DiskKind::Preallocated}) {
        auto r = createDisk({small / "full.vmdk", DiskAdapter::LsiLogic, 204800, kind, 3});
        ASSERT_TRUE(r.failure);
        std::string text = textOf(*r.failure);
        EXPECT_NE(text.find(small.string()), std::string::npos) << text;
        EXPECT_NE(text.find("No space left on device"), std::string::npos) << text;
        EXPECT_TRUE(namesIn(small).empty()) << "partial files are removed";
    }
}

TEST(DiskCreator, SingleGrowableThroughQemuImg) {
    // A missing qemu-img is checked through the CLI, which can run with its own PATH.
    EXPECT_EQ(qemuImgSizeText(204801), "102400.5");
    if (!arden::findProgram("qemu-img")) ARDEN_CANNOT_RUN("qemu-img is not installed");
    ScratchDir dir;
    NewDiskRequest r{dir / "q.vmdk", DiskAdapter::LsiLogic, 204801, DiskKind::Growable, 3};
    auto made = createDisk(r);
    ASSERT_TRUE(made.created) << (made.failure ? textOf(*made.failure) : "");
    auto info = readDiskInformation(r.descriptorPath);
    ASSERT_TRUE(info.information);
    EXPECT_EQ(info.information->totalSectors, 204801) << "odd sector counts survive the KiB size text";
    EXPECT_EQ(info.information->createType, "monolithicSparse");
    EXPECT_EQ(info.information->adapterType, "lsilogic");

    // A failing run is reported with what the tool said.
    auto failed = createDisk({dir / "missing-folder" / "q.vmdk", DiskAdapter::Ide, 204800, DiskKind::Growable, 3});
    ASSERT_TRUE(failed.failure);
    EXPECT_NE(textOf(*failed.failure).find("exit code 1"), std::string::npos) << textOf(*failed.failure);
}

TEST(DiskCreator, ZerosAreWrittenAndReportedAMegabyteAtATime) {
    ScratchDir dir;
    std::vector<DiskProgressState> states;
    auto made = createDisk({dir / "z.vmdk", DiskAdapter::Ide, 204800, DiskKind::Preallocated, 3},
                           [&](const DiskProgressState& s) {
                               states.push_back(s);
                               return true;
                           },
                           {true});
    ASSERT_TRUE(made.created);
    ASSERT_EQ(states.size(), 101u) << "100 MiB in 1 MiB pieces, then the descriptor";
    EXPECT_EQ(progressStepText(states[0].step) + " " + states[0].currentFile + ": " + progressAmountText(states[0]),
              "Writing zeros to " + (dir / "z-flat.vmdk").string() + ": 1 MiB of 100 MiB (1%)");
    EXPECT_EQ(progressStepText(states[100].step) + " " + states[100].currentFile, "Writing the descriptor " + (dir / "z.vmdk").string());
    EXPECT_GE(allocatedBytes(dir / "z-flat.vmdk"), 204800 * 512) << "the zeros are really written";
}
