#pragma once
// The snapshot page: whether snapshots are allowed and what happens to the running state
// when the machine is powered off.
#include "gui/config/OptionPage.h"

namespace arden::gui {

class SnapshotsPage : public OptionPage {
    Q_OBJECT
public:
    SnapshotsPage(VmConfiguration& config, QWidget* parent);
};

}  // namespace arden::gui
