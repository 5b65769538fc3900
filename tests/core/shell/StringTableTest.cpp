// The string table as shipped: the English block, the four language blocks and the lookup rules.
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>

#include "TestSupport.h"
#include "core/shell/GetText.h"

namespace {

using arden::GetText;

// Ids that the editor, the main window and the dialogs put on their controls; each must exist.
bool isCaptionId(int id) {
    const int ranges[][2] = {{1, 30},   {50, 66},   {80, 82},   {90, 110},  {115, 121},
                             {125, 161}, {170, 192}, {200, 277}, {290, 358}};
    for (const auto& r : ranges) {
        if (id >= r[0] && id <= r[1]) return true;
    }
    return false;
}

TEST(StringTable, EveryIdOfTheEnglishGroupsHasAText) {
    for (int id = 1; id <= 358; ++id) {
        if (isCaptionId(id)) {
            EXPECT_FALSE(GetText(id).empty()) << "id " << id;
        }
    }
}

TEST(StringTable, TextsKeepTheirBlanksAndSpellings) {
    EXPECT_EQ(GetText(1), "Arden Forge");
    EXPECT_EQ(GetText(30),
              "You currently have outstanding changes.  Do you  really want to exit without saving?  "
              "If you want to continue anyway, click Yes.  If you want to go back and Save, click No.");
    EXPECT_EQ(GetText(58), "VMWare Application");
    EXPECT_EQ(GetText(93), "The maximum number of");  // no blank: the type name follows directly
    EXPECT_EQ(GetText(155), "Warning - Disk size large for IDE controller - do you want to contunue?");
    EXPECT_EQ(GetText(187), "You currently have ");
    EXPECT_EQ(GetText(188).front(), ' ');
    EXPECT_EQ(GetText(269),
              "These settings override the global values specified in  Edit > Preferences > Priority.");
}

TEST(StringTable, DeviceTypeNamesFollowTheTypeNumbers) {
    EXPECT_EQ(GetText(95 + 0), "CPU");
    EXPECT_EQ(GetText(95 + 10), "Hard Disk");
    EXPECT_EQ(GetText(95 + 11), "DVD/CD-ROM Drive");
    EXPECT_EQ(GetText(95 + 14), "Mouse");
    EXPECT_EQ(GetText(110), "Other");
}

TEST(StringTable, OtherLanguagesHoldOnlyTheLanguageChoice) {
    const std::set<int> translated = {1, 12, 61, 62, 63, 64, 65, 66};
    for (int offset : {500, 1000, 1500, 2000}) {
        for (int id = 1; id <= 358; ++id) {
            EXPECT_EQ(GetText(id + offset).empty(), translated.count(id) == 0)
                << "id " << id << " at offset " << offset;
        }
    }
    EXPECT_EQ(GetText(512), "Wahlen");
    EXPECT_EQ(GetText(561), "Sprache");
    EXPECT_EQ(GetText(1012), "Options");
    EXPECT_EQ(GetText(1061), "Langue");
    EXPECT_EQ(GetText(1512), "Opciones");
    EXPECT_EQ(GetText(2061), "Lingua");
    EXPECT_EQ(GetText(2066), "Italiano");
}

TEST(StringTable, MissingIdsAreEmptyWithoutFallBack) {
    EXPECT_TRUE(GetText(400).empty());
    EXPECT_TRUE(GetText(400 + 500).empty());
    EXPECT_TRUE(GetText(3 + 500).empty());  // "Home" has no German text
    EXPECT_TRUE(GetText(0).empty());
    EXPECT_TRUE(GetText(-1).empty());
    EXPECT_TRUE(GetText(1 << 30).empty());
}

TEST(StringTable, ResolveJoinsIdsAndFixedTextsWithTheOffset) {
    arden::TextParts parts = {arden::TextPart::fromId(187), arden::TextPart::fixed("6"),
                              arden::TextPart::fromId(188)};
    EXPECT_EQ(arden::resolveText(parts, 0),
              "You currently have 6 virtual PCI devices enabled (SCSI controllers, Network adapters, "
              "Sound adapters).  VMware will only accept 5.  Please go back and Disable some devices.");
    EXPECT_EQ(arden::resolveText(parts, 500), "6");
}

// The table file itself: a repeated id would silently replace an earlier text.
TEST(StringTable, TheFileNamesEveryIdOnce) {
    std::ifstream in(std::string(ARDEN_SOURCE_DIR) + "/resources/strings.txt");
    ASSERT_TRUE(in) << "resources/strings.txt not found";
    std::set<int> seen;
    std::string line;
    int lineNo = 0;
    while (std::getline(in, line)) {
        ++lineNo;
        if (line.empty() || line[0] == '#') continue;
        auto tab = line.find('\t');
        ASSERT_NE(tab, std::string::npos) << "line " << lineNo << " has no tab";
        int id = std::stoi(line.substr(0, tab));
        EXPECT_TRUE(seen.insert(id).second) << "id " << id << " twice (line " << lineNo << ")";
        EXPECT_EQ(line.find('\r'), std::string::npos) << "line " << lineNo;
    }
}

}  // namespace
