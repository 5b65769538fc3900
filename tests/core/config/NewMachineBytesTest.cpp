// The new machine of each of the nine original targets (GSX Server 2.5x to Workstation 5.5x,
// Player 1.x, Server 1.x) is held byte for byte: growing the product table must not change one
// byte of what these targets write.
#include <fstream>
#include <sstream>

#include "core/config/VmxWriter.h"

#include "TestSupport.h"

using namespace arden;

namespace {

struct Target {
    const char* platform;
    const char* version;
    const char* file;
};

constexpr Target kNine[] = {
    {"GSX Server", "2.5x", "gsx-server-2.5x.vmx"}, {"GSX Server", "3.x", "gsx-server-3.x.vmx"},
    {"Workstation", "3.x", "workstation-3.x.vmx"}, {"Workstation", "4.0x", "workstation-4.0x.vmx"},
    {"Workstation", "4.5x", "workstation-4.5x.vmx"}, {"Workstation", "5.0x", "workstation-5.0x.vmx"},
    {"Workstation", "5.5x", "workstation-5.5x.vmx"}, {"Player", "1.x", "player-1.x.vmx"},
    {"Server", "1.x", "server-1.x.vmx"},
};

std::string expectedBytes(const char* file) {
    std::ifstream in(std::filesystem::path(ARDEN_SOURCE_DIR) / "tests/data/new-machines" / file, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

}  // namespace

TEST(NewMachineBytes, TheNineOriginalTargetsWriteTheirHeldBytes) {
    for (const Target& t : kNine) {
        SCOPED_TRACE(t.file);
        VmConfiguration c = VmConfiguration::newMachine("Test VM", "/vms/test/", "New VM", 0xABCDEF);
        const auto platform = platformFromName(t.platform);
        ASSERT_TRUE(platform);
        const auto version = versionFromText(*platform, t.version);
        ASSERT_TRUE(version);
        c.product.platform = *platform;
        c.product.version = *version;
        const std::string expected = expectedBytes(t.file);
        ASSERT_FALSE(expected.empty());
        EXPECT_EQ(writeVmxText(c), expected);
    }
}
