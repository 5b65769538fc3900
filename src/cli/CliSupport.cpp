#include "cli/CliSupport.h"

#include <algorithm>
#include <iterator>
#include <iostream>

#include "core/shell/GetText.h"

namespace arden::cli {

namespace {

int g_languageOffset = 0;

// The codes --language takes, in the order of the language blocks (offset = index x 500).
constexpr const char* kLanguageCodes[] = {"en", "de", "fr", "es", "it"};

}  // namespace

int languageOffset() { return g_languageOffset; }

std::string takeLanguage(Args& args) {
    bool missingValue = false;
    const std::optional<std::string> code = takeOption(args, "--language", missingValue);
    if (missingValue) return "--language needs a language: en, de, fr, es or it";
    if (!code) return {};
    for (int i = 0; i < static_cast<int>(std::size(kLanguageCodes)); ++i) {
        if (*code == kLanguageCodes[i]) {
            g_languageOffset = i * 500;
            return {};
        }
    }
    return "unknown language '" + *code + "': use en, de, fr, es or it";
}

std::string cliText(int id) { return GetText(id + g_languageOffset); }

void printMessage(const Message& message) {
    std::cerr << resolveText(message.title, g_languageOffset) << ": " << resolveText(message.text, g_languageOffset)
              << '\n';
}

int usageError(const std::string& text) {
    std::cerr << "arden-forge-cli: " << text << "\nTry 'arden-forge-cli help'.\n";
    return UsageError;
}

std::optional<std::string> takeOption(Args& args, const std::string& name, bool& missingValue) {
    auto it = std::find(args.begin(), args.end(), name);
    if (it == args.end()) return std::nullopt;
    if (it + 1 == args.end()) {
        missingValue = true;
        args.erase(it);
        return std::nullopt;
    }
    std::string value = *(it + 1);
    args.erase(it, it + 2);
    return value;
}

bool takeFlag(Args& args, const std::string& name) {
    auto it = std::find(args.begin(), args.end(), name);
    if (it == args.end()) return false;
    args.erase(it);
    return true;
}

std::string firstUnknownOption(const Args& args) {
    for (const std::string& a : args) {
        if (a.size() > 2 && a.rfind("--", 0) == 0) return a;
    }
    return {};
}

}  // namespace arden::cli
