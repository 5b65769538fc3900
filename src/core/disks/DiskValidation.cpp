#include "core/disks/DiskValidation.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "core/disks/DiskInformation.h"
#include "core/disks/DiskTexts.h"
#include "core/support/TextUtil.h"
#include "core/support/PathText.h"

namespace arden::disks {

namespace {

constexpr std::int64_t kSectorsPerUnit[] = {1, 2, 2048, 2097152};
constexpr std::int64_t kIdeQuestionSectors = 268435457;   // above 128 GiB
constexpr double kBeyondAnyDisk = 1e15;

// Digits with at most one decimal point, an optional leading sign and an optional exponent.
bool looksNumeric(std::string_view s) {
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    bool digits = false, point = false;
    for (; i < s.size(); ++i) {
        if (s[i] >= '0' && s[i] <= '9') digits = true;
        else if (s[i] == '.' && !point) point = true;
        else break;
    }
    if (!digits) return false;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        ++i;
        if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
        std::size_t start = i;
        while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i;
        if (i == start) return false;
    }
    return i == s.size();
}

// For a number out of the range of a double: true when it is too close to zero (1e-400)
// rather than too large (1e400), judged from its mantissa and exponent.
bool underflows(std::string_view s) {
    std::size_t e = s.find_first_of("eE");
    if (e == std::string_view::npos) return false;  // plain digits are never too small
    double mantissa = 0;
    std::from_chars(s.data() + (s.front() == '-' ? 1 : 0), s.data() + e, mantissa);
    long exponent = 0;
    std::string_view exponentText = s.substr(e + 1);
    if (!exponentText.empty() && exponentText.front() == '+') exponentText.remove_prefix(1);
    auto [ptr, ec] = std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    if (ec == std::errc::result_out_of_range) return exponentText.front() == '-';
    if (mantissa == 0.0) return true;
    return std::log10(std::fabs(mantissa)) + static_cast<double>(exponent) < 0;
}

}  // namespace

std::int64_t sectorsPerUnit(SizeUnit unit) { return kSectorsPerUnit[static_cast<int>(unit)]; }

std::optional<std::int64_t> sizeTextToSectors(std::string_view text, SizeUnit unit) {
    std::string_view s = trimBlanks(text);
    if (!looksNumeric(s)) return std::nullopt;
    if (s.front() == '+') s.remove_prefix(1);
    double value = 0;
    auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value);
    if (ec == std::errc::result_out_of_range) value = underflows(s) ? 0.0 : s.front() == '-' ? -kBeyondAnyDisk : kBeyondAnyDisk;
    else if (ec != std::errc() || end != s.data() + s.size()) return std::nullopt;
    double sectors = value * static_cast<double>(sectorsPerUnit(unit));
    if (!std::isfinite(sectors) || std::fabs(sectors) > kBeyondAnyDisk) sectors = sectors < 0 ? -kBeyondAnyDisk : kBeyondAnyDisk;
    return roundHalfEven(sectors);
}

double sectorsInUnit(std::int64_t sectors, SizeUnit unit) {
    return static_cast<double>(sectors) / static_cast<double>(sectorsPerUnit(unit));
}

std::int64_t maximumSectors(DiskAdapter adapter, const DiskMaxima& maxima) {
    if (adapter == DiskAdapter::Ide) return maxima.ideSectors > 0 ? maxima.ideSectors : kDefaultIdeMaximumSectors;
    return maxima.scsiSectors > 0 ? maxima.scsiSectors : kDefaultScsiMaximumSectors;
}

Message notNumericMessage(std::string_view typed) {
    return diskMessage(MessageKind::Information, text::kInvalidDiskSize, text::kSizeMustBeNumeric,
                       "\"" + std::string(typed) + "\"");
}

