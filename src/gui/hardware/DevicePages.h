#pragma once
// The hardware page set of an editor (sstHardware): one page per device type, the page index
// being the type number. Showing a device brings its page forward and fills it.
#include <QStackedWidget>
#include <array>
#include <string>

#include "gui/hardware/DevicePage.h"

namespace arden::gui {

class HardDiskPage;

class DevicePages : public QStackedWidget {
    Q_OBJECT
public:
    DevicePages(VmConfiguration& config, QWidget* parent);

    // Shows the page of `type` filled from device `identifier` (the current device).
    void showDevice(DeviceType type, const std::string& identifier);
    // Fills the shown page again (the product or another device changed what it offers).
    void refill();
    void relabel(int languageOffset);
    void setImageFolder(const QString& folder) { context_.imageFolder = folder; }

    DevicePage* page(DeviceType type) const { return pages_[static_cast<std::size_t>(typeNumber(type))]; }
    HardDiskPage* hardDiskPage() const;

signals:
    // The shown page changed the machine's devices.
    void edited();

private:
    DevicePageContext context_;
    std::array<DevicePage*, kDeviceTypeCount> pages_{};
};

}  // namespace arden::gui
