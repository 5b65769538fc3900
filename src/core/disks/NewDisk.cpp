#include "core/disks/NewDisk.h"

#include "core/disks/DiskDescriptor.h"
#include "core/support/PathText.h"

namespace arden::disks {

std::string diskBaseName(const NewDiskRequest& request) {
    std::string name = pathText(request.descriptorPath.filename());
    constexpr std::string_view kExtension = ".vmdk";
    if (name.size() > kExtension.size() && name.ends_with(kExtension)) name.resize(name.size() - kExtension.size());
    return name;
}

std::vector<std::filesystem::path> diskFiles(const NewDiskRequest& request, std::int64_t pieceSectors) {
    std::vector<std::filesystem::path> files{request.descriptorPath};
    std::filesystem::path folder = request.descriptorPath.parent_path();
    for (const ExtentPiece& piece : extentPieces(request.kind, diskBaseName(request), request.totalSectors, pieceSectors)) {
        files.push_back(folder / piece.fileName);
    }
    return files;
}

Message diskMessage(MessageKind kind, int titleId, int textId, const std::string& detail) {
    Message m{kind, {TextPart::fromId(titleId)}, {TextPart::fromId(textId)}};
    if (!detail.empty()) m.text.push_back(TextPart::fixed(" (" + detail + ")"));
    return m;
}

}  // namespace arden::disks
