#pragma once
// SATA and NVMe controller page (types 15 and 16): enabled, and the devices on its nodes.
#include "gui/hardware/DevicePage.h"

class QListWidget;

namespace arden::gui {

class BusControllerPage : public DevicePage {
    Q_OBJECT
public:
    BusControllerPage(VmConfiguration& config, DevicePageContext& context, DeviceType type, QWidget* parent);

protected:
    void fillPage(const Device& controller) override;

private:
    QListWidget* lstControllerDevices_ = nullptr;
};

}  // namespace arden::gui
