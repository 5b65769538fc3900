#include "core/config/NewMachineTemplate.h"

#include <string_view>

namespace arden {
namespace {

// One line of the template and the products that write it: from a hardware version on, on
// hosted products, ESXi or both. The lines and their order follow the products' own new
// machines in the corpus of real files: pciBridge0 from hardware version 6 (Workstation 6.0
// files), the four PCI Express root ports and vmci0 from 7 (Workstation 7 to 17 files, ESX 4
// and later files), EHCI on hosted products from 6 (a Workstation 6 file), xHCI on hosted
// products from 16 (Workstation 15 to 17 files), HPET on hosted products from 14 and the
// hosted marker on every hosted product from 6. "pciSlotNumber" lines are the product's to add.
enum class Where { Both, Hosted, Esx };
struct TemplateLine {
    int firstHw;
    Where where;
    std::string_view line;
};

constexpr TemplateLine kTemplate[] = {
    {6, Where::Both, "pciBridge0.present = \"TRUE\""},
    {7, Where::Both, "pciBridge4.present = \"TRUE\""},
    {7, Where::Both, "pciBridge4.virtualDev = \"pcieRootPort\""},
    {7, Where::Both, "pciBridge4.functions = \"8\""},
    {7, Where::Both, "pciBridge5.present = \"TRUE\""},
    {7, Where::Both, "pciBridge5.virtualDev = \"pcieRootPort\""},
    {7, Where::Both, "pciBridge5.functions = \"8\""},
    {7, Where::Both, "pciBridge6.present = \"TRUE\""},
    {7, Where::Both, "pciBridge6.virtualDev = \"pcieRootPort\""},
    {7, Where::Both, "pciBridge6.functions = \"8\""},
    {7, Where::Both, "pciBridge7.present = \"TRUE\""},
    {7, Where::Both, "pciBridge7.virtualDev = \"pcieRootPort\""},
    {7, Where::Both, "pciBridge7.functions = \"8\""},
    {7, Where::Both, "vmci0.present = \"TRUE\""},
    {14, Where::Hosted, "hpet0.present = \"TRUE\""},
    {6, Where::Hosted, "virtualHW.productCompatibility = \"hosted\""},
    {6, Where::Hosted, "ehci.present = \"TRUE\""},
    {16, Where::Hosted, "usb_xhci.present = \"TRUE\""},
};

}  // namespace

void addProductTemplate(VmConfiguration& config) {
    const ProductFigures f = config.figures();
    const Where line = f.line == ProductLine::Esx ? Where::Esx : Where::Hosted;
    for (const TemplateLine& t : kTemplate) {
        if (f.virtualHwVersion >= t.firstHw && (t.where == Where::Both || t.where == line)) config.keptLines.push_back(t.line);
    }
}

}  // namespace arden
