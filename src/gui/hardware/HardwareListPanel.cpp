#include "gui/config/HardwareListPanel.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "core/hardware/DeviceTexts.h"
#include "gui/support/Icons.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kKeyRole = Qt::UserRole;

// The processor and the memory are part of every machine; every other device can be removed.
bool removable(DeviceType type) { return type != DeviceType::Cpu && type != DeviceType::Memory; }

}  // namespace

HardwareListPanel::HardwareListPanel(VmConfiguration& config, QWidget* parent) : QWidget(parent), config_(config) {
    lvwHardwareList_ = makeListView("lvwHardwareList", this, captions_, 201, 203);
    cmdHardwareRemove_ = named<QPushButton>("cmdHardwareRemove", this);
    captions_.add(cmdHardwareRemove_, 206);
    cmdHardwareRemove_->setEnabled(false);
    connect(lvwHardwareList_, &QTreeWidget::currentItemChanged, this, &HardwareListPanel::showDevice);
    connect(cmdHardwareRemove_, &QPushButton::clicked, this, &HardwareListPanel::removeSelected);

    auto* listSide = new QWidget(this);
    auto* listLayout = new QVBoxLayout(listSide);
    listLayout->setContentsMargins(0, 0, 0, 0);
    listLayout->addWidget(lvwHardwareList_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdHardwareRemove_);
    listLayout->addLayout(buttons);

    // The page of the selected device.
    sstHardware_ = named<QStackedWidget>("sstHardware", this);
    auto* fraDeviceSummary = named<QGroupBox>("fraDeviceSummary", sstHardware_);
    deviceForm_ = new QFormLayout(fraDeviceSummary);
    auto addRow = [&](const char* captionName, int captionId, const char* valueName) {
        auto* caption = named<QLabel>(captionName, fraDeviceSummary);
        captions_.add(caption, captionId, ":");
        auto* value = named<QLabel>(valueName, fraDeviceSummary);
        value->setWordWrap(true);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        deviceForm_->addRow(caption, value);
        return value;
    };
    lblDeviceText_ = addRow("lblDeviceCaption", 201, "lblDeviceText");
    lblDeviceType_ = addRow("lblDeviceTypeCaption", 202, "lblDeviceType");
    lblDeviceNode_ = addRow("lblDeviceNodeCaption", 323, "lblDeviceNode");
    lblMemoryRange_ = addRow("lblMemoryRangeCaption", 292, "lblMemoryRange");
    lblDeviceSummary_ = addRow("lblDeviceSummaryCaption", 203, "lblDeviceSummary");
    auto* devicePage = new QWidget(sstHardware_);
    auto* pageLayout = new QVBoxLayout(devicePage);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    pageLayout->addWidget(fraDeviceSummary);
    pageLayout->addStretch(1);
    sstHardware_->addWidget(devicePage);

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
    clearDevice();
}

void HardwareListPanel::fill() {
    lvwHardwareList_->clear();
    for (const HardwareListEntry& e : config_.devices.hardwareList()) {
        auto* item = new QTreeWidgetItem(lvwHardwareList_, {QString::fromStdString(e.text), QString::fromStdString(e.summary)});
        item->setData(0, kKeyRole, QString::fromStdString(e.key));
        item->setIcon(0, deviceIcon(typeNumber(e.type)));
        item->setToolTip(1, item->text(1));
    }
    if (QTreeWidgetItem* first = lvwHardwareList_->topLevelItem(0)) {
        lvwHardwareList_->setCurrentItem(first);
    } else {
        clearDevice();
    }
}

void HardwareListPanel::showSelected() { showDevice(lvwHardwareList_->currentItem()); }

void HardwareListPanel::relabel(int languageOffset) {
    languageOffset_ = languageOffset;
    captions_.apply(languageOffset);
    showSelected();
}

void HardwareListPanel::clearDevice() {
    for (QLabel* value : {lblDeviceText_, lblDeviceType_, lblDeviceNode_, lblMemoryRange_, lblDeviceSummary_})
        value->clear();
    deviceForm_->setRowVisible(lblDeviceNode_, false);
    deviceForm_->setRowVisible(lblMemoryRange_, false);
    cmdHardwareRemove_->setEnabled(false);
}

void HardwareListPanel::showDevice(QTreeWidgetItem* item) {
    DeviceType type{};
    std::string identifier;
    // A key that names no device leaves the page as it was.
    if (!item || !parseHardwareListKey(item->data(0, kKeyRole).toString().toStdString(), type, identifier)) return;
    const Device* device = config_.devices.find(type, identifier);
    if (!device) return;
    sstHardware_->setCurrentIndex(0);
    lblDeviceText_->setText(QString::fromStdString(config_.devices.displayText(*device)));
    lblDeviceType_->setText(uiText(deviceTypeNameId(type), languageOffset_));
    lblDeviceSummary_->setText(QString::fromStdString(config_.devices.summary(*device)));
    lblDeviceNode_->setText(QString::fromStdString(nodeLabel(device->node)));
    deviceForm_->setRowVisible(lblDeviceNode_, isNodeDevice(type));
    // The memory a machine may have depends on the product it is made for.
    const ProductFigures figures = config_.figures();
    lblMemoryRange_->setText(QStringLiteral("%1 - %2 ").arg(figures.memoryMinMb).arg(figures.memoryMaxMb) +
                             uiText(293, languageOffset_));
    deviceForm_->setRowVisible(lblMemoryRange_, type == DeviceType::Memory);
    cmdHardwareRemove_->setEnabled(removable(type));
}

void HardwareListPanel::removeSelected() {
    QTreeWidgetItem* item = lvwHardwareList_->currentItem();
    DeviceType type{};
    std::string identifier;
    if (!item || !parseHardwareListKey(item->data(0, kKeyRole).toString().toStdString(), type, identifier)) return;
    if (!removable(type) || !config_.devices.remove(type, identifier)) return;
    const int row = lvwHardwareList_->indexOfTopLevelItem(item);
    delete item;  // the list moves its current entry to a neighbour
    if (lvwHardwareList_->topLevelItemCount() == 0) clearDevice();
    else lvwHardwareList_->setCurrentItem(lvwHardwareList_->topLevelItem(std::min(row, lvwHardwareList_->topLevelItemCount() - 1)));
    emit removed();
}

}  // namespace arden::gui
