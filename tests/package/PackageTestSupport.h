#pragma once
// What the package tests share: the version the build was given (read from the top
// CMakeLists.txt as a release manager edits it) and the help's command forms.
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "TestSupport.h"

namespace arden::test {

// "1.0.0" from "project(ArdenForge VERSION 1.0.0 ...)".
inline std::string projectVersion() {
    std::string text = readBytes(std::filesystem::path(ARDEN_SOURCE_DIR) / "CMakeLists.txt");
    std::smatch m;
    return std::regex_search(text, m, std::regex(R"(project\(ArdenForge VERSION ([0-9.]+))")) ? m[1].str() : "";
}

// Blanks collapsed and trimmed: "nic FILE N [--type a|b]   [--mac X]" -> one blank apart.
inline std::string collapsedBlanks(const std::string& text) {
    std::string out;
    std::istringstream words(text);
    for (std::string w; words >> w;) out += (out.empty() ? "" : " ") + w;
    return out;
}

// The command forms of `arden-forge-cli help`: a line two blanks in starts one
// ("  device add FILE TYPE [--node NODE] [--file PATH]"), a line seven or more blanks in
// continues it; the description lines are six blanks in.
inline std::set<std::string> helpForms(const std::string& help) {
    std::set<std::string> forms;
    std::string form;
    std::istringstream lines(help);
    auto flush = [&] {
        if (!form.empty()) forms.insert(collapsedBlanks(form));
        form.clear();
    };
    for (std::string line; std::getline(lines, line);) {
        const std::size_t indent = line.find_first_not_of(' ');
        if (indent == std::string::npos) continue;
        if (indent == 2 && line[2] >= 'a' && line[2] <= 'z') {
            flush();
            form = line;
        } else if (indent >= 7 && !form.empty()) {
            form += " " + line;
        } else {
            flush();
        }
    }
    flush();
    return forms;
}

}  // namespace arden::test
