#include "core/hardware/SoundAdapter.h"

#include <array>

#include "core/support/TextUtil.h"

namespace arden {
namespace {

constexpr std::string_view kVirtualDev = ".virtualDev";
constexpr std::string_view kSynth = ".synth.operational";

constexpr std::array<SoundAdapterType, 4> kTypes{{{"ES1371", "es1371", "es1371", false},
                                                  {"SB16", "sb16", "sb16", false},
                                                  {"SB16 + OPL3/Yamaha Synth", "sb16-synth", "sb16", true},
                                                  {"HD Audio", "hdaudio", "hdaudio", false, true}}};

}  // namespace

std::span<const SoundAdapterType> soundAdapterTypes() { return kTypes; }

std::optional<int> soundAdapterPosition(const DeviceSettings& sound) {
    const auto dev = sound.get(kVirtualDev);
    if (!dev) return std::nullopt;
    const bool synth = sound.flag(kSynth, false);
    for (std::size_t i = 0; i < kTypes.size(); ++i) {
        // A synthesiser flag on an ES1371 is ignored by the products: it stays an ES1371.
        if (equalsIgnoreCase(kTypes[i].virtualDev, *dev) && (kTypes[i].synth == synth || i == 0))
            return static_cast<int>(i);
    }
    return std::nullopt;
}

bool setSoundAdapter(DeviceSettings& sound, int position) {
    if (position < 0 || static_cast<std::size_t>(position) >= kTypes.size()) return false;
    if (soundAdapterPosition(sound) == position) return false;
    const SoundAdapterType& t = kTypes[static_cast<std::size_t>(position)];
    sound.set(kVirtualDev, std::string(t.virtualDev));
    if (t.synth) sound.setFlag(kSynth, true);
    else sound.unset(kSynth);
    return true;
}

std::optional<int> soundAdapterFromCliName(std::string_view word) {
    for (std::size_t i = 0; i < kTypes.size(); ++i) {
        if (equalsIgnoreCase(kTypes[i].cliName, word)) return static_cast<int>(i);
    }
    return std::nullopt;
}

}  // namespace arden
