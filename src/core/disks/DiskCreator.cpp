#include "core/disks/DiskCreator.h"

#include <algorithm>

#include "core/disks/DiskCid.h"
#include "core/disks/DiskDescriptor.h"
#include "core/disks/DiskFile.h"
#include "core/disks/DiskTexts.h"
#include "core/disks/SparseExtent.h"
#include "core/support/AtomicFile.h"
#include "core/support/ProcessRunner.h"
#include "core/support/TextUtil.h"

namespace arden::disks {

namespace fs = std::filesystem;

namespace {

// Collects the files of one creation so that a failure or a cancel can take them back, and
// keeps the progress state that every step updates.
class Creation {
public:
    Creation(const DiskProgress& progress, std::int64_t bytesTotal) : progress_(progress) {
        state_.bytesTotal = bytesTotal;
    }

    void made(const fs::path& file) { result_.files.push_back(file); }

    bool cancelled() const { return result_.cancelled; }

    // Reports the current step; false when the receiver cancelled.
    bool report(DiskStep step, const fs::path& file, std::int64_t bytesDone) {
        state_.step = step;
        state_.currentFile = pathText(file);
        state_.bytesDone = bytesDone;
        if (!progress_ || progress_(state_)) return true;
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
        auto& files = result_.files;
        if (std::find(files.begin(), files.end(), descriptor) == files.end()) files.insert(files.begin(), descriptor);
        result_.created = true;
        return std::move(result_);
    }

private:
    const DiskProgress& progress_;
    DiskProgressState state_;
    DiskCreationResult result_;
};

// While zeros are written, they are put on the disk and dropped from the cache this often.
constexpr std::int64_t kZeroFlushBytes = std::int64_t{64} << 20;

// Reserves the whole of one flat extent step by step: through the file system where it can,
// otherwise (or when asked to) by writing zeros a chunk at a time. Every step and every chunk
// is reported, so a cancel is answered within one chunk. A failed or cancelled extent is
// removed here; the caller learns of a cancel from `creation`.
FileError preallocate(const fs::path& path, std::int64_t bytes, std::int64_t& done, bool writeZeros,
                      Creation& creation) {
    FileError error;
    DiskFile file = DiskFile::createNew(path, error);
    if (error) return error;
    for (std::int64_t offset = 0; offset < bytes && !error && !creation.cancelled();) {
        std::int64_t step = std::min(writeZeros ? kZeroChunkBytes : kPreallocationStepBytes, bytes - offset);
        if (!writeZeros) {
            bool unsupported = false;
            error = file.allocate(offset, step, unsupported);
            if (unsupported) {
                writeZeros = true;
                continue;
            }
        } else {
            error = file.writeZeros(offset, step);
            if (!error && (offset + step) % kZeroFlushBytes == 0) error = file.flushAndRelease();
        }
        if (error) break;
        offset += step;
        done += step;
        creation.report(writeZeros ? DiskStep::WritingZeros : DiskStep::Reserving, path, done);
    }
    if (!error && !creation.cancelled() && !(error = file.close())) return std::nullopt;
    file.discard();
    return error;
}

// The current size of a file that a tool is writing; 0 while it does not exist.
std::int64_t sizeSoFar(const fs::path& file) {
    std::error_code ec;
    std::uintmax_t size = fs::file_size(file, ec);
    return ec ? 0 : static_cast<std::int64_t>(size);
}

DiskCreationResult createWithQemuImg(const NewDiskRequest& request, Creation& creation) {
    std::optional<fs::path> tool = findProgram("qemu-img");
    if (!tool) {
        return creation.fail(diskMessage(MessageKind::Critical, text::kMissingExternalApplication,
                                         text::kQemuImgNotFound));
    }
    const fs::path& file = request.descriptorPath;
    if (!creation.report(DiskStep::RunningTool, file, 0)) return creation.cancel();
    ProcessResult run = runProcess(*tool, qemuImgArguments(request), {},
                                   [&] { return !creation.report(DiskStep::RunningTool, file, sizeSoFar(file)); });
    if (run.started) creation.made(file);  // whatever the tool left is taken back on failure
    if (!run.started) return creation.fail(run.startError);
    if (run.stopped || creation.cancelled()) return creation.cancel();
    if (run.exitCode != 0) {
        std::string reason = tool->string() + " ended with exit code " + std::to_string(run.exitCode);
        std::string_view said = trimBlanks(run.standardError);
        if (!said.empty()) reason += ": " + std::string(said);
        return creation.fail(reason);
    }
    std::error_code ec;
    if (!fs::exists(file, ec)) return creation.fail(pathText(*tool) + " ended without writing " + pathText(file));
    return creation.done(file);
}

}  // namespace

std::string qemuImgSizeText(std::int64_t totalSectors) {
    std::string text = std::to_string(totalSectors / 2);
    if (totalSectors % 2 != 0) text += ".5";
    return text;
}

std::vector<std::string> qemuImgArguments(const NewDiskRequest& request) {
    std::string path = pathText(request.descriptorPath);
    if (request.descriptorPath.is_relative()) path = "./" + path;
    return {"create",
            "-f",
            "vmdk",
            "-o",
            "adapter_type=" + std::string(adapterText(request.adapter)) +
                ",hwversion=" + std::to_string(request.hardwareVersion),
            path,
            qemuImgSizeText(request.totalSectors) + "K"};
}

DiskCreationResult createDisk(const NewDiskRequest& request, const DiskProgress& progress,
                              const DiskCreationOptions& options) {
    const DiskKindInfo& kind = diskKindInfo(request.kind);
    Creation creation(progress, kind.preallocated ? request.totalSectors * kSectorBytes : 0);
    for (const fs::path& file : diskFiles(request, options.pieceSectors)) {
        std::error_code ec;
        if (fs::exists(fs::symlink_status(file, ec))) {
            return creation.fail(diskMessage(MessageKind::Warning, text::kFileExists, text::kDiskAlreadyExists,
                                             pathText(file)));
        }
    }
    if (request.kind == DiskKind::Growable) return createWithQemuImg(request, creation);

    const fs::path folder = request.descriptorPath.parent_path();
    const std::string base = diskBaseName(request);
    std::int64_t done = 0;
    for (const ExtentPiece& piece : extentPieces(request.kind, base, request.totalSectors, options.pieceSectors)) {
        const fs::path path = folder / piece.fileName;
        if (!kind.preallocated && !creation.report(DiskStep::WritingExtent, path, done)) return creation.cancel();
        FileError error = kind.preallocated ? preallocate(path, piece.sectors * kSectorBytes, done, options.writeZeros, creation)
                                            : writeSparseExtent(path, piece.sectors);
        if (error) return creation.fail(*error);
        if (creation.cancelled()) return creation.cancel();
        creation.made(path);
        if (!kind.preallocated) done += sizeSoFar(path);
    }

    if (!creation.report(DiskStep::Descriptor, request.descriptorPath, done)) return creation.cancel();
    DescriptorFields fields{base, request.totalSectors, request.adapter, request.kind, request.hardwareVersion, makeCid(),
                            options.pieceSectors};
    if (auto error = writeFileAtomically(request.descriptorPath, descriptorText(fields))) return creation.fail(*error);
    return creation.done(request.descriptorPath);
}

}  // namespace arden::disks
