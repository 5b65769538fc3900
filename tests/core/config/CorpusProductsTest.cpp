// Every VMware-written file of the corpus is shown as the product its hardware version and keys
// say, with its processors and memory as written, no note about either, and no refusal on save
// (hardware versions 6 and later have PCI bridges: ten adapters are no reason to refuse).
#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"

#include "TestSupport.h"
#include "VmxTestSupport.h"

using namespace arden;

namespace {

struct Shown {
    const char* file;
    const char* product;
    const char* hardwareVersion;
};

// File, the product it is shown as, its hardware version as written.
const Shown kShown[] = {
    {"cosmos__Cosmos-server-2008-03.vmx", "Workstation 5.5x", "4"},
    {"cosmos__Cosmos-ws-2008-03.vmx", "Workstation 6.0x", "6"},
    {"cosmos__Cosmos-ws-2008-09.vmx", "Workstation 6.0x", "6"},
    {"cosmos__Cosmos-ws-2010-04.vmx", "Workstation 6.5x", "7"},
    {"cosmos__Cosmos-ws-2010-08.vmx", "Workstation 6.5x", "7"},
    {"cosmos__Cosmos-ws-2012-06.vmx", "Workstation 6.5x", "7"},
    {"cosmos__Cosmos-ws-2017-08.vmx", "Workstation 6.5x", "7"},
    {"cosmos__Cosmos-ws-2021-01.vmx", "Workstation 6.5x", "7"},
    {"cosmos__Cosmos-ws-2024-03.vmx", "Workstation 6.5x", "7"},
    {"cosmos__Other-pxe-2008-01.vmx", "Workstation 6.0x", "6"},
    {"freebsdproject__FreeBSD.vmx", "Workstation 12.x", "12"},
    {"freebsdproject__Ubuntu-64-bit.vmx", "Workstation 12.x", "12"},
    {"golovitskydd__Windows-10-x64.vmx", "Workstation 16.x", "18"},
    {"jahyung-ansible__CentOS-7-64-bit.vmx", "Workstation 15.x", "16"},
    {"lanrenlan-configbackup__Windows-10-x64-CORRUPTED-reupload.vmx", "Workstation 16.2.x", "19"},
    {"lanrenlan-configbackup__Windows-10-x64.vmx", "Workstation 16.2.x", "19"},
    {"libvirt__esx-in-the-wild-12.vmx", "ESXi 8.0", "20"},
    {"libvirt__esx-in-the-wild-13.vmx", "ESXi 7.0 U2", "19"},
    {"libvirt__esx-in-the-wild-14.vmx", "ESXi 7.0 U2", "19"},
    {"libvirt__esx-in-the-wild-15.vmx", "ESXi 7.0 U2", "19"},
    {"libvirt__esx-in-the-wild-16.vmx", "ESXi 8.0", "20"},
    {"libvirt__esx-in-the-wild-17.vmx", "ESXi 8.0", "20"},
    {"libvirt__esx-in-the-wild-2.vmx", "ESXi 3.5", "4"},
    {"libvirt__esx-in-the-wild-6.vmx", "ESXi 4.x", "7"},
    {"libvirt__esx-in-the-wild-9.vmx", "ESXi 5.5", "10"},
    {"libvirt__fusion-in-the-wild-1.vmx", "Workstation 9.x", "9"},
    {"libvirt__gsx-in-the-wild-3.vmx", "Workstation 5.5x", "4"},
    {"libvirt__gsx-in-the-wild-4.vmx", "Workstation 5.5x", "4"},
    {"libvirt__vmx2xml-esx-in-the-wild-1.vmx", "ESXi 3.5", "4"},
    {"libvirt__vmx2xml-esx-in-the-wild-10.vmx", "ESXi 7.0", "17"},
    {"libvirt__vmx2xml-esx-in-the-wild-11.vmx", "ESXi 6.7", "14"},
    {"libvirt__vmx2xml-esx-in-the-wild-3.vmx", "ESXi 3.5", "4"},
    {"libvirt__vmx2xml-esx-in-the-wild-4.vmx", "ESXi 3.5", "4"},
    {"libvirt__vmx2xml-esx-in-the-wild-5.vmx", "ESXi 4.x", "7"},
    {"libvirt__vmx2xml-esx-in-the-wild-7.vmx", "ESXi 5.0", "8"},
    {"libvirt__vmx2xml-esx-in-the-wild-8.vmx", "ESXi 6.0", "11"},
    {"libvirt__vmx2xml-gsx-in-the-wild-1.vmx", "Workstation 5.5x", "4"},
    {"libvirt__vmx2xml-gsx-in-the-wild-2.vmx", "Workstation 5.5x", "4"},
    {"libvirt__vmx2xml-ws-in-the-wild-1.vmx", "Workstation 8.x", "8"},
    {"manageiq-smartstate__test_vmware_config.vmx", "Workstation 5.5x", "4"},
    {"metasploitable2__Metasploitable-user-edited.vmx", "Workstation 6.5x", "7"},
    {"metasploitable2__Metasploitable.vmx", "Workstation 6.5x", "7"},
    {"mosa__Run-VMware-MOSA-ISO.vmx", "Workstation 5.5x", "4"},
    {"mosa__Run-VMware-MOSA.vmx", "Workstation 5.5x", "4"},
    {"mosa__Setup-VMware-MOSA-2008.vmx", "Workstation 5.5x", "4"},
    {"sharpjs-home__Windows-Server-2016-2017-10.vmx", "Workstation 14.x", "14"},
    {"sharpjs-home__Windows-Server-2016.vmx", "Workstation 14.x", "14"},
    {"studydocker__Ubuntu-64-bit.vmx", "Workstation 16.x", "18"},
    {"ubuntuforumsarchive__TestOS-player-suspended-hw3.vmx", "Workstation 5.5x", "3"},
    {"ubuntuforumsarchive__WinXPPro-server104-hw4.vmx", "Workstation 5.5x", "4"},
    {"virtmanager__test-vmdk-desc.vmx", "ESXi 4.x", "7"},
    {"virtmanager__test1.vmx", "Workstation 6.0x", "6"},
    {"virtv2v__test-i-vmx-1.vmx", "ESXi 5.0", "8"},
    {"virtv2v__test-i-vmx-2.vmx", "ESXi 5.5", "10"},
    {"virtv2v__test-i-vmx-3.vmx", "ESXi 5.0", "8"},
    {"virtv2v__test-i-vmx-4.vmx", "ESXi 5.0", "8"},
    {"virtv2v__test-i-vmx-5.vmx", "Workstation 11.x", "11"},
    {"virtv2v__test-i-vmx-6.vmx", "ESXi 6.7", "14"},
    {"virtv2v__test-i-vmx-7.vmx", "ESXi 7.0", "17"},
    {"vistronix2017__Ubuntu-64-bit.vmx", "Workstation 11.x", "11"},
    {"vms11__Windows-11-x64.vmx", "Workstation 17.5x", "21"},
    {"vmwareubuntu2204__Ubuntu-64-bit.vmx", "Workstation 17.5x", "21"},
    {"win10vm__Windows-10-x64.vmx", "Workstation 15.x", "16"},
    {"win7vmware17__Windows-7-x64-first.vmx", "Workstation 15.x", "16"},
    {"win7vmware17__Windows-7-x64.vmx", "Workstation 15.x", "16"},
};

// The value of the last line of `text` (LF or CR LF lines) that sets `key`, without its quotes;
// empty when none.
std::string valueOf(const std::string& text, std::string_view key) {
    std::string value;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        const std::size_t eq = line.find('=');
        if (eq == std::string::npos || !equalsIgnoreCase(trimBlanks(std::string_view(line).substr(0, eq)), key)) continue;
        value = std::string(trimBlanks(std::string_view(line).substr(eq + 1)));
        std::erase(value, '"');
        std::erase(value, '\r');
    }
    return value;
}

