// The network-adapter page: octet boxes checked when left, the two address modes, Generate,
// the offset, connections, the type list following the product version, and the save
// question for two adapters with one static address.
#include <QButtonGroup>
#include <QRadioButton>

#include "HardwareTestSupport.h"
#include "core/hardware/MacAddress.h"

using namespace arden;
using namespace arden::gui;
using namespace arden::gui::test;
using arden::test::ScratchDir;

namespace {

struct NicPage {
    Builder* b;
    QLineEdit* octet(int i) const { return child<QLineEdit>(b, ("txtNetMac" + std::to_string(i)).c_str()); }
    QStringList octets() const {
        QStringList out;
        for (int i = 0; i < 6; ++i) out << octet(i)->text();
        return out;
    }
    void typeOctets(const QStringList& texts) const {
        for (int i = 0; i < texts.size(); ++i) typeInto(octet(i), texts[i]);
    }
    void click(const char* name) const { child<QAbstractButton>(b, name)->click(); }
    const DeviceSettings& nic(int n = 0) const {
        return b->configuration().devices.findByNumber(DeviceType::Network, n)->settings;
    }
};

std::unique_ptr<Builder> machineOnNicPage(const std::filesystem::path& folder) {
    auto b = newMachine("Net", folder);
    EXPECT_TRUE(chooseDevice(b.get(), DeviceType::Network));
    return b;
}

}  // namespace

TEST(NetworkPage, OctetsAreCheckedByPositionAndModeWhenLeft) {
    ScratchDir dir;
    auto b = machineOnNicPage(dir.path());
    NicPage page{b.get()};
    const std::string generated = page.nic().text(".generatedAddress");
    ASSERT_EQ(generated.substr(0, 9), "00:0C:29:");
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optNetMacGenerated")->isChecked());
    EXPECT_EQ(page.octets().join(":").toStdString(), generated);
    EXPECT_TRUE(child<QLineEdit>(b.get(), "txtNetMacGenOffset")->isEnabled());
    EXPECT_FALSE(child<QPushButton>(b.get(), "cmdNetMacGenerate")->isEnabled());

    // Static mode with a generated address stored: all six boxes start empty.
    page.click("optNetMacStatic");
    EXPECT_EQ(page.octets(), QStringList({"", "", "", "", "", ""}));
    EXPECT_FALSE(child<QLineEdit>(b.get(), "txtNetMacGenOffset")->isEnabled());
    EXPECT_TRUE(child<QPushButton>(b.get(), "cmdNetMacGenerate")->isEnabled());
    EXPECT_EQ(page.nic().text(".addressType"), "static");

    struct Step {
        int box;
        const char* typed;
        const char* shown;       // what the box holds afterwards
        const char* refusalTitle;  // nullptr: accepted silently
    };
    const Step steps[] = {
        {0, "0", "", "Invalid Static MAC Address"},
        {0, "000", "", "Invalid Static MAC Address"},
        {0, "00", "00", nullptr},
        {1, "0C", "", "Invalid Static MAC Address"},
        {1, "50", "50", nullptr},
        {2, "56", "56", nullptr},
        {3, "40", "", "Invalid Static MAC Address"},
        {3, "3f", "3F", nullptr},
        {4, "4G", "", "Invalid Static MAC Address"},
        {4, "zz", "", "Invalid Static MAC Address"},
        {4, "a1", "A1", nullptr},
    };
    for (const Step& s : steps) {
        PromptScript script;
        typeInto(page.octet(s.box), s.typed);
        EXPECT_EQ(page.octet(s.box)->text(), s.shown) << s.typed;
        if (s.refusalTitle) {
            ASSERT_EQ(script.messages().size(), 1u) << s.typed;
            EXPECT_EQ(script.messages()[0].kind, MessageKind::Information);
            EXPECT_EQ(script.messages()[0].title, s.refusalTitle);
            EXPECT_EQ(script.messages()[0].text,
                      "The static MAC address range is 00:50:56:00:00:00-00:50:56:3F:FF:FF");
        } else {
            EXPECT_TRUE(script.messages().empty()) << s.typed;
        }
    }
    EXPECT_FALSE(page.nic().has(".address")) << "an incomplete address is not stored";
    typeInto(page.octet(5), "07");
    EXPECT_EQ(page.nic().text(".address"), "00:50:56:3F:A1:07");
    // A refused octet empties its box; the stored address keeps its last complete value.
    {
        PromptScript script;
        typeInto(page.octet(5), "x");
        EXPECT_EQ(page.nic().text(".address"), "00:50:56:3F:A1:07");
    }

    // Back in generated mode the generated address shows again, and its own rules apply.
    page.click("optNetMacGenerated");
    EXPECT_EQ(page.octets().join(":").toStdString(), generated);
    PromptScript script;
    typeInto(page.octet(1), "50");
    typeInto(page.octet(3), "FF");
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Invalid Generated MAC Address");
    EXPECT_EQ(script.messages()[0].text, "The generated MAC address range is 00:0C:29:xx:yy:zz");
    typeInto(page.octet(1), "0c");
    EXPECT_EQ(page.nic().text(".generatedAddress"), "00:0C:29:FF:" + generated.substr(12));
}

