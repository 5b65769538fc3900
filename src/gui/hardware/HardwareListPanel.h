#pragma once
// The Hardware tab of an editor: the list of the machine's devices (key "H" + type + "|" +
// identifier, display text, summary, type icon) with its Add and Remove commands, and beside
// it the page set, showing the page of the chosen device filled from its settings.
#include <QWidget>
#include <string>

#include "core/config/VmConfiguration.h"
#include "gui/config/ConfigWidgets.h"

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace arden::gui {

class DevicePages;

class HardwareListPanel : public QWidget {
    Q_OBJECT
public:
    HardwareListPanel(VmConfiguration& config, QWidget* parent);

    // One entry per device of the store, then the first entry chosen.
    void fill();
    // Shows the chosen device again (its page follows the product settings).
    void showSelected();
    void relabel(int languageOffset);

    DevicePages* pages() const { return sstHardware_; }

    // Add entry: an entry for the device, placed among the entries of its type, chosen and
    // its page shown.
    void addEntry(DeviceType type, const std::string& identifier);
    // Find entry: the position of the entry of (type, identifier), or -1.
    int findEntry(DeviceType type, const std::string& identifier) const;
    // Chooses the entry of (type, identifier) and shows its page; false when the list has none.
    bool chooseEntry(DeviceType type, const std::string& identifier);

signals:
    // The machine's devices changed (a device was added, removed or edited on its page).
    void edited();

private:
    void showDevice(QTreeWidgetItem* item);
    void addDevice();
    void removeSelected();
    // Every entry's text and summary again; when devices were numbered again in node order,
    // the entries in the store's order, the chosen one kept.
    void refreshEntries();
    // The disk file of a new hard disk: created (Yes) or chosen (No); empty when cancelled.
    QString askDiskFile(const Device& disk);
    // Removes a SCSI controller; one that holds devices asks first, naming them. True when removed.
    bool removeControllerAsked(DeviceType type, const std::string& identifier);
    QTreeWidgetItem* makeItem(const HardwareListEntry& entry) const;

    VmConfiguration& config_;
    int languageOffset_ = 0;
    QTreeWidget* lvwHardwareList_;
    QPushButton* cmdHardwareAdd_;
    QPushButton* cmdHardwareRemove_;
    DevicePages* sstHardware_;
    Captions captions_;
};

}  // namespace arden::gui
