// The network-adapter page: the octet boxes show the core's refusals, the two address modes,
// Generate, the offset, connections and the type list following the product version.
#include <QRadioButton>

#include "GuiTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::ScratchDir;

struct NicPage {
    Builder* b;
    QLineEdit* octet(int i) const { return child<QLineEdit>(b, ("txtNetMac" + std::to_string(i)).c_str()); }
    QString octets() const {
        QStringList out;
        for (int i = 0; i < 6; ++i) out << octet(i)->text();
        return out.join(":");
    }
    void type(const QStringList& texts) const {
        for (int i = 0; i < texts.size(); ++i) typeInto(octet(i), texts[i]);
    }
    void click(const char* name) const { child<QAbstractButton>(b, name)->click(); }
    std::string nic(const std::string& key, int n = 0) const { return settingsOf(b, DeviceType::Network, n).text(key); }
};

TEST(NetworkPage, AddressesOffsetConnectionsAndTheTypeListFollowingTheVersion) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Net", dir.path());
    chooseDevice(b.get(), DeviceType::Network);
    NicPage page{b.get()};
    const std::string generated = page.nic(".generatedAddress");
    EXPECT_EQ(page.octets().toStdString(), generated);
    page.click("optNetMacStatic");
    EXPECT_EQ(page.octets(), ":::::") << "a generated address is not offered as a static one";
    EXPECT_TRUE(child<QPushButton>(b.get(), "cmdNetMacGenerate")->isEnabled());
    EXPECT_FALSE(child<QLineEdit>(b.get(), "txtNetMacGenOffset")->isEnabled());
    page.type({"00", "50", "56", "40"});
    EXPECT_EQ(said(script), QStringList{"Invalid Static MAC Address: The static MAC address range is "
                                        "00:50:56:00:00:00-00:50:56:3F:FF:FF"});
    EXPECT_EQ(page.octets(), "00:50:56:::") << "a refused octet empties its box";
    EXPECT_FALSE(settingsOf(b.get(), DeviceType::Network).has(".address")) << "an incomplete address is not stored";
    page.type({"00", "50", "56", "3f", "a1", "07"});
    EXPECT_EQ(page.octets() + " " + QString::fromStdString(page.nic(".address") + " " + page.nic(".addressType")),
              "00:50:56:3F:A1:07 00:50:56:3F:A1:07 static");
    page.click("cmdNetMacGenerate");
    const std::string address = page.nic(".address");
    EXPECT_TRUE(address.substr(0, 9) == "00:50:56:" && address.substr(9, 2) <= "3F") << address;
    EXPECT_EQ(page.octets().toStdString(), address);
    page.click("optNetMacGenerated");
    EXPECT_EQ(page.octets().toStdString(), generated);
    page.type({"00", "0c", "29", "ff"});
    EXPECT_EQ(page.nic(".generatedAddress"), "00:0C:29:FF:" + generated.substr(12));

    auto* types = child<QComboBox>(b.get(), "cboNicType");
    EXPECT_EQ(entries(types), QStringList({"AMD Lance", "VMXNet", "E1000"}));
    ASSERT_TRUE(pick(types, "E1000"));
    EXPECT_EQ(page.nic(".virtualDev"), "e1000");

    auto* networks = child<QComboBox>(b.get(), "cboNicConnection");
    ASSERT_FALSE(networks->isEnabled());
    ASSERT_TRUE(pick(networks, "VMnet8 (NAT)"));
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optNetConnCustom")->isChecked());
    EXPECT_EQ(page.nic(".connectionType") + " " + page.nic(".vnet"), "custom VMnet8");
    page.click("optNetConnHostOnly");
    EXPECT_EQ(page.nic(".connectionType"), "hostonly");
    EXPECT_FALSE(networks->isEnabled());

    auto* offset = child<QLineEdit>(b.get(), "txtNetMacGenOffset");
    script.clear();
    typeInto(offset, "-5");
    typeInto(offset, "abc");
    EXPECT_EQ(said(script), QStringList{"Invalid Address Offset: Must be numeric!"});
    EXPECT_EQ(page.nic(".generatedAddressOffset"), "-5");

    // Workstation 5.0x has no E1000: the change of product says so first, and the adapter takes AMD Lance.
    script.clear();
    script.answer(Answer::Yes);
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboPlatformVersion"), "5.0x"));
    EXPECT_EQ(said(script), QStringList{"Change of Product: Workstation 5.0x cannot hold everything this machine has:\n"
                                        "- Network Adapter 1: Workstation 5.0x does not offer the adapter type \"e1000\"; "
                                        "becomes \"vlance\"\nChange the machine to fit the new product?"});
    EXPECT_EQ(page.nic(".virtualDev"), "vlance");
    chooseDevice(b.get(), DeviceType::Network);
    EXPECT_EQ(entries(types) << types->currentText(), QStringList({"AMD Lance", "VMXNet", "AMD Lance"}));
}

}  // namespace
}  // namespace arden::gui::test
