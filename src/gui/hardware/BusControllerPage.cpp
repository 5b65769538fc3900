#include "gui/hardware/BusControllerPage.h"

#include <QListWidget>
#include <QVBoxLayout>

namespace arden::gui {

BusControllerPage::BusControllerPage(VmConfiguration& config, DevicePageContext& context, DeviceType type, QWidget* parent)
    : DevicePage(config, context, type, parent) {
    const bool sata = type == DeviceType::SataController;
    setObjectName(sata ? "fraSATAPage" : "fraNVMePage");
    auto* fraControllerDevices = frame("fraControllerDevices", 410);  // "Devices on this controller"
    lstControllerDevices_ = named<QListWidget>(sata ? "lstSATADevices" : "lstNVMeDevices", fraControllerDevices);
    auto* layout = new QVBoxLayout(fraControllerDevices);
    layout->addWidget(lstControllerDevices_);
    stack({statusFrame(sata ? "chkSATAEnabled" : "chkNVMeEnabled", nullptr), fraControllerDevices});
}

void BusControllerPage::fillPage(const Device& controller) {
    // Each held node as the node lists show it: "SATA 0:1 - CD-ROM 1".
    const Bus bus = *busOfController(controller.type);
    lstControllerDevices_->clear();
    for (const Device* d : devicesOnController(config_.devices, bus, controller.number))
        lstControllerDevices_->addItem(qs(placedNodeLabel(*d) + " - " + config_.devices.displayText(*d)));
}

}  // namespace arden::gui
