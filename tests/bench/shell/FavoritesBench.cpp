// Favourites at scale: a settings file holding 200,000 favourites read, listed and written
// in-process, shown on the Home list, and listed by `arden-forge-cli favorites list` as a
// whole program (time and peak memory). Wall time and processor time are both printed: on a
// shared machine the wall time includes waiting for a processor. Prints figures; never fails on
// time.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QTreeWidget>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "ProgramRun.h"
#include "core/shell/ProgramSettings.h"
#include "core/support/RegistryStore.h"
#include "core/support/cRegistry.h"
#include "gui/shell/HomeList.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int kFavorites = 200000;

double msSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double cpuMs(const rusage& u) {
    return (u.ru_utime.tv_sec + u.ru_stime.tv_sec) * 1e3 + (u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e3;
}

// Wall and processor time of one step of this process.
struct Timed {
    double wall = 0, cpu = 0;
    template <class F>
    explicit Timed(F&& step) {
        rusage before{}, after{};
        getrusage(RUSAGE_SELF, &before);
        const auto start = Clock::now();
        step();
        wall = msSince(start);
        getrusage(RUSAGE_SELF, &after);
        cpu = cpuMs(after) - cpuMs(before);
    }
};

}  // namespace

int main(int argc, char** argv) {
    const fs::path dir = fs::temp_directory_path() / ("arden-bench-favorites-" + std::to_string(getpid()));
    fs::create_directories(dir / "config");
    {
        std::ofstream ini(dir / "ArdenForge.ini", std::ios::binary);
        ini << "[General]\r\nCreateBackups=-1\r\n[Favorites]\r\n";
        for (int i = 0; i < kFavorites; ++i)
            ini << "Favorite" << i << "=Machine " << i << "\t/home/user/vms/m" << i << "/m" << i << ".vmx\t8\r\n";
    }

    // The whole program first, while this process is small: a child's peak memory counts what
    // it inherited before starting the program.
    arden::bench::ProgramRun cli;
    if (argc > 1)
        cli = arden::bench::runProgram({argv[1], "favorites", "list"}, {{"TMPDIR", dir.string() + "/"},
                                                                        {"XDG_CONFIG_HOME", (dir / "config").string()}});

    QApplication app(argc, argv);
    arden::cRegistry registry{arden::openFileRegistryStore(dir / "config" / "registry.ini", dir / "dev")};
    arden::ProgramSettings settings;
    settings.TempFolder = dir.string() + "/";
    const Timed load([&] { arden::LoadSettings(settings, registry); });
    std::vector<arden::FavoriteRow> rows;
    const Timed listed([&] { rows = arden::favoriteListRows(settings.Favorites); });
    bool saved = false;
    const Timed save([&] { saved = arden::SaveSettings(settings, registry).empty(); });
    arden::gui::HomeList home;
    const Timed shown([&] { home.UpdateFavoritesList(settings.Favorites); });

    std::printf("%d favourites (%zu loaded, %zu rows, %d on the Home list)\n", kFavorites, settings.Favorites.size(),
                rows.size(), home.list()->topLevelItemCount());
    const std::pair<const char*, const Timed*> steps[] = {
        {"LoadSettings", &load}, {"rows with file look-ups", &listed}, {"SaveSettings", &save}, {"Home list filled", &shown}};
    for (const auto& [what, t] : steps) std::printf("  %-26s %8.1f ms wall, %8.1f ms processor\n", what, t->wall, t->cpu);
    if (!saved) std::printf("  SaveSettings FAILED\n");
    if (cli.ran)
        std::printf("  arden-forge-cli favorites list: %.1f ms wall, %.1f ms processor, %.1f MB peak "
                    "(target < 1000 ms, < 200 MB)\n",
                    cli.wallMs, cli.cpuMs, cli.peakMb);
    else if (argc > 1)
        std::printf("  arden-forge-cli favorites list FAILED\n");
    std::error_code ec;
    fs::remove_all(dir, ec);
    return saved && settings.Favorites.size() == std::size_t(kFavorites) ? 0 : 1;
}
