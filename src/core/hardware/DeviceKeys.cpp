#include "core/hardware/DeviceKeys.h"

#include <array>
#include <charconv>

#include "core/support/TextUtil.h"

namespace arden {
namespace {

using K = ValueKind;

constexpr std::string_view kScsiAdapters[] = {"buslogic", "lsilogic", "lsisas1068", "pvscsi"};
constexpr std::string_view kDiskModes[] = {"persistent", "independent-persistent",
                                           "independent-nonpersistent"};
constexpr std::string_view kNicTypes[] = {"vlance", "vmxnet", "e1000", "e1000e", "vmxnet3"};
constexpr std::string_view kConnectionTypes[] = {"bridged", "hostonly", "nat", "custom"};
constexpr std::string_view kAddressTypes[] = {"generated", "static"};
constexpr std::string_view kSoundDevices[] = {"es1371", "sb16", "hdaudio"};
constexpr std::string_view kPortFileTypes[] = {"device", "file"};
constexpr std::string_view kSerialFileTypes[] = {"device", "file", "pipe", "network", "thinprint"};
constexpr std::string_view kPipeEnds[] = {"client", "server"};

constexpr std::span<const std::string_view> none{};

// IDE, SATA and NVMe controllers have their presence only; a SATA or NVMe controller's
// "pciSlotNumber" and "subnqnUUID" are the product's own and stay as kept lines.
const DeviceKey kIdeControllerKeys[] = {{".present", K::Flag, none}};

const DeviceKey kScsiControllerKeys[] = {
    {".present", K::Flag, none},
    {".virtualDev", K::Choice, kScsiAdapters},
};

// Hard disks, DVD/CD-ROM drives and generic SCSI devices share one set of node keys.
const DeviceKey kNodeKeys[] = {
    {".present", K::Flag, none},
    {".fileName", K::Text, none},
    {".autodetect", K::Flag, none},
    {".deviceType", K::Text, none},
    {".startConnected", K::Flag, none},
    {".exclusive", K::Flag, none},
    {".mode", K::Choice, kDiskModes},
};

const DeviceKey kNetworkKeys[] = {
    {".present", K::Flag, none},
    {".startConnected", K::Flag, none},
    {".virtualDev", K::Choice, kNicTypes},
    {".features", K::Text, none},  // "15" beside "vmxnet": the enhanced vmxnet
    {".connectionType", K::Choice, kConnectionTypes},
    {".vnet", K::Text, none},
    {".addressType", K::Choice, kAddressTypes},
    {".address", K::Text, none},
    {".generatedAddress", K::Text, none},
    {".generatedAddressOffset", K::Number, none},
};

const DeviceKey kSoundKeys[] = {
    {".present", K::Flag, none},
    {".startConnected", K::Flag, none},
    {".virtualDev", K::Choice, kSoundDevices},
    {".synth.operational", K::Flag, none},
    {".fileName", K::Text, none},
    {".autodetect", K::Flag, none},
};

const DeviceKey kUsbKeys[] = {
    {".present", K::Flag, none},
    {".generic.autoconnect", K::Flag, none},
};

const DeviceKey kFloppyKeys[] = {
    {".present", K::Flag, none},
    {".fileType", K::Choice, kPortFileTypes},
    {".fileName", K::Text, none},
    {".startConnected", K::Flag, none},
};

const DeviceKey kParallelKeys[] = {
    {".present", K::Flag, none},
    {".fileType", K::Choice, kPortFileTypes},
    {".fileName", K::Text, none},
    {".bidirectional", K::Flag, none},
    {".startConnected", K::Flag, none},
};

const DeviceKey kSerialKeys[] = {
    {".present", K::Flag, none},
    {".fileType", K::Choice, kSerialFileTypes},
    {".fileName", K::Text, none},
    {".pipe.endPoint", K::Choice, kPipeEnds},
    {".network.endPoint", K::Choice, kPipeEnds},  // a network port's direction
    {".tryNoRxLoss", K::Flag, none},
    {".yieldOnMsrRead", K::Flag, none},
    {".startConnected", K::Flag, none},
};

const DeviceKey kDisplayKeys[] = {
    {"svga.maxWidth", K::Number, none},
    {"svga.maxHeight", K::Number, none},
    {"svga.vramSize", K::Number, none},
    {"mks.enable3d", K::Flag, none},
    {"svga.numDisplays", K::Number, none},
    {"svga.graphicsMemoryKB", K::Number, none},
};

const DeviceKey kMouseKeys[] = {{".present", K::Flag, none}};

}  // namespace

std::span<const DeviceKey> deviceKeys(DeviceType type) {
    switch (type) {
        case DeviceType::Cpu:
        case DeviceType::Memory: return {};
        case DeviceType::Floppy: return kFloppyKeys;
        case DeviceType::ParallelPort: return kParallelKeys;
        case DeviceType::SerialPort: return kSerialKeys;
        case DeviceType::Sound: return kSoundKeys;
        case DeviceType::Network: return kNetworkKeys;
        case DeviceType::Usb: return kUsbKeys;
        case DeviceType::IdeController:
        case DeviceType::SataController:
        case DeviceType::NvmeController: return kIdeControllerKeys;
        case DeviceType::ScsiController: return kScsiControllerKeys;
        case DeviceType::HardDisk:
        case DeviceType::CdRom:
        case DeviceType::GenericScsi: return kNodeKeys;
        case DeviceType::Display: return kDisplayKeys;
        case DeviceType::Mouse: return kMouseKeys;
    }
    return {};
}

const DeviceKey* findDeviceKey(DeviceType type, std::string_view suffix) {
    for (const DeviceKey& k : deviceKeys(type)) {
        if (equalsIgnoreCase(k.suffix, suffix)) return &k;
    }
    return nullptr;
}

bool parseFlag(std::string_view text, bool& out) {
    static constexpr std::array<std::string_view, 4> yes{"true", "yes", "on", "1"};
    static constexpr std::array<std::string_view, 4> no{"false", "no", "off", "0"};
    for (auto w : yes) if (equalsIgnoreCase(text, w)) { out = true; return true; }
    for (auto w : no) if (equalsIgnoreCase(text, w)) { out = false; return true; }
    return false;
}

bool parseInt32(std::string_view text, int& out) {
    if (text.empty()) return false;
    const char* first = text.data();
    const char* last = text.data() + text.size();
    if (*first == '+') ++first;
    if (first == last) return false;
    auto [ptr, ec] = std::from_chars(first, last, out);
    return ec == std::errc{} && ptr == last;
}

bool normaliseDeviceValue(const DeviceKey& key, std::string_view value, std::string& out) {
    switch (key.kind) {
        case ValueKind::Flag: {
            bool b = false;
            if (!parseFlag(value, b)) return false;
            out = b ? "TRUE" : "FALSE";
            return true;
        }
        case ValueKind::Number: {
            int n = 0;
            if (!parseInt32(value, n)) return false;
            out = std::to_string(n);
            return true;
        }
        case ValueKind::Choice:
            for (std::string_view c : key.choices) {
                if (equalsIgnoreCase(c, value)) {
                    out = std::string(c);
                    return true;
                }
            }
            return false;
        case ValueKind::Text:
            out = std::string(value);
            return true;
    }
    return false;
}

}  // namespace arden
