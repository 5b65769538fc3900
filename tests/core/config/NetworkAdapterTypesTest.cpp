// The later device types and settings against the products: which adapter and sound types each
// product lists, how a file's adapter type, firmware, controllers and serial ports read and write,
// and the fitting of a machine that uses them to an older product.
#include "core/hardware/NodeAssignment.h"
#include "core/config/NetworkAdapterTypes.h"

#include "core/config/DeviceFeatures.h"
#include "core/config/MachineKeys.h"
#include "core/config/ProductLimits.h"
#include "core/config/ProductTables.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "core/hardware/DeviceTexts.h"
#include "core/hardware/SoundAdapter.h"
#include "core/shell/GetText.h"
#include "TestSupport.h"
#include "VmxTestSupport.h"

using namespace arden;
using test::shown;

namespace {

std::pair<int, int> product(const char* platform, const char* version) {
    const int p = *platformFromName(platform);
    return {p, *versionFromText(p, version)};
}

std::string listed(const std::vector<int>& positions, auto names) {
    std::string text;
    for (int p : positions) text += (text.empty() ? "" : ", ") + std::string(names(p));
    return text;
}

std::string nicList(const char* platform, const char* version) {
    auto [p, v] = product(platform, version);
    return listed(offeredNicTypes(p, v), [](int i) { return nicTypes()[static_cast<std::size_t>(i)].name; });
}

std::string soundList(const char* platform, const char* version) {
    auto [p, v] = product(platform, version);
    return listed(offeredSoundAdapters(*productFigures(p, v)),
                  [](int i) { return soundAdapterTypes()[static_cast<std::size_t>(i)].name; });
}

LoadResult corpusFile(const char* name) {
    const auto path = test::corpusDir() / "vmx" / name;
    return parseVmxText(test::readBytes(path), path.parent_path().string() + "/", name, path.string());
}

}  // namespace

TEST(ProductDeviceTypes, EachProductListsTheAdapterAndSoundTypesItHas) {
    const char* sounds = "ES1371, SB16, SB16 + OPL3/Yamaha Synth";
    const std::string withHd = std::string(sounds) + ", HD Audio";
    const std::tuple<const char*, const char*, std::string, std::string> cases[] = {
        {"GSX Server", "2.5x", "AMD Lance, VMXNet", sounds},
        {"Workstation", "5.0x", "AMD Lance, VMXNet", sounds},
        {"Workstation", "5.5x", "AMD Lance, VMXNet, E1000", sounds},
        {"Server", "1.x", "AMD Lance, VMXNet, E1000", sounds},
        {"Workstation", "6.0x", "AMD Lance, VMXNet, E1000", sounds},
        {"Workstation", "6.5x", "AMD Lance, VMXNet, E1000, VMXNET 3", withHd},
        {"Workstation", "17.5x", "AMD Lance, VMXNet, E1000, E1000e, VMXNET 3", withHd},
        {"ESXi", "3.5", "AMD Lance, VMXNet, Enhanced VMXNet, E1000", sounds},
        {"ESXi", "8.0", "AMD Lance, VMXNet, Enhanced VMXNet, E1000, E1000e, VMXNET 3", sounds},
    };
    for (const auto& [platform, version, nics, sound] : cases) {
        EXPECT_EQ(nicList(platform, version), nics) << platform << " " << version;
        EXPECT_EQ(soundList(platform, version), sound) << platform << " " << version;
    }
    auto [ws65, v65] = product("Workstation", "6.5x");
    EXPECT_EQ(shown(checkNicType(ws65, v65, *nicTypeFromCliName("E1000E"))),
              "Invalid Adapter Type: Workstation 6.5x does not offer the adapter type \"e1000e\"; use vlance, "
              "vmxnet, e1000 or vmxnet3.");
    EXPECT_FALSE(checkNicType(ws65, v65, *nicTypeFromCliName("vmxnet3")));
}

