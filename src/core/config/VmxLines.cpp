#include "core/config/VmxLines.h"

#include "core/config/VmxText.h"
#include "core/support/TextUtil.h"

namespace arden::vmx {

bool VmxLines::takeKey(std::string_view key) {
    std::string lower = toLowerAscii(key);
    if (claimed_.count(lower)) return false;
    return written_.insert(std::move(lower)).second;
}

void VmxLines::setting(std::string_view key, std::string_view value, std::string_view separator) {
    std::string lower = toLowerAscii(key);
    if (written_.count(lower) || claimed_.count(lower)) return;
    editorValues_.emplace(lower, std::string(value));
    if (held_) {
        auto it = held_->find(lower);
        if (it != held_->end() && it->second == value) return;  // the file's own line stays
    }
    written_.insert(std::move(lower));
    ++lineCount_;
    if (!keepText_) return;
    std::string line;
    line.reserve(key.size() + value.size() + 6);
    EncodeResult encoded = to_.encode(value);
    if (encoded.missing && !gap_) gap_ = EncodingGap{std::string(key), *encoded.missing};
    line.append(key).append(separator).push_back('"');
    line += escapeValue(encoded.missing ? value : std::string_view(encoded.bytes));
    line.push_back('"');
    lines_.push_back(std::move(line));
}

void VmxLines::claim(std::string_view key) { claimed_.insert(toLowerAscii(key)); }

void VmxLines::fixedSetting(std::string_view key, std::string_view value) {
    claimed_.erase(toLowerAscii(key));
    setting(key, value);
}

void VmxLines::keptLine(std::string_view key, std::string_view rest) {
    if (!takeKey(key)) return;
    ++lineCount_;
    if (!keepText_) return;
    std::string line(key);
    line += rest;
    lines_.push_back(recode(line, from_, to_));
}

void VmxLines::writeDeferred() {
    for (const auto& [key, rest] : deferred_) keptLine(key, rest);
    deferred_.clear();
}

bool VmxLines::hasKey(std::string_view key) const {
    std::string lower = toLowerAscii(key);
    return written_.count(lower) != 0 || claimed_.count(lower) != 0;
}

std::string VmxLines::join() const {
    std::size_t size = 0;
    for (const auto& l : lines_) size += l.size() + 2;
    std::string out;
    out.reserve(size);
    for (const auto& l : lines_) {
        out += l;
        out += kLineEnd;
    }
    return out;
}

}  // namespace arden::vmx
