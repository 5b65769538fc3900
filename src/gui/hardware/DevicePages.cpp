#include "gui/hardware/DevicePages.h"

#include "core/support/cRegistry.h"
#include "gui/hardware/BusControllerPage.h"
#include "gui/hardware/CdRomPage.h"
#include "gui/hardware/CpuPage.h"
#include "gui/hardware/DisplayPage.h"
#include "gui/hardware/FloppyPage.h"
#include "gui/hardware/GenericScsiPage.h"
#include "gui/hardware/HardDiskPage.h"
#include "gui/hardware/IdeControllerPage.h"
#include "gui/hardware/MemoryPage.h"
#include "gui/hardware/MousePage.h"
#include "gui/hardware/NetworkPage.h"
#include "gui/hardware/ParallelPortPage.h"
#include "gui/hardware/ScsiControllerPage.h"
#include "gui/hardware/SerialPortPage.h"
#include "gui/hardware/SoundPage.h"
#include "gui/hardware/UsbPage.h"

namespace arden::gui {
namespace {

// The host's ports, read once for the whole program as the device maps do not change while
// it runs.
const HostPorts& hostPorts() {
    static const HostPorts ports = [] {
        cRegistry registry;
        return readHostPorts(registry);
    }();
    return ports;
}

}  // namespace

DevicePages::DevicePages(VmConfiguration& config, QWidget* parent) : QStackedWidget(parent) {
    setObjectName("sstHardware");
    context_.hostPorts = hostPorts();
    auto& c = context_;
    // In type order: the index of a page is its type number.
    pages_ = {new CpuPage(config, c, this),           new MemoryPage(config, c, this),
              new FloppyPage(config, c, this),        new ParallelPortPage(config, c, this),
              new SerialPortPage(config, c, this),    new SoundPage(config, c, this),
              new NetworkPage(config, c, this),       new UsbPage(config, c, this),
              new IdeControllerPage(config, c, this), new ScsiControllerPage(config, c, this),
              new HardDiskPage(config, c, this),      new CdRomPage(config, c, this),
              new GenericScsiPage(config, c, this),   new DisplayPage(config, c, this),
              new MousePage(config, c, this),
              new BusControllerPage(config, c, DeviceType::SataController, this),
              new BusControllerPage(config, c, DeviceType::NvmeController, this)};
    for (DevicePage* p : pages_) {
        addWidget(p);
        connect(p, &DevicePage::edited, this, &DevicePages::edited);
    }
}

void DevicePages::showDevice(DeviceType type, const std::string& identifier) {
    DevicePage* p = page(type);
    setCurrentWidget(p);
    p->fill(identifier);
}

void DevicePages::refill() {
    if (auto* p = qobject_cast<DevicePage*>(currentWidget()); p && !p->identifier().empty()) p->refill();
}

void DevicePages::relabel(int languageOffset) {
    context_.languageOffset = languageOffset;
    for (DevicePage* p : pages_) p->relabel();
}

HardDiskPage* DevicePages::hardDiskPage() const { return static_cast<HardDiskPage*>(page(DeviceType::HardDisk)); }

}  // namespace arden::gui
