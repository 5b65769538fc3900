#pragma once
// The power page: what happens when the machine is opened, powered on and off, which power
// buttons act on the guest, and when the VMware Tools scripts run.
#include "gui/config/OptionPage.h"

namespace arden::gui {

class PowerPage : public OptionPage {
    Q_OBJECT
public:
    PowerPage(VmConfiguration& config, QWidget* parent);
};

}  // namespace arden::gui
