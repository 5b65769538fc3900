// arden_screenshots OUTDIR [SUFFIX]: renders the program's windows offscreen to OUTDIR/NAME SUFFIX.png
// at a 1280x800 main window. Run it with QT_SCALE_FACTOR=2 for the 2x pictures.
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <cstdio>
#include <filesystem>

#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>

#include "core/disks/DiskInformation.h"
#include "core/shell/Favorites.h"
#include "gui/disks/DiskCreationProgress.h"
#include "gui/disks/frmCreateHD.h"
#include "gui/support/UiText.h"
#include "gui/config/Builder.h"
#include "gui/shell/frmMain.h"
#include "gui/shell/frmOptions.h"
#include "gui/support/Prompts.h"

namespace {

QString g_out, g_suffix;

void save(QWidget* w, const QString& name) {
    QApplication::processEvents();
    const QString file = g_out + "/" + name + g_suffix + ".png";
    if (!w->grab().save(file)) std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
    else std::printf("%s\n", qPrintable(file));
}

// The create-disk dialog as the hard-disk page opens it, its progress dialog part-way through
// a preallocation (then cancelled), and the summary box of the disk it made.
void saveDiskWindows(QWidget* window, const QString& folder) {
    using namespace arden::disks;
    arden::gui::CreateDiskRequest preset;
    preset.folder = folder;
    preset.adapter = DiskAdapter::LsiLogic;
    arden::gui::frmCreateHD create(preset, window);
    create.findChild<QLineEdit*>("txtNewDisk")->setText("WinXPPro-data");
    create.show();
    create.adjustSize();
    save(&create, "create-disk");

    QTimer grab;
    QObject::connect(&grab, &QTimer::timeout, [&] {
        auto* progress = window->findChild<QProgressDialog*>("dlgDiskProgress");
        if (!progress || progress->value() < 20) return;
        grab.stop();
        save(progress, "create-disk-progress");
        progress->cancel();
    });
    grab.start(20);
    NewDiskRequest big{folder.toStdString() + "/WinXPPro-big.vmdk", DiskAdapter::LsiLogic, 2 * 2097152, DiskKind::Preallocated, 3};
    arden::gui::runDiskCreation(window, big, {true});

    NewDiskRequest data{folder.toStdString() + "/WinXPPro-data.vmdk", DiskAdapter::Ide, 8 * 2097152, DiskKind::GrowableSplit, 3};
    createDisk(data);
    DiskReadResult read = readDiskInformation(data.descriptorPath);
    if (!read.information) return;
    arden::Message summary = diskSummaryMessage(*read.information, DiskBus::Scsi);
    QMessageBox box(QMessageBox::Information, arden::gui::uiText(summary.title, 0), arden::gui::uiText(summary.text, 0),
                    QMessageBox::Ok, window);
    box.show();
    save(&box, "disk-information");
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir scratch;
    qputenv("TMPDIR", (scratch.path() + "/").toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (scratch.path() + "/config").toLocal8Bit());
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: arden_screenshots OUTDIR [SUFFIX]\n");
        return 2;
    }
    g_out = QString::fromLocal8Bit(argv[1]);
    g_suffix = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    QDir().mkpath(g_out);
    arden::gui::PromptScript quiet;

    const std::filesystem::path corpus = std::filesystem::path(ARDEN_CORPUS_DIR) / "vmx";
    const QString sample = QString::fromStdString((corpus / "ubuntuforumsarchive__WinXPPro-server104-hw4.vmx").string());
    QDir().mkpath(scratch.path() + "/WinXP");
    const QString copy = scratch.path() + "/WinXP/WinXPPro.vmx";
    QFile::copy(sample, copy);

    arden::gui::frmMain window;
    window.resize(1280, 800);
    auto& favs = window.settings().Favorites;
    arden::AddFavorite(favs, {"Windows XP Professional", copy.toStdString(), 8, 0});
    arden::AddFavorite(favs, {"Build Server", "/srv/vm/build/build.vmx", 8, 0});
    arden::AddFavorite(favs, {"Legacy NT4", "/srv/vm/nt4/nt4.vmx", 7, 0});
    window.UpdateFavoritesList();
    window.show();
    save(&window, "main-home");

    window.settings().CreateBackups = false;
    arden::gui::Builder* editor = window.OpenEditorTab(true, copy, {}, 8, {});
    if (!editor) return 1;
    auto* tabs = editor->findChild<QTabWidget*>("sstMain");
    auto* options = editor->findChild<QTreeWidget*>("lvwOptionsList");
    const char* pages[] = {"general", "power", "shared-folders", "snapshots", "isolation", "advanced"};
    for (int i = 0; options && i < options->topLevelItemCount() && i < 6; ++i) {
        options->setCurrentItem(options->topLevelItem(i));
        save(&window, QString("editor-") + pages[i]);
    }
    if (tabs) {
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->widget(i)->findChild<QTreeWidget*>("lvwHardwareList")) {
                tabs->setCurrentIndex(i);
                auto* hw = tabs->widget(i)->findChild<QTreeWidget*>("lvwHardwareList");
                if (hw->topLevelItemCount() > 6) hw->setCurrentItem(hw->topLevelItem(6));
                save(&window, "editor-hardware");
            }
        }
    }

    arden::gui::frmOptions dialog({scratch.path(), true, {}, {}, 0}, &window);
    dialog.show();
    dialog.adjustSize();
    save(&dialog, "options");
    dialog.hide();
    saveDiskWindows(&window, scratch.path() + "/WinXP");
    return 0;
}
