// The per-type device store: numbers, identifiers and texts of devices, the hardware list, the
// new machine's devices, and the values a device key accepts.
#include "core/hardware/DeviceStore.h"

#include "core/hardware/DeviceDefaults.h"
#include "core/hardware/DeviceKeys.h"
#include "core/hardware/DeviceTexts.h"
#include "TestSupport.h"

using namespace arden;

TEST(DeviceStore, NumbersIdentifiersAndTexts) {
    DeviceStore s;
    Device& first = s.createDevice(DeviceType::HardDisk);
    Device& second = s.createDevice(DeviceType::HardDisk);
    first.settings.set(".fileName", "first.vmdk");
    EXPECT_EQ(s.displayText(second), "Hard Disk 2");
    for (int i = 0; i < 1000; ++i) s.createDevice(DeviceType::HardDisk);
    ASSERT_TRUE(s.remove(DeviceType::HardDisk, second.identifier));
    EXPECT_EQ(first.settings.text(".fileName"), "first.vmdk") << "a reference survives creations and removals";
    EXPECT_EQ(s.displayText(s.devices(DeviceType::HardDisk).back()), "Hard Disk 1001")
        << "disk-like devices are numbered again, in node order and without gaps";
    EXPECT_EQ(s.createDevice(DeviceType::HardDisk).number, 1001);
    EXPECT_EQ(s.createDevice(DeviceType::HardDisk).number, 1002);
    for (int i = 0; i < 3; ++i) s.createDevice(DeviceType::Floppy);
    ASSERT_TRUE(s.remove(DeviceType::Floppy, s.devices(DeviceType::Floppy)[1].identifier));
    EXPECT_EQ(s.createDevice(DeviceType::Floppy).number, 1) << "the lowest free number is reused";

    DeviceStore copy = s;
    EXPECT_EQ(copy, s);
    copy.find(DeviceType::HardDisk, first.identifier)->settings.set(".fileName", "other.vmdk");
    EXPECT_EQ(first.settings.text(".fileName"), "first.vmdk") << "a copy holds its own devices";
    EXPECT_NE(copy, s);
    EXPECT_EQ(copy.createDevice(DeviceType::HardDisk).identifier, "hd1005") << "identifiers are never handed out twice";

    Device loaded;
    loaded.type = DeviceType::Network;
    loaded.identifier = "nic1";
    s.addDevice(loaded);
    EXPECT_EQ(s.addDevice(loaded).identifier, "nic2") << "a used identifier is replaced";
    EXPECT_EQ(s.createDevice(DeviceType::Network).identifier, "nic3");
    EXPECT_EQ(s.displayText(s.createDevice(DeviceType::GenericScsi)), "Gen SCSI 1");
    EXPECT_EQ(s.displayText(s.createDevice(DeviceType::ScsiController)), "SCSI Controller 0");
}

TEST(DeviceStore, HardwareListOfANewMachine) {
    DeviceStore s;
    addNewMachineDevices(s, 256, 0x123456);
    std::string list;
    for (const auto& e : s.hardwareList()) list += e.key.substr(0, e.key.find('|')) + " ";
    EXPECT_EQ(list, "H0 H1 H2 H5 H6 H7 H11 H13 H14 ") << "one entry a device, in type order";

    const Device& cd = s.devices(DeviceType::CdRom)[0];
    EXPECT_EQ(nodeLabel(cd.node), "IDE 1:0");
    EXPECT_EQ(cd.settings.text(".fileName"), "auto detect");
    EXPECT_EQ(s.deviceOnNode("IDE", 1, 0), &cd);
    const Device& nic = s.devices(DeviceType::Network)[0];
    EXPECT_EQ(nic.settings.text(".generatedAddress"), "00:0C:29:12:34:56");
    EXPECT_EQ(nic.settings.text(".connectionType"), "bridged");
    EXPECT_EQ(s.item(DeviceType::Memory, 1)->settings.number("memsize"), 256);
}

TEST(DeviceKeys, ValuesAreNormalisedOrRefused) {
    struct Case { DeviceType type; const char* key; const char* value; const char* stored; };
    const Case cases[] = {
        {DeviceType::Network, ".PRESENT", "0", "FALSE"},         {DeviceType::Network, ".present", "maybe", nullptr},
        {DeviceType::Network, ".virtualdev", "E1000", "e1000"},  {DeviceType::Network, ".virtualDev", "VMXNET3", "vmxnet3"}, {DeviceType::Network, ".virtualDev", "ne2000", nullptr},
        {DeviceType::Network, ".generatedAddressOffset", "-5", "-5"},
        {DeviceType::Network, ".generatedAddressOffset", "12abc", nullptr},
        {DeviceType::Network, ".generatedAddressOffset", "99999999999", nullptr},
    };
    for (const Case& c : cases) {
        const DeviceKey* key = findDeviceKey(c.type, c.key);
        ASSERT_NE(key, nullptr) << c.key;
        std::string out;
        EXPECT_EQ(normaliseDeviceValue(*key, c.value, out), c.stored != nullptr) << c.value;
        EXPECT_EQ(c.stored ? out : "refused", c.stored ? c.stored : "refused");
    }
    EXPECT_EQ(findDeviceKey(DeviceType::Floppy, ".bidirectional"), nullptr);
    EXPECT_NE(findDeviceKey(DeviceType::ParallelPort, ".bidirectional"), nullptr);
}
