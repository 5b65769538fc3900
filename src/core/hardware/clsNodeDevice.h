#pragma once
// Where a disk-like device (hard disk, DVD/CD-ROM drive, generic SCSI device) sits: the
// controller type and number and the node on it. A plain record without validation; the
// integers start at -1 so that a device not yet placed differs from one on controller 0, node 0.
#include <string>

namespace arden {

class clsNodeDevice {
public:
    const std::string& ControllerType() const { return controllerType_; }
    void setControllerType(std::string v) { controllerType_ = std::move(v); }

    int ControllerNumber() const { return controllerNumber_; }
    void setControllerNumber(int v) { controllerNumber_ = v; }

    int NodeNumber() const { return nodeNumber_; }
    void setNodeNumber(int v) { nodeNumber_ = v; }

    const std::string& DeviceType() const { return deviceType_; }
    void setDeviceType(std::string v) { deviceType_ = std::move(v); }

    int DeviceNumber() const { return deviceNumber_; }
    void setDeviceNumber(int v) { deviceNumber_ = v; }

    bool operator==(const clsNodeDevice&) const = default;

private:
    std::string controllerType_;  // "IDE" or "SCSI"; empty when new
    int controllerNumber_ = -1;
    int nodeNumber_ = -1;
    std::string deviceType_;      // the device type's name
    int deviceNumber_ = -1;
};

}  // namespace arden
