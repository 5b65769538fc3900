#include "gui/hardware/frmAddHardware.h"

#include <QDialogButtonBox>
#include <QStringList>
#include <algorithm>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "gui/config/ConfigWidgets.h"
#include "gui/support/Icons.h"
#include "gui/support/Mnemonics.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kTypeRole = Qt::UserRole;

}  // namespace

frmAddHardware::frmAddHardware(const DeviceCounts& counts, const DeviceMaxima& maxima, int languageOffset,
                               QWidget* parent, const std::vector<NotOffered>& notOffered)
    : QDialog(parent), counts_(counts), maxima_(maxima), languageOffset_(languageOffset) {
    setObjectName("frmAddHardware");
    setWindowTitle(uiText(90, languageOffset));  // "Add New Hardware"
    auto* lblDeviceType = named<QLabel>("lblDeviceType", uiText(91, languageOffset), this);  // "New Device Type?"

    Captions captions;
    lvwAvailableHardware_ = makeListView("lvwAvailableHardware", this, captions, 201, 371);  // "Device", "In This Machine"
    captions.apply(languageOffset);
    lvwAvailableHardware_->setIconSize(QSize(20, 20));
    // Every type the product has, with how many the machine holds; a type at its limit stays
    // listed, greyed, and says why it cannot be added. A disk-like type with no free node it may
    // sit on is left out, and the label below the list says why.
    QTreeWidgetItem* firstAddable = nullptr;
    QStringList leftOut;
    for (const NotOffered& n : notOffered)
        leftOut << uiText(deviceTypeNameId(n.type), languageOffset) + " - " + uiText(n.reasonId, languageOffset);
    for (DeviceType type : listedDeviceTypes(counts, maxima)) {
        if (std::any_of(notOffered.begin(), notOffered.end(), [&](const NotOffered& n) { return n.type == type; }))
            continue;
        const int n = typeNumber(type);
        const int count = counts[static_cast<std::size_t>(n)];
        auto* item = new QTreeWidgetItem(lvwAvailableHardware_,
                                         {uiText(deviceTypeNameId(type), languageOffset), QString::number(count)});
        item->setIcon(0, deviceIcon(n));
        item->setData(0, kTypeRole, n);
        const AddHardwareInfo info = addHardwareInfo(type, count, maxima);
        if (!info.okEnabled) {
            for (int column : {0, 1}) {
                item->setForeground(column, palette().brush(QPalette::Disabled, QPalette::Text));
                item->setToolTip(column, uiText(info.text, languageOffset));
            }
        } else if (!firstAddable) {
            firstAddable = item;
        }
    }
    lblDeviceType->setBuddy(lvwAvailableHardware_);

    auto* lblNotOffered = named<QLabel>("lblNotOffered", this);
    lblNotOffered->setWordWrap(true);
    lblNotOffered->setText(uiText(390, languageOffset) + "\n" + leftOut.join("\n"));
    lblNotOffered->setVisible(!leftOut.isEmpty());

    lblInfo_ = named<QLabel>("lblInfo", this);
    lblInfo_->setWordWrap(true);
    lblInfo_->setMinimumHeight(lblInfo_->fontMetrics().lineSpacing() * 2);
    cmdOK_ = named<QPushButton>("cmdOK", uiText(50, languageOffset), this);
    auto* cmdCancel = named<QPushButton>("cmdCancel", uiText(51, languageOffset), this);
    cmdOK_->setDefault(true);
    cmdOK_->setEnabled(false);  // until a row is chosen
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdOK_, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (QTreeWidgetItem* item = lvwAvailableHardware_->currentItem())
            chosen_ = deviceTypeFromNumber(item->data(0, kTypeRole).toInt());
        if (chosen_) accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(lvwAvailableHardware_, &QTreeWidget::currentItemChanged, this, &frmAddHardware::rowChosen);
    connect(lvwAvailableHardware_, &QTreeWidget::itemDoubleClicked, this, [this, buttons] {
        if (cmdOK_->isEnabled()) emit buttons->accepted();
    });

    // The first type that may be added is chosen, and shown so.
    if (firstAddable) lvwAvailableHardware_->setCurrentItem(firstAddable);
    lvwAvailableHardware_->setFocus();

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblDeviceType);
    layout->addWidget(lvwAvailableHardware_, 1);
    layout->addWidget(lblNotOffered);
    layout->addWidget(lblInfo_);
    layout->addWidget(buttons);
    resize(420, 460);
    assignMnemonics(this);
}

void frmAddHardware::rowChosen() {
    QTreeWidgetItem* item = lvwAvailableHardware_->currentItem();
    const auto type = item ? deviceTypeFromNumber(item->data(0, kTypeRole).toInt()) : std::nullopt;
    if (!type) {
        lblInfo_->clear();
        cmdOK_->setEnabled(false);
        return;
    }
    const AddHardwareInfo info = addHardwareInfo(*type, counts_[static_cast<std::size_t>(typeNumber(*type))], maxima_);
    lblInfo_->setText(uiText(info.text, languageOffset_));
    cmdOK_->setEnabled(info.okEnabled);
}

}  // namespace arden::gui
