#include "core/support/TextEncoding.h"

#include <algorithm>
#include <cstdio>

#include "core/support/TextUtil.h"

namespace arden {
namespace {

// The converter names VMware's products write (and those libvirt reads beside them), with the
// C library's and Windows' names of the same code page. "windows-949-2000" is the converter
// name of the Korean Windows code page; "Shift_JIS" on a Windows host is code page 932.
constexpr EncodingRow kEncodings[] = {
    {"UTF-8", "UTF-8", 65001},
    {"windows-1250", "CP1250", 1250},
    {"windows-1251", "CP1251", 1251},
    {"windows-1252", "CP1252", 1252},
    {"windows-1253", "CP1253", 1253},
    {"windows-1254", "CP1254", 1254},
    {"windows-1255", "CP1255", 1255},
    {"windows-1256", "CP1256", 1256},
    {"windows-1257", "CP1257", 1257},
    {"windows-1258", "CP1258", 1258},
    {"windows-874", "CP874", 874},
    {"windows-949-2000", "CP949", 949},
    {"windows-949", "CP949", 949},
    {"EUC-KR", "EUC-KR", 51949},
    {"Shift_JIS", "CP932", 932},
    {"windows-31j", "CP932", 932},
    {"GBK", "GBK", 936},
    {"windows-936", "CP936", 936},
    {"GB18030", "GB18030", 54936},
    {"Big5", "CP950", 950},
    {"windows-950", "CP950", 950},
    {"macintosh", "MACINTOSH", 10000},
    {"KOI8-R", "KOI8-R", 20866},
    {"ISO-8859-1", "ISO-8859-1", 28591},
    {"ISO-8859-15", "ISO-8859-15", 28605},
    {"US-ASCII", "ASCII", 20127},
};

// A converter name without what its comparison ignores.
std::string nameKey(std::string_view name) {
    std::string key;
    for (char c : name) {
        if (c != '-' && c != '_' && c != ' ') key += asciiLower(c);
    }
    return key;
}

// The length of the UTF-8 sequence that starts with `lead` (1 for a byte that starts none).
std::size_t sequenceLength(unsigned char lead) {
    if (lead >= 0xF0) return 4;
    if (lead >= 0xE0) return 3;
    if (lead >= 0xC0) return 2;
    return 1;
}

// Every encoding of the table writes ASCII as ASCII: such a text needs no conversion.
bool isAscii(std::string_view text) {
    for (char c : text) {
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    }
    return true;
}

unsigned codePointOf(std::string_view ch) {
    auto b = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(ch[i])); };
    switch (ch.size()) {
        case 2: return ((b(0) & 0x1F) << 6) | (b(1) & 0x3F);
        case 3: return ((b(0) & 0x0F) << 12) | ((b(1) & 0x3F) << 6) | (b(2) & 0x3F);
        case 4: return ((b(0) & 0x07) << 18) | ((b(1) & 0x3F) << 12) | ((b(2) & 0x3F) << 6) | (b(3) & 0x3F);
        default: return b(0);
    }
}

}  // namespace

std::string MissingCharacter::describe() const {
    char code[16];
    std::snprintf(code, sizeof code, "U+%04X", codePoint);
    return "\"" + character + "\" (" + code + ")";
}

std::optional<TextCodec> TextCodec::forName(std::string_view name) {
    const std::string key = nameKey(name);
    for (const EncodingRow& row : kEncodings) {
        if (nameKey(row.vmwareName) == key) return TextCodec(&row);
    }
    return std::nullopt;
}

TextCodec TextCodec::utf8() { return TextCodec(&kEncodings[0]); }

TextCodec TextCodec::legacyCodePage() {
    // The first row of a code page carries the name VMware writes for it.
    for (const EncodingRow& row : kEncodings) {
        if (row.codePage == system_text::legacyCodePage()) return TextCodec(&row);
    }
    return *forName("windows-1252");
}

bool TextCodec::isUtf8() const { return row_ == &kEncodings[0]; }

std::optional<std::string> TextCodec::decode(std::string_view bytes) const {
    if (isAscii(bytes)) return std::string(bytes);
    return system_text::toUtf8(*row_, bytes);
}

std::string TextCodec::decodeReplacing(std::string_view bytes) const {
    if (auto text = decode(bytes)) return std::move(*text);
    // The longest character of the table's encodings is four bytes.
    std::string text;
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t length = 1;
        std::optional<std::string> ch;
        for (; length <= 4 && at + length <= bytes.size() && !ch; ++length) ch = decode(bytes.substr(at, length));
        if (ch) {
            text += *ch;
            at += length - 1;
        } else {
            text += "\xEF\xBF\xBD";
            ++at;
        }
    }
    return text;
}

EncodeResult TextCodec::encode(std::string_view text) const {
    EncodeResult result;
    if (isAscii(text)) {
        result.bytes = std::string(text);
        return result;
    }
    if (auto bytes = system_text::fromUtf8(*row_, text)) {
        result.bytes = std::move(*bytes);
        return result;
    }
    // Character by character, to name the first one the encoding cannot hold.
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = std::min(sequenceLength(static_cast<unsigned char>(text[at])), text.size() - at);
        std::string_view ch = text.substr(at, length);
        if (!system_text::fromUtf8(*row_, ch)) {
            result.missing = MissingCharacter{std::string(ch), codePointOf(ch)};
            return result;
        }
        at += length;
    }
    result.missing = MissingCharacter{std::string(text), 0};
    return result;
}

std::string recode(std::string_view text, const TextCodec& from, const TextCodec& to) {
    if (from == to) return std::string(text);
    auto decoded = from.decode(text);
    if (!decoded) return std::string(text);
    EncodeResult encoded = to.encode(*decoded);
    return encoded.missing ? std::string(text) : std::move(encoded.bytes);
}

}  // namespace arden
