#pragma once
// The lines of a .vmx file as the writer builds them. A key is written at most once, in any
// letter case; keys can be claimed for a fixed block written later (the clustering lines win
// over a disk's own values), and a key the editor holds back (its value is still the one it
// had when the file was opened, and the file's own line is kept) is not written at all.
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/config/FileText.h"

namespace arden::vmx {

class VmxLines {
public:
    // `held`: lower-case key -> the editor's value at opening (VmConfiguration::heldKeys), or null.
    // `keepText` false gathers only the keys and values (editorValues()), not the lines.
    explicit VmxLines(const std::map<std::string, std::string>* held = nullptr, bool keepText = true)
        : held_(held), keepText_(keepText) {}

    // The encoding of the opened file's lines and values (`from`) and that of the text written
    // (`to`); they differ when the file is being converted. UTF-8 for both until set.
    void setEncoding(const TextCodec& from, const TextCodec& to) {
        from_ = from;
        to_ = to;
    }
    // The first value the written encoding could not hold; the text is then not to be written.
    const std::optional<EncodingGap>& gap() const { return gap_; }

    // A line as it stands (re-encoded when the file is being converted).
    void raw(std::string_view line) {
        ++lineCount_;
        if (keepText_) lines_.push_back(recode(line, from_, to_));
    }
    void blank() { raw({}); }
    void banner(std::string_view line) {
        blank();
        raw(line);
    }

    // "key = "value"", the value escaped; `separator` replaces " = " (for "numvcpus =").
    void setting(std::string_view key, std::string_view value, std::string_view separator = " = ");
    void flag(std::string_view key, bool value) { setting(key, value ? "TRUE" : "FALSE"); }

    // Reserves a key for fixedSetting: setting() and keptLine() pass it over until then.
    void claim(std::string_view key);
    void fixedSetting(std::string_view key, std::string_view value);

    // A line of the opened file, as read, under `key`; passed over when the key is written or claimed.
    void keptLine(std::string_view key, std::string_view rest);

    // A kept line set aside for the "other params" section, and writing those set aside.
    void defer(std::string key, std::string rest) { deferred_.emplace_back(std::move(key), std::move(rest)); }
    void writeDeferred();

    bool hasKey(std::string_view key) const;

    // Every value the editor gave, held back or not, by lower-case key.
    std::unordered_map<std::string, std::string> editorValues() && { return std::move(editorValues_); }

    // Number of lines so far, and removing lines back to such a mark (only lines without keys).
    std::size_t mark() const { return lineCount_; }
    void truncate(std::size_t mark) {
        lineCount_ = mark;
        if (keepText_) lines_.resize(mark);
    }

    std::string join() const;

private:
    bool takeKey(std::string_view key);

    const std::map<std::string, std::string>* held_;
    bool keepText_;
    std::size_t lineCount_ = 0;  // lines written so far, kept as text or not
    std::vector<std::string> lines_;
    std::unordered_set<std::string> written_;
    std::unordered_set<std::string> claimed_;
    std::unordered_map<std::string, std::string> editorValues_;
    std::vector<std::pair<std::string, std::string>> deferred_;
    TextCodec from_ = TextCodec::utf8();
    TextCodec to_ = TextCodec::utf8();
    std::optional<EncodingGap> gap_;
};

}  // namespace arden::vmx
