// Favourites at scale: a settings file holding 200,000 favourites read, listed and written
// in-process, shown on the Home list, and listed by `arden-forge-cli favorites list` as a
// whole program (time and peak memory). Prints figures; never fails on time.
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

// Runs the CLI with the settings of `dir`; wall time in ms and peak resident memory in MB.
bool runCli(const char* cli, const fs::path& dir, double& ms, double& peakMb) {
    const auto start = Clock::now();
    pid_t pid = fork();
    if (pid == 0) {
        setenv("TMPDIR", (dir.string() + "/").c_str(), 1);
        setenv("XDG_CONFIG_HOME", (dir / "config").c_str(), 1);
        if (!freopen("/dev/null", "w", stdout)) _exit(127);
        execl(cli, cli, "favorites", "list", static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid < 0 || wait4(pid, &status, 0, &usage) != pid) return false;
    ms = msSince(start);
    peakMb = usage.ru_maxrss / 1024.0;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const fs::path dir = fs::temp_directory_path() / ("arden-bench-favorites-" + std::to_string(getpid()));
    fs::create_directories(dir / "config");
    {
        std::ofstream ini(dir / "ArdenForge.ini", std::ios::binary);
        ini << "[General]\r\nCreateBackups=-1\r\n[Favorites]\r\n";
        for (int i = 0; i < kFavorites; ++i)
            ini << "Favorite" << i << "=Machine " << i << "\t/home/user/vms/m" << i << "/m" << i << ".vmx\t8\r\n";
    }

    arden::cRegistry registry{arden::openFileRegistryStore(dir / "config" / "registry.ini", dir / "dev")};
    arden::ProgramSettings settings;
    settings.TempFolder = dir.string() + "/";
    auto start = Clock::now();
    arden::LoadSettings(settings, registry);
    const double loadMs = msSince(start);
    start = Clock::now();
    const auto rows = arden::favoriteListRows(settings.Favorites);
    const double rowsMs = msSince(start);
    start = Clock::now();
    const bool saved = arden::SaveSettings(settings, registry).empty();
    const double saveMs = msSince(start);
    arden::gui::HomeList home;
    start = Clock::now();
    home.UpdateFavoritesList(settings.Favorites);
    const double listMs = msSince(start);

    std::printf("%d favourites (%zu loaded, %zu rows, %d on the Home list)\n", kFavorites, settings.Favorites.size(),
                rows.size(), home.list()->topLevelItemCount());
    std::printf("  LoadSettings               %8.1f ms\n", loadMs);
    std::printf("  rows with file look-ups    %8.1f ms\n", rowsMs);
    std::printf("  SaveSettings               %8.1f ms%s\n", saveMs, saved ? "" : " (FAILED)");
    std::printf("  Home list filled           %8.1f ms\n", listMs);
    double cliMs = 0, cliMb = 0;
    if (argc > 1 && runCli(argv[1], dir, cliMs, cliMb))
        std::printf("  arden-forge-cli favorites list: %.1f ms, %.1f MB peak (target < 1000 ms, < 200 MB)\n", cliMs,
                    cliMb);
    else if (argc > 1)
        std::printf("  arden-forge-cli favorites list FAILED\n");
    std::error_code ec;
    fs::remove_all(dir, ec);
    return saved && settings.Favorites.size() == std::size_t(kFavorites) ? 0 : 1;
}
