#pragma once
// The Hardware tab of an editor: the list of the machine's devices (key "H" + type + "|" +
// identifier, display text, summary, type icon), the remove command, and beside the list the
// page of the selected device. Until the per-type device pages exist, that page shows the
// device's text, type, node and full summary.
#include <QWidget>
#include <string>

#include "core/config/VmConfiguration.h"
#include "gui/config/ConfigWidgets.h"

class QFormLayout;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace arden::gui {

class HardwareListPanel : public QWidget {
    Q_OBJECT
public:
    HardwareListPanel(VmConfiguration& config, QWidget* parent);

    // One entry per device of the store, then the first entry selected.
    void fill();
    // Shows the selected device again (its figures follow the product settings).
    void showSelected();
    void relabel(int languageOffset);

signals:
    // A device was removed from the store.
    void removed();

private:
    void showDevice(QTreeWidgetItem* item);
    void clearDevice();
    void removeSelected();

    VmConfiguration& config_;
    int languageOffset_ = 0;
    QTreeWidget* lvwHardwareList_;
    QPushButton* cmdHardwareRemove_;
    QStackedWidget* sstHardware_;
    QFormLayout* deviceForm_;
    QLabel* lblDeviceText_;
    QLabel* lblDeviceType_;
    QLabel* lblDeviceNode_;
    QLabel* lblMemoryRange_;
    QLabel* lblDeviceSummary_;
    Captions captions_;
};

}  // namespace arden::gui
