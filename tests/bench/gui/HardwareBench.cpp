#include "HardwareBench.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "gui/config/Builder.h"
#include "gui/hardware/HardwareListPanel.h"
#include "gui/hardware/frmAddHardware.h"
#include "gui/support/Prompts.h"

namespace arden::bench {
namespace {

constexpr int kRuns = 7;

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

double msSince(const QElapsedTimer& t) { return t.nsecsElapsed() / 1e6; }

// 60 devices: 2 processors, memory, 2 floppy drives, 3 parallel and 4 serial ports, sound,
// 3 network adapters, USB, 2 IDE and 4 SCSI controllers, 30 hard disks, a DVD/CD-ROM drive,
// 4 generic SCSI devices, display and mouse. Every IDE and SCSI node is taken.
std::string sixtyDevices() {
    std::string t = "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\nnumvcpus = \"2\"\r\nmemsize = \"512\"\r\n";
    auto key = [&](const std::string& k, const std::string& v) { t += k + " = \"" + v + "\"\r\n"; };
    for (int i = 0; i < 2; ++i) key("floppy" + std::to_string(i) + ".present", "TRUE");
    for (int i = 0; i < 3; ++i) key("parallel" + std::to_string(i) + ".present", "TRUE");
    for (int i = 0; i < 4; ++i) key("serial" + std::to_string(i) + ".present", "TRUE");
    for (int i = 0; i < 3; ++i) key("ethernet" + std::to_string(i) + ".present", "TRUE");
    key("sound.present", "TRUE");
    key("usb.present", "TRUE");
    for (int c = 0; c < 2; ++c) {
        key("ide" + std::to_string(c) + ".present", "TRUE");
        for (int n = 0; n < 2; ++n) {
            const std::string p = "ide" + std::to_string(c) + ":" + std::to_string(n);
            key(p + ".present", "TRUE");
            key(p + ".fileName", c == 1 && n == 0 ? "auto detect" : p + ".vmdk");
            if (c == 1 && n == 0) key(p + ".deviceType", "cdrom-raw");
        }
    }
    for (int c = 0; c < 4; ++c) {
        key("scsi" + std::to_string(c) + ".present", "TRUE");
        key("scsi" + std::to_string(c) + ".virtualDev", "lsilogic");
        // Controller 0 is a wide one: three more disks on nodes 8 to 10.
        for (int n = 0; n < (c == 0 ? 11 : 7); ++n) {
            if (n == 7) continue;  // the controller's own node
            const std::string p = "scsi" + std::to_string(c) + ":" + std::to_string(n);
            key(p + ".present", "TRUE");
            key(p + ".fileName", n == 6 ? "/dev/sg" + std::to_string(c) : p + ".vmdk");
            if (n == 6) key(p + ".deviceType", "scsi-passthru");
        }
    }
    key("svga.maxWidth", "1600");
    key("vmmouse.present", "TRUE");
    return t;
}

// 100 devices of a Workstation 17.5x machine: 4 processors, memory, a floppy drive, a parallel
// and 2 serial ports, sound, 4 network adapters, USB, a paravirtual SCSI controller with 15 disks
// (nodes 0-15 but 7), 4 SATA controllers with 20 disks and 4 drives, 4 NVMe controllers with
// 34 disks, a drive on IDE 1:0, display and mouse.
std::string hundredDevices() {
    std::string t = "config.version = \"8\"\r\nvirtualHW.version = \"21\"\r\nnumvcpus = \"4\"\r\nmemsize = \"4096\"\r\n";
    auto key = [&](const std::string& k, const std::string& v) { t += k + " = \"" + v + "\"\r\n"; };
    auto disk = [&](const std::string& p) {
        key(p + ".present", "TRUE");
        key(p + ".fileName", p + ".vmdk");
    };
    key("floppy0.present", "TRUE");
    key("parallel0.present", "TRUE");
    for (int i = 0; i < 2; ++i) key("serial" + std::to_string(i) + ".present", "TRUE");
    for (int i = 0; i < 4; ++i) key("ethernet" + std::to_string(i) + ".present", "TRUE");
    key("sound.present", "TRUE");
    key("usb.present", "TRUE");
    key("ide1:0.present", "TRUE");
    key("ide1:0.fileName", "auto detect");
    key("ide1:0.deviceType", "cdrom-raw");
    key("scsi0.present", "TRUE");
    key("scsi0.virtualDev", "pvscsi");
    for (int n = 0; n < 16; ++n) {
        if (n != 7) disk("scsi0:" + std::to_string(n));
    }
    for (int c = 0; c < 4; ++c) {
        const std::string sata = "sata" + std::to_string(c);
        key(sata + ".present", "TRUE");
        for (int n = 0; n < 5; ++n) disk(sata + ":" + std::to_string(n));
        key(sata + ":5.present", "TRUE");
        key(sata + ":5.fileName", "auto detect");
        key(sata + ":5.deviceType", "cdrom-raw");
        const std::string nvme = "nvme" + std::to_string(c);
        key(nvme + ".present", "TRUE");
        for (int n = 0; n < (c < 2 ? 9 : 8); ++n) disk(nvme + ":" + std::to_string(n));
    }
    key("svga.maxWidth", "2560");
    key("vmmouse.present", "TRUE");
    return t;
}

std::unique_ptr<gui::Builder> openShown(const QString& file) {
    auto editor = std::make_unique<gui::Builder>();
    editor->EditExistingFile = true;
    editor->ExistingVmxFileName = file;
    editor->CreateBackups = false;
    if (!editor->start()) return nullptr;
    if (auto* tabs = editor->findChild<QTabWidget*>("sstMain")) tabs->setCurrentIndex(1);  // Hardware
    editor->resize(1280, 800);
    editor->show();
    QApplication::processEvents();
    return editor;
}

}  // namespace

namespace {

bool benchMachine(const QString& file, const std::string& text, const char* product) {
    {
        std::ofstream out(file.toStdString(), std::ios::binary);
        out << text;
    }
    gui::PromptScript quiet;  // the "No available ... nodes" notices are answered at once
    auto editor = openShown(file);
    if (!editor) return false;
    auto* list = editor->findChild<QTreeWidget*>("lvwHardwareList");
    const int devices = list->topLevelItemCount();

    std::vector<double> fillMs, chooseMs;
    for (int i = 0; i < kRuns; ++i) {
        QElapsedTimer t;
        t.start();
        editor->hardware()->fill();
        fillMs.push_back(msSince(t));
    }
    // Every entry in turn, each followed by the events that lay out and paint its page.
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < devices; ++i) {
            QElapsedTimer t;
            t.start();
            list->setCurrentItem(list->topLevelItem(i));
            QApplication::processEvents();
            chooseMs.push_back(msSince(t));
        }
    }

