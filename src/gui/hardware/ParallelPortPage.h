#pragma once
// Parallel port page (type 3): status, a host port (bidirectional or not) or an output file.
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class ParallelPortPage : public DevicePage {
    Q_OBJECT
public:
    ParallelPortPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
