#pragma once
// The later features a machine uses against a newly chosen product: HD audio, EFI firmware,
// secure boot, nested virtualisation, USB 2.0 and USB 3 controllers and several monitors (3D
// acceleration stays: the original products' display page has it too). What the product lacks
// is listed in the change-of-product question and taken away (or set back to the older choice)
// by the fitting. Adapter types are NetworkAdapterTypes.h.
#include <string>
#include <vector>

#include "core/config/ProductLimits.h"

namespace arden {

// Adds to `out` one entry per feature `config` uses that its own product lacks, each with what
// the fitting makes of it ("ES1371", "BIOS", "off", "none"); `product` names the product.
void featureExcesses(std::vector<LimitExcess>& out, const VmConfiguration& config, const std::string& product);

// Fits `config` to its product: HD audio becomes ES1371, the switches the product lacks are
// turned off (a controller's lines go), and one monitor.
void fitFeaturesToProduct(VmConfiguration& config);

}  // namespace arden
