#pragma once
// Sound adapter page (type 5): present, connected at power-on, and the adapter type.
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class SoundPage : public DevicePage {
    Q_OBJECT
public:
    SoundPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
