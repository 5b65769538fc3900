#include "gui/hardware/ScsiControllerPage.h"

#include <QComboBox>
#include <QFormLayout>
#include <QListView>

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
    onFill([this, cboSCSICont](const Device& d) {
        const ProductFigures figures = config_.figures();
        const std::string type = toLowerAscii(d.settings.text(".virtualDev"));
        const std::pair<int, DeviceFeature> later[] = {{2, DeviceFeature::ScsiLsiSas}, {3, DeviceFeature::ScsiParavirtual}};
        auto* view = qobject_cast<QListView*>(cboSCSICont->view());
        for (const auto& [row, feature] : later) {
            const bool held = type == (row == 2 ? "lsisas1068" : "pvscsi");
            view->setRowHidden(row, !held && !hasFeature(figures, feature));
        }
    });
    auto* form = new QFormLayout(fraAdapter);
    addCaptionedRow(form, captions_, "lblSCSICont", 322, cboSCSICont);
    stack({statusFrame("chkSCSIEnabled", nullptr), fraAdapter});
}

}  // namespace arden::gui