// The corpus files whose writer column in SOURCES.md starts with "VMware".
std::set<std::string> vmwareWritten() {
    std::ifstream in(test::corpusDir() / "SOURCES.md");
    std::set<std::string> files;
    for (std::string line; std::getline(in, line);) {
        if (!line.starts_with("| vmx/")) continue;
        const std::size_t nameEnd = line.find(" | ", 6);
        const std::size_t writer = nameEnd + 3;
        if (line.compare(writer, 6, "VMware") == 0) files.insert(line.substr(6, nameEnd - 6));
    }
    return files;
}

}  // namespace

TEST(CorpusProducts, EveryVMwareWrittenFileShowsItsProductProcessorsAndMemory) {
    ARDEN_REQUIRE_CORPUS();
    std::set<std::string> listed;
    for (const Shown& s : kShown) {
        SCOPED_TRACE(s.file);
        listed.insert(s.file);
        const std::string text = test::readBytes(test::corpusDir() / "vmx" / s.file);
        const LoadResult loaded = test::parseIn(text);
        ASSERT_TRUE(loaded.ok);
        const VmConfiguration& c = loaded.config;
        EXPECT_EQ(productText(c.product.platform, c.product.version), s.product);
        EXPECT_EQ(c.hwVersionText(), s.hardwareVersion);
        const std::string cpus = valueOf(text, "numvcpus");
        EXPECT_EQ(std::to_string(c.devices.count(DeviceType::Cpu)), cpus.empty() ? "1" : cpus);
        if (const std::string memory = valueOf(text, "memsize"); !memory.empty()) {
            EXPECT_EQ(c.devices.devices(DeviceType::Memory).front().settings.text("memsize"), memory);
        }
        for (const LoadNotice& n : loaded.notices) {
            EXPECT_EQ(n.text.find("for numvcpus"), std::string::npos) << n.text;
            EXPECT_EQ(n.text.find("for memsize"), std::string::npos) << n.text;
        }
        EXPECT_FALSE(checkSave(c)) << test::shown(checkSave(c));
    }
    for (const std::string& file : vmwareWritten()) EXPECT_TRUE(listed.contains(file)) << file << " is not in the table";
}

