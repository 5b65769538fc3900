#include "core/config/HardwareFigures.h"

#include "core/config/DeviceFeatures.h"

namespace arden {

// SATA and NVMe controllers of a product that has the bus: four of each on every such product
// (modern-products reference, §2a and §2c).
constexpr int kBusControllers = 4;

DeviceMaxima deviceMaxima(const ProductFigures& f) {
    const auto controllers = [&](DeviceFeature bus) { return hasFeature(f, bus) ? kBusControllers : 0; };
    return DeviceMaxima{f.maxCpus,
                        f.maxNics,
                        f.maxScsiControllers,
                        f.maxSerialPorts,
                        controllers(DeviceFeature::SataController),
                        controllers(DeviceFeature::NvmeController),
                        hasFeature(f, DeviceFeature::ScsiLsiSas) ? 15 : 7};
}

MemoryRange memoryRange(const ProductFigures& f) { return MemoryRange{f.memoryMinMb, f.memoryMaxMb}; }

}  // namespace arden
