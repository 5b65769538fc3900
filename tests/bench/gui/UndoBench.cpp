#include "UndoBench.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QUndoStack>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "gui/config/Builder.h"
#include "gui/hardware/HardwareListPanel.h"
#include "gui/support/Prompts.h"

namespace arden::bench {
namespace {

// 100 devices: 2 processors, memory, 2 floppy drives, 3 parallel and 4 serial ports, sound,
// 15 network adapters (3 enabled), USB, 2 IDE controllers with 3 disks (IDE 1:1 is free), 4 wide
// SCSI controllers with 15 disks each, display and mouse.
std::string hundredDevices() {
    std::string t = "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\nnumvcpus = \"2\"\r\nmemsize = \"512\"\r\n";
    auto key = [&](const std::string& k, const std::string& v) { t += k + " = \"" + v + "\"\r\n"; };
    for (int i = 0; i < 2; ++i) key("floppy" + std::to_string(i) + ".present", "TRUE");
    for (int i = 0; i < 3; ++i) key("parallel" + std::to_string(i) + ".present", "TRUE");
    for (int i = 0; i < 4; ++i) key("serial" + std::to_string(i) + ".present", "TRUE");
    for (int i = 0; i < 15; ++i) key("ethernet" + std::to_string(i) + ".present", i < 3 ? "TRUE" : "FALSE");
    key("sound.present", "TRUE");
    key("usb.present", "TRUE");
    for (int c = 0; c < 2; ++c) {
        key("ide" + std::to_string(c) + ".present", "TRUE");
        for (int n = 0; n < 2 - c; ++n) {
            const std::string p = "ide" + std::to_string(c) + ":" + std::to_string(n);
            key(p + ".present", "TRUE");
            key(p + ".fileName", p + ".vmdk");
        }
    }
    for (int c = 0; c < 4; ++c) {
        key("scsi" + std::to_string(c) + ".present", "TRUE");
        key("scsi" + std::to_string(c) + ".virtualDev", "lsilogic");
        for (int n = 0; n < 16; ++n) {
            if (n == 7) continue;  // the controller's own node
            const std::string p = "scsi" + std::to_string(c) + ":" + std::to_string(n);
            key(p + ".present", "TRUE");
            key(p + ".fileName", p + ".vmdk");
        }
    }
    key("svga.maxWidth", "1600");
    key("vmmouse.present", "TRUE");
    return t;
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

double msSince(const QElapsedTimer& t) { return t.nsecsElapsed() / 1e6; }

template <typename T>
T* control(QWidget* root, const char* name) {
    return root->findChild<T*>(QString::fromLatin1(name));
}

// Chooses the nth entry of the hardware list whose text starts with `text`.
void choose(gui::Builder& editor, const QString& text) {
    auto* list = control<QTreeWidget>(&editor, "lvwHardwareList");
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        if (list->topLevelItem(i)->text(0).startsWith(text)) {
            list->setCurrentItem(list->topLevelItem(i));
            return;
        }
    }
}

}  // namespace

bool benchUndo(const QString& scratchFolder) {
    const QString file = scratchFolder + "/hundred.vmx";
    {
        std::ofstream out(file.toStdString(), std::ios::binary);
        out << hundredDevices();
    }
    gui::PromptScript quiet;
    gui::Builder editor;
    editor.EditExistingFile = true;
    editor.ExistingVmxFileName = file;
    editor.CreateBackups = false;
    if (!editor.start()) return false;
    editor.resize(1280, 800);
    editor.show();
    QApplication::processEvents();
    const int devices = control<QTreeWidget>(&editor, "lvwHardwareList")->topLevelItemCount();

    // Steps of every kind: a typed number, a removed device, a node taken from another device,
    // an option box, a typed name, a check box on a device page.
    const std::vector<std::function<void()>> edits = {
        [&] {
            choose(editor, "Memory");
            auto* box = control<QLineEdit>(&editor, "txtMemSize");
            box->setText("1024");
            emit box->editingFinished();
        },
        [&] {
            choose(editor, "Serial Port 4");
            control<QPushButton>(&editor, "cmdHardwareRemove")->click();
        },
        [&] {
            choose(editor, "Hard Disk 1");
            auto* nodes = control<QComboBox>(&editor, "cboHDIDE");
            nodes->setCurrentIndex(nodes->findText("IDE 1:0", Qt::MatchStartsWith));
            emit nodes->activated(nodes->currentIndex());
        },
        [&] { control<QCheckBox>(&editor, "chkSnapshotsEnabled")->click(); },
        [&] { control<QLineEdit>(&editor, "txtDisplayName")->setText("Hundred"); },
        [&] {
            choose(editor, "USB Controller");
            control<QCheckBox>(&editor, "chkUsbAutoConnect")->click();
        },
    };
    std::vector<double> undoMs, redoMs;
    for (int round = 0; round < 5; ++round) {
        for (const auto& edit : edits) edit();
        QApplication::processEvents();
        while (editor.history()->canUndo()) {
            QElapsedTimer t;
            t.start();
            editor.history()->undo();
            QApplication::processEvents();
            undoMs.push_back(msSince(t));
        }
        while (editor.history()->canRedo()) {
            QElapsedTimer t;
            t.start();
            editor.history()->redo();
            QApplication::processEvents();
            redoMs.push_back(msSince(t));
        }
        while (editor.history()->canUndo()) editor.history()->undo();
    }
    std::printf("undo and redo in an editor on a machine with %d devices (%zu steps each; one frame is 16 ms)\n",
                devices, undoMs.size());
    std::printf("  undo a step and show its page           %7.2f ms median, slowest %.2f ms (target < 16 ms)\n",
                median(undoMs), *std::max_element(undoMs.begin(), undoMs.end()));
    std::printf("  redo a step and show its page           %7.2f ms median, slowest %.2f ms (target < 16 ms)\n",
                median(redoMs), *std::max_element(redoMs.begin(), redoMs.end()));
    return true;
}

}  // namespace arden::bench
