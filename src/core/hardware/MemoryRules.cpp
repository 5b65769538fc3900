#include "core/hardware/MemoryRules.h"

#include <charconv>
#include <string>

#include "core/support/TextUtil.h"

namespace arden {
namespace {

enum class Parsed { NotNumeric, TooLarge, Ok };

// A whole decimal number with an optional sign, blanks around it allowed.
Parsed parseWhole(std::string_view text, long long& value) {
    text = trimBlanks(text);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    if (text.empty()) return Parsed::NotNumeric;
    auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ptr != text.data() + text.size()) return Parsed::NotNumeric;
    if (ec == std::errc::result_out_of_range) return Parsed::TooLarge;
    if (ec != std::errc{}) return Parsed::NotNumeric;
    return Parsed::Ok;
}

Message warning(TextParts title, TextParts text) { return Message{MessageKind::Warning, std::move(title), std::move(text)}; }

// A number for a display box: non-numeric texts give nothing and no message; numbers outside
// [low, high] a warning naming the box and the allowed range.
DisplayValueCheck checkRange(std::string_view text, long long low, long long high, const std::string& what) {
    long long v = 0;
    Parsed p = parseWhole(text, v);
    if (p == Parsed::NotNumeric) return {};
    if (p == Parsed::Ok && v >= low && v <= high) return DisplayValueCheck{static_cast<int>(v), std::nullopt};
    return DisplayValueCheck{std::nullopt,
                             warning({TextPart::fromId(176)},
                                     {TextPart::fixed(what + " must be between " + std::to_string(low) + " and " +
                                                      std::to_string(high) + "; \"" + std::string(trimBlanks(text)) +
                                                      "\" was not stored")})};
}

}  // namespace

MemoryCheck checkMemorySize(std::string_view text, const MemoryRange& range) {
    if (trimBlanks(text).empty()) return {};
    long long v = 0;
    Parsed p = parseWhole(text, v);
    if (p == Parsed::NotNumeric) {
        return MemoryCheck{std::nullopt, false, warning({TextPart::fromId(176)}, {TextPart::fromId(177)})};
    }
    if (p == Parsed::TooLarge || v < range.minMb || v > range.maxMb) {
        return MemoryCheck{std::nullopt, false, warning({TextPart::fromId(178)}, {TextPart::fromId(179)})};
    }
    long long rounded = v - v % 4;
    return MemoryCheck{static_cast<int>(rounded), rounded != v, std::nullopt};
}

DisplayValueCheck checkVideoMemoryMb(std::string_view text) {
    DisplayValueCheck c = checkRange(text, 1, kMaxVideoMemoryMb, "Video RAM size (MB)");
    if (c.value) c.value = static_cast<int>(*c.value * kBytesPerMegabyte);
    return c;
}

DisplayValueCheck checkDisplayPixels(std::string_view text) { return checkRange(text, 1, 32767, "The maximum width and height (pixels)"); }

DisplayValueCheck checkMonitors(std::string_view text) { return checkRange(text, 1, 10, "The number of monitors"); }

DisplayValueCheck checkGraphicsMemoryMb(std::string_view text) {
    DisplayValueCheck c = checkRange(text, 1, 8192, "3D graphics memory (MB)");
    if (c.value) c.value = *c.value * kKilobytesPerMegabyte;
    return c;
}

int videoMemoryMb(long long bytes) { return static_cast<int>(bytes / kBytesPerMegabyte); }

}  // namespace arden
