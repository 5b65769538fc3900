#include "gui/hardware/ScsiControllerPage.h"

#include <QComboBox>
#include <QFormLayout>

#include "core/config/DeviceFeatures.h"
#include "core/support/TextUtil.h"

namespace arden::gui {

ScsiControllerPage::ScsiControllerPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::ScsiController, parent) {
    setObjectName("fraSCSIPage");
    auto* fraAdapter = frame("fraSCSIAdapter", 322);  // "Adapter Type"
    // Fixed product names; the file holds "buslogic", "lsilogic", "lsisas1068" or "pvscsi". A
    // controller without the key is a BusLogic one, as the products read it. The last two are
    // listed only for a product that has them (or a controller that already is one).
    auto* cboSCSICont = valueList(fraAdapter, "cboSCSICont", ".virtualDev",
                                  {{"buslogic", 131},
                                   {"lsilogic", 132},
                                   {"lsisas1068", 0, "LSI Logic SAS"},
                                   {"pvscsi", 0, "VMware Paravirtual"}},
                                  0);
    // Rows 2 and 3, the later types, come and go together, so that every row keeps the position
    // the value list stores by: both where the product has either type or the controller is one.
    onFill([this, cboSCSICont](const Device& d) {
        const ProductFigures figures = config_.figures();
        const std::string type = toLowerAscii(d.settings.text(".virtualDev"));
        const bool held = type == "lsisas1068" || type == "pvscsi";
        const bool later = held || hasFeature(figures, DeviceFeature::ScsiLsiSas) || hasFeature(figures, DeviceFeature::ScsiParavirtual);
        if (!later) {
            while (cboSCSICont->count() > 2) cboSCSICont->removeItem(2);
        } else if (cboSCSICont->count() == 2) {
            cboSCSICont->addItems({"LSI Logic SAS", "VMware Paravirtual"});
            if (held) cboSCSICont->setCurrentIndex(type == "lsisas1068" ? 2 : 3);
        }
    });
    auto* form = new QFormLayout(fraAdapter);
    addCaptionedRow(form, captions_, "lblSCSICont", 322, cboSCSICont);
    stack({statusFrame("chkSCSIEnabled", nullptr), fraAdapter});
}

}  // namespace arden::gui
