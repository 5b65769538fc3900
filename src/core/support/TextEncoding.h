#pragma once
// The one place where text changes encoding. The program holds every text as UTF-8; a .vmx
// file holds its values in the encoding its ".encoding" line names (VMware writes the host's
// code page under its converter name: "windows-1252", "windows-949-2000", "Shift_JIS", "GBK",
// "UTF-8" ...). The conversions themselves are the system's: the C library's iconv on POSIX
// systems, the code-page functions of Windows.
#include <optional>
#include <string>
#include <string_view>

namespace arden {

// One encoding as VMware names it, and what the system calls it.
struct EncodingRow {
    std::string_view vmwareName;  // as written in ".encoding"
    std::string_view iconvName;   // the C library's name
    unsigned codePage;            // the Windows code page
};

// A character that an encoding cannot hold.
struct MissingCharacter {
    std::string character;  // the character, as UTF-8
    unsigned codePoint = 0;

    // "位" (U+4F4D)
    std::string describe() const;
};

struct EncodeResult {
    std::string bytes;                      // the text in the encoding (empty when `missing` is set)
    std::optional<MissingCharacter> missing;  // the first character the encoding cannot hold
};

class TextCodec {
public:
    // The codec for an encoding name as VMware writes it, compared as VMware's converter names
    // are (letter case, "-", "_" and blanks do not count); nothing for a name not in the table.
    static std::optional<TextCodec> forName(std::string_view name);
    static TextCodec utf8();
    // What VMware's products assumed for a file without ".encoding" whose bytes are not UTF-8:
    // the host's code page (on Windows the system's ANSI code page, elsewhere windows-1252).
    static TextCodec legacyCodePage();

    // The encoding's name as VMware writes it.
    std::string_view name() const { return row_->vmwareName; }
    bool isUtf8() const;
    bool operator==(const TextCodec& other) const { return row_ == other.row_; }

    // The UTF-8 text of `bytes`; nothing when they are not valid text in this encoding.
    std::optional<std::string> decode(std::string_view bytes) const;
    // The UTF-8 text of `bytes` with each byte that starts no valid character shown as U+FFFD.
    std::string decodeReplacing(std::string_view bytes) const;
    // The bytes of a UTF-8 text, or the first character this encoding cannot hold.
    EncodeResult encode(std::string_view text) const;

private:
    explicit TextCodec(const EncodingRow* row) : row_(row) {}
    const EncodingRow* row_;
};

// `text` re-encoded from one codec into another; the text as it stands when it is not valid
// in `from` or `to` cannot hold it.
std::string recode(std::string_view text, const TextCodec& from, const TextCodec& to);

// The system's side of the conversion (TextEncodingPosix.cpp, TextEncodingWindows.cpp):
// nothing when the input is not valid in the source or the target cannot hold it.
namespace system_text {
std::optional<std::string> toUtf8(const EncodingRow& row, std::string_view bytes);
std::optional<std::string> fromUtf8(const EncodingRow& row, std::string_view text);
// The Windows code page that files without ".encoding" were written in.
unsigned legacyCodePage();
}  // namespace system_text

}  // namespace arden
