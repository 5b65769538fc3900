// The pages of a later product: adapter and sound types, firmware, secure boot, nested
// virtualisation, cores per socket, USB controllers and monitors on a Workstation 17.5x machine
// opened from a real file; none of it shown on a Workstation 5.5x machine, whose pages stay as
// they were.
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

#include "GuiTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;

// A copy of corpus file `name` as `file`, opened in an editor.
std::unique_ptr<Builder> openCopy(const char* name, const std::filesystem::path& file) {
    arden::test::writeBytes(file, readBytes(arden::test::corpusDir() / "vmx" / name));
    return openFile(file);
}

bool holds(const std::string& text, const std::string& line) {
    return text.find("\r\n" + line + "\r\n") != std::string::npos || text.find("\n" + line + "\r\n") != std::string::npos;
}

TEST(LaterDevicePages, AWorkstationSeventeenMachineOffersAndWritesThem) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    PromptScript script;
    const auto file = dir / "Windows 10 x64.vmx";
    auto b = openCopy("lanrenlan-configbackup__Windows-10-x64.vmx", file);
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboPlatformVersion"), "17.5x"));
    EXPECT_EQ(said(script), QStringList{}) << "a newer product holds the machine as it is";

    chooseDevice(b.get(), DeviceType::Network);
    auto* types = child<QComboBox>(b.get(), "cboNicType");
    EXPECT_EQ(entries(types) << types->currentText(),
              QStringList({"AMD Lance", "VMXNet", "E1000", "E1000e", "VMXNET 3", "E1000e"}));
    ASSERT_TRUE(pick(types, "VMXNET 3"));

    chooseDevice(b.get(), DeviceType::Sound);
    auto* sound = child<QComboBox>(b.get(), "cboAudioDevice");
    EXPECT_EQ(entries(sound) << sound->currentText(),
              QStringList({"ES1371", "SB16", "SB16 + OPL3/Yamaha Synth", "HD Audio", "HD Audio"}));

    chooseDevice(b.get(), DeviceType::Cpu);
    auto* firmware = child<QComboBox>(b.get(), "cboFirmware");
    auto* secureBoot = child<QCheckBox>(b.get(), "chkSecureBoot");
    auto* cores = child<QComboBox>(b.get(), "cboCoresPerSocket");
    EXPECT_FALSE(firmware->isHidden() || secureBoot->isHidden() || child<QLabel>(b.get(), "lblCoresPerSocket")->isHidden());
    EXPECT_EQ(firmware->currentText(), "BIOS");
    EXPECT_FALSE(secureBoot->isEnabled()) << "secure boot needs EFI";
    EXPECT_EQ(entries(cores) << cores->currentText(), QStringList({"1", "2", "4", "4"}));
    ASSERT_TRUE(pick(firmware, "EFI"));
    ASSERT_TRUE(secureBoot->isEnabled());
    secureBoot->click();
    child<QCheckBox>(b.get(), "chkNestedVirt")->click();
    ASSERT_TRUE(pick(cores, "2"));

    chooseDevice(b.get(), DeviceType::Usb);
    auto* usb3 = child<QCheckBox>(b.get(), "chkUsb3");
    EXPECT_TRUE(usb3->isChecked() && child<QCheckBox>(b.get(), "chkUsb2")->isChecked());
    usb3->click();

    chooseDevice(b.get(), DeviceType::SerialPort);
    EXPECT_EQ(child<QLabel>(b.get(), "lblSerOtherKind")->text(), "Virtual printer");
    EXPECT_FALSE(child<QRadioButton>(b.get(), "optSerFile")->isChecked());
    EXPECT_TRUE(child<QLineEdit>(b.get(), "txtSerNetUri")->isHidden());

    chooseDevice(b.get(), DeviceType::Display);
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtGraphicsMemory")->text(), "8192");
    typeInto(child<QLineEdit>(b.get(), "txtNumDisplays"), "2");
    typeInto(child<QLineEdit>(b.get(), "txtNumDisplays"), "11");
    EXPECT_EQ(said(script), QStringList{"Invalid Entry: The number of monitors must be between 1 and 10; \"11\" was not stored"});
    script.clear();

    EXPECT_TRUE(b->ChangesPending());
    ASSERT_TRUE(b->CreateVmxFile());
    EXPECT_EQ(said(script), QStringList{});
    const std::string text = readBytes(file);
    for (const char* line : {"ethernet0.virtualDev = \"vmxnet3\"", "firmware = \"efi\"", "uefi.secureBoot.enabled = \"TRUE\"",
                             "vhv.enable = \"TRUE\"", "cpuid.coresPerSocket = \"2\"", "usb_xhci.present = \"FALSE\"",
                             "svga.numDisplays = \"2\"", "sound.virtualDev = \"hdaudio\"", "serial0.fileType = \"thinprint\""})
        EXPECT_TRUE(holds(text, line)) << line;
}

