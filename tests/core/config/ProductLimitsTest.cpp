// The products beyond the original nine against their rows: the limits at their edges per
// family (the save refuses one step over, naming the limit), the five-PCI-device check only on
// hardware versions 3 and 4, the guests each product offers, and a change of product that lists
// what the new product cannot hold and fits the machine when asked.
#include <algorithm>

#include "core/config/GuestChoice.h"
#include "core/config/NewMachineTemplate.h"
#include "core/config/ProductLimits.h"
#include "core/config/SaveFlow.h"
#include "core/config/VmxWriter.h"

#include "TestSupport.h"
#include "VmxTestSupport.h"

using namespace arden;
using test::shown;

namespace {

VmConfiguration machineFor(const char* platform, const char* version) {
    VmConfiguration c = VmConfiguration::newMachine("Limits", "/vms/limits/", "New VM", 7);
    c.product.platform = *platformFromName(platform);
    c.product.version = *versionFromText(c.product.platform, version);
    return c;
}

void setMemory(VmConfiguration& c, int mb) {
    c.devices.find(DeviceType::Memory, c.devices.devices(DeviceType::Memory).front().identifier)->settings.setNumber("memsize", mb);
}

void setProcessors(VmConfiguration& c, int n) {
    while (c.devices.count(DeviceType::Cpu) < n) c.devices.createDevice(DeviceType::Cpu);
}

void setAdapters(VmConfiguration& c, int n) {
    while (c.devices.count(DeviceType::Network) < n) c.devices.createDevice(DeviceType::Network);
}

const std::string kOver = "Over the Product's Limits: This machine holds more than its product allows:\n- ";

struct Edge {
    const char* platform;
    const char* version;
    int memoryMax;
    int processors;
    int adapters;
};

}  // namespace

TEST(ProductLimits, MemoryProcessorsAndAdaptersAtTheirEdgesPerFamily) {
    // One product of each family: an original hosted target, a modern hosted product of each
    // limit generation, and ESXi releases of the old and the newest hardware.
    const Edge edges[] = {
        {"Workstation", "5.5x", 3600, 2, 3},  {"Workstation", "6.0x", 8192, 2, 10}, {"Player", "4.x", 65536, 8, 10},
        {"Workstation", "12.x", 65536, 16, 10}, {"Fusion", "11.x", 65536, 8, 10},   {"Workstation", "17.5x", 131072, 32, 10},
        {"ESXi", "3.5", 65536, 4, 4},          {"ESXi", "8.0 U2", 25149440, 768, 10},
    };
    for (const Edge& e : edges) {
        const std::string product = std::string(e.platform) + " " + e.version;
        SCOPED_TRACE(product);
        VmConfiguration c = machineFor(e.platform, e.version);
        setMemory(c, e.memoryMax);
        setProcessors(c, e.processors);
        setAdapters(c, e.adapters);
        c.devices.remove(DeviceType::Sound, c.devices.devices(DeviceType::Sound).front().identifier);
        EXPECT_FALSE(checkSave(c)) << shown(checkSave(c));

        VmConfiguration more = c;
        setMemory(more, e.memoryMax + 4);
        EXPECT_EQ(shown(checkSave(more)), kOver + "Memory " + std::to_string(e.memoryMax + 4) + " MB: " + product +
                                              " allows at most " + std::to_string(e.memoryMax) + " MB");
        more = c;
        setMemory(more, e.memoryMax - 2);
        EXPECT_EQ(shown(checkSave(more)),
                  kOver + "Memory " + std::to_string(e.memoryMax - 2) + " MB: not a multiple of 4 MB");
        more = c;
        setProcessors(more, e.processors + 1);
        EXPECT_EQ(shown(checkSave(more)), kOver + std::to_string(e.processors + 1) + " processors: " + product +
                                              " allows at most " + std::to_string(e.processors));
        more = c;
        setAdapters(more, e.adapters + 1);
        const std::string refused = shown(checkSave(more));
        const std::string start = kOver + std::to_string(e.adapters + 1) + " network adapters (";
        EXPECT_EQ(refused.substr(0, start.size()), start);
        EXPECT_TRUE(refused.ends_with("): " + product + " allows at most " + std::to_string(e.adapters) + "; remove 1"))
            << refused;
    }
}

