// The command-line program on inputs far larger than any real machine has: a 15 MB file of
// junk lines, a file of 100,000 network adapters, and a settings file of 200,000 favourites.
// Each is run as a whole program and must stay under one second of processor time and 200 MB
// of memory. Prints figures; never fails on time (only when the program itself fails).
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "ProgramRun.h"

namespace fs = std::filesystem;
using arden::bench::ProgramRun;
using arden::bench::runProgram;

namespace {

constexpr double kCpuLimitMs = 1000;
constexpr double kMemoryLimitMb = 200;

// Two-byte lines: the most lines a file of this size can have, each one kept and noticed.
std::size_t writeJunk(const fs::path& file, std::size_t bytes) {
    std::ofstream out(file, std::ios::binary);
    out << ".encoding = \"UTF-8\"\nconfig.version = \"8\"\n";
    std::string junk;
    junk.reserve(bytes);
    for (std::size_t i = 0; i + 1 < bytes; i += 2) junk += "x\n";
    out << junk;
    return junk.size() / 2;
}

void writeAdapters(const fs::path& file, int count) {
    std::ofstream out(file, std::ios::binary);
    out << ".encoding = \"UTF-8\"\nconfig.version = \"8\"\nvirtualHW.version = \"4\"\n";
    for (int i = 0; i < count; ++i) out << "ethernet" << i << ".present = \"TRUE\"\n";
}

void writeFavorites(const fs::path& ini, int count) {
    std::ofstream out(ini, std::ios::binary);
    out << "[General]\r\nCreateBackups=-1\r\n[Favorites]\r\n";
    for (int i = 0; i < count; ++i)
        out << "Favorite" << i << "=Machine " << i << "\t/home/user/vms/m" << i << "/m" << i << ".vmx\t8\r\n";
}

bool report(const char* what, const ProgramRun& run) {
    const bool within = run.cpuMs < kCpuLimitMs && run.peakMb < kMemoryLimitMb;
    if (!run.ran) {
        std::printf("  %-46s FAILED (the program did not exit with 0)\n", what);
        return false;
    }
    std::printf("  %-46s %8.0f ms wall %8.0f ms processor %7.1f MB peak   %s\n", what, run.wallMs, run.cpuMs,
                run.peakMb, within ? "within 1 s and 200 MB" : "OVER 1 s or 200 MB");
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s PATH/TO/arden-forge-cli\n", argv[0]);
        return 2;
    }
    const std::string cli = argv[1];
    const fs::path dir = fs::temp_directory_path() / ("arden-bench-large-" + std::to_string(getpid()));
    fs::create_directories(dir / "config");
    const std::size_t junkLines = writeJunk(dir / "junk.vmx", 15u * 1024 * 1024);
    writeAdapters(dir / "adapters.vmx", 100000);
    writeFavorites(dir / "ArdenForge.ini", 200000);

    std::printf("arden-forge-cli on very large inputs (target: under %.0f ms processor, under %.0f MB)\n", kCpuLimitMs,
                kMemoryLimitMb);
    const std::string junk = "show, 15 MB of junk lines (" + std::to_string(junkLines) + " lines)";
    bool ok = report(junk.c_str(), runProgram({cli, "show", (dir / "junk.vmx").string()}));
    ok &= report("show, 100,000 network adapters", runProgram({cli, "show", (dir / "adapters.vmx").string()}));
    ok &= report("favorites list, 200,000 favourites",
                 runProgram({cli, "favorites", "list"},
                            {{"TMPDIR", dir.string() + "/"}, {"XDG_CONFIG_HOME", (dir / "config").string()}}));
    std::printf("  for scale, reading the 15 MB file with cat:");
    const ProgramRun cat = runProgram({"/bin/cat", (dir / "junk.vmx").string()});
    std::printf(" %.0f ms wall, %.0f ms processor\n", cat.wallMs, cat.cpuMs);

    std::error_code ec;
    fs::remove_all(dir, ec);
    return ok ? 0 : 1;
}
