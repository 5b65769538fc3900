#include "gui/hardware/CpuPage.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace arden::gui {

CpuPage::CpuPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Cpu, parent) {
    setObjectName("fraCPUPage");
    auto* fraCPU = frame("fraCPU", 290);  // "Virtual Processor"
    lblCPUCountValue_ = named<QLabel>("lblCPUCountValue", fraCPU);
    auto* form = new QFormLayout;
    addCaptionedRow(form, captions_, "lblCPUCount", 294, lblCPUCountValue_);
    auto* layout = new QVBoxLayout(fraCPU);
    layout->addWidget(flagBox(fraCPU, "chkCPUPae", 291, "pae", false));
    layout->addLayout(form);
    stack({fraCPU});
}

void CpuPage::fillPage(const Device&) {
    lblCPUCountValue_->setText(QStringLiteral("%1 / %2")
                                   .arg(config_.devices.count(DeviceType::Cpu))
                                   .arg(config_.figures().maxCpus));
}

}  // namespace arden::gui
