#pragma once
// SCSI controller page (type 9): enabled and the adapter type (BusLogic, LSI Logic, and where
// the product has them LSI Logic SAS and VMware Paravirtual).
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class ScsiControllerPage : public DevicePage {
    Q_OBJECT
public:
    ScsiControllerPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
