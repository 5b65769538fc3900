#include "core/disks/DiskInformation.h"

#include <charconv>
#include <cstdio>
#include <fstream>

#include "core/disks/DescriptorText.h"
#include "core/disks/DiskTexts.h"
#include "core/disks/NewDisk.h"
#include "core/support/TextUtil.h"
#include "core/support/PathText.h"

namespace arden::disks {

namespace fs = std::filesystem;

namespace {

struct CreateType {
    std::string_view name;
    int code;  // -1: shown by name only
};

// The create types VMware products write; the first six carry the codes the summary shows.
constexpr CreateType kCreateTypes[] = {
    {"monolithicSparse", 0}, {"twoGbMaxExtentSparse", 1}, {"monolithicFlat", 2}, {"twoGbMaxExtentFlat", 3},
    {"fullDevice", 4}, {"partitionedDevice", 5}, {"streamOptimized", -1}, {"vmfs", -1}, {"vmfsSparse", -1},
    {"vmfsThin", -1}, {"vmfsPreallocated", -1}, {"vmfsEagerZeroedThick", -1}, {"vmfsRaw", -1}, {"vmfsRDM", -1},
    {"vmfsRawDeviceMap", -1}, {"vmfsPassthroughRawDeviceMap", -1}, {"seSparse", -1}, {"vsanSparse", -1},
    {"custom", -1}};

struct AdapterBus {
    std::string_view adapterType;
    DiskBus bus;
};

// The bus of each adapter type VMware writes in "ddb.adapterType".
constexpr AdapterBus kAdapterBuses[] = {{"ide", DiskBus::Ide},         {"buslogic", DiskBus::Scsi},
                                        {"lsilogic", DiskBus::Scsi},   {"legacyESX", DiskBus::Scsi},
                                        {"lsisas1068", DiskBus::Scsi}, {"pvscsi", DiskBus::Scsi}};

// The leading whole number of a value; 0 when it starts with none.
long leadingNumber(std::string_view value) {
    value = trimBlanks(value);
    long n = 0;
    std::from_chars(value.data(), value.data() + value.size(), n);
    return n;
}

// Adds up the sizes of the extent lines with every sum checked; false when a size is not a
// number of sectors or the total is beyond any disk. Read-only extents (the "RDONLY" of an
// exported streamOptimized disk) are part of the disk's size as much as "RW" ones.
bool sumExtents(const std::vector<ExtentLine>& extents, std::int64_t& total, std::string& reason) {
    total = 0;
    for (const ExtentLine& e : extents) {
        std::int64_t sectors = 0;
        const char* first = e.sizeText.data();
        const char* last = first + e.sizeText.size();
        auto [ptr, ec] = std::from_chars(first, last, sectors);
        const bool digitsOnly = !e.sizeText.empty() && e.sizeText.front() != '-' && ptr == last;
        if (!digitsOnly || (ec != std::errc() && ec != std::errc::result_out_of_range)) {
            reason = "the extent size \"" + e.sizeText.substr(0, 40) + "\" is not a number of sectors";
            return false;
        }
        if (ec == std::errc::result_out_of_range || sectors > kMaxReadableSectors - total) {
            reason = "the extent sizes add up to more than " + std::to_string(kMaxReadableSectors) +
                     " sectors (8 EiB), a size no disk can have";
            return false;
        }
        total += sectors;
    }
    return true;
}

constexpr std::string_view kFromParent = "as its parent disk";

std::string lineOf(std::string_view label, const std::string& value) { return std::string(label) + value + "\r\n"; }

std::string geometryText(long cylinders, long heads, long sectors) {
    return "Cylinders " + std::to_string(cylinders) + ", Heads " + std::to_string(heads) + ", Sectors " +
           std::to_string(sectors);
}

DiskReadResult unreadable(const fs::path& path, const std::string& reason) {
    DiskReadResult r;
    r.failure = diskMessage(MessageKind::Warning, text::kCurrentDiskInformation, text::kUnableToReadDisk,
                            pathText(path) + ": " + reason);
    return r;
}

}  // namespace

std::optional<int> createTypeCode(std::string_view createType) {
    for (const CreateType& t : kCreateTypes) {
        if (t.name == createType) return t.code;
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
    const DescriptorLines lines = descriptorLines(text);
    DiskInformation info;
    info.cid = lines.value("CID").value_or("");
    info.hardwareVersion = lines.value("ddb.virtualHWVersion").value_or("");
    std::optional<std::string> createType = lines.value("createType");
    if (!createType) {
        reason = "no createType found";
        return std::nullopt;
    }
    std::optional<int> code = createTypeCode(*createType);
    if (!code) {
        reason = "the create type \"" + createType->substr(0, 40) + "\" is not one VMware writes";
        return std::nullopt;
    }
    info.createType = *createType;
    info.createTypeCode = *code;
    if (!sumExtents(lines.extents, info.totalSectors, reason)) return std::nullopt;
    info.sizeText = diskSizeText(info.totalSectors);
    info.adapterType = lines.value("ddb.adapterType").value_or("");
    info.parentFileName = lines.value("parentFileNameHint").value_or("");
    info.cylinders = leadingNumber(lines.value("ddb.geometry.cylinders").value_or(""));
    info.heads = leadingNumber(lines.value("ddb.geometry.heads").value_or(""));
    info.sectors = leadingNumber(lines.value("ddb.geometry.sectors").value_or(""));
    std::optional<std::string> biosCylinders = lines.value("ddb.geometry.biosCylinders");
    std::optional<std::string> biosHeads = lines.value("ddb.geometry.biosHeads");
    std::optional<std::string> biosSectors = lines.value("ddb.geometry.biosSectors");
    info.biosGeometryPresent = biosCylinders || biosHeads || biosSectors;
    info.biosCylinders = leadingNumber(biosCylinders.value_or(""));
    info.biosHeads = leadingNumber(biosHeads.value_or(""));
    info.biosSectors = leadingNumber(biosSectors.value_or(""));
    return info;
}

DiskReadResult readDiskInformation(const fs::path& path) {
    std::string reason;
    std::optional<std::string> text = readDescriptorText(path, reason);
    std::optional<DiskInformation> info;
    if (text) info = parseDescriptor(*text, reason);
    if (!info) {
        // An extent chosen instead of its descriptor: name the descriptor that holds it.
        std::error_code ec;
        if (fs::is_regular_file(path, ec)) {
            if (std::optional<fs::path> owner = descriptorNamingExtent(path)) {
                reason = "it is an extent of the disk " + pathText(owner->filename()) + "; choose " + pathText(*owner) +
                         " instead";
            }
        }
        return unreadable(path, reason);
    }
    std::error_code ec;
    fs::path full = fs::absolute(path, ec);
    if (ec) full = path;
    info->folder = pathText(full.parent_path());
    info->name = pathText(full.filename());
    return DiskReadResult{std::move(info), {}};
}

std::string diskSummaryText(const DiskInformation& info) {
    const bool delta = !info.parentFileName.empty();
    // A delta disk leaves these to its parent; a value it does hold is shown as it stands.
    auto own = [delta](const std::string& value) { return value.empty() && delta ? std::string(kFromParent) : value; };
    std::string text;
    text += lineOf("Disk Path: ", info.folder);
    text += lineOf("Disk Name: ", info.name);
    text += lineOf("Disk Type: ", info.createTypeCode < 0 ? info.createType
                                                          : info.createType + " (" + std::to_string(info.createTypeCode) + ")");
    if (delta) {
        text += lineOf("Parent Disk: ", info.parentFileName);
        text += "This disk is a delta of its parent: it holds only the changes made since " + info.parentFileName +
                " was last written, and needs it beside it.\r\n";
    }
    text += lineOf("Adapter Type: ", own(info.adapterType));
    text += lineOf("Size: ", std::to_string(info.totalSectors) + " sectors (" + info.sizeText + ")");
    const bool noGeometry = delta && info.cylinders == 0 && info.heads == 0 && info.sectors == 0;
    text += lineOf("Geometry: ", noGeometry ? own("") : geometryText(info.cylinders, info.heads, info.sectors));
    if (info.biosGeometryPresent) {
        text += lineOf("Bios Geometry: ", geometryText(info.biosCylinders, info.biosHeads, info.biosSectors));
    }
    text += lineOf("Hardware Version: ", own(info.hardwareVersion));
    text += "CID: " + info.cid;
    return text;
}

std::string adapterMismatchText(std::string_view adapterType, DiskBus nodeBus) {
    std::optional<DiskBus> diskBus;
    for (const AdapterBus& a : kAdapterBuses) {
        if (a.adapterType == adapterType) diskBus = a.bus;
    }
    if (!diskBus || *diskBus == nodeBus || nodeBus == DiskBus::Sata || nodeBus == DiskBus::Nvme) return {};
    const char* made = *diskBus == DiskBus::Ide ? "an IDE" : "a SCSI";
    const char* node = nodeBus == DiskBus::Ide ? "an IDE" : "a SCSI";
    return "This disk was made for " + std::string(made) + " adapter (adapter type \"" + std::string(adapterType) +
           "\"), but it sits on " + node + " node.";
}

Message diskSummaryMessage(const DiskInformation& info, std::optional<DiskBus> nodeBus) {
    std::string text = diskSummaryText(info);
    if (nodeBus) {
        if (std::string note = adapterMismatchText(info.adapterType, *nodeBus); !note.empty()) text += "\r\n\r\n" + note;
    }
    return Message{MessageKind::Information, {TextPart::fromId(text::kCurrentDiskInformation)}, {TextPart::fixed(text)}};
}

}  // namespace arden::disks
