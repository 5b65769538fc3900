// The INI reader and writer on any bytes: the first bytes of an input choose a change (section,
// key, value and what to do), the rest is the file. An unchanged file is written back byte for
// byte; after a change the written text reads back with the change made, and every other
// section holds the same entries as before.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "FuzzCheck.h"
#include "core/support/IniDocument.h"
#include "core/support/TextUtil.h"

namespace {

using arden::IniDocument;

std::string joined(const std::vector<std::string>& lines) {
    std::string out;
    for (const std::string& l : lines) out += l + "\n";
    return out;
}

// Entries of every section except `changed`, keyed by the section's name in lower case.
std::map<std::string, std::string> otherSections(const IniDocument& doc, std::string_view changed) {
    std::map<std::string, std::string> out;
    for (const std::string& name : doc.sectionNames()) {
        if (arden::equalsIgnoreCase(arden::trimBlanks(name), arden::trimBlanks(changed))) continue;
        out[arden::toLowerAscii(name)] = joined(doc.entries(name));
    }
    return out;
}

// A section or key name the settings code accepts (cInifile refuses the others).
bool usableSection(std::string_view name) { return !arden::trimBlanks(name).empty() && arden::fitsOnOneLine(name); }
bool usableKey(std::string_view name) {
    std::string_view t = arden::trimBlanks(name);
    return !t.empty() && arden::fitsOnOneLine(name) && name.find('=') == std::string_view::npos && t.front() != ';' &&
           t.front() != '[';
}

// A value as it reads back: without blanks around it and without one pair of matching quotes.
std::string readBack(std::string_view value) {
    value = arden::trimBlanks(value);
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front()) {
        value = value.substr(1, value.size() - 2);
    }
    return std::string(value);
}

std::size_t countKey(const IniDocument& doc, std::string_view section, std::string_view key) {
    std::size_t n = 0;
    for (const std::string& k : doc.keys(section)) n += arden::equalsIgnoreCase(k, arden::trimBlanks(key));
    return n;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using arden::fuzz::expectEqual;
    using arden::fuzz::fail;
    FuzzedDataProvider input(data, size);
    const std::string section = input.ConsumeRandomLengthString(64);
    const std::string key = input.ConsumeRandomLengthString(64);
    const std::string value = input.ConsumeRandomLengthString(80);
    const int change = input.ConsumeIntegralInRange(0, 3);
    const std::string file = input.ConsumeRemainingBytesAsString();

    IniDocument doc(file);
    expectEqual("an unchanged file is not written back as it was read", file, doc.text());
    if (!usableSection(section) || !usableKey(key) || !arden::fitsOnOneLine(value)) return 0;

    const auto othersBefore = otherSections(doc, section);
    const std::size_t keysBefore = countKey(doc, section, key);
    switch (change) {
        case 0: doc.setValue(section, key, value); break;
        case 1: doc.removeKey(section, key); break;
        case 2: doc.removeSection(section); break;
        default: doc.replaceSection(section, {key + "=" + value}); break;
    }
    const IniDocument again(doc.text());
    switch (change) {
        case 0:
            expectEqual("a value set does not read back", readBack(value), again.value(section, key).value_or("<missing>"));
            break;
        case 1:
            if (keysBefore > 0 && countKey(again, section, key) != keysBefore - 1) {
                fail("removing a key did not remove exactly one", std::to_string(keysBefore - 1),
                     std::to_string(countKey(again, section, key)));
            }
            break;
        case 2:
            if (again.hasSection(section)) fail("a removed section is still there", "no section", section);
            break;
        default:
            expectEqual("a replaced section does not read back",
                        std::string(arden::trimBlanks(key)) + "=" + readBack(value) + "\n",
                        joined(again.entries(section)));
            break;
    }
    if (otherSections(again, section) != othersBefore) {
        fail("a change touched another section", doc.text(), file);
    }
    return 0;
}
