#pragma once
// DVD/CD-ROM drive page (type 11): status, bus and node, a physical drive (exclusive, legacy emulation) or an ISO image.
#include "gui/hardware/DevicePage.h"

class QCheckBox;

namespace arden::gui {

class CdRomPage : public DevicePage {
    Q_OBJECT
public:
    CdRomPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);

private:
    QCheckBox* chkCDRLegacy_;
};

}  // namespace arden::gui
