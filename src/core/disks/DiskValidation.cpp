#include "core/disks/DiskValidation.h"

#include <charconv>
#include <cmath>
#include <string>

#include "core/disks/DiskTexts.h"
#include "core/support/TextUtil.h"

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

}  // namespace

std::int64_t sectorsPerUnit(SizeUnit unit) { return kSectorsPerUnit[static_cast<int>(unit)]; }

std::optional<std::int64_t> sizeTextToSectors(std::string_view text, SizeUnit unit) {
    std::string_view s = trimBlanks(text);
    if (!looksNumeric(s)) return std::nullopt;
    if (s.front() == '+') s.remove_prefix(1);
    double value = 0;
    auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value);
    if (ec == std::errc::result_out_of_range) value = s.front() == '-' ? -kBeyondAnyDisk : kBeyondAnyDisk;
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

DiskRequestCheck checkNewDisk(const NewDiskRequest& request, const DiskMaxima& maxima) {
    DiskRequestCheck check;
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
            check.refusal = diskMessage(MessageKind::Warning, text::kFileExists, text::kDiskAlreadyExists, file.string());
            return check;
        }
    }
    if (request.kind == DiskKind::Preallocated && t > kSinglePieceFlatSectors) {
        check.questions.push_back(diskMessage(MessageKind::Question, text::kLargerThan199Gb, text::kDoubleSpaceWarning));
    }
    if (request.adapter == DiskAdapter::Ide && t >= kIdeQuestionSectors) {
        check.questions.push_back(diskMessage(MessageKind::Question, text::kVeryLargeDisk, text::kLargeForIde));
    }
    return check;
}

}  // namespace arden::disks
