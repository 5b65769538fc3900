#include "WindowTour.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <filesystem>

#include "SharingScreens.h"
#include "core/config/HardwareFigures.h"
#include "core/disks/DiskInformation.h"
#include "core/shell/Favorites.h"
#include "gui/config/Builder.h"
#include "gui/disks/DiskCreationProgress.h"
#include "gui/disks/frmCreateHD.h"
#include "gui/hardware/frmAddHardware.h"
#include "gui/shell/frmAbout.h"
#include "gui/shell/frmMain.h"
#include "gui/shell/frmOptions.h"
#include "gui/support/Icons.h"
#include "gui/support/UiText.h"

namespace {

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

class Tour {
public:
    Tour(arden::gui::frmMain& window, const TourOptions& options, const TourVisit& visit)
        : window_(window), options_(options), visit_(visit), lang_(options.languageOffset) {}

    void run() {
        window_.settings().LanguageOffset = lang_;
        window_.UpdateUILabels();
        homeTab();
        editorPages();
        devicePages();
        laterMachine();
        saveSharingScreens(window_, folder(), lang_, [this](QWidget* w, const QString& name) { show(w, name); });
        optionsAndAbout();
        diskWindows();
    }

private:
    QString folder() const { return options_.scratchFolder + "/WinXP"; }

    void show(QWidget* w, const QString& name) {
        // Twice: a hidden control's frame shrinks on the first pass, its page on the second.
        QApplication::processEvents();
        QApplication::processEvents();
        visit_(w, name);
    }

    void homeTab() {
        auto& favs = window_.settings().Favorites;
        arden::AddFavorite(favs, {"Windows XP Professional", kNeutralFolder + "/WinXP/WinXPPro.vmx", 8, 0});
        arden::AddFavorite(favs, {"Build Server", kNeutralFolder + "/build/build.vmx", 8, 0});
        arden::AddFavorite(favs, {"Legacy NT4", kNeutralFolder + "/nt4/nt4.vmx", 7, 0});
        arden::AddFavorite(favs, {"Old Test Rig", kNeutralFolder + "/retired/rig.vmx", 8, 0});
        window_.UpdateFavoritesList();
        showPresent(window_, 3);  // all but the last stand for files that are there
        window_.show();
        show(&window_, "main-home");
    }

    // The General ... Advanced pages and the hardware list of a real Workstation machine (the
    // corpus sample), else of the machine with every device.
    void editorPages() {
        QDir().mkpath(folder());
        const QString copy = folder() + "/WinXPPro.vmx";
        const auto sample = std::filesystem::path(ARDEN_CORPUS_DIR) / "vmx" / "ubuntuforumsarchive__WinXPPro-server104-hw4.vmx";
        QFile::remove(copy);
        if (!QFile::copy(QString::fromStdString(sample.string()), copy)) {
            QFile out(copy);
            if (out.open(QIODevice::WriteOnly)) out.write(kEveryDevice);
        }
        window_.settings().CreateBackups = false;
        arden::gui::Builder* editor = window_.OpenEditorTab(true, copy, {}, 8, {});
        if (!editor) return;
        if (auto* box = editor->findChild<QLineEdit*>("txtVmxFolder")) {
            const QSignalBlocker quiet(box);  // shown only: the model keeps the real folder
            box->setText(QString::fromStdString(kNeutralFolder + "/WinXP"));
        }
        auto* options = editor->findChild<QTreeWidget*>("lvwOptionsList");
        const char* pages[] = {"general", "power", "shared-folders", "snapshots", "isolation", "advanced"};
        for (int i = 0; options && i < options->topLevelItemCount() && i < 6; ++i) {
            options->setCurrentItem(options->topLevelItem(i));
            show(&window_, QString("editor-") + pages[i]);
        }
        auto* tabs = editor->findChild<QTabWidget*>("sstMain");
        auto* hw = editor->findChild<QTreeWidget*>("lvwHardwareList");
        if (!tabs || !hw) return;
        tabs->setCurrentIndex(1);  // Hardware
        if (hw->topLevelItemCount() > 6) hw->setCurrentItem(hw->topLevelItem(6));
        show(&window_, "editor-hardware");
    }

    // Every device page of an editor on the machine with every device, then frmAddHardware for it.
    void devicePages() {
        arden::gui::Builder* editor = openWrittenMachine(window_, folder() + "/Every Device.vmx", kEveryDevice);
        if (!editor) return;
        auto* tabs = editor->findChild<QTabWidget*>("sstMain");
        auto* hw = editor->findChild<QTreeWidget*>("lvwHardwareList");
        tabs->setCurrentIndex(1);  // Hardware
        for (int type = 0; type < 15; ++type) {
            const QString prefix = QStringLiteral("H%1|").arg(type);
            for (int i = 0; i < hw->topLevelItemCount(); ++i) {
                if (hw->topLevelItem(i)->data(0, Qt::UserRole).toString().startsWith(prefix)) {
                    hw->setCurrentItem(hw->topLevelItem(i));
                    show(&window_, QString("device-") + kDevicePages[type]);
                    break;
                }
            }
        }
        const arden::VmConfiguration& config = editor->configuration();
        arden::gui::frmAddHardware dialog(config.devices.counts(), arden::deviceMaxima(config), lang_, &window_);
        dialog.show();
        if (auto* list = dialog.findChild<QTreeWidget*>("lvwAvailableHardware"); list && list->topLevelItemCount() > 0) {
            const auto disks = list->findItems(arden::gui::uiText(105, lang_), Qt::MatchExactly, 0);  // "Hard Disk"
            list->setCurrentItem(disks.isEmpty() ? list->topLevelItem(0) : disks.front());
        }
        show(&dialog, "add-hardware");
    }

