#include "core/config/KeptLinesToWrite.h"

#include "core/support/TextUtil.h"

namespace arden::vmx {
namespace {

// The key of a kept "name = value" line, lower-cased; empty for comments and lines without "=".
std::string keptLineKey(std::string_view line) {
    std::string_view t = trimBlanks(line);
    if (t.empty() || t.front() == '#') return {};
    std::size_t eq = t.find('=');
    if (eq == std::string_view::npos) return {};
    return toLowerAscii(trimBlanks(t.substr(0, eq)));
}

}  // namespace

KeptLinesToWrite::KeptLinesToWrite(const KeptLines& kept) {
    std::unordered_map<std::string, std::size_t> lastIndex;
    std::vector<std::string> keys;
    keys.reserve(kept.size());
    for (std::size_t i = 0; i < kept.size(); ++i) {
        keys.push_back(keptLineKey(kept[i]));
        if (!keys.back().empty()) lastIndex[keys.back()] = i;
    }
    for (std::size_t i = 0; i < kept.size(); ++i) {
        if (!keys[i].empty() && lastIndex[keys[i]] != i) continue;
        const std::size_t dot = keys[i].find('.');
        if (dot != std::string::npos && dot > 0) byPrefix_[keys[i].substr(0, dot)].push_back(entries_.size());
        entries_.push_back({kept[i], std::move(keys[i])});
    }
}

void KeptLinesToWrite::writeUnder(VmxLines& out, std::string_view prefix) {
    if (byPrefix_.empty()) return;
    auto it = byPrefix_.find(toLowerAscii(prefix));
    if (it == byPrefix_.end()) return;
    for (std::size_t i : it->second) {
        if (entries_[i].written) continue;
        // Under the device's own spelling of the prefix, as a reopened file writes it back.
        writeKeptWholeLine(out, entries_[i].line, prefix);
        entries_[i].written = true;
    }
}

void writeKeptWholeLine(VmxLines& out, std::string_view line, std::string_view prefix) {
    std::string_view t = trimBlanks(line);
    std::string_view key = trimBlanks(t.substr(0, t.find('=')));
    if (prefix.empty()) out.keptLine(key, t.substr(key.size()));
    else out.keptLine(std::string(prefix) + std::string(key.substr(prefix.size())), t.substr(key.size()));
}

}  // namespace arden::vmx
