// What the add-hardware dialog offers, its lblInfo texts, and which entries may be removed.
#include "core/hardware/HardwareLimits.h"

#include "core/config/HardwareFigures.h"
#include "core/shell/GetText.h"
#include "TestSupport.h"

using namespace arden;

namespace {

DeviceMaxima maximaOf(int platform, int version) { return deviceMaxima(*productFigures(platform, version)); }

// The names of the offered types, joined by ", ".
std::string offered(const DeviceCounts& counts, const DeviceMaxima& maxima) {
    std::string names;
    for (DeviceType t : offeredDeviceTypes(counts, maxima)) {
        names += (names.empty() ? "" : ", ") + GetText(deviceTypeNameId(t));
    }
    return names;
}

DeviceCounts counts(std::initializer_list<std::pair<DeviceType, int>> given) {
    DeviceCounts c{};
    for (auto [t, n] : given) c[static_cast<std::size_t>(typeNumber(t))] = n;
    return c;
}

}  // namespace

TEST(AddHardwareOffers, PlatformWithOneScsiControllerAndTwoCpus) {
    // Workstation 4.5x: one SCSI controller, three adapters; one CPU.
    const DeviceMaxima ws45 = maximaOf(1, 2);
    ASSERT_EQ(ws45, (DeviceMaxima{1, 3, 1, 4}));
    EXPECT_EQ(offered(counts({}), ws45),
              "CPU, Memory, Floppy Drive, Parallel Port, Serial Port, Sound Adapter, Network Adapter, USB Controller, "
              "IDE Controller, SCSI Controller, Hard Disk, DVD/CD-ROM Drive, Generic SCSI Device, Display, Mouse");
    // Every type at its limit but hard disks: ten disks (four IDE nodes and six of the seven
    // SCSI nodes) still offer an eleventh, eleven do not; generic SCSI devices stop at seven.
    const DeviceCounts full = counts({{DeviceType::Cpu, 1}, {DeviceType::Memory, 1}, {DeviceType::Floppy, 2},
                                      {DeviceType::ParallelPort, 3}, {DeviceType::SerialPort, 4}, {DeviceType::Sound, 1},
                                      {DeviceType::Network, 3}, {DeviceType::Usb, 1}, {DeviceType::IdeController, 2},
                                      {DeviceType::ScsiController, 1}, {DeviceType::HardDisk, 10}, {DeviceType::CdRom, 11},
                                      {DeviceType::GenericScsi, 7}, {DeviceType::Display, 1}, {DeviceType::Mouse, 1}});
    EXPECT_EQ(offered(full, ws45), "Hard Disk");
    DeviceCounts almost = full;
    almost[typeNumber(DeviceType::HardDisk)] = 11;
    almost[typeNumber(DeviceType::GenericScsi)] = 6;
    almost[typeNumber(DeviceType::Floppy)] = 1;
    almost[typeNumber(DeviceType::Network)] = 2;
    EXPECT_EQ(offered(almost, ws45), "Floppy Drive, Network Adapter, Generic SCSI Device");

    // The CPU row is an equality: with a maximum of two, one CPU offers it, zero and two do not.
    const DeviceMaxima ws55 = maximaOf(1, 4);
    ASSERT_EQ(ws55.cpus, 2);
    for (auto [cpus, offeredCpu] : {std::pair{0, false}, {1, true}, {2, false}})
        EXPECT_EQ(canAddDevice(DeviceType::Cpu, cpus, ws55), offeredCpu) << cpus;
}

TEST(AddHardwareOffers, ModernProductsUpToTheirRowsMaxima) {
    // Workstation 17.5x: 32 processors, ten adapters, four serial ports; ESXi 6.0: 32 serial ports.
    const DeviceMaxima ws17 = maximaOf(kWorkstation, *versionFromText(kWorkstation, "17.5x"));
    for (auto [cpus, offeredCpu] : {std::pair{1, true}, {16, true}, {31, true}, {32, false}})
        EXPECT_EQ(canAddDevice(DeviceType::Cpu, cpus, ws17), offeredCpu) << cpus;
    EXPECT_TRUE(canAddDevice(DeviceType::Network, 9, ws17));
    EXPECT_FALSE(canAddDevice(DeviceType::Network, 10, ws17));
    EXPECT_FALSE(canAddDevice(DeviceType::SerialPort, 4, ws17));
    const DeviceMaxima esx60 = maximaOf(kEsx, *versionFromText(kEsx, "6.0"));
    EXPECT_TRUE(canAddDevice(DeviceType::SerialPort, 31, esx60));
    EXPECT_FALSE(canAddDevice(DeviceType::SerialPort, 32, esx60));
    EXPECT_EQ(addHardwareInfo(DeviceType::Network, 10, ws17).okEnabled, false);
}

