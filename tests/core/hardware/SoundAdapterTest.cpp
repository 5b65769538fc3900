// The sound adapter types: what each writes, how stored settings read back, and that choosing
// another type leaves no synthesiser line behind.
#include <gtest/gtest.h>

#include "core/hardware/SoundAdapter.h"

namespace arden {
namespace {

DeviceSettings stored(std::initializer_list<std::pair<const char*, const char*>> values) {
    DeviceSettings s;
    for (const auto& [k, v] : values) s.set(k, v);
    return s;
}

TEST(SoundAdapter, EachTypeWritesItsValuesAndReadsBack) {
    const char* expected[][2] = {{"es1371", nullptr}, {"sb16", nullptr}, {"sb16", "TRUE"}};
    for (int position = 0; position < 3; ++position) {
        DeviceSettings s = stored({{".virtualDev", "sb16"}, {".synth.operational", "TRUE"}});
        const bool changed = setSoundAdapter(s, position);
        EXPECT_EQ(changed, position != 2) << position;
        EXPECT_EQ(s.text(".virtualDev"), expected[position][0]);
        EXPECT_EQ(s.get(".synth.operational"),
                  expected[position][1] ? std::optional<std::string>(expected[position][1]) : std::nullopt);
        EXPECT_EQ(soundAdapterPosition(s), position);
    }
    EXPECT_EQ(soundAdapterPosition(stored({{".virtualDev", "SB16"}, {".synth.operational", "false"}})), 1);
    EXPECT_EQ(soundAdapterPosition(stored({{".virtualDev", "HDAudio"}})), 3);
    EXPECT_EQ(soundAdapterPosition(stored({{".virtualDev", "ac97"}})), std::nullopt);
    EXPECT_EQ(soundAdapterPosition(stored({})), std::nullopt);
    EXPECT_EQ(soundAdapterFromCliName("SB16-Synth"), 2);
    EXPECT_EQ(soundAdapterFromCliName("sb"), std::nullopt);
}

}  // namespace
}  // namespace arden
