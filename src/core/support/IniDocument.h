#pragma once
// The text of one INI file, held line by line so that a change touches only its own lines.
// Reading follows the rules of the Windows private-profile functions: section and key names
// are compared without regard to ASCII case, blanks around names, around "=" and around values
// are dropped, a value in matching single or double quotes loses them, CR LF and LF both end a
// line, ";" starts a comment. When a section name occurs twice, look-ups and writes use the
// first; when a key occurs twice in a section, the first wins. Lines before the first section
// header belong to no section.
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arden {

class IniDocument {
public:
    IniDocument() = default;
    explicit IniDocument(std::string_view bytes);

    // The whole file again: untouched lines byte for byte, changed and new lines ended like
    // the file's first line (CR LF for a file that had none).
    std::string text() const;
    bool empty() const { return lines_.empty(); }

    // Every section header in file order, repeats included, names as spelt in the file.
    std::vector<std::string> sectionHeaders() const;
    // Distinct section names (first spelling), in file order: what a look-up can reach.
    std::vector<std::string> sectionNames() const;
    bool hasSection(std::string_view section) const;

    // Key names of the section in file order (duplicates kept); comments, blank lines and lines
    // without "=" are not keys.
    std::vector<std::string> keys(std::string_view section) const;
    // The value of the key, or std::nullopt when the section or key is missing.
    std::optional<std::string> value(std::string_view section, std::string_view key) const;
    // The section's "key=value" entries in file order, as read (names and values trimmed).
    std::vector<std::string> entries(std::string_view section) const;
    // Hands `visit` the section's keys in file order (duplicates kept), each with the value that
    // value() gives for it, so a key written twice reads the first one's value both times; stops
    // when `visit` returns false. One pass over the section however many keys it holds; the views
    // are valid during the call only.
    void visitKeyValues(std::string_view section,
                        const std::function<bool(std::string_view key, std::string_view value)>& visit) const;

    // Sets a value. An existing key keeps its spelling and its line's place and end; a new key
    // goes after the last non-blank line of the section; a new section is appended at the end.
    void setValue(std::string_view section, std::string_view key, std::string_view value);
    // Removes the first key of that name from the section; false when there was none.
    bool removeKey(std::string_view section, std::string_view key);
    // Removes every section of that name with all its lines; false when there was none.
    bool removeSection(std::string_view section);
    // Replaces the section (every occurrence) by one at the end of the file holding `lines`.
    void replaceSection(std::string_view section, const std::vector<std::string>& lines);

private:
    struct Line {
        std::string text;  // without its end
        std::string end;   // "\r\n", "\n" or "" for a last line without one
    };
    struct Range {
        std::size_t header;  // index of the header line
        std::size_t end;     // one past the section's last line
    };

    std::optional<Range> findSection(std::string_view section) const;
    std::optional<std::size_t> findKey(const Range& range, std::string_view key) const;
    std::size_t appendSection(std::string_view section);
    void insertLine(std::size_t at, std::string text);
    const std::string& newline() const;

    std::vector<Line> lines_;
};

// True when a name or value can be written as one INI line: no CR, LF or NUL.
bool fitsOnOneLine(std::string_view text);

}  // namespace arden
