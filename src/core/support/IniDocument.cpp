#include "core/support/IniDocument.h"

#include <algorithm>
#include <unordered_map>

#include "core/support/TextUtil.h"

namespace arden {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// "[name]" with blanks allowed before "[" and around the name; the last "]" closes it.
std::optional<std::string_view> headerName(std::string_view line) {
    line = trimBlanks(line);
    if (line.empty() || line.front() != '[') return std::nullopt;
    std::size_t close = line.rfind(']');
    if (close == 0 || close == std::string_view::npos) return std::nullopt;
    return trimBlanks(line.substr(1, close - 1));
}

struct Entry {
    std::string_view name;
    std::string_view value;
};

// "name = value"; comments, blank lines and lines without "=" or without a name are no entry.
std::optional<Entry> parseEntry(std::string_view line) {
    line = trimBlanks(line);
    if (line.empty() || line.front() == ';' || line.front() == '[') return std::nullopt;
    std::size_t eq = line.find('=');
    if (eq == std::string_view::npos) return std::nullopt;
    Entry e{trimBlanks(line.substr(0, eq)), trimBlanks(line.substr(eq + 1))};
    if (e.name.empty()) return std::nullopt;
    if (e.value.size() >= 2 && (e.value.front() == '"' || e.value.front() == '\'') &&
        e.value.back() == e.value.front()) {
        e.value = e.value.substr(1, e.value.size() - 2);
    }
    return e;
}

}  // namespace

bool fitsOnOneLine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

IniDocument::IniDocument(std::string_view bytes) {
    lines_.reserve(static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1);
    std::size_t pos = 0;
    while (pos < bytes.size()) {
        std::size_t nl = bytes.find('\n', pos);
        Line line;
        if (nl == std::string_view::npos) {
            line.text = std::string(bytes.substr(pos));
            pos = bytes.size();
        } else {
            std::size_t stop = nl;
            if (stop > pos && bytes[stop - 1] == '\r') --stop;
            line.text = std::string(bytes.substr(pos, stop - pos));
            line.end = std::string(bytes.substr(stop, nl + 1 - stop));
            pos = nl + 1;
        }
        lines_.push_back(std::move(line));
    }
}

std::string IniDocument::text() const {
    std::string out;
    for (const Line& l : lines_) {
        out += l.text;
        out += l.end;
    }
    return out;
}

const std::string& IniDocument::newline() const {
    static const std::string kWindows = "\r\n";
    for (const Line& l : lines_) {
        if (!l.end.empty()) return l.end;
    }
    return kWindows;
}

// A byte-order mark only hides the first line's header from the parser; it stays in the text.
static std::string_view parseView(const std::string& text, std::size_t index) {
    std::string_view v(text);
    if (index == 0 && v.substr(0, kByteOrderMark.size()) == kByteOrderMark) v.remove_prefix(kByteOrderMark.size());
    return v;
}

std::vector<std::string> IniDocument::sectionHeaders() const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (auto name = headerName(parseView(lines_[i].text, i))) names.emplace_back(*name);
    }
    return names;
}

std::vector<std::string> IniDocument::sectionNames() const {
    std::vector<std::string> names;
    for (std::string& header : sectionHeaders()) {
        bool seen = false;
        for (const std::string& n : names) seen = seen || equalsIgnoreCase(n, header);
        if (!seen) names.push_back(std::move(header));
    }
    return names;
}

bool IniDocument::hasSection(std::string_view section) const { return findSection(section).has_value(); }

std::optional<IniDocument::Range> IniDocument::findSection(std::string_view section) const {
    section = trimBlanks(section);
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        auto name = headerName(parseView(lines_[i].text, i));
        if (!name || !equalsIgnoreCase(*name, section)) continue;
        std::size_t end = i + 1;
        while (end < lines_.size() && !headerName(lines_[end].text)) ++end;
        return Range{i, end};
    }
    return std::nullopt;
}

std::optional<std::size_t> IniDocument::findKey(const Range& range, std::string_view key) const {
    key = trimBlanks(key);
    for (std::size_t i = range.header + 1; i < range.end; ++i) {
        auto e = parseEntry(lines_[i].text);
        if (e && equalsIgnoreCase(e->name, key)) return i;
    }
    return std::nullopt;
}

