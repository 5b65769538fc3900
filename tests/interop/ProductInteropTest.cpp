// A new machine of every product beyond the original nine, read by libvirt's VMX parser: the
// processors, memory, disks, CD-ROM drives and network adapters libvirt sees are the ones
// "show" reports, and "resave" writes the new machine again byte for byte.
#include <algorithm>

#include "InteropSupport.h"
#include "cli/CliRunner.h"
#include "core/config/ProductTables.h"

using arden::test::elements;
using arden::test::readBytes;
using arden::test::ScratchDir;

namespace {

int countLines(const std::string& text, const std::string& start) {
    int n = 0;
    for (std::size_t at = 0; (at = text.find("\n" + start, at)) != std::string::npos; ++at) ++n;
    return n;
}

int countWith(const std::vector<std::string>& found, const std::string& part) {
    return static_cast<int>(std::count_if(found.begin(), found.end(), [&](const std::string& e) { return e.find(part) != std::string::npos; }));
}

}  // namespace

TEST(LibvirtReadsEveryProduct, NewMachinesOfTheAddedProducts) {
    ARDEN_REQUIRE_VIRSH();
    ScratchDir dir;
    int products = 0;
    for (int platform = 0; platform < arden::kPlatformCount; ++platform) {
        const auto versions = arden::platformVersions(platform);
        for (std::size_t v = 0; v < versions.size(); ++v) {
            const auto figures = arden::productFigures(platform, static_cast<int>(v));
            if (figures->virtualHwVersion < 6 && platform != arden::kEsx) continue;  // the original nine
            const std::string platformName(arden::platformName(platform)), version(versions[v]);
            SCOPED_TRACE(platformName + " " + version);
            const std::string name = "P" + std::to_string(++products), vmx = (dir / (name + ".vmx")).string();
            ASSERT_EQ(arden::test::runCli({"new", dir.path().string(), name, "--platform", platformName, "--version", version}).exitCode, 0);
            const std::string written = readBytes(vmx);
            ASSERT_EQ(arden::test::runCli({"resave", vmx}).exitCode, 0);
            EXPECT_EQ(readBytes(vmx), written) << "a new machine is written again byte for byte";
            // libvirt reads a bridged adapter only with the "networkName" of ESX: the adapter uses NAT.
            ASSERT_EQ(arden::test::runCli({"nic", vmx, "0", "--connection", "nat"}).exitCode, 0);
            const arden::test::CliResult shown = arden::test::runCli({"show", vmx});
            ASSERT_EQ(shown.exitCode, 0) << shown.err;
            EXPECT_NE(shown.out.find("Product: " + platformName + " " + version + ", hardware version " +
                                     std::to_string(figures->virtualHwVersion) + "\n"),
                      std::string::npos)
                << shown.out;
            const std::size_t memAt = shown.out.find("Memory: ");
            ASSERT_NE(memAt, std::string::npos);
            const long long mb = std::stoll(shown.out.substr(memAt + 8));

            const arden::test::ToolRun virsh = arden::test::libvirtDomainXml(dir.path(), vmx);
            ASSERT_EQ(virsh.exitCode, 0) << virsh.output;
            const std::string& xml = virsh.output;
            EXPECT_NE(xml.find("<vcpu placement='static'>" + std::to_string(countLines(shown.out, "  CPU ")) + "</vcpu>"),
                      std::string::npos) << xml;
            EXPECT_NE(xml.find("<memory unit='KiB'>" + std::to_string(mb * 1024) + "</memory>"), std::string::npos) << xml;
            const auto disks = elements(xml, "disk");
            // A drive on "auto detect" is the host's drive: libvirt shows it as a LUN.
            EXPECT_EQ(countWith(disks, "device='cdrom'") + countWith(disks, "device='lun'"), countLines(shown.out, "  CD-ROM "))
                << xml;
            EXPECT_EQ(countWith(disks, "device='disk'"), countLines(shown.out, "  Hard Disk ")) << xml;
            EXPECT_EQ(static_cast<int>(elements(xml, "interface").size()), countLines(shown.out, "  Network Adapter ")) << xml;
        }
    }
    EXPECT_EQ(products, 57);
}
