#include "core/shell/GetText.h"

#include <charconv>
#include <cstddef>
#include <string_view>
#include <unordered_map>

extern const unsigned char arden_string_table[];
extern const std::size_t arden_string_table_size;

namespace arden {
namespace {

// resources/strings.txt: one text per line, "<id><TAB><text>"; lines starting with "#" and
// empty lines are comments. Inside a text, "\n", "\r", "\t" and "\\" stand for line feed,
// carriage return, tab and backslash; everything else is taken byte for byte, blanks included.
std::string unescape(std::string_view raw) {
    std::string out;
    out.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        char c = raw[i];
        if (c == '\\' && i + 1 < raw.size()) {
            char n = raw[i + 1];
            if (n == 'n') { out += '\n'; ++i; continue; }
            if (n == 'r') { out += '\r'; ++i; continue; }
            if (n == 't') { out += '\t'; ++i; continue; }
            if (n == '\\') { out += '\\'; ++i; continue; }
        }
        out += c;
    }
    return out;
}

std::unordered_map<int, std::string> parseTable() {
    std::unordered_map<int, std::string> table;
    std::string_view all(reinterpret_cast<const char*>(arden_string_table), arden_string_table_size);
    while (!all.empty()) {
        std::size_t eol = all.find('\n');
        std::string_view line = all.substr(0, eol);
        all = eol == std::string_view::npos ? std::string_view{} : all.substr(eol + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.empty() || line.front() == '#') continue;
        std::size_t tab = line.find('\t');
        if (tab == std::string_view::npos) continue;
        int id = 0;
        auto [ptr, ec] = std::from_chars(line.data(), line.data() + tab, id);
        if (ec != std::errc{} || ptr != line.data() + tab) continue;
        table[id] = unescape(line.substr(tab + 1));
    }
    return table;
}

const std::unordered_map<int, std::string>& stringTable() {
    static const std::unordered_map<int, std::string> table = parseTable();
    return table;
}

}  // namespace

const std::string& GetText(int id) {
    static const std::string empty;
    const auto& table = stringTable();
    auto it = table.find(id);
    return it == table.end() ? empty : it->second;
}

std::string resolveText(const TextParts& parts, int languageOffset) {
    std::string out;
    for (const TextPart& part : parts) {
        out += part.id > 0 ? GetText(part.id + languageOffset) : part.literal;
    }
    return out;
}

}  // namespace arden
