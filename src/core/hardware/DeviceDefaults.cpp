#include "core/hardware/DeviceDefaults.h"

#include "core/hardware/DeviceStore.h"
#include "core/hardware/MacAddress.h"

namespace arden {

void applyNewDeviceDefaults(Device& d) {
    DeviceSettings& s = d.settings;
    switch (d.type) {
        case DeviceType::Cpu: s.setFlag("pae", false); break;
        case DeviceType::Memory: s.setNumber("memsize", 256); break;
        case DeviceType::Floppy:
            s.setFlag(".present", true);
            s.set(".fileType", "device");
            s.set(".fileName", "auto detect");
            s.setFlag(".startConnected", true);
            break;
        case DeviceType::ParallelPort:
            s.setFlag(".present", true);
            s.set(".fileType", "device");
            s.set(".fileName", "auto detect");
            s.setFlag(".bidirectional", false);
            s.setFlag(".startConnected", true);
            break;
        case DeviceType::SerialPort:
            s.setFlag(".present", true);
            s.set(".fileType", "device");
            s.set(".fileName", "auto detect");
            s.setFlag(".startConnected", true);
            break;
        case DeviceType::Sound:
            s.setFlag(".present", true);
            s.setFlag(".startConnected", true);
            s.set(".virtualDev", "es1371");
            break;
        case DeviceType::Network:
            s.setFlag(".present", true);
            s.setFlag(".startConnected", true);
            s.set(".virtualDev", "vlance");
            s.set(".connectionType", "bridged");
            s.set(".addressType", "generated");
            break;
        case DeviceType::Usb:
            s.setFlag(".present", true);
            s.setFlag(".generic.autoconnect", false);
            break;
        case DeviceType::IdeController: s.setFlag(".present", true); break;
        case DeviceType::ScsiController:
            s.setFlag(".present", true);
            s.set(".virtualDev", "buslogic");
            break;
        case DeviceType::HardDisk:
            s.setFlag(".present", true);
            s.set(".deviceType", "disk");
            s.set(".mode", "persistent");
            break;
        case DeviceType::CdRom:
            s.setFlag(".present", true);
            s.set(".fileName", "auto detect");
            s.setFlag(".autodetect", true);
            s.set(".deviceType", "cdrom-raw");
            s.setFlag(".startConnected", true);
            break;
        case DeviceType::GenericScsi:
            s.setFlag(".present", true);
            s.set(".deviceType", "scsi-passthru");
            s.setFlag(".startConnected", true);
            break;
        case DeviceType::Display: s.setFlag("mks.enable3d", false); break;
        case DeviceType::Mouse: s.setFlag(".present", true); break;
    }
}

void addNewMachineDevices(DeviceStore& store, int memoryMb, std::uint32_t macSeed) {
    store.createDevice(DeviceType::Cpu);
    store.createDevice(DeviceType::Memory).settings.setNumber("memsize", memoryMb);
    store.createDevice(DeviceType::Floppy);
    Device& nic = store.createDevice(DeviceType::Network);
    nic.settings.set(".generatedAddress", generatedMacAddress(macSeed));
    nic.settings.setNumber(".generatedAddressOffset", 0);
    store.createDevice(DeviceType::Sound);
    store.createDevice(DeviceType::Usb);
    Device& cd = store.createDevice(DeviceType::CdRom);
    cd.node.setControllerType("IDE");
    cd.node.setControllerNumber(1);
    cd.node.setNodeNumber(0);
    store.createDevice(DeviceType::Display);
    store.createDevice(DeviceType::Mouse);
}

}  // namespace arden
