// libvirt's VMX parser reads a name set through arden-forge-cli in the file's own encoding as
// the same name: the file stays one that VMware and libvirt decode with its ".encoding".
#include "InteropSupport.h"
#include "cli/CliRunner.h"

using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::ToolRun;

TEST(LibvirtReadsTheEncoding, ANameSetInTheFilesCodePageIsReadBackAsTheSameName) {
    ARDEN_REQUIRE_VIRSH();
    ARDEN_REQUIRE_CORPUS();
    struct Case { const char* file; const char* encoding; std::string name; };
    const Case cases[] = {
        {"vmwareubuntu2204__Ubuntu-64-bit.vmx", nullptr, "\xEC\x8B\xA4\xED\x96\x89 Ubuntu"},
        {"vmwareubuntu2204__Ubuntu-64-bit.vmx", "GBK", "CentOS 7 64 \xE4\xBD\x8D"},
        {"mosa__Run-VMware-MOSA-ISO.vmx", nullptr, "M\xC3\xBCller"},
        // The Shift_JIS files of the corpus have a ThinPrint port, which libvirt refuses.
        {"cosmos__Cosmos-ws-2024-03.vmx", "Shift_JIS", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E"},
        {"cosmos__Cosmos-ws-2024-03.vmx", "windows-1251", "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82"},
    };
    for (const Case& c : cases) {
        ScratchDir dir;
        std::string text = readBytes(arden::test::corpusDir() / "vmx" / c.file);
        if (c.encoding) {
            std::size_t start = text.find(".encoding = \"") + 13;
            text.replace(start, text.find('"', start) - start, c.encoding);
        }
        const std::string vmx = (dir / "m.vmx").string();
        arden::test::writeBytes(vmx, text);
        auto set = arden::test::runCli({"set", vmx, "--name", c.name});
        ASSERT_EQ(set.exitCode, 0) << c.file << ": " << set.err;
        ToolRun virsh = arden::test::libvirtDomainXml(dir.path(), vmx);
        EXPECT_EQ(virsh.exitCode, 0) << c.file << ": " << virsh.output;
        EXPECT_NE(virsh.output.find("<name>" + c.name + "</name>"), std::string::npos) << c.file << ": " << virsh.output;
    }
}
