#include "gui/hardware/CdRomPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace arden::gui {

CdRomPage::CdRomPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::CdRom, parent) {
    setObjectName("fraCDRPage");
    auto* fraConnection = frame("fraCDRConnection", 299);  // "Connection"
    auto* optCDRDrive = option(fraConnection, "optCDRDrive", 303);
    auto* cboCDRDrive = deviceList(fraConnection, "cboCDRDrive", {"auto detect"});
    auto* chkCDRExclusive = flagBox(fraConnection, "chkCDRExclusive", 333, ".exclusive", false);
    // Legacy emulation is the physical drive's kind ("atapi-cdrom"); an image has none.
    chkCDRLegacy_ = named<QCheckBox>("chkCDRLegacy", fraConnection);
    captions_.add(chkCDRLegacy_, 334);
    onFill([this](const Device& d) {
        const std::string kind = d.settings.text(".deviceType");
        chkCDRLegacy_->setChecked(legacyEmulation(kind));
        chkCDRLegacy_->setEnabled(connectionOf(DeviceType::CdRom, kind) == Connection::Device);
    });
    connect(chkCDRLegacy_, &QCheckBox::clicked, this, [this](bool checked) {
        store([&](Device& d) {
            d.settings.set(".deviceType", std::string(physicalDriveKind(checked)));
            return true;
        });
    });
    auto* optCDRImage = option(fraConnection, "optCDRImage", 335);
    auto* txtCDRImage = named<QLineEdit>("txtCDRImage", fraConnection);
    auto* cmdBrowseCDRImage = browseButton(fraConnection, "cmdBrowseCDRImage", txtCDRImage, 317,
                                           {{349, "*.iso"}, {308, "*"}}, true);
    bindConnection({{Connection::Device, optCDRDrive, cboCDRDrive}, {Connection::File, optCDRImage, txtCDRImage}});
    // Legacy emulation can be chosen only while a physical drive is in use.
    for (QRadioButton* opt : {optCDRDrive, optCDRImage})
        connect(opt, &QRadioButton::toggled, this, [this, optCDRDrive] { chkCDRLegacy_->setEnabled(optCDRDrive->isChecked()); });

    auto* layout = new QVBoxLayout(fraConnection);
    layout->addWidget(optCDRDrive);
    indentedRow(layout, {cboCDRDrive});
    indentedRow(layout, {chkCDRExclusive, chkCDRLegacy_})->addStretch(1);
    layout->addWidget(optCDRImage);
    indentedRow(layout, {txtCDRImage, cmdBrowseCDRImage});
    stack({statusFrame("chkCDREnabled", "chkCDRConnectedBoot"), nodeFrame("optCDRIDE", "cboCDRIDE", "optCDRSCSI", "cboCDRSCSI", "optCDRSATA", "cboCDRSATA"),
           fraConnection});
}

}  // namespace arden::gui
