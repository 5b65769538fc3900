// Making disks: files and sizes of every kind, real space for preallocated extents, progress,
// and cancels and failures that leave nothing behind. Split disks are cut into small pieces
// here, so no test reserves more than a few hundred megabytes.
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "TestSupport.h"
#include "core/disks/DiskCreator.h"
#include "core/disks/DiskInformation.h"
#include "core/shell/GetText.h"
#include "core/support/ProcessRunner.h"

using namespace arden::disks;
using arden::test::readBytes;
using arden::test::namesIn;
using arden::test::ScratchDir;
using arden::test::shown;
namespace fs = std::filesystem;

namespace {

std::int64_t allocatedBytes(const fs::path& p) {
    struct stat st {};
    return ::stat(p.c_str(), &st) == 0 ? static_cast<std::int64_t>(st.st_blocks) * 512 : -1;
}

// Each progress report as "<step> <file name>: <amount>".
struct Reports {
    std::vector<std::string> lines;
    DiskProgress receiver() {
        return [this](const DiskProgressState& s) {
            lines.push_back(progressStepText(s.step) + " " + fs::path(s.currentFile).filename().string() + ": " + progressAmountText(s));
            return true;
        };
    }
};

}  // namespace

TEST(DiskCreator, SplitGrowableDiskIsSmallAndReportsEachFile) {
    ScratchDir dir;
    Reports reports;
    auto result = createDisk({dir / "g.vmdk", DiskAdapter::BusLogic, 8384513, DiskKind::GrowableSplit, 3}, reports.receiver());
    ASSERT_TRUE(result.created) << shown(result.failure);
    EXPECT_EQ(result.files, (std::vector<fs::path>{dir / "g.vmdk", dir / "g-s001.vmdk", dir / "g-s002.vmdk", dir / "g-s003.vmdk"}));
    EXPECT_EQ(reports.lines, (std::vector<std::string>{"Writing g-s001.vmdk: 0 bytes written", "Writing g-s002.vmdk: 320 KiB written",
                                                       "Writing g-s003.vmdk: 640 KiB written", "Writing the descriptor g.vmdk: 704 KiB written"}));
    for (const auto& f : result.files) EXPECT_LT(allocatedBytes(f), 128 * 1024) << f;
    EXPECT_NE(readBytes(dir / "g.vmdk").find("RW 4192256 SPARSE \"g-s002.vmdk\"\r\nRW 1 SPARSE \"g-s003.vmdk\"\r\n"), std::string::npos);
}

TEST(DiskCreator, PreallocatedKindsReserveEverySector) {
    ScratchDir dir;
    auto split = createDisk({dir / "p.vmdk", DiskAdapter::Ide, 204800 + 2048, DiskKind::PreallocatedSplit, 3}, {}, {false, 102400});
    ASSERT_TRUE(split.created) << shown(split.failure);
    EXPECT_EQ(fs::file_size(dir / "p-f003.vmdk"), 2048u * 512);
    EXPECT_GE(allocatedBytes(dir / "p-f002.vmdk"), 102400 * 512) << "the space is really reserved";
    EXPECT_NE(readBytes(dir / "p.vmdk").find("RW 102400 FLAT \"p-f002.vmdk\" 0\r\nRW 2048 FLAT \"p-f003.vmdk\" 0\r\n"), std::string::npos);

    Reports reserve, zeros;
    ASSERT_TRUE(createDisk({dir / "s.vmdk", DiskAdapter::LsiLogic, 204801, DiskKind::Preallocated, 3}, reserve.receiver()).created);
    ASSERT_TRUE(createDisk({dir / "z.vmdk", DiskAdapter::Ide, 10240, DiskKind::Preallocated, 3}, zeros.receiver(), {true}).created);
    EXPECT_EQ(namesIn(dir.path()), (std::vector<std::string>{"p-f001.vmdk", "p-f002.vmdk", "p-f003.vmdk", "p.vmdk", "s-flat.vmdk",
                                                             "s.vmdk", "z-flat.vmdk", "z.vmdk"}));
    EXPECT_EQ(fs::file_size(dir / "s-flat.vmdk"), 204801u * 512);
    EXPECT_GE(allocatedBytes(dir / "s-flat.vmdk"), 204801 * 512);
    EXPECT_EQ(reserve.lines.back(), "Writing the descriptor s.vmdk: 100 MiB of 100 MiB (100%)");
    EXPECT_NE(readBytes(dir / "s.vmdk").find("RW 204801 FLAT \"s-flat.vmdk\" 0\r\n"), std::string::npos);
    ASSERT_EQ(zeros.lines.size(), 6u) << "5 MiB of zeros written a MiB at a time, then the descriptor";
    EXPECT_EQ(zeros.lines[0], "Writing zeros to z-flat.vmdk: 1 MiB of 5 MiB (20%)");
    EXPECT_GE(allocatedBytes(dir / "z-flat.vmdk"), 10240 * 512) << "the zeros are really written";
}

TEST(DiskCreator, ProgressTexts) {
    const std::pair<DiskProgressState, const char*> cases[] = {
        {{DiskStep::WritingZeros, "/vm/d-flat.vmdk", std::int64_t{3} << 29, std::int64_t{4} << 30}, "Writing zeros to: 1.5 GiB of 4 GiB (37%)"},
        {{DiskStep::Reserving, "/vm/d-flat.vmdk", 1000, 1000}, "Reserving space for: 1000 bytes of 1000 bytes (100%)"},
        {{DiskStep::RunningTool, "/vm/d.vmdk", 196608, 0}, "Waiting for qemu-img to write: 192 KiB written"}};
    for (const auto& [state, text] : cases) EXPECT_EQ(progressStepText(state.step) + ": " + progressAmountText(state), text);
}

