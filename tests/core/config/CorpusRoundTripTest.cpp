// Real configuration files written by VMware products: every one loads, re-saves, and a
// second save gives the same bytes; every setting survives except the documented ones.
#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "core/hardware/DeviceKeys.h"
#include "core/shell/GetText.h"
#include "core/support/TextUtil.h"
#include "TestSupport.h"

using namespace arden;

namespace {

// Files the corpus notes list as written by a VMware product.
std::set<std::string> vmwareWritten() {
    std::set<std::string> names;
    std::ifstream in(test::corpusDir() / "SOURCES.md");
    std::string line;
    std::regex row(R"(^\| vmx/([^ |]+) \| (VMware|VMware \(probable\)|VMware \(forum paste\)) \|)");
    std::smatch m;
    while (std::getline(in, line)) {
        if (std::regex_search(line, m, row)) names.insert(m[1]);
    }
    return names;
}

// key (lower case) -> value without quotes, last one wins, as the product reads a file.
std::map<std::string, std::string> settingsOf(const std::string& text) {
    std::map<std::string, std::string> out;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t eol = text.find('\n', pos);
        if (eol == std::string::npos) eol = text.size();
        std::string_view line = trimBlanks(std::string_view(text).substr(pos, eol - pos));
        pos = eol + 1;
        if (line.empty() || line.front() == '#') continue;
        std::size_t eq = line.find('=');
        if (eq == std::string_view::npos) continue;
        std::string value;
        for (char c : trimBlanks(line.substr(eq + 1))) if (c != '"') value += c;
        out[toLowerAscii(trimBlanks(line.substr(0, eq)))] = value;
    }
    return out;
}

// Keys whose values the editor renews or maps onto the entries of its own lists.
const std::set<std::string> kRenewedOrMapped = {
    "config.version", "virtualhw.version", "sharedfolder.maxnum", "memtrimrate", "powertype.poweroff",
    "powertype.reset", "priority.grabbed", "priority.ungrabbed", "snapshot.action"};

bool sameValue(const std::string& a, const std::string& b) {
    bool fa = false, fb = false;
    if (parseFlag(a, fa) && parseFlag(b, fb)) return fa == fb;
    return equalsIgnoreCase(a, b);
}

void expectWellFormed(const std::string& name, const std::string& text) {
    EXPECT_NE(text.substr(0, 3), "\xEF\xBB\xBF") << name;
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(text.substr(text.size() - 2), "\r\n") << name;
    std::set<std::string> keys;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t eol = text.find('\n', pos);
        ASSERT_NE(eol, std::string::npos);
        EXPECT_EQ(text[eol - 1], '\r') << name << ": every line ends with CR LF";
        std::string_view line = trimBlanks(std::string_view(text).substr(pos, eol - pos));
        pos = eol + 1;
        if (line.empty() || line.front() == '#' || line.find('=') == std::string_view::npos) continue;
        std::string key = toLowerAscii(trimBlanks(line.substr(0, line.find('='))));
        EXPECT_TRUE(keys.insert(key).second) << name << ": key written twice: " << key;
    }
}

}  // namespace

TEST(Corpus, EveryFileLoads) {
    ARDEN_REQUIRE_CORPUS();
    auto files = test::corpusFiles("vmx", ".vmx");
    ASSERT_GE(files.size(), 60u);
    for (const auto& f : files) {
        LoadResult r = loadVmxFile(f);
        EXPECT_TRUE(r.ok) << f;
        EXPECT_GT(r.config.devices.count(DeviceType::Memory), 0) << f;
    }
}

TEST(Corpus, VmwareWrittenFilesRoundTrip) {
    ARDEN_REQUIRE_CORPUS();
    auto written = vmwareWritten();
    ASSERT_GE(written.size(), 40u);
    for (bool cluster : {false, true}) {
        for (const std::string& name : written) {
            SCOPED_TRACE(name + (cluster ? " with clustering" : ""));
            std::string original = test::readBytes(test::corpusDir() / "vmx" / name);
            LoadResult r = loadVmxFile(test::corpusDir() / "vmx" / name);
            ASSERT_TRUE(r.ok);
            r.config.advanced.clusterEnabled = cluster || r.config.advanced.clusterEnabled;
            if (auto refusal = checkSave(r.config)) {
                // Machines with more than five PCI devices are refused, with the count in the text.
                EXPECT_EQ(resolveText(refusal->title, 0), "Too many virtual PCI Devices enabled");
                EXPECT_GT(pciDeviceTally(r.config), 6);
                continue;
            }
            std::string once = writeVmxText(r.config);
            expectWellFormed(name, once);
            LoadResult again = parseVmxText(once, r.config.identity.vmxFolder, name, name);
            ASSERT_TRUE(again.ok);
            EXPECT_EQ(writeVmxText(again.config), once) << "a second save changes nothing";
            EXPECT_EQ(again.config.devices.hardwareList().size(), r.config.devices.hardwareList().size());

            auto before = settingsOf(original);
            auto after = settingsOf(once);
            for (const auto& [key, value] : before) {
                if (kRenewedOrMapped.count(key)) continue;
                auto it = after.find(key);
                if (it == after.end()) {
                    ADD_FAILURE() << "lost key " << key;
                    continue;
                }
                if (cluster && (key.rfind("scsi0:0.", 0) == 0 || key.rfind("scsi0:1.", 0) == 0 || key.rfind("disk", 0) == 0))
                    continue;  // clustering sets these on purpose
                EXPECT_TRUE(sameValue(value, it->second)) << key << ": " << value << " became " << it->second;
            }
        }
    }
}
