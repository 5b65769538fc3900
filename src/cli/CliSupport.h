#pragma once
// Shared plumbing of the command line: exit codes, option parsing and how a refusal is
// printed ("title: text" on standard error, the way the desktop program's message box
// would show it).
#include <optional>
#include <string>
#include <vector>

#include "core/support/Message.h"

namespace arden::cli {

enum ExitCode : int { Success = 0, Refused = 1, UsageError = 2 };

using Args = std::vector<std::string>;

// The offset of the language the string-table texts are printed in: 0 (English) unless the
// command line chose another with --language. Scripts read the English texts, so English
// stays the default; fixed technical texts are English in every language.
int languageOffset();

// Takes "--language CODE" out of args (CODE: en, de, fr, es or it) and prints the string-table
// texts in that language from then on. Returns the usage error to report when CODE is missing
// or unknown, else an empty text.
std::string takeLanguage(Args& args);

// The string-table text of `id` in the chosen language.
std::string cliText(int id);

// Prints "title: text" of a message to standard error, in the chosen language.
void printMessage(const Message& message);

// Prints a usage error (prefixed with the program name) to standard error; returns UsageError.
int usageError(const std::string& text);

// Takes "--name VALUE" out of args. Returns the value, or std::nullopt when the option is
// absent. Sets `missingValue` when the option is given without a value.
std::optional<std::string> takeOption(Args& args, const std::string& name, bool& missingValue);

// Takes the flag "--name" out of args; returns whether it was there.
bool takeFlag(Args& args, const std::string& name);

// The first remaining argument that starts with "--", or an empty text.
std::string firstUnknownOption(const Args& args);

}  // namespace arden::cli
