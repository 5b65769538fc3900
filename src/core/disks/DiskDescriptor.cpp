#include "core/disks/DiskDescriptor.h"

#include <algorithm>

#include "core/disks/DiskGeometry.h"

namespace arden::disks {

namespace {

constexpr std::string_view kEol = "\r\n";

std::string quoted(std::string_view text) {
    std::string q = "\"";
    q += text;
    q += '"';
    return q;
}

void addLine(std::string& text, std::string_view line) {
    text += line;
    text += kEol;
}

void addDatabaseLine(std::string& text, std::string_view key, std::string_view value) {
    addLine(text, std::string(key) + " = " + quoted(value));
}

}  // namespace

std::string extentNumberText(int number) {
    std::string digits = std::to_string(number);
    if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
    return digits;
}

std::vector<ExtentPiece> extentPieces(DiskKind kind, std::string_view baseName, std::int64_t totalSectors,
                                      std::int64_t pieceSectors) {
    const DiskKindInfo& info = diskKindInfo(kind);
    std::vector<ExtentPiece> pieces;
    if (info.extentType.empty()) return pieces;
    const std::string base(baseName);
    if (!info.numberedExtents) {
        pieces.push_back({totalSectors, base + std::string(info.extentSuffix) + ".vmdk"});
        return pieces;
    }
    std::int64_t limit = info.maxExtentSectors;
    if (pieceSectors > 0 && (limit == 0 || pieceSectors < limit)) limit = pieceSectors;
    std::int64_t left = totalSectors;
    for (int number = 1; left > 0; ++number) {
        std::int64_t size = limit > 0 ? std::min(left, limit) : left;
        pieces.push_back({size, base + std::string(info.extentSuffix) + extentNumberText(number) + ".vmdk"});
        left -= size;
    }
    return pieces;
}

std::string descriptorText(const DescriptorFields& fields) {
    const DiskKindInfo& info = diskKindInfo(fields.kind);
    std::string text;
    addLine(text, "# Disk DescriptorFile");
    addLine(text, "version=1");
    addLine(text, "CID=" + fields.cid);
    addLine(text, "parentCID=ffffffff");
    if (!info.createType.empty()) {
        addLine(text, "createType=" + quoted(info.createType));
        addLine(text, "");
        addLine(text, "# Extent description");
        for (const ExtentPiece& piece : extentPieces(fields.kind, fields.baseName, fields.totalSectors, fields.pieceSectors)) {
            std::string line = "RW " + std::to_string(piece.sectors) + " " + std::string(info.extentType) + " " +
                               quoted(piece.fileName);
            if (info.preallocated) line += " 0";
            addLine(text, line);
        }
    }
    addLine(text, "");
    addLine(text, "# The Disk Data Base");
    addLine(text, "#DDB");
    addLine(text, "");
    DiskGeometry geometry = geometryFor(fields.totalSectors, fields.adapter);
    addDatabaseLine(text, "ddb.virtualHWVersion", std::to_string(fields.hardwareVersion));
    addDatabaseLine(text, "ddb.geometry.cylinders", std::to_string(geometry.cylinders));
    addDatabaseLine(text, "ddb.geometry.heads", std::to_string(geometry.heads));
    addDatabaseLine(text, "ddb.geometry.sectors", std::to_string(geometry.sectors));
    addDatabaseLine(text, "ddb.adapterType", adapterText(fields.adapter));
    return text;
}

}  // namespace arden::disks
