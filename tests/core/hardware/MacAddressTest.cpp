#include "core/hardware/MacAddress.h"

#include "core/hardware/NetworkAdapter.h"
#include "core/shell/GetText.h"
#include "TestSupport.h"

using namespace arden;

using test::shown;

TEST(MacOctet, EachPositionInBothModes) {
    // Per box, the texts typed in generated and in static mode and what each stores ("-": refused).
    // Box 0 is "00"; box 1 "0C" generated, "50" static; box 2 "29" / "56"; box 3 00-FF / 00-3F;
    // boxes 4 and 5 any two hexadecimal digits.
    const std::tuple<int, const char*, const char*, const char*> cases[] = {
        {0, "00", "00", "00"}, {0, "01", "-", "-"},   {0, "0", "-", "-"},    {1, "0c", "0C", "-"}, {1, "50", "-", "50"},
        {2, "29", "29", "-"},  {2, "56", "-", "56"},  {3, "3f", "3F", "3F"}, {3, "a0", "A0", "-"}, {3, "40", "40", "-"},
        {3, "3G", "-", "-"},   {4, "ab", "AB", "AB"}, {4, "000", "-", "-"},  {4, " 1", "-", "-"},  {5, "9f", "9F", "9F"},
        {5, "-1", "-", "-"}};
    for (const auto& [box, typed, generated, fixed] : cases) {
        for (auto [mode, expected] : {std::pair{MacMode::Generated, generated}, std::pair{MacMode::Static, fixed}}) {
            std::string stored = "-";
            checkMacOctet(mode, box, typed, stored);
            EXPECT_EQ(stored, expected) << (mode == MacMode::Static ? "static" : "generated") << " box " << box << " \"" << typed << "\"";
        }
    }
}

TEST(MacOctet, EmptyBoxLeavesTheAddressIncompleteAndRangeMessages) {
    std::string stored = "x";
    EXPECT_TRUE(checkMacOctet(MacMode::Static, 3, "", stored));
    EXPECT_EQ(stored, "");
    MacBoxes boxes{"00", "50", "56", "", "12", "34"};
    EXPECT_EQ(joinMacBoxes(boxes), std::nullopt);
    boxes[3] = "3F";
    EXPECT_EQ(joinMacBoxes(boxes), "00:50:56:3F:12:34");
    EXPECT_EQ(shown(macRangeMessage(MacMode::Static)), "Invalid Static MAC Address: The static MAC address range is 00:50:56:00:00:00-00:50:56:3F:FF:FF");
    EXPECT_EQ(shown(macRangeMessage(MacMode::Generated)), "Invalid Generated MAC Address: The generated MAC address range is 00:0C:29:xx:yy:zz");
}

TEST(MacMode, SwitchingAnAdapterKeepsEachModesAddress) {
    DeviceSettings nic;
    nic.set(".addressType", "generated");
    nic.set(".generatedAddress", "00:0C:29:12:34:56");
    // Static mode has no address of its own: the generated one is of the other range.
    EXPECT_EQ(chooseAdapterMacMode(nic, MacMode::Static), MacBoxes{});
    EXPECT_EQ(nic.text(".addressType"), "static");
    setAdapterMacAddress(nic, "00:50:56:3F:00:01");
    EXPECT_EQ(nic.text(".address"), "00:50:56:3F:00:01");
    EXPECT_EQ(nic.text(".generatedAddress"), "00:0C:29:12:34:56");
    // Back in generated mode the generated address is shown again, and vice versa.
    EXPECT_EQ(chooseAdapterMacMode(nic, MacMode::Generated), (MacBoxes{"00", "0C", "29", "12", "34", "56"}));
    EXPECT_EQ(chooseAdapterMacMode(nic, MacMode::Static), (MacBoxes{"00", "50", "56", "3F", "00", "01"}));

    // A file whose static adapter holds a generated-range address: static mode starts empty,
    // generated mode shows it.
    DeviceSettings odd;
    odd.set(".addressType", "static");
    odd.set(".address", "00:0C:29:AA:BB:CC");
    EXPECT_EQ(chooseAdapterMacMode(odd, MacMode::Static), MacBoxes{});
    EXPECT_EQ(chooseAdapterMacMode(odd, MacMode::Generated), (MacBoxes{"00", "0C", "29", "AA", "BB", "CC"}));
    // Fixed octets written in lower case are the same range.
    odd.set(".generatedAddress", "00:0c:29:aa:bb:cc");
    EXPECT_EQ(chooseAdapterMacMode(odd, MacMode::Generated), (MacBoxes{"00", "0c", "29", "aa", "bb", "cc"}));
}

