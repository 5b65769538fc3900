#pragma once
// Helpers of the configuration tests: the lines of a written file, one line looked up whole,
// and a file loaded, saved and loaded again the given number of times.
#include <algorithm>
#include <string>
#include <vector>

#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "TestSupport.h"

namespace arden::test {

inline std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t eol = text.find("\r\n", pos);
        if (eol == std::string::npos) {
            lines.push_back(text.substr(pos) + "<no line end>");
            break;
        }
        lines.push_back(text.substr(pos, eol - pos));
        pos = eol + 2;
    }
    return lines;
}

inline bool hasLine(const std::string& text, const std::string& line) {
    auto lines = linesOf(text);
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

inline LoadResult parseIn(const std::string& text) { return parseVmxText(text, "/vms/x/", "x.vmx", "/vms/x/x.vmx"); }

// Loads `text` and saves it `times` times, each save read back; returns the last text written.
inline std::string resaved(const std::string& text, int times) {
    std::string current = text;
    for (int i = 0; i < times; ++i) current = writeVmxText(parseIn(current).config);
    return current;
}

}  // namespace arden::test
