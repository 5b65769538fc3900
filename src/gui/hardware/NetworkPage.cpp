#include "gui/hardware/NetworkPage.h"

namespace arden::gui {

NetworkPage::NetworkPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Network, parent) {
    setObjectName("fraNicPage");
    stack({statusFrame("chkNicEnabled", "chkNicConnectedBoot")});
}

}  // namespace arden::gui
