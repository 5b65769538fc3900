#include "core/hardware/DeviceDefaults.h"

#include <charconv>

#include "core/hardware/DeviceStore.h"
#include "core/hardware/MacAddress.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

constexpr int kOffsetPerAdapter = 10;

// The low 24 bits of a generated address ("00:0C:29:AB:CD:EF" -> 0xABCDEF), or nothing.
std::optional<std::uint32_t> generatedLowBits(std::string_view address) {
    const std::string_view prefix = macPrefix(MacMode::Generated);
    if (address.size() != 17 || !equalsIgnoreCase(address.substr(0, prefix.size()), prefix)) return std::nullopt;
    std::uint32_t bits = 0;
    for (std::size_t at = prefix.size(); at < address.size(); at += 3) {
        unsigned octet = 0;
        const char* first = address.data() + at;
        if (std::from_chars(first, first + 2, octet, 16).ptr != first + 2) return std::nullopt;
        bits = (bits << 8) | octet;
    }
    return bits;
}

// The offset of an adapter's generated address moves its last octet only, wrapping within it
// (a base ending in F8 gives ethernet1 an address ending in 02): every adapter of a machine
// keeps the base's first five octets, as the files the products write show.
std::uint32_t withLastOctetMoved(std::uint32_t bits, long long offset) {
    const auto last = static_cast<std::uint32_t>(((static_cast<long long>(bits & 0xFFu) + offset) % 256 + 256) % 256);
    return (bits & 0xFFFF00u) | last;
}

}  // namespace

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
        case DeviceType::IdeController:
        case DeviceType::SataController:
        case DeviceType::NvmeController: s.setFlag(".present", true); break;
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

void giveGeneratedAddress(const DeviceStore& store, Device& nic, std::uint32_t macSeed) {
    std::uint32_t base = macSeed;
    for (const Device& other : store.devices(DeviceType::Network)) {
        if (&other == &nic) continue;
        const auto bits = generatedLowBits(other.settings.text(".generatedAddress"));
        if (!bits) continue;
        base = withLastOctetMoved(*bits, -other.settings.number(".generatedAddressOffset").value_or(0));
        break;
    }
    const int offset = kOffsetPerAdapter * nic.number;
    nic.settings.set(".generatedAddress", generatedMacAddress(withLastOctetMoved(base, offset)));
    nic.settings.setNumber(".generatedAddressOffset", offset);
}

}  // namespace arden
