#include "core/disks/DiskInformation.h"

#include <charconv>
#include <cstdio>
#include <fstream>

#include "core/disks/DiskTexts.h"
#include "core/disks/NewDisk.h"
#include "core/support/AtomicFile.h"
#include "core/support/TextUtil.h"

namespace arden::disks {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kCreateTypes[] = {"monolithicSparse", "twoGbMaxExtentSparse", "monolithicFlat",
                                             "twoGbMaxExtentFlat", "fullDevice", "partitionedDevice"};

// The value of the first occurrence of `key`: from the first "=" after the key to the line
// end, without a blank and an opening quote right after the "=" and without a closing quote.
std::optional<std::string> keyValue(std::string_view text, std::string_view key) {
    std::size_t at = text.find(key);
    if (at == std::string_view::npos) return std::nullopt;
    std::size_t eq = text.find('=', at);
    if (eq == std::string_view::npos) return std::nullopt;
    std::size_t end = text.find('\n', eq);
    std::string_view value = text.substr(eq + 1, end == std::string_view::npos ? std::string_view::npos : end - eq - 1);
    if (!value.empty() && value.front() == ' ') value.remove_prefix(1);
    if (!value.empty() && value.front() == '"') value.remove_prefix(1);
    while (!value.empty() && isBlank(value.back())) value.remove_suffix(1);
    if (!value.empty() && value.back() == '"') value.remove_suffix(1);
    return std::string(value);
}

// The leading whole number of a value; 0 when it starts with none.
long leadingNumber(std::string_view value) {
    value = trimBlanks(value);
    long n = 0;
    std::from_chars(value.data(), value.data() + value.size(), n);
    return n;
}

// Adds up the sizes of the "RW " extent lines; false when a size is not a number.
bool sumExtents(std::string_view text, std::int64_t& total, std::string& reason) {
    constexpr std::string_view kAccess = "RW ";
    total = 0;
    for (std::size_t at = text.find(kAccess); at != std::string_view::npos; at = text.find(kAccess, at)) {
        at += kAccess.size();
        std::size_t end = text.find_first_of(" \t\r\n", at);
        std::string_view size = text.substr(at, end == std::string_view::npos ? std::string_view::npos : end - at);
        std::int64_t sectors = 0;
        auto [ptr, ec] = std::from_chars(size.data(), size.data() + size.size(), sectors);
        if (ec != std::errc() || ptr != size.data() + size.size() || sectors < 0) {
            reason = "the extent size \"" + std::string(size.substr(0, 40)) + "\" is not a number of sectors";
            return false;
        }
        total += sectors;
    }
    return true;
}

std::string lineOf(std::string_view label, const std::string& value) { return std::string(label) + value + "\r\n"; }

std::string geometryText(long cylinders, long heads, long sectors) {
    return "Cylinders " + std::to_string(cylinders) + ", Heads " + std::to_string(heads) + ", Sectors " +
           std::to_string(sectors);
}

DiskReadResult unreadable(const fs::path& path, const std::string& reason) {
    DiskReadResult r;
    r.failure = diskMessage(MessageKind::Warning, text::kCurrentDiskInformation, text::kUnableToReadDisk,
                            path.string() + ": " + reason);
    return r;
}

}  // namespace

std::optional<int> createTypeCode(std::string_view createType) {
    for (int i = 0; i < static_cast<int>(std::size(kCreateTypes)); ++i) {
        if (kCreateTypes[i] == createType) return i;
    }
    return std::nullopt;
}

std::string diskSizeText(std::int64_t totalSectors) {
    struct Unit {
        double sectors;
        const char* suffix;
    };
    Unit unit = totalSectors >= 2097152 ? Unit{2097152, " Gb"} : totalSectors < 2048 ? Unit{2, " Kb"} : Unit{2048, " Mb"};
    float quotient = static_cast<float>(static_cast<double>(totalSectors) / unit.sectors);
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.7g", static_cast<double>(quotient));
    return std::string(buffer) + unit.suffix;
}