    // A Workstation 17 machine of the corpus: its hardware list with the NVMe disk and the SATA
    // drive, the processor page with firmware and cores per socket, and its SATA controller.
    void laterMachine() {
        QDir().mkpath(folder());
        const QString copy = folder() + "/Windows 10 x64.vmx";
        const auto sample = std::filesystem::path(ARDEN_CORPUS_DIR) / "vmx" / "lanrenlan-configbackup__Windows-10-x64.vmx";
        QFile::remove(copy);
        if (!QFile::copy(QString::fromStdString(sample.string()), copy)) return;
        arden::gui::Builder* editor = window_.OpenEditorTab(true, copy, {}, 8, {});
        if (!editor) return;
        auto* tabs = editor->findChild<QTabWidget*>("sstMain");
        auto* hw = editor->findChild<QTreeWidget*>("lvwHardwareList");
        if (!tabs || !hw) return;
        tabs->setCurrentIndex(1);  // Hardware
        const std::pair<int, const char*> pages[] = {{10, "later-hard-disk"}, {0, "later-cpu"}, {15, "later-sata-controller"}};
        for (const auto& [type, name] : pages) {
            const QString prefix = QStringLiteral("H%1|").arg(type);
            for (int i = 0; i < hw->topLevelItemCount(); ++i) {
                if (hw->topLevelItem(i)->data(0, Qt::UserRole).toString().startsWith(prefix)) {
                    hw->setCurrentItem(hw->topLevelItem(i));
                    show(&window_, QString("device-") + name);
                    break;
                }
            }
        }
    }

    void optionsAndAbout() {
        arden::gui::frmOptions dialog({"/home/user/.config/Arden Forge", true, {}, "/home/user/iso", lang_, "/tmp/"}, &window_);
        dialog.show();
        dialog.adjustSize();
        show(&dialog, "options");
        dialog.hide();
        arden::gui::frmAbout about(lang_, &window_);
        about.show();
        about.adjustSize();
        show(&about, "about");
    }

    // The create-disk dialog as the hard-disk page opens it, its progress dialog part-way
    // through a preallocation (then cancelled), and the summary box of the disk it made.
    void diskWindows() {
        using namespace arden::disks;
        arden::gui::CreateDiskRequest preset;
        preset.folder = folder();
        preset.adapter = DiskAdapter::LsiLogic;
        preset.languageOffset = lang_;
        arden::gui::frmCreateHD create(preset, &window_);
        create.findChild<QLineEdit*>("txtNewDisk")->setText("WinXPPro-data");
        create.findChild<QLineEdit*>("txtFolder")->setText(QString::fromStdString(kNeutralFolder + "/WinXP"));  // shown only
        create.show();
        create.adjustSize();
        show(&create, "create-disk");

        if (options_.diskProgress) {
            QTimer grab;
            QObject::connect(&grab, &QTimer::timeout, [&] {
                auto* progress = window_.findChild<QProgressDialog*>("dlgDiskProgress");
                if (!progress || progress->value() < 20) return;
                grab.stop();
                show(progress, "create-disk-progress");
                progress->cancel();
            });
            grab.start(20);
            NewDiskRequest big{folder().toStdString() + "/WinXPPro-big.vmdk", DiskAdapter::LsiLogic, 2 * 2097152,
                               DiskKind::Preallocated, 3};
            arden::gui::runDiskCreation(&window_, big, {true}, lang_);
        }

        NewDiskRequest data{folder().toStdString() + "/WinXPPro-data.vmdk", DiskAdapter::Ide, 8 * 2097152,
                            DiskKind::GrowableSplit, 3};
        createDisk(data);
        DiskReadResult read = readDiskInformation(data.descriptorPath);
        if (!read.information) return;
        read.information->folder = kNeutralFolder + "/WinXP";  // the user's folder, not the scratch copy
        arden::Message summary = diskSummaryMessage(*read.information, DiskBus::Scsi);
        QMessageBox box(QMessageBox::Information, arden::gui::uiText(summary.title, lang_),
                        arden::gui::uiText(summary.text, lang_), QMessageBox::Ok, &window_);
        box.show();
        show(&box, "disk-information");
    }

    arden::gui::frmMain& window_;
    const TourOptions& options_;
    const TourVisit& visit_;
    const int lang_;
};

}  // namespace

void tourWindows(arden::gui::frmMain& window, const TourOptions& options, const TourVisit& visit) {
    Tour(window, options, visit).run();
}
