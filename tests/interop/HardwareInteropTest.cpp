// A machine given every device type through arden-forge-cli, read by libvirt's VMX parser
// (virsh domxml-from-native vmware-vmx): the disks, DVD/CD-ROM drives, floppies, network
// adapters, serial and parallel ports it reports must be the ones the commands placed.
#include <filesystem>

#include "TestSupport.h"
#include "LibvirtVmx.h"
#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"

using arden::test::elements;
using arden::test::quote;
using arden::test::ScratchDir;
using arden::test::tool;
using arden::test::ToolRun;
namespace fs = std::filesystem;

namespace {

std::string cli(const std::vector<std::string>& args) {
    std::string command = quote(ARDEN_CLI_PATH);
    for (const std::string& a : args) command += " " + quote(a);
    return command;
}

// The element of `tag` that holds every one of `parts`, or an empty text.
std::string elementWith(const std::string& xml, const std::string& tag, const std::vector<std::string>& parts) {
    for (const std::string& e : elements(xml, tag)) {
        bool all = true;
        for (const std::string& p : parts) all = all && e.find(p) != std::string::npos;
        if (all) return e;
    }
    return {};
}

// libvirt insists on "ethernetN.networkName" for bridged and custom adapters and does not read
// host-only ones: the test machine's adapters use NAT, set through the core as the network page
// would.
void connectAdaptersToNat(const fs::path& vmx) {
    arden::LoadResult loaded = arden::loadVmxFile(vmx);
    ASSERT_TRUE(loaded.ok);
    for (const arden::Device& nic : loaded.config.devices.devices(arden::DeviceType::Network)) {
        loaded.config.devices.find(nic.type, nic.identifier)->settings.set(".connectionType", "nat");
    }
    ASSERT_TRUE(arden::CreateVmxFile(loaded.config).written);
}

}  // namespace

TEST(LibvirtReadsTheHardware, EveryDeviceTypeAddedThroughTheCommandLine) {
    if (!arden::test::virshInstalled()) GTEST_SKIP() << "virsh not installed (Debian package libvirt-clients)";
    ScratchDir dir;

    const std::string folder = (dir / "vms").string();
    const std::string vmx = (dir / "vms" / "Every Device.vmx").string();
    const auto in = [&](const std::string& name) { return folder + "/" + name; };
    ASSERT_EQ(tool(cli({"new", folder, "Every Device"})).exitCode, 0);
    // A new machine already has one sound adapter, USB controller, display and mouse, the most
    // it may have: they are removed and added again so every type goes through "device add".
    for (const char* entry : {"Sound Adapter", "USB Controller", "Display", "Mouse"}) {
        ToolRun r = tool(cli({"device", "remove", vmx, entry}));
        ASSERT_EQ(r.exitCode, 0) << r.output;
    }
    const std::vector<std::vector<std::string>> adds = {
        {"CPU"},
        {"Floppy Drive", "--file", in("boot.img")},
        {"Parallel Port", "--file", in("printer out.txt")},
        {"Serial Port", "--file", in("serial ü.log")},
        {"Serial Port"},
        {"Sound Adapter"},
        {"Network Adapter"},
        {"USB Controller"},
        {"IDE Controller"},
        {"SCSI Controller"},
        {"Hard Disk", "--file", in("disk é ü.vmdk")},
        {"DVD/CD-ROM Drive", "--file", in("install ä.iso")},
        {"Hard Disk", "--file", in("scsi disk.vmdk"), "--node", "SCSI 0:3"},
        {"Generic SCSI Device", "--file", "/vmfs/devices/cdrom/mpx.vmhba1:C0:T0:L0"},
        {"Display"},
        {"Mouse"},
    };
    for (const auto& add : adds) {
        std::vector<std::string> args{"device", "add", vmx};
        args.insert(args.end(), add.begin(), add.end());
        ToolRun r = tool(cli(args));
        ASSERT_EQ(r.exitCode, 0) << add[0] << ": " << r.output;
    }
    ASSERT_EQ(tool(cli({"memory", vmx, "512"})).exitCode, 0);
    connectAdaptersToNat(vmx);

    ToolRun virsh = arden::test::libvirtDomainXml(dir.path(), vmx);
    ASSERT_EQ(virsh.exitCode, 0) << virsh.output;
    const std::string& xml = virsh.output;
    EXPECT_NE(xml.find("<vcpu placement='static'>2</vcpu>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<memory unit='KiB'>524288</memory>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<controller type='scsi' index='0' model='buslogic'/>"), std::string::npos) << xml;

    struct Expected {
        std::string tag;
        std::vector<std::string> parts;
    };
    const Expected expected[] = {
        {"disk", {"device='disk'", "<source file='disk é ü.vmdk'/>", "<target dev='hda' bus='ide'/>"}},
        {"disk", {"device='cdrom'", "<source file='install ä.iso'/>", "<target dev='hdb' bus='ide'/>"}},
        {"disk", {"<target dev='hdc' bus='ide'/>"}},  // the new machine's drive on IDE 1:0, auto detect
        {"disk", {"device='disk'", "<source file='scsi disk.vmdk'/>", "<target dev='sdd' bus='scsi'/>"}},
        {"disk", {"<source dev='/vmfs/devices/cdrom/mpx.vmhba1:C0:T0:L0'/>", "<target dev='sda' bus='scsi'/>"}},
        {"disk", {"device='floppy'", "<target dev='fda' bus='fdc'/>"}},
        {"disk", {"device='floppy'", "<source file='boot.img'/>", "<target dev='fdb' bus='fdc'/>"}},
        {"serial", {"type='file'", "<source path='serial ü.log'/>", "<target port='0'/>"}},
        {"serial", {"type='dev'", "<source path='auto detect'/>", "<target port='1'/>"}},
        {"parallel", {"type='file'", "<source path='printer out.txt'/>", "<target port='0'/>"}},
    };
    for (const Expected& e : expected) {
        EXPECT_FALSE(elementWith(xml, e.tag, e.parts).empty()) << e.tag << " with " << e.parts.back() << " in\n" << xml;
    }
    EXPECT_EQ(elements(xml, "disk").size(), 7u);
    EXPECT_EQ(elements(xml, "serial").size(), 2u);
    EXPECT_EQ(elements(xml, "parallel").size(), 1u);
    const auto nics = elements(xml, "interface");
    ASSERT_EQ(nics.size(), 2u) << xml;
    for (const std::string& nic : nics) EXPECT_NE(nic.find("<model type='vlance'/>"), std::string::npos) << nic;
    // The first adapter's address is the one the new machine was given.
    std::string text = arden::test::readBytes(vmx);
    std::size_t at = text.find("ethernet0.generatedAddress = \"");
    ASSERT_NE(at, std::string::npos);
    std::string mac = text.substr(at + 30, 17);
    for (char& c : mac) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_NE(nics[0].find("<mac address='" + mac + "'"), std::string::npos) << nics[0];
}
