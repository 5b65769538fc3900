// The later products' settings from the command line: the machine command's list and edits
// (firmware, secure boot, nested virtualisation, USB controllers, cores per socket), the later
// adapter types of nic, and the same commands refused on an original product.
#include "CliRunner.h"

using namespace arden::test;

namespace {

bool holds(const std::string& text, const std::string& line) { return text.find("\n" + line + "\r\n") != std::string::npos; }

}  // namespace

TEST(CliMachine, ALaterProductListsAndSetsItsSettings) {
    ScratchDir dir;
    ASSERT_EQ(runCli({"new", dir.path().string(), "M", "--platform", "ESXi", "--version", "8.0"}).exitCode, 0);
    const std::string file = (dir / "M.vmx").string();
    EXPECT_EQ(runCli({"machine", file}).out,
              "firmware\tbios\nsecure-boot\tno\nnested\tno\nusb2\tno\nusb3\tno\ncores-per-socket\t1\n");

    // Secure boot asks for EFI: given together, the firmware comes first.
    auto r = runCli({"machine", file, "--secure-boot", "yes", "--firmware", "efi", "--nested", "yes", "--usb3", "yes"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "firmware\tefi\nsecure-boot\tyes\nnested\tyes\nusb2\tno\nusb3\tyes\ncores-per-socket\t1\n");
    std::string text = readBytes(file);
    for (const char* line : {"firmware = \"efi\"", "uefi.secureBoot.enabled = \"TRUE\"", "vhv.enable = \"TRUE\"",
                             "usb_xhci.present = \"TRUE\""})
        EXPECT_TRUE(holds(text, line)) << line << "\n" << text;

    r = runCli({"machine", file, "--cores-per-socket", "2"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "Invalid Cores per Socket: The cores per socket must divide the number of processors and stay "
                     "within the product's maximum.  Allowed for this machine: 1.\n");
    // The adapter types of ESXi, the enhanced vmxnet among them.
    r = runCli({"nic", file, "0", "--type", "vmxnet-enhanced"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    text = readBytes(file);
    EXPECT_TRUE(holds(text, "ethernet0.virtualDev = \"vmxnet\"") && holds(text, "ethernet0.features = \"15\""));
    EXPECT_NE(runCli({"show", file}).out.find("Network Adapter 1\tBridged, vmxnet (enhanced), "), std::string::npos);
    EXPECT_EQ(runCli({"nic", file, "0", "--type", "e1000e"}).exitCode, 0);
    text = readBytes(file);
    EXPECT_TRUE(holds(text, "ethernet0.virtualDev = \"e1000e\""));
    EXPECT_EQ(text.find("ethernet0.features"), std::string::npos);
}

TEST(CliMachine, AnOriginalProductOffersNoneOfIt) {
    ScratchDir dir;
    ASSERT_EQ(runCli({"new", dir.path().string(), "Old"}).exitCode, 0);
    const std::string file = (dir / "Old.vmx").string();
    const std::string before = readBytes(file);
    EXPECT_EQ(runCli({"machine", file}).out, "");
    auto r = runCli({"machine", file, "--firmware", "efi"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "Not Offered by This Product: Workstation 5.5x does not offer EFI firmware.\n");
    EXPECT_EQ(readBytes(file), before);
}
