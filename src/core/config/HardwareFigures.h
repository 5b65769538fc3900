#pragma once
// The product figures the hardware rules need, taken from the product tables for the chosen
// platform and version: the device maxima of the add-hardware dialog and the memory range of
// the memory page. (The hardware rules take these small records so that they do not depend on
// the product tables.)
#include "core/config/VmConfiguration.h"
#include "core/hardware/HardwareLimits.h"
#include "core/hardware/MemoryRules.h"

namespace arden {

DeviceMaxima deviceMaxima(const ProductFigures& figures);
MemoryRange memoryRange(const ProductFigures& figures);

// The figures of the machine's platform and version (VmConfiguration::figures()).
inline DeviceMaxima deviceMaxima(const VmConfiguration& config) { return deviceMaxima(config.figures()); }
inline MemoryRange memoryRange(const VmConfiguration& config) { return memoryRange(config.figures()); }

}  // namespace arden