TEST(ProductLimits, AdaptersOverTheLimitAreNamedAndFivePciDevicesOnlyBeforeBridges) {
    VmConfiguration esx = machineFor("ESXi", "6.0");
    setAdapters(esx, 10);
    EXPECT_FALSE(checkSave(esx)) << "ten adapters and a sound adapter: 12 PCI devices behind bridges";
    setAdapters(esx, 11);
    EXPECT_EQ(shown(checkSave(esx)),
              kOver + "11 network adapters (Network Adapter 1, Network Adapter 2, Network Adapter 3, Network Adapter 4, "
                      "Network Adapter 5, Network Adapter 6, Network Adapter 7, Network Adapter 8, Network Adapter 9, "
                      "Network Adapter 10, Network Adapter 11): ESXi 6.0 allows at most 10; remove 1");

    VmConfiguration server = machineFor("Server", "1.x");
    setAdapters(server, 3);
    server.devices.createDevice(DeviceType::ScsiController);
    server.devices.createDevice(DeviceType::ScsiController);
    EXPECT_EQ(shown(checkSave(server)).substr(0, 75),
              "Too many virtual PCI Devices enabled: You currently have 6 virtual PCI devi");
    VmConfiguration server2 = server;
    server2.retarget(*platformFromName("Server"), *versionFromText(kServer, "2.x"));
    EXPECT_FALSE(checkSave(server2)) << shown(checkSave(server2));
}

TEST(ProductLimits, CoresPerSocketDivideTheProcessorsWithinTheMaximum) {
    VmConfiguration c = machineFor("ESXi", "6.7");
    setProcessors(c, 8);
    c.keptLines.push_back("cpuid.coresPerSocket = \"4\"");
    EXPECT_FALSE(checkSave(c));
    c.keptLines = KeptLines{"cpuid.coresPerSocket = \"3\""};
    EXPECT_EQ(shown(checkSave(c)),
              kOver + "8 processors with 3 cores per socket: the processors must be a multiple of the cores per socket");
    VmConfiguration hw4 = machineFor("ESXi", "3.5");
    setProcessors(hw4, 2);
    hw4.keptLines = KeptLines{"cpuid.coresPerSocket = \"2\""};
    EXPECT_EQ(shown(checkSave(hw4)), kOver + "2 cores per socket: ESXi 3.5 allows at most 1");
}

TEST(ProductRetarget, OneQuestionListsEverythingAndYesFitsTheMachine) {
    VmConfiguration c = machineFor("Workstation", "5.5x");
    setProcessors(c, 2);
    setMemory(c, 3000);
    c.selectGuest(kFamilyWindows, 10);  // winXPPro-64
    const RetargetPlan plan = planRetarget(c, kWorkstation, *versionFromText(kWorkstation, "3.x"));
    ASSERT_TRUE(plan.question);
    EXPECT_FALSE(plan.refusal);
    EXPECT_EQ(shown(plan.question),
              "Change of Product: Workstation 3.x cannot hold everything this machine has:\n"
              "- Memory 3000 MB: Workstation 3.x allows at most 1024 MB; becomes 1024 MB\n"
              "- 2 processors: Workstation 3.x allows at most 1; becomes 1 processor\n"
              "- Guest winXPPro-64: Workstation 3.x does not offer it; becomes guest winXPPro\n"
              "Change the machine to fit the new product?");
    VmConfiguration fitted = c;
    retargetAndFit(fitted, kWorkstation, *versionFromText(kWorkstation, "3.x"));
    EXPECT_EQ(fitted.devices.count(DeviceType::Cpu), 1);
    EXPECT_EQ(fitted.devices.devices(DeviceType::Memory).front().settings.text("memsize"), "1024");
    EXPECT_EQ(fitted.product.guestId, "winXPPro");
    EXPECT_FALSE(checkSave(fitted));
    EXPECT_TRUE(test::hasLine(writeVmxText(fitted), "# Version = 3.x"));

    // Going up asks nothing and changes nothing but the product.
    VmConfiguration up = c;
    EXPECT_FALSE(planRetarget(up, kWorkstation, *versionFromText(kWorkstation, "17.5x")).question);
    retargetAndFit(up, kWorkstation, *versionFromText(kWorkstation, "17.5x"));
    EXPECT_EQ(up.devices, c.devices);
    EXPECT_EQ(up.product.guestId, "winXPPro-64");
}

