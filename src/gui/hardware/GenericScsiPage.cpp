#include "gui/hardware/GenericScsiPage.h"

#include <QFormLayout>
#include <QLineEdit>

namespace arden::gui {

GenericScsiPage::GenericScsiPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::GenericScsi, parent) {
    setObjectName("fraGenSCSIPage");
    auto* fraGenDevice = frame("fraGenDevice", 299);  // "Connection"
    auto* form = new QFormLayout(fraGenDevice);
    addCaptionedRow(form, captions_, "lblGenSCSIDevice", 336, textBox(fraGenDevice, "txtGenSCSIDevice", ".fileName"));
    stack({statusFrame("chkGenEnabled", "chkGenConnectedBoot"), nodeFrame(nullptr, nullptr, nullptr, "cboGenSCSI"),
           fraGenDevice});
}

}  // namespace arden::gui
