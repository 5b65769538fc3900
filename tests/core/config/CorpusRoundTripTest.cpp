// Real configuration files: every one loads; each written by a VMware product re-saves into a
// well-formed file that a second save leaves as it is, with no key lost and no value changed
// (as VMware reads it: escapes decoded, flags by their meaning, words without regard to case).
// The keys a file gains are the ones the README's "What a re-save changes" names, and each of
// those is gained by some file, so the list says what happens and no more.
#include <fstream>
#include <map>
#include <set>

#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxText.h"
#include "core/config/VmxWriter.h"
#include "core/hardware/DeviceKeys.h"
#include "core/support/TextUtil.h"
#include "TestSupport.h"

using namespace arden;

namespace {

// key (lower case) -> value without quotes, the last one winning, as the product reads a file.
// Keys written twice and lines not ended by CR LF are counted in `faults`.
std::map<std::string, std::string> settingsOf(const std::string& text, int* faults = nullptr) {
    std::map<std::string, std::string> out;
    for (std::size_t pos = 0; pos < text.size();) {
        std::size_t eol = std::min(text.find('\n', pos), text.size());
        if (faults && (eol == text.size() || text[eol - 1] != '\r')) ++*faults;
        std::string_view line = trimBlanks(std::string_view(text).substr(pos, eol - pos));
        pos = eol + 1;
        if (line.empty() || line.front() == '#' || line.find('=') == std::string_view::npos) continue;
        std::string value;
        for (char c : trimBlanks(line.substr(line.find('=') + 1))) if (c != '"') value += c;
        auto [it, added] = out.insert_or_assign(toLowerAscii(trimBlanks(line.substr(0, line.find('=')))), vmx::unescapeValue(value));
        if (faults && !added) ++*faults;
    }
    return out;
}

// The README's section on what a re-save changes: every name it quotes, and those its list
// says a file gains (all lower case).
std::pair<std::set<std::string>, std::set<std::string>> readmeNames() {
    std::string readme = test::readBytes(std::filesystem::path(ARDEN_SOURCE_DIR) / "README.md");
    std::size_t start = readme.find("## What a re-save changes");
    std::string section = readme.substr(start, readme.find("\n## ", start + 1) - start);
    std::size_t gainFrom = section.find("- The option keys are always written"), gainTo = section.find("; a file without", gainFrom);
    std::set<std::string> named, gained;
    for (std::size_t open = section.find('`'), close; open != std::string::npos; open = section.find('`', close + 1)) {
        if ((close = section.find('`', open + 1)) == std::string::npos) break;
        const std::string name = toLowerAscii(section.substr(open + 1, close - open - 1));
        named.insert(name);
        if (open > gainFrom && open < gainTo) gained.insert(name);
    }
    return {named, gained};
}

bool sameValue(const std::string& a, const std::string& b) {
    bool fa = false, fb = false;
    if (parseFlag(a, fa) && parseFlag(b, fb)) return fa == fb;
    return equalsIgnoreCase(a, b);
}

}  // namespace

TEST(Corpus, EveryFileLoadsAndVmwareWrittenFilesRoundTrip) {
    ARDEN_REQUIRE_CORPUS();
    std::set<std::string> vmware;  // the files the corpus notes list as written by a VMware product
    std::ifstream sources(test::corpusDir() / "SOURCES.md");
    const std::set<std::string> vmwareWriters{"VMware", "VMware (probable)", "VMware (forum paste)"};
    for (std::string line; std::getline(sources, line);) {  // "| vmx/NAME | WRITER | ..."
        const std::size_t nameEnd = line.find(" | ");
        if (line.rfind("| vmx/", 0) != 0 || nameEnd == std::string::npos) continue;
        const std::size_t writerEnd = line.find(" |", nameEnd + 3);
        if (vmwareWriters.count(line.substr(nameEnd + 3, writerEnd - nameEnd - 3))) vmware.insert(line.substr(6, nameEnd - 6));
    }
    ASSERT_GE(vmware.size(), 40u);
    const auto [named, listed] = readmeNames();
    ASSERT_GE(listed.size(), 20u) << "the README's list of gained keys was not found";
    auto isNamed = [&named](const std::string& key) { return named.count(key) || named.count(key.substr(key.rfind('.') + 1)); };
    std::set<std::string> gained;
    for (const auto& file : test::corpusFiles("vmx", ".vmx")) {
        const std::string name = file.filename().string();
        LoadResult r = loadVmxFile(file);
        ASSERT_TRUE(r.ok) << name;
        if (!vmware.count(name)) continue;
        for (bool cluster : {false, true}) {
            SCOPED_TRACE(name + (cluster ? " with clustering" : ""));
            VmConfiguration c = r.config;
            c.advanced.clusterEnabled = cluster || c.advanced.clusterEnabled;
            if (checkSave(c)) {
                EXPECT_TRUE(pciDeviceTally(c) > 6 || (cluster && clusteringRefusal(c)))
                    << "only machines with more than five PCI devices, or clustering over a drive, are refused: "
                    << test::shown(checkSave(c));
                continue;
            }
            const std::string once = writeVmxText(c);
            int faults = 0;
            auto before = settingsOf(test::readBytes(file)), after = settingsOf(once, &faults);
            EXPECT_EQ(faults, 0) << "every line ends with CR LF and no key is written twice";
            EXPECT_NE(once.substr(0, 3), "\xEF\xBB\xBF");
            EXPECT_EQ(writeVmxText(parseVmxText(once, c.identity.vmxFolder, name, name).config), once) << "a second save changes nothing";
            auto clustered = [cluster](const std::string& key) {
                return cluster && (key.starts_with("scsi0:") || key.starts_with("disk"));
            };
            for (const auto& [key, value] : before) {
                auto it = after.find(key);
                if (it == after.end()) {
                    EXPECT_TRUE(isNamed(key)) << "lost key " << key;
                } else if (!clustered(key)) {
                    EXPECT_TRUE(sameValue(value, it->second)) << key << ": " << value << " became " << it->second;
                }
            }
            for (const auto& [key, value] : after) {
                if (before.count(key) || clustered(key)) continue;
                EXPECT_TRUE(isNamed(key)) << "gained key " << key << " is not in the README's list";
                gained.insert(key);
            }
            // ".encoding" is the first line, or the second after a "#!" line that opened the file.
            const std::string_view afterScript = once.starts_with("#!") ? std::string_view(once).substr(once.find('\n') + 1) : once;
            EXPECT_TRUE(!before.count(".encoding") || afterScript.starts_with(".encoding")) << ".encoding is the first line";
        }
    }
    for (const std::string& key : listed) {
        if (key.find('.') == std::string::npos && !std::isalpha(static_cast<unsigned char>(key[0]))) continue;
        EXPECT_TRUE(gained.count(key)) << "the README says files gain " << key << " but none does";
    }
}