std::vector<std::string> IniDocument::keys(std::string_view section) const {
    std::vector<std::string> names;
    if (auto range = findSection(section)) {
        for (std::size_t i = range->header + 1; i < range->end; ++i) {
            if (auto e = parseEntry(lines_[i].text)) names.emplace_back(e->name);
        }
    }
    return names;
}

std::optional<std::string> IniDocument::value(std::string_view section, std::string_view key) const {
    auto range = findSection(section);
    if (!range) return std::nullopt;
    auto at = findKey(*range, key);
    if (!at) return std::nullopt;
    return std::string(parseEntry(lines_[*at].text)->value);
}

std::vector<std::string> IniDocument::entries(std::string_view section) const {
    std::vector<std::string> out;
    if (auto range = findSection(section)) {
        for (std::size_t i = range->header + 1; i < range->end; ++i) {
            if (auto e = parseEntry(lines_[i].text)) out.push_back(std::string(e->name) + "=" + std::string(e->value));
        }
    }
    return out;
}

namespace {

// Key names compared as the look-ups compare them: without regard to ASCII case.
struct FoldedHash {
    std::size_t operator()(std::string_view s) const noexcept {
        std::size_t h = 1469598103934665603ull;  // FNV-1a over the folded bytes
        for (char c : s) h = (h ^ static_cast<unsigned char>(asciiLower(c))) * 1099511628211ull;
        return h;
    }
};
struct FoldedEqual {
    bool operator()(std::string_view a, std::string_view b) const noexcept { return equalsIgnoreCase(a, b); }
};

}  // namespace

void IniDocument::visitKeyValues(std::string_view section,
                                 const std::function<bool(std::string_view, std::string_view)>& visit) const {
    auto range = findSection(section);
    if (!range) return;
    // Views into the held lines, which stay put while this const call runs. In file order the
    // first key of a name is met first, so each later one finds that one's value here.
    std::unordered_map<std::string_view, std::string_view, FoldedHash, FoldedEqual> first;
    first.reserve(range->end - range->header);
    for (std::size_t i = range->header + 1; i < range->end; ++i) {
        if (auto e = parseEntry(lines_[i].text)) {
            const std::string_view firstValue = first.emplace(e->name, e->value).first->second;
            if (!visit(e->name, firstValue)) return;
        }
    }
}

void IniDocument::insertLine(std::size_t at, std::string text) {
    if (at > 0 && lines_[at - 1].end.empty()) lines_[at - 1].end = newline();
    Line line{std::move(text), newline()};
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
}

std::size_t IniDocument::appendSection(std::string_view section) {
    if (!lines_.empty() && !trimBlanks(lines_.back().text).empty()) insertLine(lines_.size(), "");
    insertLine(lines_.size(), "[" + std::string(trimBlanks(section)) + "]");
    return lines_.size() - 1;
}

void IniDocument::setValue(std::string_view section, std::string_view key, std::string_view value) {
    auto range = findSection(section);
    if (!range) {
        std::size_t header = appendSection(section);
        insertLine(header + 1, std::string(trimBlanks(key)) + "=" + std::string(value));
        return;
    }
    if (auto at = findKey(*range, key)) {
        lines_[*at].text = std::string(parseEntry(lines_[*at].text)->name) + "=" + std::string(value);
        return;
    }
    std::size_t at = range->end;
    while (at > range->header + 1 && trimBlanks(lines_[at - 1].text).empty()) --at;
    insertLine(at, std::string(trimBlanks(key)) + "=" + std::string(value));
}

bool IniDocument::removeKey(std::string_view section, std::string_view key) {
    auto range = findSection(section);
    if (!range) return false;
    auto at = findKey(*range, key);
    if (!at) return false;
    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*at));
    return true;
}

bool IniDocument::removeSection(std::string_view section) {
    bool removed = false;
    while (auto range = findSection(section)) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(range->header),
                     lines_.begin() + static_cast<std::ptrdiff_t>(range->end));
        removed = true;
    }
    return removed;
}

void IniDocument::replaceSection(std::string_view section, const std::vector<std::string>& lines) {
    removeSection(section);
    std::size_t at = appendSection(section) + 1;
    for (const std::string& l : lines) insertLine(at++, l);
}

}  // namespace arden