std::optional<Message> checkDiskName(std::string_view fileName) {
    constexpr std::string_view kExtension = ".vmdk";
    std::string_view name = fileName;
    if (name.ends_with(kExtension)) name.remove_suffix(kExtension.size());
    const std::string shown = "\"" + std::string(fileName.substr(0, 300)) + "\"";
    if (name.empty()) {
        return Message{MessageKind::Warning, {TextPart::fixed("Invalid Disk Name")},
                       {TextPart::fixed("The new disk has no name: type one in Disk Name (\".vmdk\" is added to it).")}};
    }
    std::string problem;
    if (name.find('"') != std::string_view::npos) problem = "it holds a double quote (\"), which ends the name inside the descriptor";
    else if (std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }))
        problem = "it holds a control character (a tab, a line break or another invisible character)";
    else if (name.find_first_of("/\\") != std::string_view::npos) problem = "it holds a folder separator (/ or \\); choose the folder separately";
    else if (name.size() > kMaxDiskNameBytes)
        problem = "it is " + std::to_string(name.size()) + " bytes long; at most " + std::to_string(kMaxDiskNameBytes) + " are allowed";
    if (problem.empty()) return std::nullopt;
    return Message{MessageKind::Warning, {TextPart::fixed("Invalid Disk Name")},
                   {TextPart::fixed("The disk name " + shown + " cannot be used: " + problem + ".")}};
}

std::optional<int> adapterMismatchWarning(DiskAdapter adapter, DiskBus nodeBus) {
    // A disk of any adapter type serves a SATA or NVMe node: the products write "lsilogic" there.
    if (nodeBus == DiskBus::Sata || nodeBus == DiskBus::Nvme) return std::nullopt;
    const DiskBus adapterBus = adapter == DiskAdapter::Ide ? DiskBus::Ide : DiskBus::Scsi;
    if (adapterBus == nodeBus) return std::nullopt;
    return nodeBus == DiskBus::Ide ? text::kScsiAdapterOnIdeNode : text::kIdeAdapterOnScsiNode;
}

std::optional<Message> checkDiskFolder(const std::filesystem::path& folder) {
    std::error_code ec;
    std::string problem;
    if (folder.empty()) problem = "No folder is chosen for the new disk; choose the folder it is made in.";
    else if (!std::filesystem::is_directory(folder, ec))
        problem = "The folder \"" + pathText(folder) + "\" does not exist; choose an existing folder.";
    if (problem.empty()) return std::nullopt;
    return Message{MessageKind::Warning, {TextPart::fixed("Invalid Disk Location")}, {TextPart::fixed(problem)}};
}

std::string sizeRangeText(DiskAdapter adapter, const DiskMaxima& maxima) {
    return diskSizeText(kMinimumDiskSectors) + " to " + diskSizeText(maximumSectors(adapter, maxima));
}

DiskRequestCheck checkNewDisk(const NewDiskRequest& request, const DiskMaxima& maxima) {
    DiskRequestCheck check;
    if ((check.refusal = checkDiskName(pathText(request.descriptorPath.filename())))) return check;
    std::filesystem::path folder = request.descriptorPath.parent_path();
    if (!folder.empty() && (check.refusal = checkDiskFolder(folder))) return check;
    const std::int64_t t = request.totalSectors;
    if (t < kMinimumDiskSectors) {
        check.refusal = diskMessage(MessageKind::Information, text::kInvalidDiskSize, text::kDiskTooSmall);
        return check;
    }
    if (t > maximumSectors(request.adapter, maxima)) {
        check.refusal = diskMessage(MessageKind::Information, text::kInvalidDiskSize, text::kDiskTooLarge);
        return check;
    }
    for (const std::filesystem::path& file : diskFiles(request)) {
        std::error_code ec;
        if (std::filesystem::exists(std::filesystem::symlink_status(file, ec))) {
            check.refusal = diskMessage(MessageKind::Warning, text::kFileExists, text::kDiskAlreadyExists, pathText(file));
            return check;
        }
    }
    if (request.kind == DiskKind::Preallocated && t > kSinglePieceFlatSectors) {
        check.questions.push_back(diskMessage(MessageKind::Question, text::kLargerThan199Gb, text::kSingleFileLimit));
    }
    if (request.adapter == DiskAdapter::Ide && t >= kIdeQuestionSectors) {
        check.questions.push_back(diskMessage(MessageKind::Question, text::kVeryLargeDisk, text::kLargeForIde));
    }
    return check;
}

}  // namespace arden::disks
