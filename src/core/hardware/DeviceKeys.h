#pragma once
// The .vmx keys of each device kind, in the order the writer puts them. One table serves the
// loader (which sub-keys a device takes, how a value is read) and the writer (which keys it
// writes and how they are spelled). A key is the device's prefix ("ethernet0", "ide1:0",
// "sound") followed by the suffix (".present"); the display's keys are whole keys with an
// empty prefix.
#include <span>
#include <string>
#include <string_view>

#include "core/hardware/DeviceTypes.h"

namespace arden {

enum class ValueKind {
    Flag,    // "TRUE"/"FALSE"; read as true for "true", "yes", "1", "on" (any case)
    Text,    // any text, kept as read
    Number,  // a 32-bit signed integer
    Choice,  // one word of a fixed list, compared without regard to case
};

struct DeviceKey {
    std::string_view suffix;                     // as written, e.g. ".startConnected"
    ValueKind kind;
    std::span<const std::string_view> choices;   // Choice only, in the spelling written
};

// The keys of a device type, in writing order. CPU and memory have none of their own:
// their values are the whole-machine keys "numvcpus", "paevm" and "memsize".
std::span<const DeviceKey> deviceKeys(DeviceType type);

// The entry of `type` whose suffix equals `suffix` without regard to case, or nullptr.
const DeviceKey* findDeviceKey(DeviceType type, std::string_view suffix);

// Normalises a value read from a file for a key: flags become "TRUE"/"FALSE", choices their
// written spelling, numbers their decimal text. Returns false when the value does not fit the
// key (an unknown word, a non-numeric number); the caller keeps such a line as it stands.
bool normaliseDeviceValue(const DeviceKey& key, std::string_view value, std::string& out);

// Reads a flag text as VMware does: "true", "yes", "on", "1" are true; "false", "no", "off",
// "0" are false (any case). Other texts are not flags.
bool parseFlag(std::string_view text, bool& out);

// Parses a whole text as a 32-bit signed decimal integer (an optional sign, digits only).
bool parseInt32(std::string_view text, int& out);

}  // namespace arden