TEST(AddHardwareOffers, PlatformWithoutScsiOrAdapters) {
    const DeviceMaxima none{1, 0, 0};
    EXPECT_EQ(offered(counts({{DeviceType::Cpu, 1}, {DeviceType::Memory, 1}, {DeviceType::HardDisk, 4}}), none),
              "Floppy Drive, Parallel Port, Serial Port, Sound Adapter, USB Controller, IDE Controller, "
              "DVD/CD-ROM Drive, Display, Mouse")
        << "four IDE nodes hold four disks; no SCSI device or adapter without a controller";
}

TEST(AddHardwareOffers, InfoTextsAndOkButton) {
    const DeviceMaxima ws45{1, 3, 1};
    struct Case { DeviceType type; int count; bool ok; std::string text; };
    const Case cases[] = {
        {DeviceType::HardDisk, 0, true, "Add a Hard Disk."},
        {DeviceType::HardDisk, 11, false, "The maximum number ofHard Disks has already been added to this virtual machine."},
        {DeviceType::Floppy, 2, false, "The maximum number ofFloppy Drives has already been added to this virtual machine."},
        {DeviceType::Network, 2, true, "Add a Network Adapter."},
        {DeviceType::SerialPort, 3, true, "Add a Serial Port."},
    };
    for (const Case& c : cases) {
        AddHardwareInfo info = addHardwareInfo(c.type, c.count, ws45);
        EXPECT_EQ(info.okEnabled, c.ok) << c.text;
        EXPECT_EQ(resolveText(info.text, 0), c.text);
    }
    // Each language places the type name in a sentence of its own.
    const std::pair<int, std::string> translated[] = {
        {500, "Die Höchstzahl an Geräten vom Typ „Festplatte“ ist in dieser virtuellen Maschine bereits erreicht."},
        {1000, "Le nombre maximal de périphériques de type « Disque dur » est déjà atteint pour cette machine virtuelle."},
        {1500, "El número máximo de dispositivos de tipo «Disco duro» ya se ha alcanzado en esta máquina virtual."},
        {2000, "Il numero massimo di dispositivi di tipo «Disco rigido» è già stato raggiunto in questa macchina virtuale."},
    };
    for (const auto& [offset, text] : translated)
        EXPECT_EQ(resolveText(addHardwareInfo(DeviceType::HardDisk, 11, ws45).text, offset), text);
    EXPECT_EQ(resolveText(addHardwareInfo(DeviceType::Sound, 0, ws45).text, 500), "Hinzufügen: Soundkarte.");
}

TEST(RemoveHardware, MemoryAndTheLastCpuStay) {
    EXPECT_FALSE(canRemoveDevice(DeviceType::Memory, 1) || canRemoveDevice(DeviceType::Cpu, 1));
    EXPECT_TRUE(canRemoveDevice(DeviceType::Cpu, 2) && canRemoveDevice(DeviceType::CdRom, 1));
}

TEST(AddHardwareRows, TypesAtTheirLimitStayListedTypesTheProductLacksDoNot) {
    auto names = [](const std::vector<DeviceType>& types) {
        std::string joined;
        for (DeviceType t : types) joined += (joined.empty() ? "" : ", ") + GetText(deviceTypeNameId(t));
        return joined;
    };
    const DeviceMaxima noScsi{1, 2, 0};
    const DeviceCounts full = counts({{DeviceType::Memory, 1}, {DeviceType::Floppy, 2}, {DeviceType::Network, 2}});
    EXPECT_EQ(names(listedDeviceTypes(full, noScsi)),
              "CPU, Memory, Floppy Drive, Parallel Port, Serial Port, Sound Adapter, Network Adapter, USB Controller, "
              "IDE Controller, Hard Disk, DVD/CD-ROM Drive, Display, Mouse");
    EXPECT_EQ(names(listedDeviceTypes(counts({{DeviceType::GenericScsi, 1}}), noScsi)).find("Generic SCSI Device") == std::string::npos,
              false) << "a type the machine holds is listed even where the product lacks it";
}
