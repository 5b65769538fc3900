#pragma once
// cInifile: one INI file, section and key at a time, the way the program's settings code uses
// it: set Path, Section, Key and Default, then read or assign Value. Every operation reads the
// file afresh; every change writes the whole file and replaces it atomically, so an interrupted
// write never leaves half a file. Reading rules are those of IniDocument.
//
// Failures never show anything: Success() tells whether the last operation did what it was
// asked, LastReturnCode() gives its result code (characters read, 1 for a done change, 0 for a
// failure) and LastError() the reason for a failed read or write (naming the file).
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arden {

class IniDocument;

// Where a window is and how it is shown, filled and applied by the GUI. Coordinates are in the
// GUI's own units (pixels of the desktop's logical coordinate system).
struct WindowPlacement {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    bool Maximised = false;
    bool Minimised = false;
};

class cInifile {
public:
    cInifile();
    ~cInifile();
    cInifile(cInifile&&) noexcept;
    cInifile& operator=(cInifile&&) noexcept;

    std::int32_t LastReturnCode() const { return lastReturnCode_; }
    bool Success() const { return success_; }
    // The reason of the last failed read or write ("Cannot write /x/y.ini: Permission denied"),
    // empty after a success.
    const std::string& LastError() const { return lastError_; }

    const std::string& Default() const { return default_; }
    void setDefault(std::string value) { default_ = std::move(value); }
    const std::string& Path() const { return path_; }
    void setPath(std::string value) { path_ = std::move(value); }
    const std::string& Key() const { return key_; }
    void setKey(std::string value) { key_ = std::move(value); }
    const std::string& Section() const { return section_; }
    void setSection(std::string value) { section_ = std::move(value); }

    // The value of Key in Section, or Default (trailing blanks dropped) when it is missing.
    // Success() is true when the key was found.
    std::string Value();
    // Stores the value under Key in Section, creating file, section and key when missing.
    // A value, key or section that does not fit on one line is refused.
    bool setValue(std::string_view value);

    bool DeleteKey();
    bool DeleteSection();

    // The current section's entries, one "key=value" a line, lines ended by CR LF.
    std::string INISection();
    // Replaces the current section by the given entries (lines ended by CR LF, LF or NUL; empty
    // lines are dropped); the section moves to the end of the file.
    bool setINISection(std::string_view entries);

    // Distinct section names of the file, first spelling, in file order.
    std::vector<std::string> Sections();
    // Key names of Section, in file order (a key written twice is listed twice).
    std::vector<std::string> EnumerateCurrentSection();
    // Hands `visit` the key names of Section in file order, each with the value Value() reads
    // for it, until `visit` returns false; one pass however large the section. The views are
    // valid during the call only.
    void EnumerateCurrentSectionValues(const std::function<bool(std::string_view key, std::string_view value)>& visit);
    // Every section header of the file in file order, a repeated section listed each time.
    std::vector<std::string> EnumerateAllSections();

    // In Section: "Maximised" ("-1" or "0"), and for a window in its normal state also "Left",
    // "Top", "Width" and "Height". A minimised window writes nothing.
    bool SaveFormPosition(const WindowPlacement& window);
    // Reads the same keys with the default "FAIL": a key that is missing or not a number leaves
    // that field unchanged; "Maximised" true sets Maximised (and clears Minimised).
    void LoadFormPosition(WindowPlacement& window);

    // The text as a 32-bit integer: blanks around it allowed, an optional sign, digits and an
    // optional decimal fraction (rounded half to even). Anything else, or a number outside the
    // 32-bit range, gives `defaultValue`.
    static std::int32_t CLngDefault(std::string_view text, std::int32_t defaultValue);
    // "True"/"False" in any letter case, or a number (non-zero is true); anything else gives
    // `defaultValue`.
    static bool CBoolDefault(std::string_view text, bool defaultValue);

private:
    struct FileStamp {
        std::string path;
        bool exists = false;
        std::uintmax_t size = 0;
        std::filesystem::file_time_type time{};
        bool operator==(const FileStamp&) const = default;
    };

    IniDocument* load();
    bool store(const IniDocument& document);
    void fail(std::string reason);
    bool checkNames(bool withKey);

    std::string path_, section_, key_, default_;
    std::int32_t lastReturnCode_ = 0;
    bool success_ = false;
    std::string lastError_;
    std::unique_ptr<IniDocument> cached_;
    FileStamp cachedStamp_;
};

}  // namespace arden
