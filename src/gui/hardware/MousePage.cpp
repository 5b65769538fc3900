#include "gui/hardware/MousePage.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace arden::gui {

MousePage::MousePage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Mouse, parent) {
    setObjectName("fraMousePage");
    auto* fraMouse = frame("fraMouse", 358);  // "Pointing Device"
    auto* layout = new QVBoxLayout(fraMouse);
    layout->addWidget(flagBox(fraMouse, "chkMouseEnabled", 343, ".present", false));
    stack({fraMouse});
}

}  // namespace arden::gui
