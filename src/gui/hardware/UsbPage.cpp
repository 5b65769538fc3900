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
    // The later controllers beside the USB 1.1 one, one of each kind, where the product has them;
    // their devices' runtime lines ("ehci:0...") stay as the product wrote them.
    layout->addWidget(switchBox(fraUsb, "chkUsb2", 451, MachineSwitch::Usb2));  // "USB 2.0 controller (EHCI)"
    layout->addWidget(switchBox(fraUsb, "chkUsb3", 452, MachineSwitch::Usb3));  // "USB 3 controller (xHCI)"
    stack({fraUsb});
}

}  // namespace arden::gui