TEST(ProductRecognition, HardwareVersionAndEsxKeysNameTheProductAndTheLinesSayIt) {
    const auto shownAs = [](const std::string& text) {
        const VmConfiguration c = test::parseIn(text).config;
        return productText(c.product.platform, c.product.version) + ", hardware version " + c.hwVersionText();
    };
    EXPECT_EQ(shownAs("virtualHW.version = \"19\"\n"), "Workstation 16.2.x, hardware version 19");
    EXPECT_EQ(shownAs("virtualHW.version = \"7\"\n"), "Workstation 6.5x, hardware version 7");
    EXPECT_EQ(shownAs("# Platform = Player\nvirtualHW.version = \"19\"\n"), "Player 16.2.x, hardware version 19");
    EXPECT_EQ(shownAs("# Platform = Workstation\nvirtualHW.version = \"3\"\n"), "Workstation 5.5x, hardware version 3");
    EXPECT_EQ(shownAs("virtualHW.version = \"4\"\n"), "Workstation 5.5x, hardware version 4");
    EXPECT_EQ(shownAs("virtualHW.version = \"13\"\n"), "ESXi 6.5, hardware version 13");
    EXPECT_EQ(shownAs("virtualHW.version = \"19\"\nethernet0.networkName = \"VM Network\"\n"),
              "ESXi 7.0 U2, hardware version 19");
    EXPECT_EQ(shownAs("virtualHW.version = \"16\"\nethernet0.networkName = \"VM Network\"\n"),
              "ESXi 7.0, hardware version 16");
    EXPECT_EQ(shownAs("virtualHW.version = \"9\"\nethernet0.networkName = \"VMnet0\"\nethernet0.connectionType = \"bridged\"\n"),
              "Workstation 9.x, hardware version 9");
    EXPECT_EQ(shownAs("virtualHW.version = \"7\"\nvirtualHW.productCompatibility = \"hosted\"\n"
                      "scsi0:0.fileName = \"/vmfs/volumes/ds/vm/vm.vmdk\"\n"),
              "ESXi 4.x, hardware version 7");
    EXPECT_EQ(shownAs("virtualHW.version = \"25\"\n"), "Workstation 17.5x, hardware version 25");

    // The comment lines name the product in the same form for every product, and are read back.
    VmConfiguration esx = VmConfiguration::newMachine("E", "/vms/e/", "New VM", 3);
    esx.retarget(kEsx, *versionFromText(kEsx, "8.0 U2"));
    const std::string written = writeVmxText(esx);
    EXPECT_NE(written.find("# Platform = ESXi\r\n# Version = 8.0 U2\r\nconfig.version = \"8\"\r\nvirtualHW.version = \"21\""),
              std::string::npos);
    EXPECT_EQ(shownAs(written), "ESXi 8.0 U2, hardware version 21");
}

// Every VMware-written file lists its disks and drives at their nodes on all four buses, its
// controllers with their types, network adapters, USB controllers and sound cards, as the
// expected list in tests/data/corpus-hardware.txt says ("## file", then "entry<TAB>summary").
TEST(CorpusHardware, EveryVMwareWrittenFileListsItsDevicesAtTheirNodes) {
    ARDEN_REQUIRE_CORPUS();
    constexpr DeviceType kListed[] = {DeviceType::HardDisk,      DeviceType::CdRom,          DeviceType::GenericScsi,
                                      DeviceType::IdeController, DeviceType::ScsiController, DeviceType::SataController,
                                      DeviceType::NvmeController, DeviceType::Network,       DeviceType::Usb,
                                      DeviceType::Sound};
    std::map<std::string, std::string> expected;
    std::ifstream in(std::filesystem::path(ARDEN_SOURCE_DIR) / "tests" / "data" / "corpus-hardware.txt");
    std::string* block = nullptr;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("## ")) block = &expected[line.substr(3)];
        else if (block && !line.starts_with("#")) *block += line + "\n";
    }
    const std::set<std::string> files = vmwareWritten();
    ASSERT_GE(files.size(), 60u);
    for (const std::string& file : files) {
        SCOPED_TRACE(file);
        ASSERT_TRUE(expected.contains(file)) << "no expected list";
        const VmConfiguration c = test::parseIn(test::readBytes(test::corpusDir() / "vmx" / file)).config;
        std::string shown;
        for (const HardwareListEntry& e : c.devices.hardwareList()) {
            if (std::find(std::begin(kListed), std::end(kListed), e.type) != std::end(kListed))
                shown += e.text + "\t" + e.summary + "\n";
        }
        EXPECT_EQ(shown, expected[file]);
    }
    EXPECT_EQ(expected.size(), files.size()) << "the expected lists name a file that is not VMware-written";
}
