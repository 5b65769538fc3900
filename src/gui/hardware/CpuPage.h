#pragma once
// Processor page (type 0): PAE emulation, and the number of processors the machine has (processors are added from the Add dialog up to the product's maximum and removed from the list).
#include "gui/hardware/DevicePage.h"

class QLabel;

namespace arden::gui {

class CpuPage : public DevicePage {
    Q_OBJECT
public:
    CpuPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);

protected:
    void fillPage(const Device& d) override;

private:
    QLabel* lblCPUCountValue_;
};

}  // namespace arden::gui
