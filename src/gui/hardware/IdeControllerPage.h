#pragma once
// IDE controller page (type 8): enabled.
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class IdeControllerPage : public DevicePage {
    Q_OBJECT
public:
    IdeControllerPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
