#pragma once
// A message that core hands to whoever shows it: a refusal, a question or a notice.
// Core never shows anything itself; the GUI turns a Message into a message box and the
// command line prints "title: text".
#include <string>
#include <vector>

namespace arden {

enum class MessageKind { Information, Warning, Critical, Question };

// One piece of a title or text: either a string-table id (the language offset is added
// when the text is resolved) or a fixed text that is shown as it stands.
struct TextPart {
    int id = 0;            // > 0: string-table id
    std::string literal;   // used when id == 0

    static TextPart fromId(int stringId) { return TextPart{stringId, {}}; }
    static TextPart fixed(std::string text) { return TextPart{0, std::move(text)}; }
    bool operator==(const TextPart&) const = default;
};

using TextParts = std::vector<TextPart>;

struct Message {
    MessageKind kind = MessageKind::Information;
    TextParts title;
    TextParts text;
    bool operator==(const Message&) const = default;
};

}  // namespace arden
