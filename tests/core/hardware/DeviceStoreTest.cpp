#include "core/hardware/DeviceStore.h"

#include "core/hardware/DeviceDefaults.h"
#include "core/hardware/DeviceKeys.h"
#include "core/hardware/DeviceTexts.h"
#include "TestSupport.h"

using namespace arden;

TEST(HardwareListKey, BuildsAndParses) {
    EXPECT_EQ(hardwareListKey(DeviceType::CdRom, "cd1"), "H11|cd1");
    DeviceType t{};
    std::string id;
    ASSERT_TRUE(parseHardwareListKey("H11|cd|1", t, id));
    EXPECT_EQ(t, DeviceType::CdRom);
    EXPECT_EQ(id, "cd|1");  // everything after the first "|"
    EXPECT_FALSE(parseHardwareListKey("H11cd1", t, id));   // no "|"
    EXPECT_FALSE(parseHardwareListKey("H15|x", t, id));    // no such type
    EXPECT_FALSE(parseHardwareListKey("H-1|x", t, id));
    EXPECT_FALSE(parseHardwareListKey("H|x", t, id));
}

TEST(DeviceStore, NumbersIdentifiersAndTextsOfNewDevices) {
    DeviceStore s;
    Device& a = s.createDevice(DeviceType::Network);
    Device& b = s.createDevice(DeviceType::Network);
    EXPECT_EQ(a.number, 0);
    EXPECT_EQ(b.number, 1);
    EXPECT_NE(a.identifier, b.identifier);
    EXPECT_EQ(s.displayText(s.devices(DeviceType::Network)[1]), "Network Adapter 2");
    // A removed number is reused by the next device; identifiers are never reused.
    std::string firstId = s.devices(DeviceType::Network)[0].identifier;
    ASSERT_TRUE(s.remove(DeviceType::Network, firstId));
    Device& c = s.createDevice(DeviceType::Network);
    EXPECT_EQ(c.number, 0);
    EXPECT_NE(c.identifier, firstId);
    EXPECT_FALSE(s.remove(DeviceType::Network, "nonexistent"));

    // The writer finds these kinds by the beginning of their texts.
    EXPECT_EQ(s.displayText(s.createDevice(DeviceType::HardDisk)).rfind("Hard Disk", 0), 0u);
    EXPECT_EQ(s.displayText(s.createDevice(DeviceType::CdRom)).rfind("CD-ROM", 0), 0u);
    EXPECT_EQ(s.displayText(s.createDevice(DeviceType::GenericScsi)).rfind("Gen SCSI", 0), 0u);
    EXPECT_EQ(s.displayText(s.createDevice(DeviceType::ScsiController)), "SCSI Controller 0");
    EXPECT_EQ(s.devices(DeviceType::HardDisk)[0].node.DeviceType(), "Hard Disk");
    EXPECT_EQ(s.devices(DeviceType::HardDisk)[0].node.ControllerNumber(), -1);
}

TEST(DeviceStore, HardwareListEntriesInTypeOrder) {
    DeviceStore s;
    addNewMachineDevices(s, 256, 0x123456);
    auto list = s.hardwareList();
    ASSERT_FALSE(list.empty());
    for (std::size_t i = 1; i < list.size(); ++i) EXPECT_LE(typeNumber(list[i - 1].type), typeNumber(list[i].type));
    for (const auto& e : list) EXPECT_EQ(e.key, hardwareListKey(e.type, e.identifier));
    auto counts = s.counts();
    EXPECT_EQ(counts[typeNumber(DeviceType::Cpu)], 1);
    EXPECT_EQ(counts[typeNumber(DeviceType::Memory)], 1);
    EXPECT_EQ(counts[typeNumber(DeviceType::CdRom)], 1);
    EXPECT_EQ(counts[typeNumber(DeviceType::HardDisk)], 0);
    const Device& cd = s.devices(DeviceType::CdRom)[0];
    EXPECT_EQ(nodeLabel(cd.node), "IDE 1:0");
    EXPECT_EQ(cd.settings.text(".fileName"), "auto detect");
    const Device& nic = s.devices(DeviceType::Network)[0];
    EXPECT_EQ(nic.settings.text(".generatedAddress"), "00:0C:29:12:34:56");
    EXPECT_EQ(nic.settings.text(".connectionType"), "bridged");
    EXPECT_EQ(s.item(DeviceType::Memory, 1)->settings.number("memsize"), 256);
    EXPECT_EQ(s.item(DeviceType::Memory, 2), nullptr);
    EXPECT_EQ(s.item(DeviceType::Memory, 0), nullptr);
    EXPECT_EQ(s.deviceOnNode("IDE", 1, 0), &cd);
    EXPECT_EQ(s.deviceOnNode("IDE", 0, 0), nullptr);
}

