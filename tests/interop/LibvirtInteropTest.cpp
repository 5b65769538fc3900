// A machine made through arden-forge-cli, read by libvirt's VMX parser (virsh domxml-from-native
// vmware-vmx): the disks, drives, ports and network adapters it reports must be the ones the
// commands placed, with the adapter types, connections and addresses the commands chose.
#include <algorithm>
#include <cctype>

#include "InteropSupport.h"
#include "cli/CliRunner.h"

using arden::test::elements;
using arden::test::holdsAll;
using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::ToolRun;

namespace {

// The new machine's generated address of ethernet0, in lower case as libvirt prints it.
std::string generatedAddress(const std::string& vmx) {
    const std::string text = readBytes(vmx);
    const std::size_t at = text.find("ethernet0.generatedAddress = \"");
    std::string mac = at == std::string::npos ? "" : text.substr(at + 30, 17);
    std::transform(mac.begin(), mac.end(), mac.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return mac;
}

void run(const std::vector<std::string>& args) {
    arden::test::CliResult r = arden::test::runCli(args);
    ASSERT_EQ(r.exitCode, 0) << args[0] << " " << args.back() << ": " << r.out << r.err;
}

}  // namespace

// Every device type goes through "device add"; the three network adapters take each type, the
// nat and custom connections, a generated address with an offset and two static ones.
TEST(LibvirtReadsTheHardware, EveryDeviceTypeAdapterConnectionAndAddress) {
    ARDEN_REQUIRE_VIRSH();
    ScratchDir dir;
    const std::string folder = (dir / "vms").string(), vmx = folder + "/Every Device.vmx";
    const auto in = [&](const std::string& name) { return folder + "/" + name; };
    run({"new", folder, "Every Device"});
    // A new machine has the most sound adapters, USB controllers, displays and mice it may have:
    // they are removed and added again.
    for (const char* entry : {"Sound Adapter", "USB Controller", "Display", "Mouse"}) run({"device", "remove", vmx, entry});
    const std::vector<std::vector<std::string>> adds = {
        {"CPU"}, {"Floppy Drive", "--file", in("boot.img")}, {"Parallel Port", "--file", in("printer out.txt")},
        {"Serial Port", "--file", in("serial ü.log")}, {"Serial Port"}, {"Sound Adapter"}, {"Network Adapter"},
        {"Network Adapter"}, {"USB Controller"}, {"IDE Controller"}, {"SCSI Controller"},
        {"Hard Disk", "--file", in("disk é ü.vmdk")}, {"DVD/CD-ROM Drive", "--file", in("install ä.iso")},
        {"Hard Disk", "--file", in("scsi disk.vmdk"), "--node", "SCSI 0:3"},
        {"Generic SCSI Device", "--file", "/vmfs/devices/cdrom/mpx.vmhba1:C0:T0:L0"}, {"Display"}, {"Mouse"}};
    for (const auto& add : adds) {
        std::vector<std::string> args{"device", "add", vmx};
        args.insert(args.end(), add.begin(), add.end());
        run(args);
    }
    run({"memory", vmx, "512"});
    // libvirt reads a custom adapter only with the "networkName" that ESX adds (the program keeps
    // such a line it does not manage), and does not read host-only ones yet.
    arden::test::writeBytes(vmx, readBytes(vmx) + "ethernet2.networkName = \"VM Network\"\r\n");
    run({"nic", vmx, "0", "--type", "vlance", "--connection", "nat", "--mac", "generated", "--offset", "7"});
    run({"nic", vmx, "1", "--type", "vmxnet", "--connection", "nat", "--mac", "00:50:56:00:00:01"});
    run({"nic", vmx, "2", "--type", "e1000", "--connection", "VMnet5", "--mac", "00:50:56:3f:ff:fe"});

    ToolRun virsh = arden::test::libvirtDomainXml(dir.path(), vmx);
    ASSERT_EQ(virsh.exitCode, 0) << virsh.output;
    const std::string& xml = virsh.output;
    EXPECT_TRUE(holdsAll(xml, {"<vcpu placement='static'>2</vcpu>", "<memory unit='KiB'>524288</memory>",
                               "<controller type='scsi' index='0' model='buslogic'/>"}))
        << xml;
    const std::vector<std::pair<std::string, std::vector<std::string>>> expected = {
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
        {"interface", {"type='user'", "<mac address='" + generatedAddress(vmx) + "' type='generated'/>", "<model type='vlance'/>"}},
        {"interface", {"type='user'", "<mac address='00:50:56:00:00:01' type='static'/>", "<model type='vmxnet'/>"}},
        {"interface", {"type='bridge'", "<mac address='00:50:56:3f:ff:fe' type='static'/>", "<target dev='VMnet5'/>",
                       "<model type='e1000'/>"}},
    };
    for (const auto& [tag, parts] : expected) {
        const auto found = elements(xml, tag);
        EXPECT_TRUE(std::any_of(found.begin(), found.end(), [&](const std::string& e) { return holdsAll(e, parts); }))
            << tag << " with " << parts.back() << " in\n" << xml;
    }
    EXPECT_EQ(elements(xml, "disk").size(), 7u);
    EXPECT_EQ(elements(xml, "serial").size(), 2u);
    EXPECT_EQ(elements(xml, "parallel").size(), 1u);
    EXPECT_EQ(elements(xml, "interface").size(), 3u);

    // Host-only: libvirt names the value the program writes rather than calling it invalid.
    run({"nic", vmx, "1", "--connection", "hostonly"});
    virsh = arden::test::libvirtDomainXml(dir.path(), vmx);
    EXPECT_NE(virsh.exitCode, 0);
    EXPECT_NE(virsh.output.find("No yet handled value 'hostonly' for VMX entry 'ethernet1.connectionType'"), std::string::npos)
        << virsh.output;
}

// A Workstation 17.5x machine made through the commands with an NVMe system disk, a SATA
// DVD drive, vmxnet3 and e1000e adapters, EFI with secure boot and two cores per socket. libvirt
// reads the drive, the adapter types, the firmware and the topology as written; it ignores NVMe,
// so the NVMe disk is checked in the written keys and the listing, and qemu-img reads the disk.
TEST(LibvirtReadsTheHardware, AWorkstation17MachineWithItsLaterDevices) {
    ARDEN_REQUIRE_VIRSH();
    ScratchDir dir;
    const std::string folder = (dir / "vms").string(), vmx = folder + "/Later.vmx";
    run({"new", folder, "Later", "--platform", "Workstation", "--version", "17.5x"});
    run({"disk", "create", folder + "/system.vmdk", "--size", "2G", "--adapter", "lsilogic", "--type", "growable", "--yes"});
    arden::test::writeBytes(dir / "vms" / "setup.iso", "");
    run({"device", "add", vmx, "NVMe Controller"});
    run({"device", "add", vmx, "Hard Disk", "--file", folder + "/system.vmdk", "--node", "NVMe 0:0"});
    run({"device", "add", vmx, "SATA Controller"});
    run({"device", "add", vmx, "DVD/CD-ROM Drive", "--file", folder + "/setup.iso", "--node", "SATA 0:1"});
    run({"device", "add", vmx, "CPU"});
    run({"device", "add", vmx, "Network Adapter"});
    run({"nic", vmx, "0", "--type", "vmxnet3", "--connection", "nat"});
    run({"nic", vmx, "1", "--type", "e1000e", "--connection", "nat"});
    run({"machine", vmx, "--firmware", "efi", "--secure-boot", "yes", "--cores-per-socket", "2"});

    ToolRun virsh = arden::test::libvirtDomainXml(dir.path(), vmx);
    ASSERT_EQ(virsh.exitCode, 0) << virsh.output;
    const std::string& xml = virsh.output;
    EXPECT_TRUE(holdsAll(xml, {"<os firmware='efi'>", "<topology sockets='1' dies='1' cores='2' threads='1'/>",
                               "<vcpu placement='static'>2</vcpu>", "<controller type='sata' index='0'/>"}))
        << xml;
    const auto nics = elements(xml, "interface");
    ASSERT_EQ(nics.size(), 2u) << xml;
    EXPECT_NE(nics[0].find("<model type='vmxnet3'/>"), std::string::npos) << nics[0];
    EXPECT_NE(nics[1].find("<model type='e1000e'/>"), std::string::npos) << nics[1];
    const auto drives = elements(xml, "disk");
    EXPECT_TRUE(std::any_of(drives.begin(), drives.end(), [](const std::string& d) {
        return holdsAll(d, {"device='cdrom'", "<source file='setup.iso'/>", "bus='sata'", "controller='0' bus='0' target='0' unit='1'"});
    })) << xml;

    const std::string text = readBytes(vmx);
    EXPECT_TRUE(holdsAll(text, {"\r\nnvme0.present = \"TRUE\"\r\n", "\r\nnvme0:0.fileName = \"system.vmdk\"\r\n",
                                "\r\nsata0:1.deviceType = \"cdrom-image\"\r\n", "\r\nuefi.secureBoot.enabled = \"TRUE\"\r\n"}))
        << text;
    EXPECT_EQ(text.find("nvme0:0.deviceType"), std::string::npos) << "a disk on NVMe is written without a device type";
    arden::test::CliResult shown = arden::test::runCli({"show", vmx});
    EXPECT_NE(shown.out.find("Hard Disk 1\tNVMe 0:0, system.vmdk (persistent)\tNVMe 0:0\n"), std::string::npos) << shown.out;
    ToolRun qemu = arden::test::tool("qemu-img info " + arden::test::shellQuote(folder + "/system.vmdk"));
    EXPECT_EQ(qemu.exitCode, 0) << qemu.output;
    EXPECT_NE(qemu.output.find("virtual size: 2 GiB (2147483648 bytes)"), std::string::npos) << qemu.output;
}
