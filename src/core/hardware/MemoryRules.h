#pragma once
// Checks of the numeric boxes of the hardware pages: memory (txtMemSize) and the display's
// maximum width and height and video memory (txtMaxWidth, txtMaxHeight, txtVRamSize).
//
// The memory range of the chosen platform and version comes from the product tables; config
// builds it with memoryRange() in core/config/HardwareFigures.h.
#include <optional>
#include <string_view>

#include "core/support/Message.h"

namespace arden {

struct MemoryRange {
    int minMb = 4;
    int maxMb = 0;
    bool operator==(const MemoryRange&) const = default;
};

// The outcome of leaving txtMemSize with a text.
struct MemoryCheck {
    std::optional<int> megabytes;    // the value to store (already rounded); nothing when refused
    bool rounded = false;            // the box must show the rounded value
    std::optional<Message> refusal;  // warning to show; the stored value stays as it was
};

// An empty text: nothing to do (no value, no refusal).
// A text that is not a whole number (blanks around it allowed): "Invalid Entry" / "RAM size
// must be numeric" (ids 176/177).
// A number below range.minMb or above range.maxMb: "Invalid Memory Size" / "RAM size out of
// valid range for Selected Product/Version" (ids 178/179).
// Otherwise the value rounded down to a multiple of 4 MB ("258" -> 256).
MemoryCheck checkMemorySize(std::string_view text, const MemoryRange& range);

// Video memory is entered in megabytes and stored in bytes ("svga.vramSize" = MB x 1048576).
inline constexpr long long kBytesPerMegabyte = 1048576;
// The stored byte count must fit the 32-bit key, so at most 2047 MB.
inline constexpr int kMaxVideoMemoryMb = 2047;

// The outcome of leaving a display box with a text.
struct DisplayValueCheck {
    std::optional<int> value;        // the value to store (bytes for video memory)
    std::optional<Message> refusal;  // out-of-range warning; nothing changes
};

// txtVRamSize: a non-numeric (or empty) text is ignored without a message; 1 to 2047 MB is
// stored as bytes ("16" -> 16777216); other numbers are refused with a warning that says what
// is allowed.
DisplayValueCheck checkVideoMemoryMb(std::string_view text);

// txtMaxWidth / txtMaxHeight: a non-numeric text is ignored without a message; 1 to 32767
// pixels is stored; other numbers are refused with a warning that says what is allowed.
DisplayValueCheck checkDisplayPixels(std::string_view text);

// txtNumDisplays ("svga.numDisplays"): 1 to 10 monitors (ESXi's limit from hardware version 7;
// the hosted products' own limit is not documented and taken to be the same).
DisplayValueCheck checkMonitors(std::string_view text);
// txtGraphicsMemory: the hosted products' 3D memory, entered in MB and stored in KB
// ("svga.graphicsMemoryKB" = MB x 1024), 1 to 8192 MB (the 8 GB Workstation 17 writes; a higher
// limit is not confirmed).
DisplayValueCheck checkGraphicsMemoryMb(std::string_view text);
inline constexpr int kKilobytesPerMegabyte = 1024;

// The megabytes shown in txtVRamSize for a stored byte count (rounded down).
int videoMemoryMb(long long bytes);

}  // namespace arden