TEST(DeviceKeys, ValuesAreNormalisedOrRefused) {
    std::string out;
    const DeviceKey* present = findDeviceKey(DeviceType::Network, ".PRESENT");
    ASSERT_NE(present, nullptr);
    EXPECT_TRUE(normaliseDeviceValue(*present, "true", out));
    EXPECT_EQ(out, "TRUE");
    EXPECT_TRUE(normaliseDeviceValue(*present, "0", out));
    EXPECT_EQ(out, "FALSE");
    EXPECT_FALSE(normaliseDeviceValue(*present, "maybe", out));

    const DeviceKey* dev = findDeviceKey(DeviceType::Network, ".virtualdev");
    ASSERT_NE(dev, nullptr);
    EXPECT_TRUE(normaliseDeviceValue(*dev, "E1000", out));
    EXPECT_EQ(out, "e1000");
    EXPECT_FALSE(normaliseDeviceValue(*dev, "vmxnet3", out));  // not one of this era's adapters

    const DeviceKey* offset = findDeviceKey(DeviceType::Network, ".generatedAddressOffset");
    ASSERT_NE(offset, nullptr);
    EXPECT_TRUE(normaliseDeviceValue(*offset, "-5", out));
    EXPECT_EQ(out, "-5");
    EXPECT_FALSE(normaliseDeviceValue(*offset, "", out));
    EXPECT_FALSE(normaliseDeviceValue(*offset, "12abc", out));
    EXPECT_FALSE(normaliseDeviceValue(*offset, "99999999999", out));

    EXPECT_EQ(findDeviceKey(DeviceType::Floppy, ".bidirectional"), nullptr);
    EXPECT_NE(findDeviceKey(DeviceType::ParallelPort, ".bidirectional"), nullptr);
}

TEST(DeviceStore, DevicesKeepTheirIdentityWhileOthersComeAndGo) {
    DeviceStore s;
    Device& first = s.createDevice(DeviceType::HardDisk);
    Device& second = s.createDevice(DeviceType::HardDisk);
    first.settings.set(".fileName", "first.vmdk");
    for (int i = 0; i < 1000; ++i) s.createDevice(DeviceType::HardDisk);
    ASSERT_TRUE(s.remove(DeviceType::HardDisk, second.identifier));
    EXPECT_EQ(first.settings.text(".fileName"), "first.vmdk") << "a reference survives creations and removals";
    EXPECT_EQ(s.find(DeviceType::HardDisk, first.identifier), &first);
    EXPECT_EQ(s.find(DeviceType::HardDisk, "hd2"), nullptr);

    // Numbers: the lowest free one, reused after a removal, then counting on.
    EXPECT_EQ(s.createDevice(DeviceType::HardDisk).number, 1);
    EXPECT_EQ(s.createDevice(DeviceType::HardDisk).number, 1002);

    // A copy holds its own devices, equal to the original's.
    DeviceStore copy = s;
    EXPECT_EQ(copy, s);
    Device* copied = copy.find(DeviceType::HardDisk, first.identifier);
    ASSERT_NE(copied, nullptr);
    EXPECT_NE(copied, &first);
    copied->settings.set(".fileName", "other.vmdk");
    EXPECT_EQ(first.settings.text(".fileName"), "first.vmdk");
    EXPECT_NE(copy, s);
    Device& next = copy.createDevice(DeviceType::HardDisk);
    EXPECT_EQ(next.number, 1003) << "the copy numbers on from the original";
    EXPECT_EQ(next.identifier, "hd1005") << "identifiers are not handed out twice, not even by a copy";
}

TEST(DeviceStore, LoadedIdentifiersAreKeptAndNeverHandedOutAgain) {
    DeviceStore s;
    Device loaded;
    loaded.type = DeviceType::Network;
    loaded.identifier = "nic1";
    loaded.number = 0;
    s.addDevice(loaded);
    EXPECT_EQ(s.addDevice(loaded).identifier, "nic2") << "a used identifier is replaced";
    Device& created = s.createDevice(DeviceType::Network);
    EXPECT_EQ(created.identifier, "nic3");
    EXPECT_EQ(created.number, 1);
}
