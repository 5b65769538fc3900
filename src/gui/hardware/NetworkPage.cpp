#include "gui/hardware/NetworkPage.h"

#include "gui/config/TypedText.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <random>

#include "core/config/NetworkAdapterTypes.h"
#include "core/config/ProductTables.h"
#include "core/hardware/NetworkAdapter.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

// Connection options in the order of NicConnection, with their captions.
constexpr std::pair<const char*, int> kConnectionOptions[] = {
    {"optNetConnBridged", 345}, {"optNetConnHostOnly", 346}, {"optNetConnNat", 347}, {"optNetConnCustom", 348}};
constexpr const char* kOctetNames[6] = {"txtNetMac0", "txtNetMac1", "txtNetMac2", "txtNetMac3", "txtNetMac4", "txtNetMac5"};

}  // namespace

NetworkPage::NetworkPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Network, parent) {
    setObjectName("fraNicPage");
    stack({statusFrame("chkNicEnabled", "chkNicConnectedBoot"), typeFrame(), connectionFrame(), addressFrame()});
}

QGroupBox* NetworkPage::typeFrame() {
    auto* f = frame("fraNicType", 354);  // "Network Adapter Type"
    cboNicType_ = named<QComboBox>("cboNicType", f);
    // Each entry holds the position of its type in the table of adapter types.
    connect(cboNicType_, &QComboBox::activated, this, [this](int index) {
        const int position = cboNicType_->itemData(index).toInt();
        store([&](Device& d) { return setAdapterNicType(d.settings, position); });
    });
    auto* layout = new QVBoxLayout(f);
    layout->addWidget(cboNicType_);
    return f;
}

QGroupBox* NetworkPage::connectionFrame() {
    auto* f = frame("fraNetConnection", 344);  // "Network Connection"
    auto* layout = new QVBoxLayout(f);
    connections_ = new QButtonGroup(f);
    for (int i = 0; i < 4; ++i) {
        auto* button = option(f, kConnectionOptions[i].first, kConnectionOptions[i].second);
        connections_->addButton(button, i);
        layout->addWidget(button);
    }
    cboNicConnection_ = named<QComboBox>("cboNicConnection", f);
    for (std::string_view entry : nicConnectionEntries()) cboNicConnection_->addItem(qs(std::string(entry)));
    indentedRow(layout, {cboNicConnection_});
    connect(connections_, &QButtonGroup::idClicked, this, &NetworkPage::chooseConnection);
    connect(cboNicConnection_, &QComboBox::activated, this, [this] {
        connections_->button(static_cast<int>(NicConnection::Custom))->setChecked(true);
        chooseConnection(static_cast<int>(NicConnection::Custom));
    });
    onFill([this](const Device& d) {
        const NicConnection c = adapterConnection(d.settings);
        connections_->button(static_cast<int>(c))->setChecked(true);
        const int network = adapterVirtualNetwork(d.settings);
        cboNicConnection_->setCurrentIndex(c == NicConnection::Custom ? network : -1);
        cboNicConnection_->setEnabled(c == NicConnection::Custom);
    });
    return f;
}

QGroupBox* NetworkPage::addressFrame() {
    auto* f = frame("fraNetMac", 327);  // "MAC Address"
    optNetMacGenerated_ = option(f, "optNetMacGenerated", 351);
    optNetMacStatic_ = option(f, "optNetMacStatic", 352);
    auto* modes = new QButtonGroup(f);
    modes->addButton(optNetMacGenerated_);
    modes->addButton(optNetMacStatic_);
    connect(optNetMacGenerated_, &QRadioButton::clicked, this, [this] { chooseMode(MacMode::Generated); });
    connect(optNetMacStatic_, &QRadioButton::clicked, this, [this] { chooseMode(MacMode::Static); });

    auto* octets = new QHBoxLayout;
    octets->addSpacing(24);
    const int width = fontMetrics().horizontalAdvance("WW") + 16;
    for (int i = 0; i < 6; ++i) {
        auto* box = named<QLineEdit>(kOctetNames[i], f);
        box->setFixedWidth(width);
        box->setAlignment(Qt::AlignCenter);
        box->setAccessibleName(QStringLiteral("MAC address octet %1").arg(i + 1));
        connect(box, &QLineEdit::editingFinished, this, [this, i] { leaveOctet(i); });
        txtNetMac_[static_cast<std::size_t>(i)] = box;
        if (i > 0) octets->addWidget(new QLabel(":", f));
        octets->addWidget(box);
    }
    cmdNetMacGenerate_ = named<QPushButton>("cmdNetMacGenerate", "Generate", f);
    cmdNetMacGenerate_->setToolTip("Fill in a random address of the static range");
    connect(cmdNetMacGenerate_, &QPushButton::clicked, this, &NetworkPage::generateStaticAddress);
    octets->addSpacing(12);
    octets->addWidget(cmdNetMacGenerate_);
    octets->addStretch(1);

    txtNetMacGenOffset_ = numberBox(
        f, "txtNetMacGenOffset", ".generatedAddressOffset",
        [](std::string_view text) {
            if (text.empty()) return NumberCheck{};
            OffsetCheck check = checkMacOffset(text);
            return NumberCheck{check.value, check.refusal};
        },
        [](long long stored) { return QString::number(stored); });
    // Room for the longest offset, "-2147483648".
    txtNetMacGenOffset_->setMaximumWidth(fontMetrics().horizontalAdvance("-2147483648") + 24);
    auto* offset = new QFormLayout;
    addCaptionedRow(offset, captions_, "lblNetMacGenOffset", 353, txtNetMacGenOffset_);  // "Generated Address Offset"

    auto* layout = new QVBoxLayout(f);
    layout->addWidget(optNetMacGenerated_);
    auto* offsetRow = indentedRow(layout, {});
    offsetRow->addLayout(offset);
    offsetRow->addStretch(1);
    layout->addWidget(optNetMacStatic_);
    layout->addLayout(octets);
    onFill([this](const Device& d) {
        const MacMode mode = adapterMacMode(d.settings);
        showMode(mode, macBoxesForMode(mode, storedMacAddress(d.settings, mode)));
    });
    return f;
}

