#include "core/config/NetworkAdapterTypes.h"

#include "core/config/ProductTables.h"
#include "core/shell/GetText.h"
#include "TestSupport.h"

using namespace arden;

TEST(NicTypes, OfferedPerPlatformAndVersion) {
    // E1000 arrived with Workstation 5.5x; Player and Server offer it too.
    const std::tuple<int, int, bool> cases[] = {{kGsxServer, 1, false}, {kWorkstation, 3, false}, {kWorkstation, 4, true},
                                                {kPlayer, 0, true},     {kServer, 0, true}};
    for (const auto& [platform, version, e1000] : cases) {
        EXPECT_TRUE(nicTypeOffered(platform, version, "vlance") && nicTypeOffered(platform, version, "VMXNET"));
        EXPECT_EQ(nicTypeOffered(platform, version, "e1000"), e1000) << platform << "/" << version;
        EXPECT_FALSE(nicTypeOffered(platform, version, "vmxnet3"));
        EXPECT_EQ(nicTypeEntries(platform, version).size(), e1000 ? 3u : 2u);
    }
    EXPECT_EQ(test::shown(checkNicType(kWorkstation, 3, "e1000")),
              "Invalid Adapter Type: Workstation 5.0x does not offer the adapter type \"e1000\"; use vlance or vmxnet.");
    EXPECT_FALSE(checkNicType(kPlayer, 0, "e1000"));
}

TEST(NicTypes, AVersionWithoutE1000MovesSuchAdaptersToTheFirstType) {
    DeviceStore store;
    store.createDevice(DeviceType::Network).settings.set(".virtualDev", "e1000");
    store.createDevice(DeviceType::Network).settings.set(".virtualDev", "vmxnet");
    store.createDevice(DeviceType::Network).settings.set(".virtualDev", "E1000");
    store.createDevice(DeviceType::Network).settings.unset(".virtualDev");

    // Workstation 5.5x offers every type: nothing changes, nothing is said.
    EXPECT_FALSE(fitNicTypesToProduct(store, kWorkstation, 4));
    EXPECT_EQ(store.devices(DeviceType::Network)[0].settings.text(".virtualDev"), "e1000");

    auto notice = fitNicTypesToProduct(store, kWorkstation, 3);
    ASSERT_TRUE(notice);
    EXPECT_EQ(resolveText(notice->title, 0), "Adapter Type Changed");
    EXPECT_EQ(resolveText(notice->text, 0),
              "Workstation 5.0x does not offer every network adapter type this machine used:\n"
              "Network Adapter 1: E1000 is now AMD Lance.\n" "Network Adapter 3: E1000 is now AMD Lance.");
    const auto& nics = store.devices(DeviceType::Network);
    EXPECT_EQ(nics[0].settings.text(".virtualDev"), "vlance");
    EXPECT_EQ(nics[1].settings.text(".virtualDev"), "vmxnet");
    EXPECT_EQ(nics[2].settings.text(".virtualDev"), "vlance");
    EXPECT_FALSE(nics[3].settings.has(".virtualDev"));
    // Fitted once, the adapters need nothing more.
    EXPECT_FALSE(fitNicTypesToProduct(store, kGsxServer, 0));
}
