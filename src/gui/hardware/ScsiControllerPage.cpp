#include "gui/hardware/ScsiControllerPage.h"

#include <QComboBox>
#include <QFormLayout>

namespace arden::gui {

ScsiControllerPage::ScsiControllerPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::ScsiController, parent) {
    setObjectName("fraSCSIPage");
    auto* fraAdapter = frame("fraSCSIAdapter", 322);  // "Adapter Type"
    // Fixed product names; the file holds "buslogic" or "lsilogic". A controller without the
    // key is a BusLogic one, as the products read it.
    auto* cboSCSICont = valueList(fraAdapter, "cboSCSICont", ".virtualDev",
                                  {{"buslogic", 131}, {"lsilogic", 132}}, 0);
    auto* form = new QFormLayout(fraAdapter);
    addCaptionedRow(form, captions_, "lblSCSICont", 322, cboSCSICont);
    stack({statusFrame("chkSCSIEnabled", nullptr), fraAdapter});
}

}  // namespace arden::gui
