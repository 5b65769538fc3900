// Disk creation speed against the usual tools, in the same run and the same folder:
//  - a 256 GiB split growable disk against `qemu-img create -f vmdk -o subformat=twoGbMaxExtentSparse`;
//  - an 8 GiB split preallocated disk against `fallocate -l 8G`.
// Each is timed in-process and through arden-forge-cli (which pays a process start as the
// tools do). Prints medians and ratios; fails only when a disk cannot be made.
//
// Usage: bench_disks [FOLDER]   (default: a folder below the current one; it needs about
// 9 GiB free on a disk-backed file system, so not a RAM-backed /tmp).
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "core/disks/DiskCreator.h"
#include "core/support/ProcessRunner.h"

namespace fs = std::filesystem;
using namespace arden::disks;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int kRuns = 15;
constexpr std::int64_t kGrowableSectors = std::int64_t{256} << 21;  // 256 GiB
constexpr std::int64_t kPreallocatedSectors = std::int64_t{8} << 21; // 8 GiB

struct Contender {
    std::string name;
    std::function<bool()> make;  // makes the disk in the empty work folder
};

void emptyFolder(const fs::path& dir) {
    for (const auto& e : fs::directory_iterator(dir)) fs::remove_all(e.path());
    ::sync();
}

std::int64_t allocatedBytes(const fs::path& dir) {
    std::int64_t total = 0;
    for (const auto& e : fs::directory_iterator(dir)) {
        struct stat st {};
        if (::stat(e.path().c_str(), &st) == 0) total += static_cast<std::int64_t>(st.st_blocks) * 512;
    }
    return total;
}

bool runTool(const std::string& name, const std::vector<std::string>& args) {
    std::optional<fs::path> program = name.front() == '/' ? std::optional<fs::path>(name) : arden::findProgram(name);
    if (!program) return false;
    arden::ProcessResult r = arden::runProcess(*program, args);
    if (!r.started || r.exitCode != 0) std::fprintf(stderr, "%s failed: %s%s\n", name.c_str(), r.startError.c_str(), r.standardError.c_str());
    return r.started && r.exitCode == 0;
}

// Runs the contenders in turn, kRuns rounds, and returns each one's median in milliseconds.
std::vector<double> race(const fs::path& dir, const std::vector<Contender>& contenders, std::vector<std::int64_t>& allocated) {
    std::vector<std::vector<double>> times(contenders.size());
    allocated.assign(contenders.size(), 0);
    for (int round = 0; round < kRuns; ++round) {
        for (std::size_t i = 0; i < contenders.size(); ++i) {
            emptyFolder(dir);
            auto start = Clock::now();
            bool ok = contenders[i].make();
            times[i].push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
            if (!ok) {
                std::fprintf(stderr, "%s could not make its disk\n", contenders[i].name.c_str());
                return {};
            }
            allocated[i] = allocatedBytes(dir);
        }
    }
    emptyFolder(dir);
    std::vector<double> medians;
    for (auto& t : times) {
        std::sort(t.begin(), t.end());
        medians.push_back(t[t.size() / 2]);
    }
    return medians;
}

bool report(const char* title, const fs::path& dir, const std::vector<Contender>& contenders, double target) {
    std::vector<std::int64_t> allocated;
    std::vector<double> ms = race(dir, contenders, allocated);
    if (ms.empty()) return false;
    std::printf("\n%s (median of %d runs)\n", title, kRuns);
    for (std::size_t i = 0; i < contenders.size(); ++i) {
        std::printf("  %-34s %9.2f ms  %12.1f KiB on disk\n", contenders[i].name.c_str(), ms[i], allocated[i] / 1024.0);
    }
    const double reference = ms.back();
    for (std::size_t i = 0; i + 1 < contenders.size(); ++i) {
        double ratio = ms[i] / reference;
        std::printf("  ratio %-28s %6.3f of %s (aim: at most %.1f) %s\n", contenders[i].name.c_str(), ratio,
                    contenders.back().name.c_str(), target, ratio <= target ? "met" : "NOT met");
    }
    return true;
}

// Our two contenders for a disk: the library call, and the command line when it is built.
std::vector<Contender> ours(const NewDiskRequest& r, const std::string& sizeText) {
    std::vector<Contender> list{{"ours, in-process", [r] { return createDisk(r).created; }}};
    const std::string cli = ARDEN_CLI_PATH;
    if (fs::exists(cli)) {
        std::vector<std::string> args{"disk", "create", r.descriptorPath.string(), "--size", sizeText, "--adapter",
                                      std::string(adapterText(r.adapter)), "--type", std::string(diskKindInfo(r.kind).name)};
        list.push_back({"ours, arden-forge-cli", [cli, args] { return runTool(cli, args); }});
    }
    return list;
}

}  // namespace

int main(int argc, char** argv) {
    fs::path dir = argc > 1 ? fs::path(argv[1]) : fs::current_path() / "bench-disks-work";
    fs::create_directories(dir);
    std::printf("Disk creation benchmark in %s\n", dir.c_str());

    if (!arden::findProgram("qemu-img")) {
        std::printf("qemu-img not found: the growable comparison is left out\n");
    } else {
        std::vector<Contender> growable = ours({dir / "g.vmdk", DiskAdapter::LsiLogic, kGrowableSectors, DiskKind::GrowableSplit, 3}, "256G");
        growable.push_back({"qemu-img twoGbMaxExtentSparse", [&] {
                                return runTool("qemu-img", {"create", "-q", "-f", "vmdk", "-o", "subformat=twoGbMaxExtentSparse",
                                                            (dir / "q.vmdk").string(), "256G"});
                            }});
        if (!report("256 GiB split growable disk", dir, growable, 0.5)) return 1;
    }

    struct statvfs fsInfo {};
    const double needed = 9.5 * (1u << 30);
    if (::statvfs(dir.c_str(), &fsInfo) != 0 || static_cast<double>(fsInfo.f_bavail) * fsInfo.f_frsize < needed) {
        std::printf("\nless than 9.5 GiB free in %s: the preallocated comparison is left out\n", dir.c_str());
    } else if (!arden::findProgram("fallocate")) {
        std::printf("fallocate not found: the preallocated comparison is left out\n");
    } else {
        std::vector<Contender> preallocated =
            ours({dir / "p.vmdk", DiskAdapter::LsiLogic, kPreallocatedSectors, DiskKind::PreallocatedSplit, 3}, "8G");
        preallocated.push_back({"fallocate -l 8G", [&] { return runTool("fallocate", {"-l", "8G", (dir / "f.img").string()}); }});
        if (!report("8 GiB split preallocated disk", dir, preallocated, 1.2)) return 1;
    }
    fs::remove_all(dir);
    return 0;
}
