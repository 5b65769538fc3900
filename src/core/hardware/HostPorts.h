#pragma once
// The host's serial and parallel ports offered by cboSerPort and cboParPort (after "auto
// detect"). They are the values of the local machine's device maps
// "HARDWARE\DEVICEMAP\SERIALCOMM" and "HARDWARE\DEVICEMAP\PARALLEL PORTS", read through
// cRegistry: on Windows the registry ("\Device\Serial0" -> "COM1", the part after the last
// "\" of each value's data), on POSIX the host's device nodes (/dev/ttyS0, /dev/ttyUSB0,
// /dev/parport0 ...), offered and written as full paths.
#include <string>
#include <vector>

#include "core/support/cRegistry.h"

namespace arden {

struct HostPorts {
    std::vector<std::string> serial;    // in enumeration order
    std::vector<std::string> parallel;
    bool operator==(const HostPorts&) const = default;
};

// Enumerates both device maps through `registry` (its current key and value settings are left
// as they were).
HostPorts readHostPorts(cRegistry& registry);

// The port name a device-map value's data stands for: the part after its last "\" (the whole
// text when it has none).
std::string portNameFromMapData(const std::string& data);

}  // namespace arden
