// arden_screenshots OUTDIR [SUFFIX]: renders the program's windows offscreen to OUTDIR/NAME SUFFIX.png
// at a 1280x800 main window. Run it with QT_SCALE_FACTOR=2 for the 2x pictures.
//
// The pictures show a user's machines under /home/user/vms, never the scratch folder the sample
// really lies in: the sample is opened from a temporary copy, and the places where a path shows
// (the Home list, the editor's folder box, the options dialog) are given the neutral folder.
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QSignalBlocker>
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
#include "core/config/HardwareFigures.h"
#include "gui/disks/DiskCreationProgress.h"
#include "gui/disks/frmCreateHD.h"
#include "gui/support/UiText.h"
#include "gui/config/Builder.h"
#include "gui/hardware/frmAddHardware.h"
#include "gui/shell/frmMain.h"
#include "gui/shell/frmOptions.h"
#include "gui/support/Icons.h"
#include "gui/support/Prompts.h"
#include "SharingScreens.h"

namespace {

QString g_out, g_suffix;
const std::string kNeutralFolder = "/home/user/vms";

// The first `count` rows of the Home list get the icon of a configuration that is there.
void showPresent(QWidget& window, int count) {
    auto* list = window.findChild<QTreeWidget*>("lvwVMs");
    for (int i = 0; list && i < count && i < list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = list->topLevelItem(i);
        const QString key = row->data(0, Qt::UserRole).toString().remove("Missing");
        row->setIcon(0, arden::gui::machineIcon(key));
    }
}

void save(QWidget* w, const QString& name) {
    QApplication::processEvents();
    const QString file = g_out + "/" + name + g_suffix + ".png";
    if (!w->grab().save(file)) std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
    else std::printf("%s\n", qPrintable(file));
}

// A machine with a device of every type, so that every device page shows a filled device.
constexpr const char* kEveryDevice =
    "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\ndisplayName = \"Every Device\"\r\n"
    "guestOS = \"winxppro\"\r\nmemsize = \"512\"\r\nnumvcpus = \"2\"\r\n"
    "ide0.present = \"TRUE\"\r\nide0:0.present = \"TRUE\"\r\nide0:0.fileName = \"Every Device.vmdk\"\r\n"
    "ide1:0.present = \"TRUE\"\r\nide1:0.fileName = \"auto detect\"\r\nide1:0.deviceType = \"cdrom-raw\"\r\n"
    "ide1:0.autodetect = \"TRUE\"\r\nfloppy0.present = \"TRUE\"\r\nfloppy0.fileType = \"file\"\r\n"
    "floppy0.fileName = \"/srv/images/boot.flp\"\r\nserial0.present = \"TRUE\"\r\nserial0.fileType = \"pipe\"\r\n"
    "serial0.fileName = \"/tmp/com1\"\r\nserial0.pipe.endPoint = \"server\"\r\nparallel0.present = \"TRUE\"\r\n"
    "parallel0.fileType = \"device\"\r\nparallel0.fileName = \"/dev/parport0\"\r\nparallel0.bidirectional = \"TRUE\"\r\n"
    "ethernet0.present = \"TRUE\"\r\nethernet0.connectionType = \"nat\"\r\nsound.present = \"TRUE\"\r\nsound.virtualDev = \"es1371\"\r\n"
    "usb.present = \"TRUE\"\r\nscsi0.present = \"TRUE\"\r\nscsi0.virtualDev = \"lsilogic\"\r\n"
    "scsi0:0.present = \"TRUE\"\r\nscsi0:0.fileName = \"Data.vmdk\"\r\nscsi0:1.present = \"TRUE\"\r\n"
    "scsi0:1.deviceType = \"scsi-passthru\"\r\nscsi0:1.fileName = \"/dev/sg1\"\r\nsvga.maxWidth = \"1600\"\r\n"
    "svga.maxHeight = \"1200\"\r\nsvga.vramSize = \"16777216\"\r\nvmmouse.present = \"TRUE\"\r\n";

// File names of the device pages, by type number.
constexpr const char* kDevicePages[] = {"cpu",     "memory",     "floppy",          "parallel-port", "serial-port",
                                        "sound",   "network",    "usb",             "ide-controller", "scsi-controller",
                                        "hard-disk", "cd-rom",   "generic-scsi",    "display",       "mouse"};

// Every device page of an editor on the machine above, then frmAddHardware for it.
void saveDevicePages(arden::gui::frmMain& window, const QString& folder) {
    arden::gui::Builder* editor = openWrittenMachine(window, folder + "/Every Device.vmx", kEveryDevice);
    if (!editor) return;
    auto* tabs = editor->findChild<QTabWidget*>("sstMain");
    auto* hw = editor->findChild<QTreeWidget*>("lvwHardwareList");
    tabs->setCurrentIndex(1);  // Hardware
    for (int type = 0; type < 15; ++type) {
        const QString prefix = QStringLiteral("H%1|").arg(type);
        for (int i = 0; i < hw->topLevelItemCount(); ++i) {
            if (hw->topLevelItem(i)->data(0, Qt::UserRole).toString().startsWith(prefix)) {
                hw->setCurrentItem(hw->topLevelItem(i));
                save(&window, QString("device-") + kDevicePages[type]);
                break;
            }
        }
    }
    const arden::VmConfiguration& config = editor->configuration();
    arden::gui::frmAddHardware dialog(config.devices.counts(), arden::deviceMaxima(config), 0, &window);
    dialog.show();
    if (auto* list = dialog.findChild<QTreeWidget*>("lvwAvailableHardware"); list && list->topLevelItemCount() > 0) {
        const auto disks = list->findItems("Hard Disk", Qt::MatchExactly, 0);
        list->setCurrentItem(disks.isEmpty() ? list->topLevelItem(0) : disks.front());
    }
    save(&dialog, "add-hardware");
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
    create.findChild<QLineEdit*>("txtFolder")->setText(QString::fromStdString(kNeutralFolder + "/WinXP"));  // shown only
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
    read.information->folder = kNeutralFolder + "/WinXP";  // the user's folder, not the scratch copy
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
    arden::AddFavorite(favs, {"Windows XP Professional", kNeutralFolder + "/WinXP/WinXPPro.vmx", 8, 0});
    arden::AddFavorite(favs, {"Build Server", kNeutralFolder + "/build/build.vmx", 8, 0});
    arden::AddFavorite(favs, {"Legacy NT4", kNeutralFolder + "/nt4/nt4.vmx", 7, 0});
    arden::AddFavorite(favs, {"Old Test Rig", kNeutralFolder + "/retired/rig.vmx", 8, 0});
    window.UpdateFavoritesList();
    showPresent(window, 3);  // all but the last stand for files that are there
    window.show();
    save(&window, "main-home");

    window.settings().CreateBackups = false;
    arden::gui::Builder* editor = window.OpenEditorTab(true, copy, {}, 8, {});
    if (!editor) return 1;
    if (auto* folder = editor->findChild<QLineEdit*>("txtVmxFolder")) {
        const QSignalBlocker quiet(folder);  // shown only: the model keeps the real folder
        folder->setText(QString::fromStdString(kNeutralFolder + "/WinXP"));
    }
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

    saveDevicePages(window, scratch.path() + "/WinXP");
    saveSharingScreens(window, scratch.path() + "/WinXP", save);

    arden::gui::frmOptions dialog({"/home/user/.config/Arden Forge", true, {}, "/home/user/iso", 0, "/tmp/"}, &window);
    dialog.show();
    dialog.adjustSize();
    save(&dialog, "options");
    dialog.hide();
    saveDiskWindows(&window, scratch.path() + "/WinXP");
    return 0;
}