TEST(ProductDeviceTypes, AdapterTypesReadAndWriteAsTheProductsDo) {
    const std::string base = "config.version = \"8\"\nvirtualHW.version = \"21\"\nethernet0.present = \"TRUE\"\n";
    auto typeOf = [&](const std::string& lines) {
        auto c = test::parseIn(base + lines).config;
        auto t = adapterNicType(c.devices.devices(DeviceType::Network).front().settings);
        return t ? std::string(nicTypes()[static_cast<std::size_t>(*t)].name) : std::string("none");
    };
    EXPECT_EQ(typeOf("ethernet0.virtualDev = \"e1000e\"\n"), "E1000e");
    EXPECT_EQ(typeOf("ethernet0.virtualDev = \"VMXNET3\"\n"), "VMXNET 3");
    EXPECT_EQ(typeOf("ethernet0.virtualDev = \"vmxnet\"\nethernet0.features = \"15\"\n"), "Enhanced VMXNet");
    EXPECT_EQ(typeOf("ethernet0.virtualDev = \"vmxnet\"\nethernet0.features = \"1\"\n"), "VMXNet");
    EXPECT_EQ(typeOf("ethernet0.virtualDev = \"e1000\"\nethernet0.features = \"15\"\n"), "E1000");

    // The enhanced vmxnet writes its "15"; another type takes the "15" away, any other value stays.
    DeviceSettings nic;
    EXPECT_TRUE(setAdapterNicType(nic, *nicTypeFromCliName("vmxnet-enhanced")));
    EXPECT_EQ(nic.text(".virtualDev") + "/" + nic.text(".features"), "vmxnet/15");
    EXPECT_FALSE(setAdapterNicType(nic, *nicTypeFromCliName("vmxnet-enhanced")));
    EXPECT_TRUE(setAdapterNicType(nic, *nicTypeFromCliName("vmxnet")));
    EXPECT_EQ(nic.text(".virtualDev"), "vmxnet");
    EXPECT_FALSE(nic.has(".features"));
    nic.set(".features", "1");
    setAdapterNicType(nic, *nicTypeFromCliName("vmxnet3"));
    EXPECT_EQ(nic.text(".features"), "1");

    // Written back beside the other keys of the adapter, as read.
    const std::string written = test::resaved(base + "ethernet0.virtualDev = \"vmxnet\"\nethernet0.features = \"15\"\n", 2);
    EXPECT_EQ(test::keyLines(written, "ethernet0.features"), test::Lines{"ethernet0.features = \"15\""});
    EXPECT_EQ(test::keyLines(written, "ethernet0.virtualDev"), test::Lines{"ethernet0.virtualDev = \"vmxnet\""});
}

