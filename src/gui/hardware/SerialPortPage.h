#pragma once
// Serial port page (type 4): status, a host port, an output file or a named pipe (this end, other end), and yielding the CPU on poll.
#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class SerialPortPage : public DevicePage {
    Q_OBJECT
public:
    SerialPortPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);
};

}  // namespace arden::gui
