#include "core/hardware/DeviceTexts.h"

#include <array>

#include "core/hardware/SoundAdapter.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

struct TypeTexts {
    std::string_view englishName;  // the type's name
    std::string_view displayBase;  // start of the hardware-list text
    std::string_view stem;         // identifier stem
    int numberShift;               // added to the key number in the display text; -1: no number
};

// Indexed by type number.
constexpr std::array<TypeTexts, kDeviceTypeCount> kTexts = {{
    {"CPU", "CPU", "cpu", 1},
    {"Memory", "Memory", "mem", -1},
    {"Floppy Drive", "Floppy", "fd", 1},
    {"Parallel Port", "Parallel Port", "lpt", 1},
    {"Serial Port", "Serial Port", "com", 1},
    {"Sound Adapter", "Sound Adapter", "snd", -1},
    {"Network Adapter", "Network Adapter", "nic", 1},
    {"USB Controller", "USB Controller", "usb", -1},
    {"IDE Controller", "IDE Controller", "idec", 0},
    {"SCSI Controller", "SCSI Controller", "scsic", 0},
    {"Hard Disk", "Hard Disk", "hd", 1},
    {"DVD/CD-ROM Drive", "CD-ROM", "cd", 1},
    {"Generic SCSI Device", "Gen SCSI", "gen", 1},
    {"Display", "Display", "disp", -1},
    {"Mouse", "Mouse", "mouse", -1},
    {"SATA Controller", "SATA Controller", "satac", 0},
    {"NVMe Controller", "NVMe Controller", "nvmec", 0},
}};

const TypeTexts& texts(DeviceType t) { return kTexts[static_cast<std::size_t>(t)]; }

std::string onOff(const Device& d) { return d.enabled() ? std::string{} : std::string(" (disabled)"); }

std::string connection(const DeviceSettings& s, std::string_view deviceWord) {
    std::string type = s.text(".fileType");
    std::string name = s.text(".fileName");
    if (equalsIgnoreCase(type, "file")) return "File " + name;
    if (equalsIgnoreCase(type, "pipe")) {
        std::string end = s.text(".pipe.endPoint");
        return "Named pipe " + name + (end.empty() ? std::string{} : " (" + end + ")");
    }
    // The hosted products' virtual printer, and a port reached over the network (its URI and
    // whether this end listens or connects).
    if (equalsIgnoreCase(type, "thinprint")) return "Virtual printer";
    if (equalsIgnoreCase(type, "network")) {
        std::string end = toLowerAscii(s.text(".network.endPoint"));
        return "Network " + name + (end == "server" ? " (listens)" : end == "client" ? " (connects)" : "");
    }
    if (name.empty()) return std::string(deviceWord);
    return std::string(deviceWord) + " " + name;
}

std::string networkSummary(const Device& d) {
    const DeviceSettings& s = d.settings;
    std::string conn = toLowerAscii(s.text(".connectionType"));
    std::string text;
    if (conn == "hostonly") text = "Host-Only";
    else if (conn == "nat") text = "NAT";
    else if (conn == "custom") text = "Custom (" + s.text(".vnet") + ")";
    else if (conn.empty() || conn == "bridged") text = "Bridged";
    else text = conn;
    std::string dev = s.text(".virtualDev");
    // "features" 15 beside vmxnet is the enhanced vmxnet adapter.
    if (equalsIgnoreCase(dev, "vmxnet") && s.text(".features") == "15") dev += " (enhanced)";
    if (!dev.empty()) text += ", " + dev;
    if (equalsIgnoreCase(s.text(".addressType"), "static")) {
        text += ", static " + s.text(".address");
    } else if (s.has(".generatedAddress")) {
        text += ", " + s.text(".generatedAddress");
    }
    return text + onOff(d);
}

std::string nodeSummary(const Device& d) {
    std::string text = nodeLabel(d.node);
    std::string file = d.settings.text(".fileName");
    if (!file.empty()) text += (text.empty() ? "" : ", ") + file;
    std::string mode = d.settings.text(".mode");
    if (!mode.empty()) text += (text.empty() ? "(" : " (") + mode + ")";
    return text + onOff(d);
}

}  // namespace

std::string_view englishTypeName(DeviceType type) { return texts(type).englishName; }

std::string_view identifierStem(DeviceType type) { return texts(type).stem; }

std::string nodeLabel(const clsNodeDevice& node) {
    if (node.ControllerType().empty() || node.ControllerNumber() < 0 || node.NodeNumber() < 0) return {};
    return node.ControllerType() + " " + std::to_string(node.ControllerNumber()) + ":" +
           std::to_string(node.NodeNumber());
}

std::string deviceDisplayText(const Device& device) {
    const TypeTexts& t = texts(device.type);
    std::string text(t.displayBase);
    if (t.numberShift >= 0) text += " " + std::to_string(device.number + t.numberShift);
    return text;
}

std::string deviceSummary(const Device& d) {
    const DeviceSettings& s = d.settings;
    switch (d.type) {
        case DeviceType::Cpu:
            return s.flag("pae", false) ? "Virtual processor, PAE emulated" : "Virtual processor";
        case DeviceType::Memory: return s.text("memsize") + " MB";
        case DeviceType::Floppy: return connection(s, "Drive") + onOff(d);
        case DeviceType::ParallelPort:
        case DeviceType::SerialPort: return connection(s, "Port") + onOff(d);
        case DeviceType::Sound: {
            const auto position = soundAdapterPosition(s);
            const std::string text = position ? std::string(soundAdapterTypes()[static_cast<std::size_t>(*position)].name)
                                              : s.has(".virtualDev") ? s.text(".virtualDev") : "Sound card";
            return text + onOff(d);
        }
        case DeviceType::Network: return networkSummary(d);
        case DeviceType::Usb:
            return std::string(d.enabled() ? "Enabled" : "Disabled") +
                   (s.flag(".generic.autoconnect", false) ? ", devices connect automatically" : "");
        case DeviceType::IdeController:
        case DeviceType::SataController:
        case DeviceType::NvmeController: return d.enabled() ? "Enabled" : "Disabled";
        case DeviceType::ScsiController: {
            std::string dev = toLowerAscii(s.text(".virtualDev"));
            std::string text = dev == "lsilogic"                   ? "LsiLogic"
                               : dev == "buslogic" || dev.empty() ? "BusLogic"
                               : dev == "lsisas1068"              ? "LSI Logic SAS"
                               : dev == "pvscsi"                  ? "VMware Paravirtual"
                                                                  : dev;
            return text + onOff(d);
        }
        case DeviceType::HardDisk:
        case DeviceType::CdRom:
        case DeviceType::GenericScsi: return nodeSummary(d);
        case DeviceType::Display: {
            auto w = s.number("svga.maxWidth");
            auto h = s.number("svga.maxHeight");
            auto v = s.number("svga.vramSize");
            std::string text;
            if (w && h) text = "Max. " + std::to_string(*w) + " x " + std::to_string(*h);
            if (v) text += (text.empty() ? "" : ", ") + std::to_string(*v / 1048576) + " MB video RAM";
            if (s.flag("mks.enable3d", false)) text += (text.empty() ? "" : ", ") + std::string("3D");
            return text.empty() ? "Product defaults" : text;
        }
        case DeviceType::Mouse: return d.enabled() ? "Enabled" : "Disabled";
    }
    return {};
}

}  // namespace arden
