// The string table as shipped: the four language blocks, look-ups without fall-back, and a
// table file that names every id once (a repeated id would silently replace a text).
#include <fstream>
#include <set>

#include "TestSupport.h"
#include "core/shell/GetText.h"

using arden::GetText;

TEST(StringTable, OtherLanguagesHoldOnlyTheLanguageChoice) {
    const std::set<int> translated = {1, 12, 61, 62, 63, 64, 65, 66};
    for (int offset : {500, 1000, 1500, 2000}) {
        for (int id = 1; id <= 358; ++id)
            EXPECT_EQ(GetText(id + offset).empty(), translated.count(id) == 0) << "id " << id << " at " << offset;
    }
    EXPECT_EQ(GetText(512) + GetText(1061) + GetText(1512) + GetText(2066), "WahlenLangueOpcionesItaliano");
    for (int id : {0, -1, 400, 1 << 30}) EXPECT_EQ(GetText(id), "") << id;
    arden::TextParts parts = {arden::TextPart::fromId(187), arden::TextPart::fixed("6"), arden::TextPart::fromId(12)};
    EXPECT_EQ(arden::resolveText(parts, 500), "6Wahlen") << "no English fall-back inside a language block";
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
