#pragma once
// USB controller page (type 7): enabled, and devices connected automatically when the guest has focus.
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class UsbPage : public DevicePage {
    Q_OBJECT
public:
    UsbPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
