// The conversion point between a file's encoding and UTF-8: every name VMware writes is
// understood, text goes both ways with the bytes each code page has, and what an encoding
// cannot hold or read is said, never replaced. On Windows the same cases run through the
// system's code-page functions.
#include <gtest/gtest.h>

#include "core/support/TextEncoding.h"

using arden::TextCodec;

namespace {

TextCodec codec(const char* name) {
    auto c = TextCodec::forName(name);
    EXPECT_TRUE(c) << name;
    return c.value_or(TextCodec::utf8());
}

}  // namespace

TEST(TextEncoding, TheNamesVmwareWritesAreUnderstoodAndOthersAreNot) {
    // The names of real files, as written, and the same in another spelling.
    for (const char* name : {"UTF-8", "windows-1252", "windows-1251", "windows-949-2000", "Shift_JIS", "GBK",
                             "windows-936", "Big5", "EUC-KR", "macintosh", "utf8", "WINDOWS-1252", "shift-jis"}) {
        EXPECT_TRUE(TextCodec::forName(name)) << name;
    }
    EXPECT_EQ(codec("Windows_949_2000").name(), "windows-949-2000");
    for (const char* name : {"", "windows-9999", "UTF-16", "klingon", "windows-949-2001"}) {
        EXPECT_FALSE(TextCodec::forName(name)) << name;
    }
}

TEST(TextEncoding, TextGoesBothWaysWithTheCodePagesBytes) {
    struct Case {
        const char* encoding;
        std::string text;   // UTF-8
        std::string bytes;  // as the code page holds it
    };
    const Case cases[] = {
        {"windows-1252", "M\xC3\xBCller \xE2\x82\xAC", "M\xFCller \x80"},
        {"windows-1251", "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82", "\xCF\xF0\xE8\xE2\xE5\xF2"},
        {"windows-949-2000", "\xEC\x8B\xA4\xED\x96\x89", "\xBD\xC7\xC7\xE0"},
        {"Shift_JIS", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", "\x93\xFA\x96\x7B\x8C\xEA"},
        {"GBK", "CentOS 7 64 \xE4\xBD\x8D", "CentOS 7 64 \xCE\xBB"},
        {"UTF-8", "\xE4\xBD\x8D", "\xE4\xBD\x8D"},
    };
    for (const Case& c : cases) {
        TextCodec tc = codec(c.encoding);
        auto encoded = tc.encode(c.text);
        EXPECT_FALSE(encoded.missing) << c.encoding;
        EXPECT_EQ(encoded.bytes, c.bytes) << c.encoding;
        EXPECT_EQ(tc.decode(c.bytes).value_or("(not decoded)"), c.text) << c.encoding;
    }
}

TEST(TextEncoding, ACharacterTheEncodingCannotHoldIsNamedNotReplaced) {
    auto r = codec("windows-1252").encode("CentOS 7 64 \xE4\xBD\x8D and more");
    ASSERT_TRUE(r.missing);
    EXPECT_EQ(r.missing->describe(), "\"\xE4\xBD\x8D\" (U+4F4D)");
    EXPECT_EQ(r.bytes, "");
    // A character beyond the first 65,536 in a code page without it.
    auto emoji = codec("GBK").encode("ok \xF0\x9F\x98\x80");
    ASSERT_TRUE(emoji.missing);
    EXPECT_EQ(emoji.missing->describe(), "\"\xF0\x9F\x98\x80\" (U+1F600)");
}

TEST(TextEncoding, BytesThatAreNotTextInTheEncodingAreNotRead) {
    EXPECT_FALSE(codec("UTF-8").decode("M\xFCller"));
    EXPECT_FALSE(codec("Shift_JIS").decode("a\x81"));  // a lead byte without its second byte
    EXPECT_EQ(codec("UTF-8").decodeReplacing("M\xFCller"), "M\xEF\xBF\xBDller");
    EXPECT_EQ(codec("GBK").decodeReplacing("\xCE\xBB\xFF!"), "\xE4\xBD\x8D\xEF\xBF\xBD!");
}

TEST(TextEncoding, RecodingKeepsWhatCannotBeConverted) {
    EXPECT_EQ(arden::recode("M\xFCller", codec("windows-1252"), TextCodec::utf8()), "M\xC3\xBCller");
    // A line that is not valid in its encoding stays the bytes it was.
    EXPECT_EQ(arden::recode("M\xFCller", TextCodec::utf8(), codec("GBK")), "M\xFCller");
}
