#include "core/config/HardwareFigures.h"

namespace arden {

DeviceMaxima deviceMaxima(const ProductFigures& f) {
    return DeviceMaxima{f.maxCpus, f.maxNics, f.maxScsiControllers, f.maxSerialPorts};
}

MemoryRange memoryRange(const ProductFigures& f) { return MemoryRange{f.memoryMinMb, f.memoryMaxMb}; }

}  // namespace arden
