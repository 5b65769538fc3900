#include "gui/hardware/CpuPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace arden::gui {

CpuPage::CpuPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Cpu, parent) {
    setObjectName("fraCPUPage");
    auto* fraCPU = frame("fraCPU", 290);  // "Virtual Processor"
    lblCPUCountValue_ = named<QLabel>("lblCPUCountValue", fraCPU);
    // The cores per socket that divide the processors, within the product's maximum.
    cboCoresPerSocket_ = named<QComboBox>("cboCoresPerSocket", fraCPU);
    connect(cboCoresPerSocket_, &QComboBox::activated, this, [this](int index) {
        const int cores = cboCoresPerSocket_->itemData(index).toInt();
        storeMachine([&] { return setCoresPerSocket(config_, cores); });
    });
    form_ = new QFormLayout;
    addCaptionedRow(form_, captions_, "lblCPUCount", 294, lblCPUCountValue_);
    addCaptionedRow(form_, captions_, "lblCoresPerSocket", 445, cboCoresPerSocket_);  // "Cores per socket"
    auto* layout = new QVBoxLayout(fraCPU);
    layout->addWidget(flagBox(fraCPU, "chkCPUPae", 291, "pae", false));
    layout->addLayout(form_);
    layout->addWidget(switchBox(fraCPU, "chkNestedVirt", 444, MachineSwitch::NestedVirtualization));
    stack({fraCPU, firmwareFrame()});
}

QGroupBox* CpuPage::firmwareFrame() {
    fraFirmware_ = frame("fraFirmware", 440);  // "Firmware"
    cboFirmware_ = named<QComboBox>("cboFirmware", fraFirmware_);
    captions_.addItem(cboFirmware_, 0, 441);  // "BIOS"
    captions_.addItem(cboFirmware_, 1, 442);  // "EFI"
    connect(cboFirmware_, &QComboBox::activated, this, [this](int index) {
        storeMachine([&] { return setSwitch(config_, MachineSwitch::Efi, index == 1); });
    });
    auto* layout = new QVBoxLayout(fraFirmware_);
    layout->addWidget(cboFirmware_);
    layout->addWidget(switchBox(fraFirmware_, "chkSecureBoot", 443, MachineSwitch::SecureBoot));
    return fraFirmware_;
}

void CpuPage::fillPage(const Device&) {
    const ProductFigures figures = config_.figures();
    const int cpus = config_.devices.count(DeviceType::Cpu);
    lblCPUCountValue_->setText(QStringLiteral("%1 / %2").arg(cpus).arg(figures.maxCpus));

    cboCoresPerSocket_->clear();
    for (int n = 1; n <= std::min(figures.maxCoresPerSocket, cpus); ++n) {
        if (cpus % n == 0) cboCoresPerSocket_->addItem(QString::number(n), n);
    }
    cboCoresPerSocket_->setCurrentIndex(cboCoresPerSocket_->findData(coresPerSocket(config_.keptLines).value_or(1)));
    form_->setRowVisible(cboCoresPerSocket_, figures.maxCoresPerSocket > 1);

    fraFirmware_->setVisible(hasFeature(figures, DeviceFeature::EfiFirmware));
    cboFirmware_->setCurrentIndex(switchOn(config_, MachineSwitch::Efi) ? 1 : 0);
}

}  // namespace arden::gui
