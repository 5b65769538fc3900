#pragma once
// What a product of hardware version 6 or later writes for a new machine beyond the devices
// the editor manages: PCI bridges, the VMCI device, the USB 2.0 and 3.x controllers and the
// hosted marker, as the product's own new machines hold them (kept lines of the new machine,
// so a re-save writes them as they are). The products of hardware versions 3 and 4 add nothing.
#include "core/config/VmConfiguration.h"

namespace arden {

// Adds the template lines of `config`'s product to its kept lines.
void addProductTemplate(VmConfiguration& config);

}  // namespace arden
