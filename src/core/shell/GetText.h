#pragma once
// The program's string table: every caption, tool tip and message is a numbered text.
// English holds the ids below 500; German, French, Spanish and Italian are blocks at 500,
// 1000, 1500 and 2000 that hold every English text at its id plus the offset. Callers add the
// current language offset to the id themselves; there is no fall-back to English.
#include <string>

#include "core/support/Message.h"

namespace arden {

// The text with number `id` (language offset already added), or an empty text when the
// table has no such number.
const std::string& GetText(int id);

// Joins the parts of a message title or text, looking ids up with `languageOffset` added.
std::string resolveText(const TextParts& parts, int languageOffset);

}  // namespace arden