TEST(LaterDevicePages, ANetworkSerialPortKeepsItsTypeAndEditsItsUriAndEnd) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    PromptScript script;
    const auto file = dir / "esx.vmx";
    auto b = openCopy("libvirt__esx-in-the-wild-13.vmx", file);
    chooseDevice(b.get(), DeviceType::SerialPort);
    auto* uri = child<QLineEdit>(b.get(), "txtSerNetUri");
    auto* end = child<QComboBox>(b.get(), "cboSerNetEnd");
    EXPECT_FALSE(uri->isHidden() || end->isHidden());
    EXPECT_EQ(end->currentText(), "Server") << "a port without a direction listens";
    typeInto(uri, "telnet://:5000");
    ASSERT_TRUE(pick(end, "Client"));
    EXPECT_EQ(child<QLabel>(b.get(), "lblSerOtherKind")->text(), "Network telnet://:5000 (connects)");
    ASSERT_TRUE(b->CreateVmxFile());
    EXPECT_EQ(said(script), QStringList{});
    const std::string text = readBytes(file);
    for (const char* line : {"serial0.fileType = \"network\"", "serial0.fileName = \"telnet://:5000\"",
                             "serial0.network.endPoint = \"client\"", "serial0.yieldOnMsrRead = \"TRUE\""})
        EXPECT_TRUE(holds(text, line)) << line;
    EXPECT_NE(text.find("serial0.vspc = \"telnets://10.28.100.26:18979"), std::string::npos) << "kept as the file had it";
}

TEST(LaterDevicePages, AWorkstationFiveFiveMachineShowsNoneOfThem) {
    ScratchDir dir;
    auto b = newMachine("Old Product", dir.path());
    const VmConfiguration before = b->configuration();
    chooseDevice(b.get(), DeviceType::Network);
    EXPECT_EQ(entries(child<QComboBox>(b.get(), "cboNicType")), QStringList({"AMD Lance", "VMXNet", "E1000"}));
    chooseDevice(b.get(), DeviceType::Sound);
    EXPECT_EQ(entries(child<QComboBox>(b.get(), "cboAudioDevice")), QStringList({"ES1371", "SB16", "SB16 + OPL3/Yamaha Synth"}));
    chooseDevice(b.get(), DeviceType::Cpu);
    for (const char* name : {"fraFirmware", "chkNestedVirt", "lblCoresPerSocket", "cboCoresPerSocket"})
        EXPECT_TRUE(child<QWidget>(b.get(), name)->isHidden()) << name;
    chooseDevice(b.get(), DeviceType::Usb);
    for (const char* name : {"chkUsb2", "chkUsb3"}) EXPECT_TRUE(child<QWidget>(b.get(), name)->isHidden()) << name;
    chooseDevice(b.get(), DeviceType::Display);
    for (const char* name : {"txtNumDisplays", "txtGraphicsMemory"})
        EXPECT_TRUE(child<QWidget>(b.get(), name)->isHidden()) << name;
    EXPECT_FALSE(child<QWidget>(b.get(), "chkDisplay3D")->isHidden());
    EXPECT_TRUE(b->configuration() == before) << "showing the pages changes nothing";
}

}  // namespace
}  // namespace arden::gui::test
