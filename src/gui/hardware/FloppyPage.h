#pragma once
// Floppy drive page (type 2): status, and a physical drive or a floppy image.
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class FloppyPage : public DevicePage {
    Q_OBJECT
public:
    FloppyPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
