// bench_disk_gui [FOLDER] [GIB]: makes a preallocated disk of GIB GiB (default 4) in FOLDER
// (default: the temporary folder) by writing zeros, as on a file system that cannot reserve
// space, through the progress dialog of the desktop program. A 1 ms timer runs throughout;
// the gaps between its turns are how long the window could not answer. Prints the longest
// gap, the 99th percentile and the write rate; removes the disk. Never fails on time.
#include <QApplication>
#include <QElapsedTimer>
#include <QProgressDialog>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "gui/disks/DiskCreationProgress.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const fs::path folder = fs::path(argc > 1 ? argv[1] : fs::temp_directory_path().string()) / "arden-bench-disk-gui";
    const std::int64_t gib = argc > 2 ? std::atoll(argv[2]) : 4;
    fs::remove_all(folder);
    fs::create_directories(folder);

    QWidget window;
    window.resize(640, 400);
    window.show();

    std::vector<double> gaps;
    QElapsedTimer clock;
    qint64 last = -1;
    int labelChanges = 0;
    QString lastLabel;
    QTimer tick;
    tick.setTimerType(Qt::PreciseTimer);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        const qint64 now = clock.nsecsElapsed();
        if (last >= 0) gaps.push_back(static_cast<double>(now - last) / 1e6);
        last = now;
        // What a user sees: the dialog's text changes as the bytes go by.
        if (auto* p = window.findChild<QProgressDialog*>("dlgDiskProgress");
            p && p->labelText() != lastLabel) {
            lastLabel = p->labelText();
            ++labelChanges;
        }
    });

    arden::disks::NewDiskRequest request{folder / "bench.vmdk", arden::disks::DiskAdapter::LsiLogic, gib * 2097152,
                                         arden::disks::DiskKind::Preallocated, 3};
    clock.start();
    tick.start(1);
    arden::disks::DiskCreationResult result = arden::gui::runDiskCreation(&window, request, {true});
    const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    tick.stop();
    std::error_code ec;
    const auto written = fs::file_size(folder / "bench-flat.vmdk", ec);
    fs::remove_all(folder);

    std::sort(gaps.begin(), gaps.end());
    const std::vector<double> writeGaps = gaps;
    gaps.clear();
    last = -1;
    // The same measure for as long with nothing being written: how long the machine itself
    // keeps the window waiting (other programs on the same cores).
    clock.start();
    tick.start(1);
    QTimer::singleShot(static_cast<int>(seconds * 1000), &app, &QCoreApplication::quit);
    app.exec();
    tick.stop();
    std::sort(gaps.begin(), gaps.end());
    const double idleLongest = gaps.empty() ? 0 : gaps.back();
    const double idleP99 = gaps.empty() ? 0 : gaps[gaps.size() * 99 / 100];
    gaps = writeGaps;

    const double longest = gaps.empty() ? 0 : gaps.back();
    const double p99 = gaps.empty() ? 0 : gaps[gaps.size() * 99 / 100];
    std::printf("disk: %lld GiB preallocated by writing zeros, %s (%llu bytes)\n", static_cast<long long>(gib),
                result.created ? "made" : "FAILED", static_cast<unsigned long long>(ec ? 0 : written));
    std::printf("time: %.2f s (%.0f MiB/s)\n", seconds, static_cast<double>(gib) * 1024 / seconds);
    std::printf("GUI events: %zu timer turns, progress text changed %d times\n", gaps.size(), labelChanges);
    std::printf("longest gap between two processed events: %.1f ms (99th percentile %.1f ms; limit 50 ms)\n", longest, p99);
    std::printf("the same for as long with nothing written: %.1f ms (99th percentile %.1f ms)\n", idleLongest, idleP99);
    return result.created ? 0 : 1;
}