    // Add: from the click to the dialog's first event, and from OK to the new device's page
    // shown (a DVD/CD-ROM drive is not offered while every node is taken: then the first type
    // the dialog offers).
    std::vector<double> openMs, addMs;
    for (int i = 0; i < kRuns; ++i) {
        auto fresh = openShown(file);
        if (!fresh) return false;
        QElapsedTimer t;
        QTimer::singleShot(0, [&] {
            openMs.push_back(msSince(t));
            auto* dialog = qobject_cast<gui::frmAddHardware*>(QApplication::activeModalWidget());
            if (!dialog) return;
            auto* rows = dialog->findChild<QTreeWidget*>("lvwAvailableHardware");
            // A drive while a node is free (placement runs), else the first type offered.
            auto* ok = dialog->findChild<QPushButton*>("cmdOK");
            QTreeWidgetItem* row = rows->findItems("DVD/CD-ROM Drive", Qt::MatchExactly, 0).value(0);
            if (row) rows->setCurrentItem(row);
            for (int r = 0; (!row || !ok->isEnabled()) && r < rows->topLevelItemCount(); ++r) {
                row = rows->topLevelItem(r);
                rows->setCurrentItem(row);
            }
            t.restart();
            // A machine at every limit adds nothing: the dialog is cancelled.
            if (ok->isEnabled()) ok->click();
            else dialog->reject();
        });
        t.start();
        fresh->findChild<QPushButton*>("cmdHardwareAdd")->click();
        QApplication::processEvents();
        addMs.push_back(msSince(t));
    }

    const long overFrame = std::count_if(chooseMs.begin(), chooseMs.end(), [](double ms) { return ms > 16.0; });
    std::printf("hardware side of an editor on a %s machine with %d devices (median; one frame is 16 ms)\n", product,
                devices);
    std::printf("  fill the hardware list                  %7.2f ms\n", median(fillMs));
    std::printf("  choose an entry and show its page       %7.2f ms (slowest %.2f ms, %ld of %zu over 16 ms)\n",
                median(chooseMs), *std::max_element(chooseMs.begin(), chooseMs.end()), overFrame, chooseMs.size());
    std::printf("  open the Add dialog                     %7.2f ms\n", median(openMs));
    std::printf("  add a device and show its page          %7.2f ms\n", median(addMs));
    return true;
}

}  // namespace

bool benchHardware(const QString& scratchFolder) {
    return benchMachine(scratchFolder + "/sixty.vmx", sixtyDevices(), "Workstation 5.5x") &&
           benchMachine(scratchFolder + "/hundred.vmx", hundredDevices(), "Workstation 17.5x");
}

}  // namespace arden::bench
