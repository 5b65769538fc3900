#include "core/hardware/DeviceFiles.h"

namespace arden {

bool takesFile(DeviceType type) {
    switch (type) {
        case DeviceType::Floppy:
        case DeviceType::ParallelPort:
        case DeviceType::SerialPort:
        case DeviceType::HardDisk:
        case DeviceType::CdRom:
        case DeviceType::GenericScsi: return true;
        default: return false;
    }
}

bool needsFile(DeviceType type) { return type == DeviceType::HardDisk || type == DeviceType::GenericScsi; }

bool useFile(Device& device, const std::string& path) {
    if (!takesFile(device.type)) return false;
    DeviceSettings& s = device.settings;
    s.set(".fileName", path);
    switch (device.type) {
        case DeviceType::CdRom:
            s.set(".deviceType", "cdrom-image");
            s.unset(".autodetect");
            break;
        case DeviceType::ParallelPort:
            s.setFlag(".bidirectional", false);
            s.set(".fileType", "file");
            break;
        case DeviceType::Floppy:
        case DeviceType::SerialPort: s.set(".fileType", "file"); break;
        default: break;
    }
    return true;
}

}  // namespace arden
