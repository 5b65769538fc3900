#pragma once
// Generic SCSI device page (type 12): status, its SCSI node and the physical device it passes through.
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class GenericScsiPage : public DevicePage {
    Q_OBJECT
public:
    GenericScsiPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
