#pragma once
// Hard disk page (type 10): enabled, bus and node, the disk file (an existing one, or a new
// one made by the create-disk dialog, with its summary shown on request) and the disk mode.
#include <QString>
#include <string>

#include "core/disks/DiskTypes.h"

#include "gui/hardware/DevicePage.h"

class QCheckBox;
class QRadioButton;

namespace arden::gui {

class HardDiskPage : public DevicePage {
    Q_OBJECT
public:
    HardDiskPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);

public:
    // The bus of the disk's node.
    static disks::DiskBus nodeBus(const Device& d);

private:
    void storeMode(DiskMode mode);
    // The disk's mode as the file holds it, also one the page does not offer ("undoable").
    static std::string modeAsRead(const Device& d);
    // The type of the SCSI controller the disk sits on ("" elsewhere): the create-disk dialog
    // starts with that adapter, the summary compares the disk with it.
    std::string scsiControllerType(const Device& d) const;
    // The disk file as a path: a bare name is in the machine's folder.
    QString diskPath(const QString& fileName) const;

    QCheckBox* chkHDIndependent_;
    QRadioButton* optHDPersist_;
    QRadioButton* optHDNonPersist_;
};

}  // namespace arden::gui
