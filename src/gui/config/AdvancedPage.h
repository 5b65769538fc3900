#pragma once
// The advanced page: process priorities, debugging, acceleration, memory trimming, logging and
// its folder, template mode and the clustering options.
#include "gui/config/OptionPage.h"

class QPushButton;

namespace arden::gui {

class AdvancedPage : public OptionPage {
    Q_OBJECT
public:
    AdvancedPage(VmConfiguration& config, QWidget* parent);

private:
    void browseLogFolder();

    QLineEdit* txtLogFolder_;
};

}  // namespace arden::gui
