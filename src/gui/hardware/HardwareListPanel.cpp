#include "gui/hardware/HardwareListPanel.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QShortcut>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <random>

#include "core/config/HardwareFigures.h"
#include "core/hardware/DeviceDefaults.h"
#include "core/hardware/DeviceFiles.h"
#include "core/hardware/HardwareLimits.h"
#include "core/hardware/NodeAssignment.h"
#include "gui/disks/DiskDialogs.h"
#include "gui/hardware/DevicePages.h"
#include "gui/hardware/HardDiskPage.h"
#include "gui/hardware/frmAddHardware.h"
#include "gui/support/FocusMarker.h"
#include "gui/support/Icons.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kKeyRole = Qt::UserRole;

bool keyOf(const QTreeWidgetItem* item, DeviceType& type, std::string& identifier) {
    return item && parseHardwareListKey(item->data(0, kKeyRole).toString().toStdString(), type, identifier);
}

}  // namespace

HardwareListPanel::HardwareListPanel(VmConfiguration& config, QWidget* parent) : QWidget(parent), config_(config) {
    lvwHardwareList_ = makeListView("lvwHardwareList", this, captions_, 201, 203);
    cmdHardwareAdd_ = named<QPushButton>("cmdHardwareAdd", this);
    captions_.add(cmdHardwareAdd_, 205, "...");
    cmdHardwareRemove_ = named<QPushButton>("cmdHardwareRemove", this);
    captions_.add(cmdHardwareRemove_, 206);
    cmdHardwareRemove_->setEnabled(false);
    connect(lvwHardwareList_, &QTreeWidget::currentItemChanged, this, &HardwareListPanel::showDevice);
    connect(cmdHardwareAdd_, &QPushButton::clicked, this, &HardwareListPanel::addDevice);
    connect(cmdHardwareRemove_, &QPushButton::clicked, this, &HardwareListPanel::removeSelected);
    // Delete in the list removes the chosen device, as Remove does (when Remove may).
    auto* deleteKey = new QShortcut(QKeySequence::Delete, lvwHardwareList_);
    deleteKey->setContext(Qt::WidgetShortcut);
    connect(deleteKey, &QShortcut::activated, this, [this] {
        if (cmdHardwareRemove_->isEnabled()) removeSelected();
    });
    showFocusOf(lvwHardwareList_);

    auto* listSide = new QWidget(this);
    auto* listLayout = new QVBoxLayout(listSide);
    listLayout->setContentsMargins(0, 0, 0, 0);
    listLayout->addWidget(lvwHardwareList_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdHardwareAdd_);
    buttons->addWidget(cmdHardwareRemove_);
    listLayout->addLayout(buttons);

    sstHardware_ = new DevicePages(config_, this);
    connect(sstHardware_, &DevicePages::edited, this, [this] {
        refreshEntries();  // a node choice may have moved (and renumbered) other devices as well
        emit edited();
    });

    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(listSide);
    splitter->addWidget(sstHardware_);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({1000, 1000});  // equal halves to start with
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
}

QTreeWidgetItem* HardwareListPanel::makeItem(const HardwareListEntry& e) const {
    auto* item = new QTreeWidgetItem({qs(e.text), qs(e.summary)});
    item->setData(0, kKeyRole, qs(e.key));
    item->setIcon(0, deviceIcon(e.icon - 1));
    item->setToolTip(1, item->text(1));
    return item;
}

void HardwareListPanel::fill() {
    lvwHardwareList_->clear();
    QList<QTreeWidgetItem*> items;
    for (const HardwareListEntry& e : config_.devices.hardwareList()) items << makeItem(e);
    lvwHardwareList_->addTopLevelItems(items);
    if (QTreeWidgetItem* first = lvwHardwareList_->topLevelItem(0)) lvwHardwareList_->setCurrentItem(first);
    else cmdHardwareRemove_->setEnabled(false);
}

void HardwareListPanel::showSelected() { sstHardware_->refill(); }

void HardwareListPanel::relabel(int languageOffset) {
    languageOffset_ = languageOffset;
    captions_.apply(languageOffset);
    sstHardware_->relabel(languageOffset);
}

