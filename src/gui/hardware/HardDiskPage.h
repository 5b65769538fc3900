#pragma once
// Hard disk page (type 10): enabled, bus and node, the disk file (an existing one, or a new
// one made by the create-disk dialog through `createDisk`) and the disk mode.
#include <functional>

#include "gui/hardware/DevicePage.h"

class QCheckBox;
class QPushButton;
class QRadioButton;

namespace arden::gui {

class HardDiskPage : public DevicePage {
    Q_OBJECT
public:
    HardDiskPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);

    // "Create New": runs `create` for the current disk (its identifier). Until a handler is
    // set the button stays visible and disabled.
    void setCreateDisk(std::function<void(const std::string& identifier)> create);

private:
    void storeMode(DiskMode mode);

    std::function<void(const std::string&)> createDisk_;
    QPushButton* cmdHDCreate_;
    QCheckBox* chkHDIndependent_;
    QRadioButton* optHDPersist_;
    QRadioButton* optHDNonPersist_;
};

}  // namespace arden::gui
