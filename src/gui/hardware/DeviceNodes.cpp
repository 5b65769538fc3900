// The node frame of the disk-like device pages (part of DevicePage).
#include <QComboBox>
#include <QGridLayout>
#include <QRadioButton>

#include "gui/hardware/DevicePage.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui {

QGroupBox* DevicePage::nodeFrame(const char* ideOption, const char* ideList, const char* scsiOption,
                                 const char* scsiList, const char* sataOption, const char* sataList,
                                 const char* nvmeOption, const char* nvmeList) {
    auto* f = frame("fraNode", 323);  // "Virtual Device Node"
    auto* grid = new QGridLayout(f);
    auto addBus = [&](Bus bus, const char* optionName, const char* listName, int captionId) {
        if (!listName) return;
        QRadioButton* opt = optionName ? option(f, optionName, captionId) : nullptr;
        auto* list = named<QComboBox>(listName, f);
        const int row = static_cast<int>(nodeBuses_.size());
        if (opt) grid->addWidget(opt, row, 0);
        grid->addWidget(list, row, 1);
        nodeBuses_.push_back({bus, opt, list});
        connect(list, &QComboBox::activated, this,
                [this, list](int index) { chooseNodeLabel(list->itemText(index).toStdString()); });
        if (opt) connect(opt, &QRadioButton::clicked, this, [this, bus] { chooseBus(bus); });
    };
    addBus(Bus::Ide, ideOption, ideList, 324);     // "IDE"
    addBus(Bus::Scsi, scsiOption, scsiList, 325);  // "SCSI"
    addBus(Bus::Sata, sataOption, sataList, 408);  // "SATA"
    addBus(Bus::Nvme, nvmeOption, nvmeList, 409);  // "NVMe"
    grid->setColumnStretch(1, 1);
    onFill([this](const Device& d) { showNodes(d); });
    return f;
}

void DevicePage::showNodes(const Device& d) {
    const std::string placed = placedNodeLabel(d);
    const auto onBus = busFromName(d.node.ControllerType());
    for (const NodeBus& b : nodeBuses_) {
        QStringList labels;
        for (const std::string& label : nodeList(config_.devices, b.bus)) labels << qs(label);
        b.list->clear();
        b.list->addItems(labels);
        // A device on the other bus (or on none) shows this bus's list without a choice.
        const bool mine = onBus == b.bus && !placed.empty();
        const bool shown = !busRow(b.bus).declaredControllers || b.bus == Bus::Scsi || !labels.isEmpty() || mine;
        if (b.option) b.option->setVisible(shown);
        b.list->setVisible(shown);
        if (b.option) {
            b.option->setAutoExclusive(false);
            b.option->setChecked(mine);
            b.option->setAutoExclusive(true);
        }
        int index = -1;
        for (int i = 0; mine && i < b.list->count() && index < 0; ++i) {
            const QString label = b.list->itemText(i);
            if (label == qs(placed) || label.startsWith(qs(placed + " "))) index = i;
        }
        if (!mine) {
            b.list->addItem(qs(std::string(kNoNodeLabel)));
            index = b.list->count() - 1;
        }
        b.list->setCurrentIndex(index);
    }
}

void DevicePage::chooseNodeLabel(const std::string& label) {
    if (filling_) return;
    std::optional<Message> message;
    store([&](Device&) {
        NodeChoice choice = chooseNode(config_.devices, type_, identifier_, label);
        message = std::move(choice.message);
        return choice.changed;
    });
    if (message) showMessage(this, *message, languageOffset());
    refill();  // relabels the lists and shows where the device sits now
}

void DevicePage::chooseBus(Bus bus) {
    if (filling_) return;
    std::optional<Message> message;
    store([&](Device&) {
        NodeChoice choice = arden::chooseBus(config_.devices, type_, identifier_, bus);
        message = std::move(choice.message);
        return choice.changed;
    });
    if (message) showMessage(this, *message, languageOffset());
    refill();
}

}  // namespace arden::gui