int HardwareListPanel::findEntry(DeviceType type, const std::string& identifier) const {
    const QString key = qs(hardwareListKey(type, identifier));
    for (int i = 0; i < lvwHardwareList_->topLevelItemCount(); ++i) {
        if (lvwHardwareList_->topLevelItem(i)->data(0, kKeyRole).toString() == key) return i;
    }
    return -1;
}

bool HardwareListPanel::chooseEntry(DeviceType type, const std::string& identifier) {
    QTreeWidgetItem* item = lvwHardwareList_->topLevelItem(findEntry(type, identifier));
    if (!item) return false;
    lvwHardwareList_->setCurrentItem(item);
    lvwHardwareList_->scrollToItem(item);
    return true;
}

void HardwareListPanel::showDevice(QTreeWidgetItem* item) {
    DeviceType type{};
    std::string identifier;
    // A key that names no device leaves the page as it was.
    if (!keyOf(item, type, identifier) || !config_.devices.find(type, identifier)) return;
    sstHardware_->showDevice(type, identifier);
    cmdHardwareRemove_->setEnabled(canRemoveDevice(type, config_.devices.count(type)));
}

void HardwareListPanel::refreshEntries() {
    const std::vector<HardwareListEntry> entries = config_.devices.hardwareList();
    bool sameOrder = static_cast<int>(entries.size()) == lvwHardwareList_->topLevelItemCount();
    for (int i = 0; sameOrder && i < lvwHardwareList_->topLevelItemCount(); ++i)
        sameOrder = lvwHardwareList_->topLevelItem(i)->data(0, kKeyRole).toString() == qs(entries[static_cast<std::size_t>(i)].key);
    if (!sameOrder) {
        // Devices were numbered again in node order: the list follows, the chosen entry stays chosen
        // and its page as it is.
        const QSignalBlocker blocker(lvwHardwareList_);
        QTreeWidgetItem* current = lvwHardwareList_->currentItem();
        const QString chosen = current ? current->data(0, kKeyRole).toString() : QString();
        lvwHardwareList_->clear();
        for (const HardwareListEntry& e : entries) {
            QTreeWidgetItem* item = makeItem(e);
            lvwHardwareList_->addTopLevelItem(item);
            if (qs(e.key) == chosen) lvwHardwareList_->setCurrentItem(item);
        }
        return;
    }
    for (int i = 0; i < lvwHardwareList_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = lvwHardwareList_->topLevelItem(i);
        const HardwareListEntry& e = entries[static_cast<std::size_t>(i)];
        item->setText(0, qs(e.text));
        item->setText(1, qs(e.summary));
        item->setToolTip(1, item->text(1));
    }
}

void HardwareListPanel::addEntry(DeviceType type, const std::string& identifier) {
    const Device* d = config_.devices.find(type, identifier);
    if (!d) return;
    // Among the entries of its type, after the last one of a type not above its own.
    int row = 0;
    for (; row < lvwHardwareList_->topLevelItemCount(); ++row) {
        DeviceType t{};
        std::string id;
        if (keyOf(lvwHardwareList_->topLevelItem(row), t, id) && typeNumber(t) > typeNumber(type)) break;
    }
    QTreeWidgetItem* item = makeItem(config_.devices.entry(*d));
    lvwHardwareList_->insertTopLevelItem(row, item);
    lvwHardwareList_->setCurrentItem(item);
    lvwHardwareList_->scrollToItem(item);
}

