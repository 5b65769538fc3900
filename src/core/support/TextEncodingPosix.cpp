// The conversions of TextEncoding on POSIX systems: the C library's iconv, without
// transliteration, so a character the target cannot hold fails the conversion. The table's
// encodings are all stateless, so no closing shift sequence is needed.
#ifndef _WIN32

#include <iconv.h>

#include <cerrno>

#include "core/support/TextEncoding.h"

namespace arden::system_text {
namespace {

std::optional<std::string> convert(const char* to, const char* from, std::string_view input) {
    iconv_t cd = ::iconv_open(to, from);
    if (cd == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
    std::string out(input.size() * 4 + 16, '\0');
    char* in = const_cast<char*>(input.data());
    std::size_t inLeft = input.size();
    std::size_t done = 0;
    bool ok = true;
    while (inLeft > 0) {
        char* outPtr = out.data() + done;
        std::size_t outLeft = out.size() - done;
        std::size_t r = ::iconv(cd, &in, &inLeft, &outPtr, &outLeft);
        done = out.size() - outLeft;
        if (r != static_cast<std::size_t>(-1)) continue;
        if (errno == E2BIG) {
            out.resize(out.size() * 2);
            continue;
        }
        ok = false;  // EILSEQ: invalid input or a character the target cannot hold; EINVAL: cut short
        break;
    }
    ::iconv_close(cd);
    if (!ok) return std::nullopt;
    out.resize(done);
    return out;
}

}  // namespace

std::optional<std::string> toUtf8(const EncodingRow& row, std::string_view bytes) {
    return convert("UTF-8", std::string(row.iconvName).c_str(), bytes);
}

std::optional<std::string> fromUtf8(const EncodingRow& row, std::string_view text) {
    return convert(std::string(row.iconvName).c_str(), "UTF-8", text);
}

// No system code page here: the Western Windows code page, that of most such files.
unsigned legacyCodePage() { return 1252; }

}  // namespace arden::system_text

#endif
