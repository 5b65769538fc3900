#include "core/disks/DescriptorText.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "core/support/TextUtil.h"
#include "core/support/PathText.h"

namespace arden::disks {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSparseMagic = "KDMV";  // hosted sparse extent
constexpr std::string_view kCowdMagic = "COWD";    // ESX sparse extent: never holds a descriptor
constexpr std::string_view kAccessWords[] = {"RW", "RDONLY", "NOACCESS"};
constexpr std::size_t kSniffBytes = 4096;
constexpr std::uint64_t kSectorSize = 512;
constexpr int kMostSiblingsExamined = 2000;

std::uint64_t littleEndian(const std::string& bytes, std::size_t offset, int width) {
    std::uint64_t v = 0;
    for (int i = width - 1; i >= 0; --i) v = (v << 8) | static_cast<unsigned char>(bytes[offset + static_cast<std::size_t>(i)]);
    return v;
}

std::string_view unquoted(std::string_view value) {
    value = trimBlanks(value);
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') return value.substr(1, value.size() - 2);
    if (!value.empty() && value.front() == '"') value.remove_prefix(1);
    return value;
}

// The next blank-separated word of `line`, taken off its front.
std::string_view takeWord(std::string_view& line) {
    line = trimBlanks(line);
    std::size_t end = 0;
    while (end < line.size() && !isBlank(line[end])) ++end;
    std::string_view word = line.substr(0, end);
    line.remove_prefix(end);
    return word;
}

std::optional<ExtentLine> extentLine(std::string_view line) {
    std::string_view rest = line;
    std::string_view access = takeWord(rest);
    // `line` starts at its first word: "RWX" or "#RW" are not access words.
    if (std::find(std::begin(kAccessWords), std::end(kAccessWords), access) == std::end(kAccessWords)) return std::nullopt;
    ExtentLine e;
    e.access = access;
    e.sizeText = takeWord(rest);
    e.type = takeWord(rest);
    rest = trimBlanks(rest);
    if (!rest.empty() && rest.front() == '"') {
        std::size_t close = rest.find('"', 1);
        e.fileName = rest.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1);
    }
    return e;
}

std::optional<std::string> readRange(std::ifstream& in, std::uint64_t offset, std::uint64_t length) {
    std::string bytes(static_cast<std::size_t>(length), '\0');
    in.clear();
    in.seekg(static_cast<std::streamoff>(offset));
    in.read(bytes.data(), static_cast<std::streamsize>(length));
    if (in.gcount() <= 0) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    return bytes;
}

// The descriptor inside a sparse disk, at the sector and of the length its header records.
std::optional<std::string> embeddedDescriptor(std::ifstream& in, const std::string& header, std::uintmax_t fileSize,
                                              std::string& reason) {
    if (header.size() < 44) {
        reason = "the sparse extent header is cut short";
        return std::nullopt;
    }
    const std::uint64_t offset = littleEndian(header, 28, 8);
    const std::uint64_t sectors = littleEndian(header, 36, 8);
    if (offset == 0 || sectors == 0) {
        reason = "it is a sparse extent without a descriptor of its own";
        return std::nullopt;
    }
    const std::uint64_t limit = kMaxDescriptorBytes / kSectorSize;
    if (sectors > limit || offset > fileSize / kSectorSize || sectors > fileSize / kSectorSize - offset) {
        reason = "its header places the descriptor at sector " + std::to_string(offset) + " with " +
                 std::to_string(sectors) + " sectors, outside the file";
        return std::nullopt;
    }
    std::optional<std::string> text = readRange(in, offset * kSectorSize, sectors * kSectorSize);
    if (!text) reason = "the embedded descriptor cannot be read";
    return text;
}

}  // namespace

std::optional<std::string> DescriptorLines::value(std::string_view key) const {
    for (const auto& [k, v] : keys) {
        if (k == key) return v;
    }
    return std::nullopt;
}

DescriptorLines descriptorLines(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    DescriptorLines lines;
    while (!text.empty()) {
        std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        std::string_view trimmed = trimBlanks(line);
        if (trimmed.empty() || trimmed.front() == '#') continue;
        if (std::optional<ExtentLine> extent = extentLine(trimmed)) {
            lines.extents.push_back(std::move(*extent));
            continue;
        }
        std::size_t eq = trimmed.find('=');
        if (eq == std::string_view::npos) continue;
        lines.keys.emplace_back(std::string(trimBlanks(trimmed.substr(0, eq))), std::string(unquoted(trimmed.substr(eq + 1))));
    }
    return lines;
}

std::optional<std::string> readDescriptorText(const fs::path& path, std::string& reason) {
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) {
        reason = ec ? ec.message() : (fs::exists(path, ec) ? "it is not a regular file" : "the file does not exist");
        return std::nullopt;
    }
    const std::uintmax_t size = fs::file_size(path, ec);
    std::ifstream in(path, std::ios::binary);
    if (ec || !in) {
        reason = "the file cannot be read";
        return std::nullopt;
    }
    std::optional<std::string> start = readRange(in, 0, std::min<std::uintmax_t>(size, kSniffBytes));
    if (!start) {
        reason = "the file is empty";
        return std::nullopt;
    }
    if (start->starts_with(kSparseMagic)) return embeddedDescriptor(in, *start, size, reason);
    if (start->starts_with(kCowdMagic)) {
        reason = "it is an ESX sparse extent, which holds no descriptor";
        return std::nullopt;
    }
    // A text descriptor ends at its first NUL byte (some writers pad it to a whole sector).
    if (std::size_t nul = start->find('\0'); nul != std::string::npos) {
        if (nul == 0) {
            reason = "it holds binary data (a disk's data extent), not a descriptor";
            return std::nullopt;
        }
        return start->substr(0, nul);
    }
    if (size > kMaxDescriptorBytes) {
        reason = "at " + std::to_string(size) + " bytes it is too large for a descriptor";
        return std::nullopt;
    }
    std::optional<std::string> text = size <= start->size() ? start : readRange(in, 0, size);
    if (!text) reason = "the file cannot be read";
    else text->resize(std::min(text->size(), text->find('\0')));
    return text;
}

std::optional<fs::path> descriptorNamingExtent(const fs::path& extent) {
    const std::string name = pathText(extent.filename());
    fs::path folder = extent.parent_path();
    if (folder.empty()) folder = ".";
    std::error_code ec;
    int examined = 0;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end && examined < kMostSiblingsExamined; it.increment(ec)) {
        const fs::path candidate = it->path();
        if (candidate.filename() == extent.filename() || !equalsIgnoreCase(pathText(candidate.extension()), ".vmdk")) continue;
        std::error_code sizeError;
        if (!it->is_regular_file(sizeError) || it->file_size(sizeError) > kMaxDescriptorBytes) continue;
        ++examined;
        std::string ignored;
        std::optional<std::string> text = readDescriptorText(candidate, ignored);
        if (!text) continue;
        for (const ExtentLine& e : descriptorLines(*text).extents) {
            if (e.fileName == name) return extent.parent_path() / candidate.filename();
        }
    }
    return std::nullopt;
}

}  // namespace arden::disks