void NetworkPage::fillPage(const Device& d) {
    // The types the product offers; an adapter whose type is not among them shows none.
    const int version = config_.product.version;
    cboNicType_->clear();
    const auto positions = offeredNicTypes(config_.product.platform, version < 0 ? lastVersion(config_.product.platform) : version);
    for (int position : positions)
        cboNicType_->addItem(qs(std::string(nicTypes()[static_cast<std::size_t>(position)].name)), position);
    const auto position = adapterNicType(d.settings);
    cboNicType_->setCurrentIndex(position ? cboNicType_->findData(*position) : -1);
}

MacMode NetworkPage::shownMode() const { return optNetMacStatic_->isChecked() ? MacMode::Static : MacMode::Generated; }

void NetworkPage::showMode(MacMode mode, const MacBoxes& boxes) {
    (mode == MacMode::Static ? optNetMacStatic_ : optNetMacGenerated_)->setChecked(true);
    for (std::size_t i = 0; i < 6; ++i) {
        txtNetMac_[i]->setText(qs(boxes[i]));
        markRefused(txtNetMac_[i], false);
    }
    txtNetMacGenOffset_->setEnabled(mode == MacMode::Generated);
    cmdNetMacGenerate_->setEnabled(mode == MacMode::Static);
}

void NetworkPage::chooseMode(MacMode mode) {
    store([&](Device& d) { showMode(mode, chooseAdapterMacMode(d.settings, mode)); });
}

void NetworkPage::chooseConnection(int option) {
    const auto connection = static_cast<NicConnection>(option);
    const bool custom = connection == NicConnection::Custom;
    if (custom && cboNicConnection_->currentIndex() < 0) cboNicConnection_->setCurrentIndex(0);
    cboNicConnection_->setEnabled(custom);
    store([&](Device& d) { setAdapterConnection(d.settings, connection, cboNicConnection_->currentIndex()); });
}

void NetworkPage::leaveOctet(int index) {
    if (filling() || !device()) return;
    QLineEdit* box = txtNetMac_[static_cast<std::size_t>(index)];
    std::string accepted;
    const bool refused = !checkMacOctet(shownMode(), index, box->text().toStdString(), accepted);
    markRefused(box, refused);
    if (refused) {
        box->clear();
        showMessage(this, macRangeMessage(shownMode()), languageOffset());
        box->setFocus();
        return;
    }
    box->setText(qs(accepted));
    storeBoxes();
}

void NetworkPage::storeBoxes() {
    MacBoxes boxes;
    for (std::size_t i = 0; i < 6; ++i) boxes[i] = txtNetMac_[i]->text().toStdString();
    const auto address = joinMacBoxes(boxes);
    if (!address) return;  // incomplete: the adapter keeps its last complete address
    store([&](Device& d) {
        if (d.settings.get(macAddressKey(adapterMacMode(d.settings))) == *address) return false;
        setAdapterMacAddress(d.settings, *address);
        return true;
    });
}

void NetworkPage::generateStaticAddress() {
    std::random_device entropy;
    showMode(MacMode::Static, macBoxesForMode(MacMode::Static, staticMacAddress(entropy())));
    storeBoxes();
}

}  // namespace arden::gui
