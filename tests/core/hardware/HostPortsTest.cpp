// The host's serial and parallel ports, read through the registry class's device maps.
#include "core/hardware/HostPorts.h"

#include "TestSupport.h"

using namespace arden;

TEST(HostPorts, ListsTheDeviceNodesOfBothMapsInOrder) {
    test::ScratchDir dir;
    std::filesystem::create_directory(dir / "dev");
    for (const char* node : {"ttyS10", "ttyS2", "ttyUSB0", "ttyACM3", "parport1", "parport0", "tty", "ttySx", "lp1", "null"})
        test::writeBytes(dir / "dev" / node, "");
    cRegistry registry{std::shared_ptr<RegistryStore>(openFileRegistryStore(dir / "registry.ini", dir / "dev"))};
    registry.setSectionKey("Software\\Brackenware");
    HostPorts ports = readHostPorts(registry);
    const std::string dev = (dir / "dev").string() + "/";
    EXPECT_EQ(ports.serial, (std::vector<std::string>{dev + "ttyS2", dev + "ttyS10", dev + "ttyUSB0", dev + "ttyACM3"}));
    EXPECT_EQ(ports.parallel, (std::vector<std::string>{dev + "parport0", dev + "parport1", dev + "lp1"}));
    EXPECT_EQ(registry.SectionKey(), "Software\\Brackenware") << "the caller's key is left alone";
    EXPECT_EQ(portNameFromMapData("\\Device\\Parallel0\\LPT1"), "LPT1");
}
