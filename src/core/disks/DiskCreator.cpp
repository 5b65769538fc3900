#include "core/disks/DiskCreator.h"

#include <algorithm>

#include "core/disks/DiskCid.h"
#include "core/disks/DiskDescriptor.h"
#include "core/disks/DiskFile.h"
#include "core/disks/DiskTexts.h"
#include "core/disks/SparseExtent.h"
#include "core/support/AtomicFile.h"
#include "core/support/TextUtil.h"

namespace arden::disks {

namespace fs = std::filesystem;

namespace {

// Collects the files of one creation so that a failure or a cancel can take them back.
class Creation {
public:
    explicit Creation(const DiskProgress& progress) : progress_(progress) {}

    void made(const fs::path& file) { result_.files.push_back(file); }

    bool cancelled() const { return result_.cancelled; }

    // Reports progress; false when the user cancelled.
    bool report(std::int64_t done, std::int64_t total) {
        if (!progress_ || progress_(done, total)) return true;
        result_.cancelled = true;
        return false;
    }

    DiskCreationResult fail(Message message) {
        result_.failure = std::move(message);
        return cancel();
    }

    // A failure of the system or of a tool: the reason names the file or the program.
    DiskCreationResult fail(const std::string& reason) {
        return fail(Message{MessageKind::Critical, {TextPart::fromId(text::kCreateNewHardDisk)}, {TextPart::fixed(reason)}});
    }

    // Takes back every file made so far.
    DiskCreationResult cancel() {
        removeFiles(result_.files);
        result_.files.clear();
        return std::move(result_);
    }

    DiskCreationResult done(const fs::path& descriptor) {
        result_.files.insert(result_.files.begin(), descriptor);
        result_.created = true;
        return std::move(result_);
    }

private:
    const DiskProgress& progress_;
    DiskCreationResult result_;
};

// Reserves the whole of one flat extent step by step, reporting after each step. A failed
// or cancelled extent is removed here; the caller learns of a cancel from `creation`.
FileError preallocate(const fs::path& path, std::int64_t bytes, std::int64_t& done, std::int64_t total,
                      Creation& creation) {
    FileError error;
    DiskFile file = DiskFile::createNew(path, error);
    if (error) return error;
    for (std::int64_t offset = 0; offset < bytes;) {
        std::int64_t step = std::min(kPreallocationStepBytes, bytes - offset);
        if ((error = file.reserve(offset, step))) break;
        offset += step;
        done += step;
        if (!creation.report(done, total)) break;
    }
    if (!error && !creation.cancelled() && !(error = file.close())) return std::nullopt;
    file.discard();
    return error;
}

DiskCreationResult createWithQemuImg(const NewDiskRequest& request, const ProcessIdle& idle, Creation& creation) {
    std::optional<fs::path> tool = findProgram("qemu-img");
    if (!tool) {
        return creation.fail(diskMessage(MessageKind::Critical, text::kMissingExternalApplication,
                                         text::kQemuImgNotFound));
    }
    ProcessResult run = runProcess(*tool, qemuImgArguments(request), idle);
    if (!run.started) return creation.fail(run.startError);
    if (run.exitCode != 0) {
        removeFiles({request.descriptorPath});
        std::string reason = tool->string() + " ended with exit code " + std::to_string(run.exitCode);
        std::string_view said = trimBlanks(run.standardError);
        if (!said.empty()) reason += ": " + std::string(said);
        return creation.fail(reason);
    }
    std::error_code ec;
    if (!fs::exists(request.descriptorPath, ec)) {
        return creation.fail(tool->string() + " ended without writing " + request.descriptorPath.string());
    }
    return creation.done(request.descriptorPath);
}

}  // namespace

std::string qemuImgSizeText(std::int64_t totalSectors) {
    std::string text = std::to_string(totalSectors / 2);
    if (totalSectors % 2 != 0) text += ".5";
    return text;
}

std::vector<std::string> qemuImgArguments(const NewDiskRequest& request) {
    return {"create",
            "-f",
            "vmdk",
            "-o",
            "adapter_type=" + std::string(adapterText(request.adapter)) +
                ",hwversion=" + std::to_string(request.hardwareVersion),
            request.descriptorPath.string(),
            qemuImgSizeText(request.totalSectors) + "K"};
}

DiskCreationResult createDisk(const NewDiskRequest& request, const DiskProgress& progress, const ProcessIdle& idle) {
    Creation creation(progress);
    for (const fs::path& file : diskFiles(request)) {
        std::error_code ec;
        if (fs::exists(fs::symlink_status(file, ec))) {
            return creation.fail(diskMessage(MessageKind::Warning, text::kFileExists, text::kDiskAlreadyExists,
                                             file.string()));
        }
    }
    if (request.kind == DiskKind::Growable) return createWithQemuImg(request, idle, creation);

    const DiskKindInfo& kind = diskKindInfo(request.kind);
    const fs::path folder = request.descriptorPath.parent_path();
    const std::string base = diskBaseName(request);
    const std::vector<ExtentPiece> pieces = extentPieces(request.kind, base, request.totalSectors);

    const std::int64_t total = kind.preallocated ? request.totalSectors * kSectorBytes
                                                 : static_cast<std::int64_t>(pieces.size());
    std::int64_t done = 0;
    for (const ExtentPiece& piece : pieces) {
        const fs::path path = folder / piece.fileName;
        FileError error = kind.preallocated ? preallocate(path, piece.sectors * kSectorBytes, done, total, creation)
                                            : writeSparseExtent(path, piece.sectors);
        if (error) return creation.fail(*error);
        if (creation.cancelled()) return creation.cancel();
        creation.made(path);
        if (!kind.preallocated && !creation.report(++done, total)) return creation.cancel();
    }

    DescriptorFields fields{base, request.totalSectors, request.adapter, request.kind, request.hardwareVersion, makeCid()};
    if (auto error = writeFileAtomically(request.descriptorPath, descriptorText(fields))) return creation.fail(*error);
    return creation.done(request.descriptorPath);
}

}  // namespace arden::disks
