#include "gui/hardware/IdeControllerPage.h"

namespace arden::gui {

IdeControllerPage::IdeControllerPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::IdeController, parent) {
    setObjectName("fraIDEPage");
    stack({statusFrame("chkIDEEnabled", nullptr)});
}

}  // namespace arden::gui
