#pragma once
// The guest-isolation page: drag and drop, paste and copy between host and guest.
#include "gui/config/OptionPage.h"

namespace arden::gui {

class IsolationPage : public OptionPage {
    Q_OBJECT
public:
    IsolationPage(VmConfiguration& config, QWidget* parent);
};

}  // namespace arden::gui
