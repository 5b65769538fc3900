#include "cli/CliSupport.h"

#include <algorithm>
#include <iostream>

#include "core/shell/GetText.h"

namespace arden::cli {

void printMessage(const Message& message) {
    std::cerr << resolveText(message.title, 0) << ": " << resolveText(message.text, 0) << '\n';
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
