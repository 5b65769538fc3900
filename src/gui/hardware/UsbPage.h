#pragma once
// USB controller page (type 7): enabled, devices connected automatically when the guest has focus,
// and where the product has them the USB 2.0 and USB 3 controllers.
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class UsbPage : public DevicePage {
    Q_OBJECT
public:
    UsbPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
