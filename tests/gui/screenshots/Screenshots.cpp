// arden_screenshots OUTDIR [SUFFIX] [--language en|de|fr|es|it]: renders every window of the
// program offscreen, in one language, to OUTDIR/NAME SUFFIX.png (English) or
// OUTDIR/CODE/NAME SUFFIX.png (the other languages), at a 1280x800 main window. Run it with
// QT_SCALE_FACTOR=2 for the 2x pictures.
//
// The pictures are stored with a palette of at most 256 colours: window pictures have few
// colours, and the files are committed, so they are kept small.
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <cstdio>
#include <cstring>

#include "WindowTour.h"
#include "gui/shell/frmMain.h"
#include "gui/support/Prompts.h"

namespace {

struct Language {
    const char* code;
    int offset;
};
constexpr Language kLanguages[] = {{"en", 0}, {"de", 500}, {"fr", 1000}, {"es", 1500}, {"it", 2000}};

int usage() {
    std::fprintf(stderr, "usage: arden_screenshots OUTDIR [SUFFIX] [--language en|de|fr|es|it]\n");
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir scratch;
    qputenv("TMPDIR", (scratch.path() + "/").toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (scratch.path() + "/config").toLocal8Bit());
    QApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const Language* language = &kLanguages[0];
    if (const int at = args.indexOf("--language"); at >= 0) {
        if (at + 1 >= args.size()) return usage();
        language = nullptr;
        for (const Language& l : kLanguages)
            if (args[at + 1] == QLatin1String(l.code)) language = &l;
        if (!language) return usage();
        args.remove(at, 2);
    }
    if (args.isEmpty() || args.size() > 2) return usage();
    QString out = args[0];
    if (language->offset != 0) out += QStringLiteral("/") + language->code;
    const QString suffix = args.size() > 1 ? args[1] : QString();
    QDir().mkpath(out);
    arden::gui::PromptScript quiet;

    arden::gui::frmMain window;
    window.resize(1280, 800);
    bool failed = false;
    tourWindows(window, {language->offset, scratch.path(), true}, [&](QWidget* w, const QString& name) {
        const QString file = out + "/" + name + suffix + ".png";
        const QImage picture = w->grab().toImage().convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
        if (!picture.save(file)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            failed = true;
        } else {
            std::printf("%s\n", qPrintable(file));
        }
    });
    return failed ? 1 : 0;
}