TEST(ProductDeviceTypes, ModernFilesShowTheirDevicesAndKeepEveryLine) {
    ARDEN_REQUIRE_CORPUS();
    // A Workstation 16 machine: e1000e, HD audio, USB 3, a virtual printer on serial0.
    LoadResult ws = corpusFile("lanrenlan-configbackup__Windows-10-x64.vmx");
    ASSERT_TRUE(ws.ok);
    const DeviceStore& d = ws.config.devices;
    EXPECT_EQ(deviceSummary(d.devices(DeviceType::Network).front()), "NAT, e1000e, 00:0c:29:00:1d:57");
    EXPECT_EQ(deviceSummary(d.devices(DeviceType::Sound).front()), "HD Audio");
    EXPECT_EQ(deviceSummary(d.devices(DeviceType::SerialPort).front()), "Virtual printer");
    EXPECT_TRUE(switchOn(ws.config, MachineSwitch::Usb2) && switchOn(ws.config, MachineSwitch::Usb3));
    EXPECT_FALSE(switchOn(ws.config, MachineSwitch::Efi));
    EXPECT_EQ(coresPerSocket(ws.config.keptLines), 4);
    const std::string written = writeVmxText(ws.config);
    for (const char* line : {"ethernet0.virtualDev = \"e1000e\"", "sound.virtualDev = \"hdaudio\"",
                             "serial0.fileType = \"thinprint\"", "usb_xhci.present = \"TRUE\"",
                             "ehci.present = \"TRUE\"", "cpuid.coresPerSocket = \"4\"", "svga.graphicsMemoryKB = \"8388608\""})
        EXPECT_TRUE(test::hasLine(written, line)) << line;
    EXPECT_EQ(test::resaved(written, 2), written);

    // A Fusion 10 machine: EFI with secure boot, nested virtualisation, USB devices of each kind.
    LoadResult fusion = corpusFile("sharpjs-home__Windows-Server-2016.vmx");
    ASSERT_TRUE(fusion.ok);
    for (MachineSwitch s : {MachineSwitch::Efi, MachineSwitch::SecureBoot, MachineSwitch::NestedVirtualization})
        EXPECT_TRUE(switchOn(fusion.config, s));
    const std::string fusionText = writeVmxText(fusion.config);
    for (const char* line : {"firmware = \"efi\"", "uefi.secureBoot.enabled = \"TRUE\"", "vhv.enable = \"TRUE\"",
                             "ehci:0.deviceType = \"video\"", "usb_xhci:4.deviceType = \"hid\""})
        EXPECT_TRUE(test::hasLine(fusionText, line)) << line;

    // An ESXi 8 machine: vmxnet3 and EFI.
    LoadResult esx8 = corpusFile("libvirt__esx-in-the-wild-12.vmx");
    ASSERT_TRUE(esx8.ok);
    EXPECT_EQ(adapterNicType(esx8.config.devices.devices(DeviceType::Network).front().settings), *nicTypeFromCliName("vmxnet3"));
    EXPECT_TRUE(switchOn(esx8.config, MachineSwitch::Efi));
    const std::string esx8Text = writeVmxText(esx8.config);
    EXPECT_TRUE(test::hasLine(esx8Text, "ethernet0.virtualDev = \"vmxnet3\"") && test::hasLine(esx8Text, "firmware = \"efi\""));
    EXPECT_EQ(test::resaved(esx8Text, 2), esx8Text);
}

TEST(MachineSwitches, FirmwareSecureBootNestedAndCoresAsTheUserSetsThem) {
    auto [ws, v17] = product("Workstation", "17.5x");
    VmConfiguration c = VmConfiguration::newMachine("Switches", "/vms/s/", "New VM", 7);
    c.retarget(ws, v17);
    // Secure boot asks for EFI first.
    EXPECT_EQ(shown(setSwitch(c, MachineSwitch::SecureBoot, true).refusal),
              "Secure Boot Needs EFI: Secure boot works only with EFI firmware: choose EFI first.");
    EXPECT_TRUE(setSwitch(c, MachineSwitch::Efi, true).changed);
    EXPECT_TRUE(setSwitch(c, MachineSwitch::SecureBoot, true).changed);
    EXPECT_TRUE(setSwitch(c, MachineSwitch::NestedVirtualization, true).changed);
    std::string text = writeVmxText(c);
    for (const char* line : {"firmware = \"efi\"", "uefi.secureBoot.enabled = \"TRUE\"", "vhv.enable = \"TRUE\""})
        EXPECT_TRUE(test::hasLine(text, line)) << line;
    // BIOS is the absence of the line, and secure boot goes off with EFI.
    EXPECT_TRUE(setSwitch(c, MachineSwitch::Efi, false).changed);
    text = writeVmxText(c);
    EXPECT_TRUE(test::keyLines(text, "firmware").empty());
    EXPECT_TRUE(test::hasLine(text, "uefi.secureBoot.enabled = \"FALSE\""));
    // A written "bios" stays as written.
    LoadResult bios = test::parseIn("config.version = \"8\"\nvirtualHW.version = \"21\"\nfirmware = \"bios\"\n");
    EXPECT_FALSE(switchOn(bios.config, MachineSwitch::Efi));
    EXPECT_FALSE(setSwitch(bios.config, MachineSwitch::Efi, false).changed);
    EXPECT_TRUE(test::hasLine(writeVmxText(bios.config), "firmware = \"bios\""));

    // Cores per socket divide the processors, within the product's maximum.
    while (c.devices.count(DeviceType::Cpu) < 6) c.devices.createDevice(DeviceType::Cpu);
    EXPECT_EQ(shown(setCoresPerSocket(c, 4).refusal),
              "Invalid Cores per Socket: The cores per socket must divide the number of processors and stay within the "
              "product's maximum.  Allowed for this machine: 1, 2, 3, 6.");
    EXPECT_FALSE(setCoresPerSocket(c, 1).changed);  // one core per socket is what no line says
    EXPECT_TRUE(setCoresPerSocket(c, 3).changed);
    EXPECT_TRUE(setCoresPerSocket(c, 2).changed);
    EXPECT_EQ(test::keyLines(writeVmxText(c), "cpuid.coresPerSocket"), test::Lines{"cpuid.coresPerSocket = \"2\""});

    // An original product has none of it.
    VmConfiguration old = VmConfiguration::newMachine("Old", "/vms/o/", "New VM", 7);
    EXPECT_EQ(shown(setSwitch(old, MachineSwitch::Usb3, true).refusal),
              "Not Offered by This Product: Workstation 5.5x does not offer USB 3 controllers.");
    EXPECT_FALSE(switchOffered(old, MachineSwitch::Efi));
}