TEST(MacAddress, WholeAddressesByTheOctetRules) {
    std::string out;
    EXPECT_TRUE(checkMacAddress(MacMode::Static, "00:50:56:3f:ab:01", out));
    EXPECT_EQ(out, "00:50:56:3F:AB:01");
    for (const char* bad : {"00:50:56:40:00:00", "00:0C:29:00:00:00", "00-50-56-00-00-00", "00:50:56:00:00",
                            "00:50:56:00:00:0G", "00:50:56:00:00:000"}) {
        EXPECT_FALSE(checkMacAddress(MacMode::Static, bad, out)) << bad;
    }
    EXPECT_TRUE(checkMacAddress(MacMode::Generated, "00:0c:29:ff:00:00", out));
    EXPECT_EQ(out, "00:0C:29:FF:00:00");
}

TEST(MacAddress, MadeUpAddressesStayInTheirRange) {
    EXPECT_EQ(staticMacAddress(0xFFFFFFFFu), "00:50:56:3F:FF:FF");
    EXPECT_EQ(staticMacAddress(0), "00:50:56:00:00:00");
    EXPECT_EQ(generatedMacAddress(0x00123456u), "00:0C:29:12:34:56");
    EXPECT_EQ(generatedMacAddress(0xFF123456u), "00:0C:29:12:34:56");
}

TEST(MacOffset, NumericTextsAreStoredWithoutARangeCheck) {
    struct Case { const char* typed; std::optional<int> stored; const char* message; };
    const Case cases[] = {
        {"-5", -5, nullptr}, {"2147483647", 2147483647, nullptr}, {"-2147483648", -2147483647 - 1, nullptr},
        {"+7", 7, nullptr},  {"abc", std::nullopt, "Must be numeric!"}, {"1.5", std::nullopt, "Must be numeric!"},
        {"99999999999", std::nullopt,
         "The offset 99999999999 is too large: it must lie between -2147483648 and 2147483647."},
    };
    for (const Case& c : cases) {
        OffsetCheck r = checkMacOffset(c.typed);
        EXPECT_EQ(r.value, c.stored) << c.typed;
        EXPECT_EQ(shown(r.refusal),
                  c.message ? std::string("Invalid Address Offset: ") + c.message : "");
    }
}

TEST(NicConnection, OptionsAndVirtualNetworks) {
    DeviceSettings nic;
    EXPECT_EQ(adapterConnection(nic), NicConnection::Bridged);  // unset reads as bridged
    setAdapterConnection(nic, NicConnection::Custom, 9);
    EXPECT_EQ(nic.text(".connectionType"), "custom");
    EXPECT_EQ(nic.text(".vnet"), "VMnet9");
    EXPECT_EQ(adapterVirtualNetwork(nic), 9);
    setAdapterConnection(nic, NicConnection::HostOnly);
    EXPECT_EQ(nic.text(".connectionType"), "hostonly");
    EXPECT_EQ(adapterConnection(nic), NicConnection::HostOnly);
    EXPECT_EQ(parseVirtualNetwork("vmnet3"), 3);
    for (const char* bad : {"VMnet10", "VMnet-1", "VMnet", "vnet3", "VMnetX"}) EXPECT_EQ(parseVirtualNetwork(bad), std::nullopt) << bad;
}

TEST(DuplicateStaticMac, AskedOnlyForTheSameStaticAddress) {
    DeviceStore store;
    auto addNic = [&](const char* type, const char* key, const char* address) {
        Device& d = store.createDevice(DeviceType::Network);
        d.settings.set(".addressType", type);
        d.settings.set(key, address);
    };
    addNic("static", ".address", "00:50:56:3F:00:01");
    addNic("generated", ".address", "00:50:56:3F:00:01");  // not in static mode: not a clash
    addNic("static", ".address", "00:50:56:00:00:02");
    EXPECT_FALSE(duplicateStaticMacQuestion(store));
    addNic("static", ".address", "00:50:56:3f:00:01");  // a file may hold lower case
    auto question = duplicateStaticMacQuestion(store);
    EXPECT_EQ(shown(question),
              "Duplicate Static MAC Address: More than one network adapter of this virtual machine has the same static MAC address:\n"
              "ethernet0 and ethernet3 use 00:50:56:3F:00:01.\n"
              "The adapters will disturb each other on the network.  Save anyway?");
}
