#pragma once
// Processor page (type 0): PAE emulation, and the number of processors the machine has (processors are added from the Add dialog up to the product's maximum and removed from the list).
// Where the product has them: cores per socket, nested virtualisation, and the firmware (BIOS or
// EFI) with secure boot.
#include "gui/hardware/DevicePage.h"

class QComboBox;
class QFormLayout;
class QLabel;

namespace arden::gui {

class CpuPage : public DevicePage {
    Q_OBJECT
public:
    CpuPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);

protected:
    void fillPage(const Device& d) override;

private:
    QGroupBox* firmwareFrame();

    QLabel* lblCPUCountValue_;
    QFormLayout* form_;
    QComboBox* cboCoresPerSocket_;
    QGroupBox* fraFirmware_ = nullptr;
    QComboBox* cboFirmware_ = nullptr;
};

}  // namespace arden::gui
