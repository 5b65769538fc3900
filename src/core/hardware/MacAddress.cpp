#include "core/hardware/MacAddress.h"

#include <cstdio>

#include "core/hardware/DeviceKeys.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

// One row per mode: how it is written, its fixed octets, its range text, its message ids and
// the largest fourth octet it allows.
struct ModeRow {
    std::string_view value;
    std::string_view prefix;
    std::string_view range;
    std::string_view addressKey;
    int titleId;
    int textId;
    char highestFourthDigit;  // first digit of the fourth octet
};

constexpr ModeRow kModes[] = {
    {"generated", "00:0C:29:", " 00:0C:29:xx:yy:zz", ".generatedAddress", 182, 183, 'F'},
    {"static", "00:50:56:", " 00:50:56:00:00:00-00:50:56:3F:FF:FF", ".address", 180, 181, '3'},
};

const ModeRow& row(MacMode mode) { return kModes[mode == MacMode::Static ? 1 : 0]; }

constexpr char upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr bool isHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); }

// The octet a fixed position must hold ("00", "0C"/"50", "29"/"56").
std::string_view fixedOctet(MacMode mode, int position) { return row(mode).prefix.substr(static_cast<std::size_t>(position) * 3, 2); }

std::string macFromOctets(unsigned a, unsigned b, unsigned c, std::string_view prefix) {
    char buf[18];
    std::snprintf(buf, sizeof buf, "%.9s%02X:%02X:%02X", prefix.data(), a & 0xFFu, b & 0xFFu, c & 0xFFu);
    return buf;
}

}  // namespace

std::string_view macModeValue(MacMode mode) { return row(mode).value; }

std::optional<MacMode> macModeFromValue(std::string_view value) {
    for (MacMode m : {MacMode::Generated, MacMode::Static}) {
        if (equalsIgnoreCase(value, row(m).value)) return m;
    }
    return std::nullopt;
}

std::string_view macPrefix(MacMode mode) { return row(mode).prefix; }

std::string_view macRangeText(MacMode mode) { return row(mode).range; }

MacBoxes macBoxesForMode(MacMode mode, std::string_view storedAddress) {
    MacBoxes boxes;
    const std::string_view prefix = macPrefix(mode);
    if (storedAddress.size() < prefix.size() || !equalsIgnoreCase(storedAddress.substr(0, prefix.size()), prefix))
        return boxes;
    for (int i = 0; i < 6; ++i) {
        const std::size_t at = static_cast<std::size_t>(i) * 3;
        if (at < storedAddress.size()) boxes[static_cast<std::size_t>(i)] = std::string(storedAddress.substr(at, 2));
    }
    return boxes;
}

bool checkMacOctet(MacMode mode, int position, std::string_view text, std::string& accepted) {
    if (text.empty()) {
        accepted.clear();
        return true;
    }
    if (text.size() != 2 || position < 0 || position > 5) return false;
    const std::string octet{upper(text[0]), upper(text[1])};
    bool ok = false;
    if (position < 3) ok = octet == fixedOctet(mode, position);
    else if (position == 3) ok = octet[0] >= '0' && octet[0] <= row(mode).highestFourthDigit && isHexDigit(octet[0]) && isHexDigit(octet[1]);
    else ok = isHexDigit(octet[0]) && isHexDigit(octet[1]);
    if (ok) accepted = octet;
    return ok;
}

std::optional<std::string> joinMacBoxes(const MacBoxes& boxes) {
    std::string joined;
    for (const std::string& box : boxes) {
        if (box.empty()) return std::nullopt;
        joined += box + ":";
    }
    joined.pop_back();
    return joined;
}

bool checkMacAddress(MacMode mode, std::string_view text, std::string& accepted) {
    if (text.size() != 17) return false;
    MacBoxes boxes;
    for (int i = 0; i < 6; ++i) {
        const std::size_t at = static_cast<std::size_t>(i) * 3;
        if (i < 5 && text[at + 2] != ':') return false;
        std::string_view octet = text.substr(at, 2);
        // An empty octet cannot be written inside a 17-character address, so every box is full.
        if (!checkMacOctet(mode, i, octet, boxes[static_cast<std::size_t>(i)])) return false;
    }
    accepted = *joinMacBoxes(boxes);
    return true;
}

Message macRangeMessage(MacMode mode) {
    const ModeRow& r = row(mode);
    return Message{MessageKind::Information, {TextPart::fromId(r.titleId)},
                   {TextPart::fromId(r.textId), TextPart::fixed(std::string(r.range))}};
}

OffsetCheck checkMacOffset(std::string_view text) {
    constexpr int kTitleId = 184;  // "Invalid Address Offset"
    std::string_view t = trimBlanks(text);
    std::string_view digits = t;
    if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) digits.remove_prefix(1);
    const bool numeric = !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
    if (!numeric) return {std::nullopt, Message{MessageKind::Warning, {TextPart::fromId(kTitleId)}, {TextPart::fromId(185)}}};
    int value = 0;
    if (!parseInt32(t, value)) {
        return {std::nullopt,
                Message{MessageKind::Warning, {TextPart::fromId(kTitleId)},
                        {TextPart::fixed("The offset " + std::string(t) +
                                         " is too large: it must lie between -2147483648 and 2147483647.")}}};
    }
    return {value, std::nullopt};
}

std::string generatedMacAddress(std::uint32_t seed) {
    return macFromOctets(seed >> 16, seed >> 8, seed, macPrefix(MacMode::Generated));
}

std::string staticMacAddress(std::uint32_t seed) {
    return macFromOctets((seed >> 16) & 0x3Fu, seed >> 8, seed, macPrefix(MacMode::Static));
}

std::string_view macAddressKey(MacMode mode) { return row(mode).addressKey; }

MacMode adapterMacMode(const DeviceSettings& nic) {
    return macModeFromValue(nic.text(".addressType")).value_or(MacMode::Generated);
}

std::string storedMacAddress(const DeviceSettings& nic, MacMode mode) {
    if (auto own = nic.get(macAddressKey(mode)); own && !own->empty()) return *own;
    return nic.text(macAddressKey(adapterMacMode(nic)));
}

}  // namespace arden
