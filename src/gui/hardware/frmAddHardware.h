#pragma once
// frmAddHardware: the modal dialog of the editor's Add command. It lists the device types of
// the machine's product with how many the machine holds (types at their limit greyed, with
// the reason), says for the chosen row whether one more may be added, and returns the chosen
// type. The first type that may be added is chosen when the dialog opens. A disk-like type is
// offered only while a node it may sit on is free.
#include <QDialog>
#include <optional>
#include <vector>

#include "core/hardware/HardwareLimits.h"

class QLabel;
class QPushButton;
class QTreeWidget;

namespace arden::gui {

class frmAddHardware : public QDialog {
    Q_OBJECT
public:
    // A disk-like type that could be added but has no free node to sit on, and the string-table
    // id of the reason: it is left out of the list, and lblNotOffered names it with the reason.
    struct NotOffered {
        DeviceType type;
        int reasonId;
    };
    frmAddHardware(const DeviceCounts& counts, const DeviceMaxima& maxima, int languageOffset, QWidget* parent,
                   const std::vector<NotOffered>& notOffered = {});

    // The chosen type after OK; nothing when the dialog was cancelled.
    std::optional<DeviceType> chosenType() const { return chosen_; }

private:
    void rowChosen();

    DeviceCounts counts_;
    DeviceMaxima maxima_;
    int languageOffset_;
    std::optional<DeviceType> chosen_;
    QTreeWidget* lvwAvailableHardware_;
    QLabel* lblInfo_;
    QPushButton* cmdOK_;
};

}  // namespace arden::gui
