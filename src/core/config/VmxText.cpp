#include "core/config/VmxText.h"

#include <string>

#include "core/support/TextUtil.h"

#ifndef ARDEN_VERSION
#define ARDEN_VERSION "1.0.0"
#endif

namespace arden::vmx {
namespace {

constexpr FixedKey kClusterKeys[] = {
    {"disk.locking", "FALSE"},
    {"diskLib.dataCacheMaxSize", "0"},
    {"diskLib.dataCacheMaxReadAheadSize", "0"},
    {"diskLib.dataCacheMinReadAheadSize", "0"},
    {"diskLib.dataCachePageSize", "4096"},
    {"diskLib.maxUnsyncedWrites", "0"},
    {"scsi0:0.sharedBus", "virtual"},
    {"scsi0:0.mode", "independent-persistent"},
    {"scsi0:0.deviceType", "plainDisk"},
    {"scsi0:1.sharedBus", "virtual"},
    {"scsi0:1.mode", "independent-persistent"},
    {"scsi0:1.deviceType", "plainDisk"},
};

constexpr std::string_view kProgramTitle = "Arden Forge";

}  // namespace

std::string_view titleLine() {
    static const std::string line = std::string(kTitlePrefix) + std::string(kProgramTitle) + " " + ARDEN_VERSION;
    return line;
}

std::span<const FixedKey> clusterKeys() { return kClusterKeys; }

namespace {
constexpr std::string_view kOwnValueEnd = "\" (the disk's own, while clustering is off)";
}  // namespace

std::string ownValueComment(std::string_view key, std::string_view value) {
    return "# " + std::string(key) + " = \"" + escapeValue(value) + std::string(kOwnValueEnd);
}

bool parseOwnValueComment(std::string_view line, std::string& key, std::string& value) {
    line = trimBlanks(line);
    if (!line.starts_with("# ") || !line.ends_with(kOwnValueEnd)) return false;
    line.remove_prefix(2);
    line.remove_suffix(kOwnValueEnd.size());
    const std::size_t eq = line.find(" = \"");
    if (eq == std::string_view::npos || !line.starts_with("scsi0:")) return false;
    key = toLowerAscii(line.substr(0, eq));
    value = unescapeValue(line.substr(eq + 4));
    return true;
}

bool isOwnBannerLine(std::string_view line) {
    line = trimBlanks(line);
    if (line == kRule || line == kShortRule || line == kGeneratedBy || line == kOtherParamsBanner ||
        line == kEndBanner)
        return true;
    if (line.substr(0, kTitlePrefix.size()) != kTitlePrefix) return false;
    std::string_view rest = line.substr(kTitlePrefix.size());
    // A section line: seven "#", a blank, the section name and a run of "#".
    if (!rest.empty() && rest.front() != '#' && rest.back() == '#' && rest.find(" #") != std::string_view::npos)
        return true;
    // The title line of any version of the program.
    return rest.substr(0, kProgramTitle.size()) == kProgramTitle;
}

namespace {

bool needsEscape(unsigned char c) { return (c < 0x20 && c != '\t') || c == '"' || c == '|' || c == 0x7F; }

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    c = asciiLower(c);
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

std::string escapeValue(std::string_view value) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(value.size());
    for (char ch : value) {
        auto c = static_cast<unsigned char>(ch);
        if (!needsEscape(c)) {
            out += ch;
            continue;
        }
        out += '|';
        out += kHex[c >> 4];
        out += kHex[c & 0x0F];
    }
    return out;
}

std::string unescapeValue(std::string_view value) {
    std::string out;
    out.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '|' && i + 2 < value.size() && hexDigit(value[i + 1]) >= 0 && hexDigit(value[i + 2]) >= 0) {
            out += static_cast<char>(hexDigit(value[i + 1]) * 16 + hexDigit(value[i + 2]));
            i += 2;
        } else {
            out += value[i];
        }
    }
    return out;
}

}  // namespace arden::vmx
