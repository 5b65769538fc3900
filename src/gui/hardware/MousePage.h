#pragma once
// Mouse page (type 14): enabled (turned off for relative positioning in 3D guests).
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class MousePage : public DevicePage {
    Q_OBJECT
public:
    MousePage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
