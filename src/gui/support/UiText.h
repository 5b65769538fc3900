#pragma once
// String-table texts as Qt strings, with the language offset added by the caller's window.
#include <QString>

#include "core/shell/GetText.h"

namespace arden::gui {

inline QString uiText(int id, int languageOffset) {
    return QString::fromStdString(GetText(id + languageOffset));
}

inline QString uiText(const TextParts& parts, int languageOffset) {
    return QString::fromStdString(resolveText(parts, languageOffset));
}

inline QString qs(const std::string& s) { return QString::fromStdString(s); }

}  // namespace arden::gui
