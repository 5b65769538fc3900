#include "core/support/cInifile.h"

#include <filesystem>
#include <limits>

#include "core/support/AtomicFile.h"
#include "core/support/IniDocument.h"
#include "core/support/TextUtil.h"

namespace arden {

namespace {

constexpr std::string_view kFail = "FAIL";

std::string booleanText(bool value) { return value ? "-1" : "0"; }

}  // namespace

cInifile::cInifile() = default;
cInifile::~cInifile() = default;
cInifile::cInifile(cInifile&&) noexcept = default;
cInifile& cInifile::operator=(cInifile&&) noexcept = default;

void cInifile::fail(std::string reason) {
    success_ = false;
    lastReturnCode_ = 0;
    lastError_ = std::move(reason);
}

// A missing file reads as an empty one (it is created by the first write); a file that exists
// but cannot be read is a failure, so that a write never replaces what could not be read.
// The parsed file is kept while its size and modification time stay the same, so that reading
// many keys one after the other parses the file once.
IniDocument* cInifile::load() {
    if (path_.empty()) {
        fail("No INI file path given");
        return nullptr;
    }
    namespace fs = std::filesystem;
    std::error_code ec;
    FileStamp stamp;
    stamp.path = path_;
    fs::file_status status = fs::status(filePath(path_), ec);
    stamp.exists = fs::exists(status);
    if (stamp.exists && fs::is_regular_file(status)) {
        stamp.size = fs::file_size(filePath(path_), ec);
        stamp.time = fs::last_write_time(filePath(path_), ec);
    }
    if (cached_ && stamp == cachedStamp_) {
        lastError_.clear();
        return cached_.get();
    }
    cached_.reset();
    std::string bytes;
    if (stamp.exists) {
        std::string error;
        auto read = readWholeFile(filePath(path_), error);
        if (!read) {
            fail(std::move(error));
            return nullptr;
        }
        bytes = std::move(*read);
    }
    lastError_.clear();
    cached_ = std::make_unique<IniDocument>(bytes);
    cachedStamp_ = stamp;
    return cached_.get();
}

bool cInifile::store(const IniDocument& document) {
    if (auto error = writeFileAtomically(filePath(path_), document.text())) {
        cached_.reset();  // the change did not reach the file
        fail(std::move(*error));
        return false;
    }
    std::error_code ec;
    cachedStamp_.exists = true;
    cachedStamp_.size = std::filesystem::file_size(filePath(path_), ec);
    cachedStamp_.time = std::filesystem::last_write_time(filePath(path_), ec);
    if (ec) cached_.reset();
    success_ = true;
    lastReturnCode_ = 1;
    lastError_.clear();
    return true;
}

bool cInifile::checkNames(bool withKey) {
    if (trimBlanks(section_).empty() || !fitsOnOneLine(section_)) {
        fail("Invalid section name '" + section_ + "' for " + path_ + ": it must be non-empty and on one line");
        return false;
    }
    if (withKey && (trimBlanks(key_).empty() || !fitsOnOneLine(key_) || key_.find('=') != std::string::npos ||
                    trimBlanks(key_).front() == ';' || trimBlanks(key_).front() == '[')) {
        fail("Invalid key name '" + key_ + "' for " + path_ +
             ": it must be non-empty, on one line, without \"=\" and not start with \";\" or \"[\"");
        return false;
    }
    return true;
}

std::string cInifile::Value() {
    std::string result = default_;
    while (!result.empty() && (result.back() == ' ' || result.back() == '\t')) result.pop_back();
    std::optional<std::string> found;
    if (auto doc = load()) found = doc->value(section_, key_);
    success_ = found.has_value();
    if (found) result = std::move(*found);
    lastReturnCode_ = static_cast<std::int32_t>(result.size());
    return result;
}

bool cInifile::setValue(std::string_view value) {
    if (!checkNames(true)) return false;
    if (!fitsOnOneLine(value)) {
        fail("The value for key '" + key_ + "' in " + path_ + " holds a line break; values are one line");
        return false;
    }
    auto doc = load();
    if (!doc) return false;
    doc->setValue(section_, key_, value);
    return store(*doc);
}

bool cInifile::DeleteKey() {
    auto doc = load();
    if (!doc) return false;
    if (!doc->removeKey(section_, key_)) {
        success_ = true;  // nothing to delete is not a failure, as with the platform call
        lastReturnCode_ = 1;
        return true;
    }
    return store(*doc);
}

bool cInifile::DeleteSection() {
    auto doc = load();
    if (!doc) return false;
    if (!doc->removeSection(section_)) {
        success_ = true;
        lastReturnCode_ = 1;
        return true;
    }
    return store(*doc);
}

std::string cInifile::INISection() {
    std::string text;
    auto doc = load();
    if (doc) {
        for (const std::string& entry : doc->entries(section_)) text += entry + "\r\n";
    }
    success_ = doc && doc->hasSection(section_);
    lastReturnCode_ = static_cast<std::int32_t>(text.size());
    return text;
}

bool cInifile::setINISection(std::string_view entries) {
    if (!checkNames(false)) return false;
    std::vector<std::string> lines;
    std::size_t pos = 0;
    while (pos <= entries.size()) {
        std::size_t stop = entries.find_first_of(std::string_view("\r\n\0", 3), pos);
        if (stop == std::string_view::npos) stop = entries.size();
        std::string_view line = trimBlanks(entries.substr(pos, stop - pos));
        if (!line.empty()) lines.emplace_back(line);
        pos = stop + 1;
    }
    auto doc = load();
    if (!doc) return false;
    doc->replaceSection(section_, lines);
    return store(*doc);
}

std::vector<std::string> cInifile::Sections() {
    auto doc = load();
    success_ = doc != nullptr;
    return doc ? doc->sectionNames() : std::vector<std::string>{};
}

std::vector<std::string> cInifile::EnumerateCurrentSection() {
    auto doc = load();
    success_ = doc && doc->hasSection(section_);
    return doc ? doc->keys(section_) : std::vector<std::string>{};
}

void cInifile::EnumerateCurrentSectionValues(const std::function<bool(std::string_view, std::string_view)>& visit) {
    auto doc = load();
    success_ = doc && doc->hasSection(section_);
    if (doc) doc->visitKeyValues(section_, visit);
}

std::vector<std::string> cInifile::EnumerateAllSections() {
    auto doc = load();
    success_ = doc != nullptr;
    return doc ? doc->sectionHeaders() : std::vector<std::string>{};
}

bool cInifile::SaveFormPosition(const WindowPlacement& window) {
    if (window.Minimised) {
        success_ = true;
        lastReturnCode_ = 1;
        return true;
    }
    if (!checkNames(false)) return false;
    auto doc = load();
    if (!doc) return false;
    doc->setValue(section_, "Maximised", booleanText(window.Maximised));
    if (!window.Maximised) {
        doc->setValue(section_, "Left", std::to_string(window.Left));
        doc->setValue(section_, "Top", std::to_string(window.Top));
        doc->setValue(section_, "Width", std::to_string(window.Width));
        doc->setValue(section_, "Height", std::to_string(window.Height));
    }
    return store(*doc);
}

void cInifile::LoadFormPosition(WindowPlacement& window) {
    auto doc = load();
    success_ = doc != nullptr;
    if (!doc) return;
    auto read = [&](std::string_view key) { return doc->value(section_, key).value_or(std::string(kFail)); };
    struct Field {
        std::string_view key;
        std::int32_t& target;
    };
    for (Field f : {Field{"Left", window.Left}, Field{"Top", window.Top}, Field{"Width", window.Width},
                    Field{"Height", window.Height}}) {
        f.target = CLngDefault(read(f.key), f.target);
    }
    window.Maximised = CBoolDefault(read("Maximised"), window.Maximised);
    if (window.Maximised) window.Minimised = false;
}

namespace {

std::optional<std::int32_t> parseLong(std::string_view text) {
    text = trimBlanks(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    std::size_t dot = text.find('.');
    std::string_view whole = text.substr(0, dot);
    std::string_view fraction = dot == std::string_view::npos ? std::string_view() : text.substr(dot + 1);
    auto allDigits = [](std::string_view s) {
        for (char c : s) {
            if (c < '0' || c > '9') return false;
        }
        return true;
    };
    if ((whole.empty() && fraction.empty()) || !allDigits(whole) || !allDigits(fraction)) return std::nullopt;

    constexpr long long kLimit = 1LL << 32;  // beyond every 32-bit value, small enough not to overflow
    long long magnitude = 0;
    for (char c : whole) {
        magnitude = magnitude * 10 + (c - '0');
        if (magnitude > kLimit) return std::nullopt;
    }
    if (!fraction.empty()) {
        bool restNonZero = fraction.find_first_not_of('0', 1) != std::string_view::npos;
        char first = fraction.front();
        if (first > '5' || (first == '5' && (restNonZero || magnitude % 2 == 1))) ++magnitude;
    }
    long long value = negative ? -magnitude : magnitude;
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

}  // namespace

std::int32_t cInifile::CLngDefault(std::string_view text, std::int32_t defaultValue) {
    return parseLong(text).value_or(defaultValue);
}

bool cInifile::CBoolDefault(std::string_view text, bool defaultValue) {
    std::string_view t = trimBlanks(text);
    if (equalsIgnoreCase(t, "true")) return true;
    if (equalsIgnoreCase(t, "false")) return false;
    auto number = parseLong(t);
    return number ? *number != 0 : defaultValue;
}

}  // namespace arden
