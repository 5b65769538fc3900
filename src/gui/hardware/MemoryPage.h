#pragma once
// Memory page (type 1): the machine's memory as a text box, a slider and an up-down over the
// range of the chosen product and version; checked and rounded by the core memory rules.
#include "gui/hardware/DevicePage.h"

class QAbstractSlider;
class QLabel;

namespace arden::gui {

class MemoryPage : public DevicePage {
    Q_OBJECT
public:
    MemoryPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent);

protected:
    void fillPage(const Device& d) override;

private:
    void storeMegabytes(int value);

    QAbstractSlider* sldMemSize_;
    QAbstractSlider* udMemSize_;
    QLabel* lblMemRange_;
};

}  // namespace arden::gui
