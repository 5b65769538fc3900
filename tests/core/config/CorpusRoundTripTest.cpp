// Real configuration files written by VMware products: every one loads, re-saves, and a
// second save gives the same bytes; no key is lost and no value changes (as VMware reads it:
// escapes decoded, flags by their meaning, words without regard to case); the keys a file gains
// are the ones the README's "What a re-save changes" names, and each of those is gained by some
// file, so the list says what happens and no more.
#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxText.h"
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
        out[toLowerAscii(trimBlanks(line.substr(0, eq)))] = vmx::unescapeValue(value);
    }
    return out;
}

// The README's section on what a re-save changes: every name it quotes (lower case), and the
// keys its list says a file gains.
struct ReadmeList {
    std::set<std::string> named;
    std::set<std::string> gained;
};

ReadmeList readmeList() {
    std::string readme = test::readBytes(std::filesystem::path(ARDEN_SOURCE_DIR) / "README.md");
    std::size_t start = readme.find("## What a re-save changes");
    std::size_t end = readme.find("\n## ", start + 1);
    std::string section = readme.substr(start, end - start);
    std::size_t gainFrom = section.find("- The option keys are always written");
    std::size_t gainTo = section.find("; a file without", gainFrom);
    ReadmeList list;
    std::regex quoted("`([^`]+)`");
    for (auto it = std::sregex_iterator(section.begin(), section.end(), quoted); it != std::sregex_iterator(); ++it) {
        std::string name = toLowerAscii((*it)[1].str());
        list.named.insert(name);
        auto at = static_cast<std::size_t>(it->position());
        if (at > gainFrom && at < gainTo) list.gained.insert(name);
    }
    return list;
}

// Whether the README names a key: whole, or by its suffix after a device prefix ("autodetect").
bool named(const ReadmeList& list, const std::string& key) {
    return list.named.count(key) || list.named.count(key.substr(key.rfind('.') + 1));
}

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
    const ReadmeList readme = readmeList();
    ASSERT_GE(readme.gained.size(), 20u) << "the README's list of gained keys was not found";
    std::set<std::string> gained;
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
                auto it = after.find(key);
                if (it == after.end()) {
                    EXPECT_TRUE(named(readme, key)) << "lost key " << key;
                    continue;
                }
                if (cluster && (key.rfind("scsi0:0.", 0) == 0 || key.rfind("scsi0:1.", 0) == 0 || key.rfind("disk", 0) == 0))
                    continue;  // clustering sets these on purpose
                EXPECT_TRUE(sameValue(value, it->second)) << key << ": " << value << " became " << it->second;
            }
            for (const auto& [key, value] : after) {
                if (before.count(key) || (cluster && (key.rfind("scsi0:", 0) == 0 || key.rfind("disk", 0) == 0))) continue;
                EXPECT_TRUE(named(readme, key)) << "gained key " << key << " is not in the README's list";
                gained.insert(key);
            }
            if (before.count(".encoding")) {
                EXPECT_EQ(once.rfind(".encoding", 0), 0u) << ".encoding is the first line";
            }
        }
    }
    for (const std::string& key : readme.gained) {
        if (key.find('.') == std::string::npos && !std::isalpha(static_cast<unsigned char>(key[0]))) continue;
        EXPECT_TRUE(gained.count(key)) << "the README says files gain " << key << " but none does";
    }
}
