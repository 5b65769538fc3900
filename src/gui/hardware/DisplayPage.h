#pragma once
// Display page (type 13): maximum width and height, video memory (entered in MB, stored in
// bytes) and Direct3D support; where the product has them, the number of monitors and the
// hosted products' 3D graphics memory (entered in MB, stored in KB).
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class DisplayPage : public DevicePage {
    Q_OBJECT
public:
    DisplayPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
