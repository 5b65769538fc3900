#pragma once
// Network adapter page (type 6): present and connected at power-on. Adapter type, connection and MAC address are added here over the same base.
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class NetworkPage : public DevicePage {
    Q_OBJECT
public:
    NetworkPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
