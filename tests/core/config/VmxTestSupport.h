#pragma once
// Helpers of the configuration tests: the lines of a written file, the lines that set a key,
// and a file loaded and saved the given number of times.
#include <algorithm>
#include <string>
#include <vector>

#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "core/support/TextUtil.h"
#include "TestSupport.h"

namespace arden::test {

using Lines = std::vector<std::string>;

// The lines of a written text; a last line without CR LF is marked.
inline Lines linesOf(const std::string& text) {
    Lines lines;
    for (std::size_t pos = 0, eol; pos < text.size(); pos = eol + 2) {
        eol = text.find("\r\n", pos);
        if (eol == std::string::npos) return lines.push_back(text.substr(pos) + "<no line end>"), lines;
        lines.push_back(text.substr(pos, eol - pos));
    }
    return lines;
}

inline bool hasLine(const std::string& text, const std::string& line) {
    Lines lines = linesOf(text);
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

// The lines of `text` that set `key`, in any letter case.
inline Lines keyLines(const std::string& text, std::string_view key) {
    Lines out;
    for (const std::string& line : linesOf(text)) {
        std::size_t eq = line.find('=');
        if (eq != std::string::npos && equalsIgnoreCase(trimBlanks(std::string_view(line).substr(0, eq)), key)) out.push_back(line);
    }
    return out;
}

inline LoadResult parseIn(const std::string& text) { return parseVmxText(text, "/vms/x/", "x.vmx", "/vms/x/x.vmx"); }

// Loads `text` and saves it `times` times, each save read back; returns the last text written.
inline std::string resaved(const std::string& text, int times) {
    std::string current = text;
    for (int i = 0; i < times; ++i) current = writeVmxText(parseIn(current).config);
    return current;
}

}  // namespace arden::test