void HardwareListPanel::addDevice() {
    DeviceStore& store = config_.devices;
    std::vector<frmAddHardware::NotOffered> notOffered;
    for (DeviceType t : {DeviceType::HardDisk, DeviceType::CdRom, DeviceType::GenericScsi}) {
        if (!hasFreeNode(store, t)) notOffered.push_back({t, busAllowed(t, Bus::Ide) ? 391 : 392});
    }
    frmAddHardware dialog(store.counts(), deviceMaxima(config_), languageOffset_, this, notOffered);
    if (dialog.exec() != QDialog::Accepted || !dialog.chosenType()) return;
    Device& device = store.createDevice(*dialog.chosenType());
    if (device.type == DeviceType::Network) giveGeneratedAddress(store, device, std::random_device{}());
    const DeviceType type = device.type;
    const std::string identifier = device.identifier;
    if (isNodeDevice(type)) {
        const Placement placement = placeOnFirstFreeNode(store, device);
        for (const Message& notice : placement.notices) showMessage(this, notice, languageOffset_);
        // A device without a node would not be in the saved file: it is not added.
        if (!placement.placed) {
            store.remove(type, identifier);
            return;
        }
    }
    if (type == DeviceType::HardDisk) {
        const QString disk = askDiskFile(device);
        if (disk.isEmpty()) {
            store.remove(type, identifier);
            return;
        }
        useFile(*store.find(type, identifier), disk.toStdString());
    }
    addEntry(type, identifier);
    refreshEntries();  // the new device may come before others of its type in node order
    emit edited();
}

QString HardwareListPanel::askDiskFile(const Device& disk) {
    const int o = languageOffset_;
    const QString folder = qs(config_.identity.vmxFolder);
    if (showMessage(this, MessageKind::Question, uiText(393, o), uiText(394, o)) == Answer::Yes) {
        const bool scsi = disk.node.ControllerType() == busName(Bus::Scsi);
        const Device* controller = scsi ? config_.devices.findByNumber(DeviceType::ScsiController, disk.node.ControllerNumber())
                                        : nullptr;
        CreateDiskRequest preset;
        preset.folder = folder;
        preset.adapter = disks::adapterForNode(HardDiskPage::nodeBus(disk),
                                               controller ? controller->settings.text(".virtualDev") : std::string{});
        preset.languageOffset = o;
        QString path;
        return createDiskFor(this, preset, path) ? path : QString();
    }
    return pickOpenFile(this, uiText(337, o), uiText(338, o) + " (*.vmdk);;" + uiText(308, o) + " (*)",
                        pickerStartFolder(folder));
}

void HardwareListPanel::removeSelected() {
    QTreeWidgetItem* item = lvwHardwareList_->currentItem();
    DeviceType type{};
    std::string identifier;
    if (!keyOf(item, type, identifier)) return;
    if (!canRemoveDevice(type, config_.devices.count(type))) return;
    if (const auto bus = busOfController(type); bus && busRow(*bus).declaredControllers) {
        if (removeControllerAsked(type, identifier)) emit edited();
        return;
    }
    if (!config_.devices.remove(type, identifier)) return;
    const int row = lvwHardwareList_->indexOfTopLevelItem(item);
    delete item;  // the list moves its current entry to a neighbour
    if (lvwHardwareList_->topLevelItemCount() == 0) cmdHardwareRemove_->setEnabled(false);
    else lvwHardwareList_->setCurrentItem(lvwHardwareList_->topLevelItem(std::min(row, lvwHardwareList_->topLevelItemCount() - 1)));
    refreshEntries();  // the others of a disk-like type are numbered again
    emit edited();
}

bool HardwareListPanel::removeControllerAsked(DeviceType type, const std::string& identifier) {
    DeviceStore& store = config_.devices;
    const Device* controller = store.find(type, identifier);
    if (!controller) return false;
    QStringList held;
    for (const Device* d : devicesOnController(store, *busOfController(type), controller->number))
        held << qs(store.displayText(*d) + " (" + placedNodeLabel(*d) + ")");
    const int o = languageOffset_;
    // SCSI controllers keep their own texts; SATA and NVMe ones say "controller".
    const bool scsi = type == DeviceType::ScsiController;
    if (!held.isEmpty() &&
        showMessage(this, MessageKind::Question, uiText(scsi ? 395 : 405, o),
                    uiText(scsi ? 396 : 406, o) + "\n" + held.join("\n") + "\n\n" + uiText(397, o)) != Answer::Yes)
        return false;
    const std::vector<std::string> report = removeController(store, type, identifier);
    fill();
    if (!report.empty()) {
        QStringList lines;
        for (const std::string& line : report) lines << qs(line);
        showMessage(this, MessageKind::Information, uiText(scsi ? 398 : 407, o), lines.join("\n"));
    }
    return true;
}

}  // namespace arden::gui
