#include "gui/hardware/UsbPage.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace arden::gui {

UsbPage::UsbPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Usb, parent) {
    setObjectName("fraUsbPage");
    auto* fraUsb = frame("fraUsb", 295);  // "Device Status"
    auto* layout = new QVBoxLayout(fraUsb);
    layout->addWidget(flagBox(fraUsb, "chkUsbEnable", 320, ".present", false));
    layout->addWidget(flagBox(fraUsb, "chkUsbAutoConnect", 321, ".generic.autoconnect", false));
    stack({fraUsb});
}

}  // namespace arden::gui
