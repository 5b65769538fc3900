// Desktop program figures: time from process start to the main window shown, beside a bare
// Qt window started the same way in the same run, and the time to open a 10,000-line
// configuration in an editor tab, the hardware side on a machine with 60 devices, and undo and
// redo on one with 100. Prints figures; never fails on time.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <vector>

#include "BigConfiguration.h"
#include "HardwareBench.h"
#include "UndoBench.h"
#include "gui/config/Builder.h"
#include "gui/support/Prompts.h"

namespace {

constexpr int kRuns = 7;

// The bare window: a QApplication showing one empty main window, quitting once it is shown,
// exactly as the program does under the start-up probe.
int runBareWindow(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.resize(1100, 720);
    window.show();
    QTimer::singleShot(0, &app, &QCoreApplication::quit);
    return app.exec();
}

double medianMs(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// Wall time of whole runs of `program`, from start to exit, in milliseconds.
std::vector<double> timeRuns(const QString& program, const QStringList& args, const QProcessEnvironment& env) {
    std::vector<double> ms;
    for (int i = 0; i < kRuns; ++i) {
        QProcess p;
        p.setProcessEnvironment(env);
        QElapsedTimer t;
        t.start();
        p.start(program, args);
        if (!p.waitForFinished(60000) || p.exitCode() != 0) {
            std::fprintf(stderr, "%s failed: %s\n", qPrintable(program), p.readAllStandardError().constData());
            return {};
        }
        ms.push_back(t.nsecsElapsed() / 1e6);
    }
    return ms;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && QString::fromLocal8Bit(argv[1]) == "--bare-window") return runBareWindow(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_gui PATH-TO-arden-forge\n");
        return 2;
    }
    const QString program = QString::fromLocal8Bit(argv[1]);
    QApplication app(argc, argv);

    QTemporaryDir scratch;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("ARDEN_STARTUP_PROBE", "1");
    env.insert("TMPDIR", scratch.path() + "/");
    env.insert("XDG_CONFIG_HOME", scratch.path() + "/config");
    if (!env.contains("QT_QPA_PLATFORM")) env.insert("QT_QPA_PLATFORM", "offscreen");

    // One untimed run each first, so that both start from a warm file cache.
    timeRuns(program, {}, env);
    const auto ours = timeRuns(program, {}, env);
    const auto bare = timeRuns(QCoreApplication::applicationFilePath(), {"--bare-window"}, env);
    if (ours.empty() || bare.empty()) return 1;
    const double o = medianMs(ours), b = medianMs(bare);
    std::printf("start-up to main window shown (median of %d runs, %s platform)\n", kRuns,
                qPrintable(env.value("QT_QPA_PLATFORM")));
    std::printf("  arden-forge      %8.1f ms\n  bare Qt window   %8.1f ms\n  ratio            %8.2f (target <= 1.5)\n",
                o, b, o / b);

    // Opening a 10,000-line configuration in an editor tab.
    const QString file = scratch.path() + "/big.vmx";
    {
        std::ofstream out(file.toStdString(), std::ios::binary);
        out << arden::bench::bigConfiguration(10000);
    }
    arden::gui::PromptScript quiet;  // no backup notice box in the way
    std::vector<double> openMs;
    for (int i = 0; i < kRuns; ++i) {
        QElapsedTimer t;
        t.start();
        arden::gui::Builder editor;
        editor.EditExistingFile = true;
        editor.ExistingVmxFileName = file;
        editor.CreateBackups = false;
        if (!editor.start()) {
            std::fprintf(stderr, "could not open %s\n", qPrintable(file));
            return 1;
        }
        openMs.push_back(t.nsecsElapsed() / 1e6);
    }
    std::printf("open a 10,000-line configuration in an editor tab (median of %d): %.1f ms (target < 100 ms)\n",
                kRuns, medianMs(openMs));
    return arden::bench::benchHardware(scratch.path()) && arden::bench::benchUndo(scratch.path()) ? 0 : 1;
}