std::optional<DiskInformation> parseDescriptor(std::string_view text, std::string& reason) {
    DiskInformation info;
    info.cid = keyValue(text, "CID").value_or("");
    info.hardwareVersion = keyValue(text, "ddb.virtualHWVersion").value_or("");
    std::optional<std::string> createType = keyValue(text, "createType=");
    if (!createType) {
        reason = "no createType found";
        return std::nullopt;
    }
    std::optional<int> code = createTypeCode(*createType);
    if (!code) {
        reason = "the create type \"" + createType->substr(0, 40) + "\" is not one this program reads";
        return std::nullopt;
    }
    info.createType = *createType;
    info.createTypeCode = *code;
    if (!sumExtents(text, info.totalSectors, reason)) return std::nullopt;
    info.sizeText = diskSizeText(info.totalSectors);
    info.adapterType = keyValue(text, "ddb.adapterType").value_or("");
    info.cylinders = leadingNumber(keyValue(text, "ddb.geometry.cylinders").value_or(""));
    info.heads = leadingNumber(keyValue(text, "ddb.geometry.heads").value_or(""));
    info.sectors = leadingNumber(keyValue(text, "ddb.geometry.sectors").value_or(""));
    std::optional<std::string> biosCylinders = keyValue(text, "ddb.geometry.biosCylinders");
    std::optional<std::string> biosHeads = keyValue(text, "ddb.geometry.biosHeads");
    std::optional<std::string> biosSectors = keyValue(text, "ddb.geometry.biosSectors");
    info.biosGeometryPresent = biosCylinders || biosHeads || biosSectors;
    info.biosCylinders = leadingNumber(biosCylinders.value_or(""));
    info.biosHeads = leadingNumber(biosHeads.value_or(""));
    info.biosSectors = leadingNumber(biosSectors.value_or(""));
    return info;
}

DiskReadResult readDiskInformation(const fs::path& path) {
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) return unreadable(path, ec ? ec.message() : "not a file");
    std::uintmax_t size = fs::file_size(path, ec);
    if (ec) return unreadable(path, ec.message());

    std::string text;
    if (size > kDescriptorFileMaxBytes) {
        std::ifstream in(path, std::ios::binary);
        text.resize(kEmbeddedReadBytes);
        in.read(text.data(), static_cast<std::streamsize>(text.size()));
        if (!in && in.gcount() <= 0) return unreadable(path, "the file cannot be read");
        text.resize(static_cast<std::size_t>(in.gcount()));
    } else {
        std::string error;
        std::optional<std::string> whole = readWholeFile(path, error);
        if (!whole) return unreadable(path, error);
        text = std::move(*whole);
    }

    std::string reason;
    std::optional<DiskInformation> info = parseDescriptor(text, reason);
    if (!info) return unreadable(path, reason);
    fs::path full = fs::absolute(path, ec);
    if (ec) full = path;
    info->folder = full.parent_path().string();
    info->name = full.filename().string();
    return DiskReadResult{std::move(info), {}};
}

std::string diskSummaryText(const DiskInformation& info) {
    std::string text;
    text += lineOf("Disk Path: ", info.folder);
    text += lineOf("Disk Name: ", info.name);
    text += lineOf("Disk Type: ", info.createType + " (" + std::to_string(info.createTypeCode) + ")");
    text += lineOf("Adapter Type: ", info.adapterType);
    text += lineOf("Size: ", std::to_string(info.totalSectors) + " sectors (" + info.sizeText + ")");
    text += lineOf("Geometry: ", geometryText(info.cylinders, info.heads, info.sectors));
    if (info.biosGeometryPresent) {
        text += lineOf("Bios Geometry: ", geometryText(info.biosCylinders, info.biosHeads, info.biosSectors));
    }
    text += lineOf("Hardware Version: ", info.hardwareVersion);
    text += "CID: " + info.cid;
    return text;
}

Message diskSummaryMessage(const DiskInformation& info) {
    return Message{MessageKind::Information, {TextPart::fromId(text::kCurrentDiskInformation)},
                   {TextPart::fixed(diskSummaryText(info))}};
}

}  // namespace arden::disks