TEST(DiskCreator, CancelAndFailuresLeaveNothingBehind) {
    ScratchDir dir;
    for (DiskKind kind : {DiskKind::PreallocatedSplit, DiskKind::GrowableSplit}) {
        int calls = 0;
        auto r = createDisk({dir / "c.vmdk", DiskAdapter::Ide, 3 * 20480, kind, 3}, [&](const DiskProgressState&) { return ++calls < 3; },
                            {false, 20480});
        EXPECT_TRUE(r.cancelled && !r.created && !r.failure);
        EXPECT_TRUE(namesIn(dir.path()).empty()) << namesIn(dir.path()).size() << " files left";
    }
    arden::test::writeBytes(dir / "e-s002.vmdk", "keep me");
    auto exists = createDisk({dir / "e.vmdk", DiskAdapter::Ide, 4192257, DiskKind::GrowableSplit, 3});
    EXPECT_EQ(shown(exists.failure), "File Exists: Disk already exists!  Choose new name (" + (dir / "e-s002.vmdk").string() + ")");
    EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"e-s002.vmdk"});
    EXPECT_EQ(readBytes(dir / "e-s002.vmdk"), "keep me");
    arden::test::writeBytes(dir / "plain", "a file, not a folder");
    for (DiskKind kind : {DiskKind::GrowableSplit, DiskKind::PreallocatedSplit, DiskKind::Preallocated}) {
        const std::string text = shown(createDisk({dir / "plain" / "d.vmdk", DiskAdapter::Ide, 300000, kind, 3}).failure);
        EXPECT_TRUE(text.starts_with("Create New Hard Disk: Cannot write " + (dir / "plain").string())) << text;
        EXPECT_NE(text.find("Not a directory"), std::string::npos) << text;
    }
}

// A disk that does not fit fails with the system's reason and removes its partial files. The
// limit is a file size limit of a child process (no mount needed, so it runs for every user).
TEST(DiskCreator, AFullDiskFailsCleanly) {
    ScratchDir dir;
    for (DiskKind kind : {DiskKind::PreallocatedSplit, DiskKind::Preallocated}) {
        pid_t child = ::fork();
        if (child == 0) {
            ::signal(SIGXFSZ, SIG_IGN);
            struct rlimit limit {2 << 20, 2 << 20};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            const std::string text = shown(createDisk({dir / "full.vmdk", DiskAdapter::LsiLogic, 204800, kind, 3}).failure);
            ::_exit(text.find("Cannot write " + (dir / "full-f").string()) != std::string::npos &&
                            text.find("File too large") != std::string::npos ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << static_cast<int>(kind);
        EXPECT_TRUE(namesIn(dir.path()).empty()) << "partial files are removed";
    }
}

TEST(DiskCreator, SingleGrowableThroughQemuImg) {
    EXPECT_EQ(qemuImgArguments({"at:10.vmdk", DiskAdapter::Ide, 204801, DiskKind::Growable, 3}),
              (std::vector<std::string>{"create", "-f", "vmdk", "-o", "adapter_type=ide,hwversion=3", "./at:10.vmdk", "102400.5K"}))
        << "a relative name with \":\" reaches qemu-img as a file; odd sector counts survive the KiB size";
    if (!arden::findProgram("qemu-img")) ARDEN_CANNOT_RUN("qemu-img is not installed");
    ScratchDir dir;
    auto made = createDisk({dir / "q.vmdk", DiskAdapter::LsiLogic, 204801, DiskKind::Growable, 3});
    ASSERT_TRUE(made.created) << shown(made.failure);
    auto info = readDiskInformation(dir / "q.vmdk");
    ASSERT_TRUE(info.information);
    EXPECT_EQ(std::tuple(info.information->totalSectors, info.information->createType, info.information->adapterType),
              std::tuple(std::int64_t{204801}, std::string("monolithicSparse"), std::string("lsilogic")));
}

// The external tool's failures, with a stand-in qemu-img found on PATH: one that fails after
// writing part of the disk and says why, and one that ends well without writing the disk.
TEST(DiskCreator, TheExternalToolsFailuresAreReportedAndCleanedUp) {
    ScratchDir dir;
    fs::create_directory(dir / "bin");
    const std::string oldPath = std::getenv("PATH") ? std::getenv("PATH") : "";
    ::setenv("PATH", (dir / "bin").c_str(), 1);
    const fs::path tool = dir / "bin" / "qemu-img";
    const std::pair<std::string, std::string> cases[] = {
        {"printf partial > \"$6\"; echo 'qemu-img: No space left on device' >&2; exit 1",
         "Create New Hard Disk: " + tool.string() + " ended with exit code 1: qemu-img: No space left on device"},
        {"exit 0", "Create New Hard Disk: " + tool.string() + " ended without writing " + (dir / "d" / "q.vmdk").string()}};
    fs::create_directory(dir / "d");
    for (const auto& [script, message] : cases) {
        arden::test::writeBytes(tool, "#!/bin/sh\n" + script + "\n");
        fs::permissions(tool, fs::perms(0755));
        auto r = createDisk({dir / "d" / "q.vmdk", DiskAdapter::Ide, 204800, DiskKind::Growable, 3});
        EXPECT_FALSE(r.created);
        EXPECT_EQ(shown(r.failure), message);
        EXPECT_TRUE(namesIn(dir / "d").empty()) << "what the tool left is removed";
    }
    ::setenv("PATH", oldPath.c_str(), 1);
}