TEST(ProductRetarget, DevicesOverALimitRefuseTheChangeNamingThem) {
    VmConfiguration c = machineFor("GSX Server", "3.x");
    setAdapters(c, 4);
    c.devices.createDevice(DeviceType::SerialPort);
    const RetargetPlan plan = planRetarget(c, kWorkstation, *versionFromText(kWorkstation, "5.5x"));
    EXPECT_FALSE(plan.question);
    EXPECT_EQ(shown(plan.refusal),
              "Change of Product: Workstation 5.5x cannot hold everything this machine has; remove the devices over its "
              "limits first, then choose the product again:\n"
              "- 4 network adapters (Network Adapter 1, Network Adapter 2, Network Adapter 3, Network Adapter 4): "
              "Workstation 5.5x allows at most 3; remove 1");
}

TEST(ProductGuests, EachProductOffersTheGuestsItRuns) {
    const auto offers = [](const char* platform, const char* version, const char* guestId) {
        const auto g = findGuest(guestId);
        const int p = *platformFromName(platform);
        return g && guestOffered(*productFigures(p, *versionFromText(p, version)), g->family,
                                 guestVersions(g->family)[static_cast<std::size_t>(g->version)]);
    };
    EXPECT_TRUE(offers("Workstation", "17.5x", "windows11-64"));
    EXPECT_TRUE(offers("Workstation", "16.2.x", "windows11-64"));
    EXPECT_FALSE(offers("Workstation", "16.x", "windows11-64"));
    EXPECT_TRUE(offers("Workstation", "12.x", "windows9-64"));
    EXPECT_TRUE(offers("ESXi", "7.0 U1", "windows2019srvNext-64"));
    EXPECT_TRUE(offers("ESXi", "8.0", "debian12-64"));
    EXPECT_FALSE(offers("ESXi", "7.0 U2", "debian12-64"));
    EXPECT_FALSE(offers("Workstation", "5.0x", "winXPPro-64"));
    EXPECT_TRUE(offers("Workstation", "5.5x", "winXPPro-64"));
    EXPECT_FALSE(offers("Workstation", "4.0x", "solaris10"));
    EXPECT_TRUE(offers("Fusion", "13.5x", "darwin23-64"));
    EXPECT_FALSE(offers("Workstation", "17.5x", "darwin23-64"));
    EXPECT_TRUE(offers("Fusion", "13.0x", "arm-ubuntu-64"));
    EXPECT_FALSE(offers("Fusion", "12.2.x", "arm-ubuntu-64"));

    VmConfiguration ws50 = machineFor("Workstation", "5.0x");
    EXPECT_EQ(shown(selectGuestById(ws50, "winxppro-64")),
              "Invalid Guest Operating System: Workstation 5.0x does not offer the guest winXPPro-64 (Windows XP "
              "Professional x64 Edition).");
    EXPECT_EQ(ws50.product.guestId, "winXPPro");
    VmConfiguration ws17 = machineFor("Workstation", "17.5x");
    EXPECT_FALSE(selectGuestById(ws17, "Windows11-64"));
    EXPECT_EQ(ws17.product.guestId, "windows11-64");
}

TEST(ProductTemplates, ModernNewMachinesHoldWhatTheProductsWrite) {
    const auto templateOf = [](const char* platform, const char* version) {
        VmConfiguration c = machineFor(platform, version);
        const std::size_t before = c.keptLines.size();
        addProductTemplate(c);
        std::vector<std::string> lines;
        for (std::size_t i = before; i < c.keptLines.size(); ++i) lines.emplace_back(c.keptLines[i]);
        return lines;
    };
    EXPECT_TRUE(templateOf("Workstation", "5.5x").empty());
    EXPECT_EQ(templateOf("Workstation", "6.0x"),
              (std::vector<std::string>{"pciBridge0.present = \"TRUE\"", "virtualHW.productCompatibility = \"hosted\"",
                                        "ehci.present = \"TRUE\""}));
    const auto ws17 = templateOf("Workstation", "17.5x");
    for (const char* line : {"pciBridge7.virtualDev = \"pcieRootPort\"", "pciBridge7.functions = \"8\"", "vmci0.present = \"TRUE\"",
                             "hpet0.present = \"TRUE\"", "usb_xhci.present = \"TRUE\""})
        EXPECT_NE(std::find(ws17.begin(), ws17.end(), line), ws17.end()) << line;
    EXPECT_EQ(ws17.size(), 18u);
    const auto esx = templateOf("ESXi", "8.0");
    EXPECT_EQ(esx.size(), 14u) << "the bridges and VMCI, without the hosted marker and controllers";
    EXPECT_EQ(std::find(esx.begin(), esx.end(), "virtualHW.productCompatibility = \"hosted\""), esx.end());
}
