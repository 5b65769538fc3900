// The string table as shipped: five complete language blocks, look-ups without fall-back, the
// texts the program joins to numbers, paths and other texts, and a table file that names every
// id once (a repeated id would silently replace a text).
#include <fstream>
#include <map>
#include <set>
#include <string_view>

#include "TestSupport.h"
#include "core/shell/GetText.h"

using arden::GetText;

namespace {

struct Language {
    const char* code;
    int offset;
};
constexpr Language kLanguages[] = {{"de", 500}, {"fr", 1000}, {"es", 1500}, {"it", 2000}};

// The English block as the table file holds it, so that a text added to it later must be
// translated too.
std::map<int, std::string> englishBlock() {
    std::map<int, std::string> english;
    std::ifstream in(std::string(ARDEN_SOURCE_DIR) + "/resources/strings.txt");
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#' || line.find('\t') == std::string::npos) continue;
        const int id = std::stoi(line.substr(0, line.find('\t')));
        if (id > 0 && id < 500) english[id] = line.substr(line.find('\t') + 1);
    }
    return english;
}

// Texts a language writes as English does: names of products and systems, technical terms and
// units, and words the language shares with English. Every other translated text differs.
struct SameAsEnglish {
    int id;
    std::string_view languages;
};
constexpr SameAsEnglish kSameAsEnglish[] = {
    // "Arden Forge", the products and the guest families
    {1, "de fr es it"}, {213, "de fr es it"}, {214, "de fr es it"}, {215, "de fr es it"}, {216, "de fr es it"},
    {359, "de fr es it"}, {360, "de fr es it"},
    {220, "de fr es it"}, {221, "de fr es it"}, {222, "de fr es it"}, {223, "de fr es it"},
    // technical terms, buses, adapters and units
    {8, "de fr es it"}, {95, "de fr es it"}, {130, "de fr es it"}, {131, "de fr es it"}, {132, "de fr es it"},
    {292, "de fr es it"}, {293, "de es it"}, {324, "de fr es it"}, {325, "de fr es it"},
    {408, "de fr es it"}, {409, "de fr es it"},
    // words the language shares with English
    {3, "it"}, {6, "it"}, {12, "fr"}, {50, "de fr it"}, {52, "es"}, {81, "de fr"}, {109, "it"}, {117, "de"},
    {129, "de"}, {200, "de es it"}, {217, "de fr"}, {228, "de fr"}, {249, "de"}, {265, "de es"}, {310, "de it"},
    {311, "de fr it"}, {314, "fr"}, {355, "fr"},
    // firmware names
    {440, "de es it"}, {441, "de fr es it"}, {442, "de fr es it"},
};

bool maySpellAsEnglish(int id, std::string_view language) {
    for (const SameAsEnglish& s : kSameAsEnglish)
        if (s.id == id) return s.languages.find(language) != std::string_view::npos;
    return false;
}

bool startsWithBlank(const std::string& s) { return !s.empty() && s.front() == ' '; }
bool endsWithBlank(const std::string& s) { return !s.empty() && s.back() == ' '; }

}  // namespace

TEST(StringTable, EveryLanguageHoldsEveryEnglishText) {
    const std::map<int, std::string> english = englishBlock();
    ASSERT_GE(english.size(), 285u);
    for (const auto& [id, text] : english) {
        ASSERT_EQ(GetText(id), text);
        for (const Language& language : kLanguages) {
            const std::string& translated = GetText(id + language.offset);
            EXPECT_FALSE(translated.empty()) << language.code << " lacks " << id << " \"" << text << "\"";
            if (translated == text) {
                EXPECT_TRUE(maySpellAsEnglish(id, language.code))
                    << language.code << " " << id + language.offset << " is still English: \"" << text << "\"";
            }
        }
    }
    // A few texts as a German, French, Spanish and Italian user reads them.
    EXPECT_EQ(GetText(512) + "|" + GetText(503) + "|" + GetText(745), "Wahlen|Startseite|Freigegebene Ordner");
    EXPECT_EQ(GetText(1105) + "|" + GetText(1249) + "|" + GetText(1061), "Disque dur|Instantanés|Langue");
    EXPECT_EQ(GetText(1512) + "|" + GetText(1757) + "|" + GetText(1601), "Opciones|Aislamiento del invitado|Adaptador de red");
    EXPECT_EQ(GetText(2066) + "|" + GetText(2218) + "|" + GetText(2323), "Italiano|Sistema operativo guest|Nodo del dispositivo virtuale");
}

TEST(StringTable, LookUpsHaveNoFallBack) {
    for (int id : {0, -1, 499, 999, 1 << 30}) EXPECT_EQ(GetText(id), "") << id;
    const arden::TextParts parts = {arden::TextPart::fromId(187), arden::TextPart::fixed("6"), arden::TextPart::fromId(1)};
    EXPECT_EQ(arden::resolveText(parts, 500), "Derzeit sind 6Arden Forge");
    EXPECT_EQ(arden::resolveText(parts, 2500), "6") << "an offset without a block shows no English";
}

// Texts the program follows or precedes with a number, a path, an address range, a file
// pattern, "..." or another text keep the blanks of the English text at that end, so that the
// joined line reads right in every language: "You currently have " + 6 + " virtual PCI ...".
TEST(StringTable, JoinedTextsKeepTheirBlanks) {
    ASSERT_EQ(GetText(187), "You currently have ");
    ASSERT_EQ(GetText(188).substr(0, 9), " virtual ");
    const int joined[] = {
        187, 188,                 // the number of enabled PCI devices between them
        181, 183,                 // followed by the address range, which brings its own blank
        92,                       // followed by " " and a device type name
        29,                       // followed by " - " and the tab's caption
        28, 58, 301, 307, 308, 338, 349,  // followed by " (*.vmx)" and the other file patterns
        150, 151, 160, 175,       // followed by " (detail)" when the disk code has one
        296, 80, 121,             // joined by ", " in the shared-folder attributes
        205, 305, 329, 174,       // followed by "..." on a button
        293,                      // preceded by the memory range "4 - 3600 "
        26,                       // the name of a new machine
    };
    for (int id : joined) {
        for (const Language& language : kLanguages) {
            const std::string& t = GetText(id + language.offset);
            EXPECT_EQ(startsWithBlank(t), startsWithBlank(GetText(id))) << language.code << " " << id << " \"" << t << "\"";
            EXPECT_EQ(endsWithBlank(t), endsWithBlank(GetText(id))) << language.code << " " << id << " \"" << t << "\"";
        }
    }
}

TEST(StringTable, TheFileNamesEveryIdOnce) {
    std::ifstream in(std::string(ARDEN_SOURCE_DIR) + "/resources/strings.txt");
    ASSERT_TRUE(in);
    std::set<int> seen;
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        ASSERT_NE(line.find('\t'), std::string::npos) << line;
        EXPECT_TRUE(seen.insert(std::stoi(line.substr(0, line.find('\t')))).second) << line;
        EXPECT_EQ(line.find('\r'), std::string::npos) << line;
    }
}
