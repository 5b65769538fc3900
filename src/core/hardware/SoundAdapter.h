#pragma once
// The sound adapter types a machine can be given (cboAudioDevice and the CLI's `sound`): which
// ".virtualDev" each writes and whether the Yamaha OPL3 synthesiser is switched on with it.
#include <optional>
#include <span>
#include <string_view>

#include "core/hardware/Device.h"

namespace arden {

struct SoundAdapterType {
    std::string_view name;        // the list entry, a fixed product name: "ES1371", "SB16", ...
    std::string_view cliName;     // the word the command line takes: "es1371", "sb16", "sb16-synth"
    std::string_view virtualDev;  // written as "sound.virtualDev"
    bool synth;                   // writes "sound.synth.operational" "TRUE"
    bool hdAudio = false;         // the later HD audio device, offered only where the product has
                                  // it (offeredSoundAdapters in core/config/DeviceFeatures.h)
};

// ES1371, SB16, SB16 + OPL3/Yamaha Synth, HD Audio, in list order.
std::span<const SoundAdapterType> soundAdapterTypes();

// The list position the stored settings stand for; nothing when ".virtualDev" is unset (the
// product picks its own default) or holds a value the list does not have.
std::optional<int> soundAdapterPosition(const DeviceSettings& sound);

// Stores the type at `position`: ".virtualDev", and ".synth.operational" "TRUE" for the
// synthesiser entry; the other two drop a stored synthesiser line. False when nothing changed.
bool setSoundAdapter(DeviceSettings& sound, int position);

// The position of a command-line word (any case), or nothing.
std::optional<int> soundAdapterFromCliName(std::string_view word);

}  // namespace arden
