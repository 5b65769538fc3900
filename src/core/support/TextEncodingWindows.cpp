// The conversions of TextEncoding on Windows: the system's code-page functions, through
// UTF-16. Invalid input fails the conversion; a character the target code page cannot hold
// fails it too (no best-fit replacement, no default character).
#ifdef _WIN32

#include <windows.h>

#include "core/support/TextEncoding.h"

namespace arden::system_text {
namespace {

constexpr unsigned kUtf8 = CP_UTF8;

std::optional<std::wstring> toWide(unsigned codePage, std::string_view bytes) {
    if (bytes.empty()) return std::wstring();
    const int size = static_cast<int>(bytes.size());
    int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0);
    if (length <= 0) return std::nullopt;
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), size, wide.data(), length);
    return wide;
}

std::optional<std::string> fromWide(unsigned codePage, const std::wstring& wide) {
    if (wide.empty()) return std::string();
    // UTF-8 and GB18030 hold every character; the system takes only the invalid-input flag for them.
    const bool wholeUnicode = codePage == kUtf8 || codePage == 54936;
    const DWORD flags = wholeUnicode ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS;
    BOOL usedDefault = FALSE;
    BOOL* usedDefaultOut = wholeUnicode ? nullptr : &usedDefault;
    const int size = static_cast<int>(wide.size());
    int length = WideCharToMultiByte(codePage, flags, wide.data(), size, nullptr, 0, nullptr, usedDefaultOut);
    if (length <= 0 || usedDefault) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(codePage, flags, wide.data(), size, bytes.data(), length, nullptr, usedDefaultOut);
    if (usedDefault) return std::nullopt;
    return bytes;
}

}  // namespace

std::optional<std::string> toUtf8(const EncodingRow& row, std::string_view bytes) {
    auto wide = toWide(row.codePage, bytes);
    if (!wide) return std::nullopt;
    return fromWide(kUtf8, *wide);
}

std::optional<std::string> fromUtf8(const EncodingRow& row, std::string_view text) {
    auto wide = toWide(kUtf8, text);
    if (!wide) return std::nullopt;
    return fromWide(row.codePage, *wide);
}

// The code page of the system's ANSI functions: what VMware's products of the time wrote in.
unsigned legacyCodePage() { return GetACP(); }

}  // namespace arden::system_text

#endif
