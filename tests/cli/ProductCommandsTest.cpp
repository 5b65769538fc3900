// The products beyond the original nine from the command line: a change of product asks first
// and fits the machine only with --yes, devices over a limit refuse it, check names a limit a
// file exceeds, and a new machine of a modern product is written again byte for byte.
#include "CliRunner.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST(CliProducts, AChangeOfProductAsksFirstAndFitsWithYes) {
    ScratchDir dir;
    const std::string file = (dir / "M.vmx").string();
    ASSERT_EQ(runCli({"new", dir.path().string(), "M"}).exitCode, 0);
    ASSERT_EQ(runCli({"memory", file, "1824"}).exitCode, 0);
    const std::string before = readBytes(file);
    CliResult asked = runCli({"set", file, "--version", "3.x"});
    EXPECT_EQ(asked.exitCode, 1);
    EXPECT_TRUE(has(asked.err, "Change of Product: Workstation 3.x cannot hold everything this machine has:\n"
                               "- Memory 1824 MB: Workstation 3.x allows at most 1024 MB; becomes 1024 MB\n"))
        << asked.err;
    EXPECT_EQ(readBytes(file), before);
    CliResult fitted = runCli({"set", file, "--version", "3.x", "--yes"});
    EXPECT_EQ(fitted.exitCode, 0) << fitted.err;
    EXPECT_TRUE(has(fitted.out, "Product: Workstation 3.x, hardware version 3\n")) << fitted.out;
    EXPECT_TRUE(has(runCli({"show", file}).out, "Memory: 1024 MB\n"));
    EXPECT_EQ(runCli({"check", file}).exitCode, 0);
    // Going up asks nothing.
    CliResult up = runCli({"set", file, "--platform", "Workstation", "--version", "17.5x"});
    EXPECT_EQ(up.exitCode, 0) << up.err;
    EXPECT_TRUE(has(up.out, "Product: Workstation 17.5x, hardware version 21\n")) << up.out;

    CliResult unknown = runCli({"set", file, "--platform", "Hyper-V"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_TRUE(has(unknown.err, "unknown platform \"Hyper-V\"; use \"GSX Server\", \"Workstation\", \"Player\", \"Server\", "
                                 "\"Fusion\" or \"ESXi\"")) << unknown.err;
}

TEST(CliProducts, DevicesOverALimitRefuseTheChangeAndCheckNamesTheLimit) {
    ScratchDir dir;
    const std::string file = (dir / "E.vmx").string();
    ASSERT_EQ(runCli({"new", dir.path().string(), "E", "--platform", "ESXi", "--version", "6.0"}).exitCode, 0);
    for (int i = 0; i < 3; ++i) ASSERT_EQ(runCli({"device", "add", file, "Network Adapter"}).exitCode, 0);
    const std::string before = readBytes(file);
    CliResult refused = runCli({"set", file, "--platform", "Workstation", "--version", "5.5x", "--yes"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(has(refused.err, "- 4 network adapters (Network Adapter 1, Network Adapter 2, Network Adapter 3, Network "
                                 "Adapter 4): Workstation 5.5x allows at most 3; remove 1")) << refused.err;
    EXPECT_EQ(readBytes(file), before);

    const std::string over = (dir / "over.vmx").string();
    writeBytes(over, "# Platform = Workstation\r\n# Version = 3.x\r\nconfig.version = \"6\"\r\nmemsize = \"1824\"\r\n");
    CliResult check = runCli({"check", over});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_TRUE(has(check.err, "Over the Product's Limits: This machine holds more than its product allows:\n"
                               "- Memory 1824 MB: Workstation 3.x allows at most 1024 MB\n")) << check.err;
}