TEST(ProductRetarget, LaterFeaturesAreListedAndFittedForAnOlderProduct) {
    ARDEN_REQUIRE_CORPUS();
    LoadResult fusion = corpusFile("sharpjs-home__Windows-Server-2016.vmx");
    ASSERT_TRUE(fusion.ok);
    VmConfiguration c = fusion.config;
    // Its SATA controller would refuse the change (Workstation 6.5x has none): the user moves the
    // SATA CD-ROM to IDE and removes the controller first.
    const std::string sata = c.devices.devices(DeviceType::SataController).front().identifier;
    EXPECT_EQ(removeController(c.devices, DeviceType::SataController, sata),
              std::vector<std::string>{"CD-ROM 1 (SATA 0:1) moved to IDE 0:0"});
    auto [ws, v65] = product("Workstation", "6.5x");
    const RetargetPlan plan = planRetarget(c, ws, v65);
    ASSERT_TRUE(plan.question);
    const std::string question = shown(plan.question);
    for (const char* item : {"- Network Adapter 1: Workstation 6.5x does not offer the adapter type \"e1000e\"; becomes \"vlance\"\n",
                             "- EFI firmware: not offered by Workstation 6.5x; becomes BIOS\n",
                             "- Secure boot: not offered by Workstation 6.5x; becomes off\n",
                             "- Nested virtualisation: not offered by Workstation 6.5x; becomes off\n",
                             "- USB 3 controllers: not offered by Workstation 6.5x; becomes none\n"})
        EXPECT_NE(question.find(item), std::string::npos) << item << "\nin\n" << question;
    EXPECT_EQ(question.find("USB 2.0"), std::string::npos);  // Workstation 6.5x has USB 2.0

    retargetAndFit(c, ws, v65);
    const std::string text = writeVmxText(c);
    for (const char* key : {"firmware", "uefi.secureBoot.enabled", "vhv.enable", "usb_xhci.present", "usb_xhci:4.deviceType"})
        EXPECT_TRUE(test::keyLines(text, key).empty()) << key;
    EXPECT_TRUE(test::hasLine(text, "ehci:0.deviceType = \"video\""));
    EXPECT_TRUE(test::hasLine(text, "ethernet0.virtualDev = \"vlance\""));
    EXPECT_FALSE(planRetarget(c, ws, v65).question);

    // HD audio becomes ES1371 on a product without it.
    LoadResult hd = test::parseIn("config.version = \"8\"\nvirtualHW.version = \"21\"\nsound.present = \"TRUE\"\n"
                                  "sound.virtualDev = \"hdaudio\"\n");
    auto [ws60, v60] = product("Workstation", "6.0x");
    EXPECT_NE(shown(planRetarget(hd.config, ws60, v60).question).find("- HD audio: not offered by Workstation 6.0x; becomes ES1371\n"),
              std::string::npos);
    retargetAndFit(hd.config, ws60, v60);
    EXPECT_TRUE(test::hasLine(writeVmxText(hd.config), "sound.virtualDev = \"es1371\""));
}
