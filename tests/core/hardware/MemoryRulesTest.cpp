// Memory, video memory and display sizes typed into the hardware pages.
#include "core/hardware/MemoryRules.h"

#include "core/config/HardwareFigures.h"
#include "core/shell/GetText.h"
#include "TestSupport.h"

using namespace arden;
using test::shown;

namespace {

const std::string kNotNumeric = "Invalid Entry: RAM size must be numeric";
const std::string kOutOfRange = "Invalid Memory Size: RAM size out of valid range for Selected Product/Version";

}  // namespace

TEST(MemorySize, RoundsDownAndRefusesWhatIsNotAllowed) {
    const MemoryRange ws55 = memoryRange(*productFigures(1, 4));
    struct Case { std::string_view text; std::optional<int> stored; bool rounded; std::string message; };
    const Case cases[] = {
        {"258", 256, true, ""},          {"256", 256, false, ""},         {" 1023 ", 1020, true, ""},
        {"4", 4, false, ""},             {"7", 4, true, ""},              {"3", std::nullopt, false, kOutOfRange},
        {"-4", std::nullopt, false, kOutOfRange}, {"99999999999999999999", std::nullopt, false, kOutOfRange},
        {"abc", std::nullopt, false, kNotNumeric}, {"256MB", std::nullopt, false, kNotNumeric},
        {"12.5", std::nullopt, false, kNotNumeric}, {"", std::nullopt, false, ""},
    };
    for (const Case& c : cases) {
        MemoryCheck r = checkMemorySize(c.text, ws55);
        EXPECT_EQ(r.megabytes, c.stored) << c.text;
        EXPECT_EQ(r.rounded, c.rounded) << c.text;
        EXPECT_EQ(shown(r.refusal), c.message) << c.text;
    }
}

TEST(MemorySize, TheMaximumIsThatOfThePlatformAndVersion) {
    // Workstation 3.x stops at 1024 MB; Workstation 5.5x at 3600 MB.
    const MemoryRange ws3 = memoryRange(*productFigures(1, 0));
    const MemoryRange ws55 = memoryRange(*productFigures(1, 4));
    EXPECT_EQ(checkMemorySize("1024", ws3).megabytes, 1024);
    EXPECT_EQ(shown(checkMemorySize("1028", ws3).refusal), kOutOfRange);
    EXPECT_EQ(checkMemorySize("3600", ws55).megabytes, 3600);
    EXPECT_EQ(shown(checkMemorySize("3603", ws55).refusal), kOutOfRange) << "above the maximum before rounding";
    // GSX Server 2.5x stops at 2048 MB.
    EXPECT_EQ(checkMemorySize("2048", memoryRange(*productFigures(0, 0))).megabytes, 2048);
    EXPECT_EQ(shown(checkMemorySize("2052", memoryRange(*productFigures(0, 0))).refusal), kOutOfRange);
}

TEST(DisplayValues, VideoMemoryIsEnteredInMegabytesAndStoredInBytes) {
    EXPECT_EQ(checkVideoMemoryMb("2047").value, 2146435072);
    EXPECT_EQ(videoMemoryMb(16777216), 16);
    for (std::string_view text : {"abc", "", "16 MB"})
        EXPECT_FALSE(checkVideoMemoryMb(text).value || checkVideoMemoryMb(text).refusal) << "ignored without a message";
    // Numbers the key cannot hold: refused, saying what is allowed.
    for (std::string_view text : {"0", "2048", "-1", "99999999999999999999"}) {
        DisplayValueCheck c = checkVideoMemoryMb(text);
        EXPECT_FALSE(c.value) << text;
        EXPECT_EQ(shown(c.refusal), "Invalid Entry: Video RAM size (MB) must be between 1 and 2047; \"" + std::string(text) +
                                        "\" was not stored");
    }
    EXPECT_EQ(checkDisplayPixels("1024").value, 1024);
    EXPECT_FALSE(checkDisplayPixels("wide").refusal || checkDisplayPixels("wide").value);
    EXPECT_TRUE(checkDisplayPixels("0").refusal && checkDisplayPixels("40000").refusal);
}