TEST(NetworkPage, GenerateFillsAStaticAddressAndTheOffsetTakesNumbersOnly) {
    ScratchDir dir;
    auto b = machineOnNicPage(dir.path());
    NicPage page{b.get()};
    page.click("optNetMacStatic");
    page.click("cmdNetMacGenerate");
    const std::string address = page.nic().text(".address");
    std::string checked;
    EXPECT_TRUE(checkMacAddress(MacMode::Static, address, checked)) << address;
    EXPECT_EQ(page.octets().join(":").toStdString(), address);

    page.click("optNetMacGenerated");
    auto* offset = child<QLineEdit>(b.get(), "txtNetMacGenOffset");
    struct Case {
        const char* typed;
        const char* message;
        int stored;
    };
    const Case cases[] = {
        {"abc", "Must be numeric!", 0},
        {"99999999999", "The offset 99999999999 is too large: it must lie between -2147483648 and 2147483647.", 0},
        {"-5", nullptr, -5},
        {"", nullptr, -5},
    };
    for (const Case& c : cases) {
        PromptScript script;
        typeInto(offset, c.typed);
        EXPECT_EQ(page.nic().number(".generatedAddressOffset"), c.stored) << c.typed;
        if (c.message) {
            ASSERT_EQ(script.messages().size(), 1u) << c.typed;
            EXPECT_EQ(script.messages()[0].kind, MessageKind::Warning);
            EXPECT_EQ(script.messages()[0].title, "Invalid Address Offset");
            EXPECT_EQ(script.messages()[0].text, c.message);
        } else {
            EXPECT_TRUE(script.messages().empty()) << c.typed;
        }
    }
}

TEST(NetworkPage, ConnectionsAndTheTypeListFollowTheVersion) {
    ScratchDir dir;
    auto b = machineOnNicPage(dir.path());
    NicPage page{b.get()};
    auto* types = child<QComboBox>(b.get(), "cboNicType");
    EXPECT_EQ(entries(types), QStringList({"AMD Lance", "VMXNet", "E1000"}));
    ASSERT_TRUE(pick(types, "E1000"));
    EXPECT_EQ(page.nic().text(".virtualDev"), "e1000");

    auto* networks = child<QComboBox>(b.get(), "cboNicConnection");
    EXPECT_FALSE(networks->isEnabled());
    EXPECT_EQ(networks->count(), 10);
    ASSERT_TRUE(pick(networks, "VMnet8 (NAT)"));
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optNetConnCustom")->isChecked());
    EXPECT_EQ(page.nic().text(".connectionType"), "custom");
    EXPECT_EQ(page.nic().text(".vnet"), "VMnet8");
    page.click("optNetConnHostOnly");
    EXPECT_EQ(page.nic().text(".connectionType"), "hostonly");
    EXPECT_FALSE(networks->isEnabled());

    // Workstation 5.0x has no E1000: the user is told and the adapter takes AMD Lance.
    PromptScript script;
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboPlatformVersion"), "5.0x"));
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Adapter Type Changed");
    EXPECT_EQ(script.messages()[0].text,
              "Workstation 5.0x does not offer every network adapter type this machine used:\n"
              "Network Adapter 1: E1000 is now AMD Lance.");
    EXPECT_EQ(page.nic().text(".virtualDev"), "vlance");
    ASSERT_TRUE(chooseDevice(b.get(), DeviceType::Network));
    EXPECT_EQ(entries(types), QStringList({"AMD Lance", "VMXNet"}));
    EXPECT_EQ(types->currentText(), "AMD Lance");
    // Back on 5.5x nothing needs telling.
    script.clear();
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboPlatformVersion"), "5.5x"));
    EXPECT_TRUE(script.messages().empty());
    ASSERT_TRUE(chooseDevice(b.get(), DeviceType::Network));
    EXPECT_EQ(entries(types), QStringList({"AMD Lance", "VMXNet", "E1000"}));
}

TEST(NetworkPage, TwoAdaptersWithOneStaticAddressAskBeforeSaving) {
    ScratchDir dir;
    auto b = newMachine("Twins", dir.path());
    addThroughDialog(b.get(), "Network Adapter");
    ASSERT_EQ(b->configuration().devices.count(DeviceType::Network), 2);
    NicPage page{b.get()};
    for (int n = 0; n < 2; ++n) {
        ASSERT_TRUE(chooseDevice(b.get(), DeviceType::Network, n));
        page.click("optNetMacStatic");
        page.typeOctets({"00", "50", "56", "01", "02", "03"});
    }
    PromptScript script;
    script.answer(Answer::No);
    EXPECT_FALSE(b->CreateVmxFile());
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].kind, MessageKind::Question);
    EXPECT_EQ(script.messages()[0].title, "Duplicate Static MAC Address");
    EXPECT_NE(script.messages()[0].text.indexOf("ethernet0 and ethernet1 use 00:50:56:01:02:03."), -1);
    EXPECT_FALSE(std::filesystem::exists(b->vmxPath().toStdString()));
    EXPECT_TRUE(b->ChangesPending());

    script.answer(Answer::Yes);
    EXPECT_TRUE(b->CreateVmxFile());
    EXPECT_TRUE(std::filesystem::exists(b->vmxPath().toStdString()));
}
