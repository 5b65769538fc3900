#include "core/config/SavePreview.h"

#include <functional>
#include <string_view>
#include <system_error>

#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "core/support/AtomicFile.h"
#include "core/support/LineDiff.h"
#include "core/support/PathText.h"

namespace arden {
namespace {

// The value of a first line `.encoding = "NAME"`, the only place a file names its encoding.
std::string encodingNamed(std::string_view text) {
    const std::string_view first = text.substr(0, text.find('\n'));
    if (first.rfind(".encoding", 0) != 0) return {};
    const std::size_t open = first.find('"');
    const std::size_t close = open == std::string_view::npos ? open : first.find('"', open + 1);
    if (close == std::string_view::npos) return {};
    return std::string(first.substr(open + 1, close - open - 1));
}

bool exists(const std::string& path) {
    std::error_code ec;
    return std::filesystem::exists(filePath(path), ec);
}

}  // namespace

SavePreview previewSave(const VmConfiguration& config) {
    SavePreview preview;
    preview.path = config.vmxPath();
    preview.written = writeVmxText(config);
    preview.encoding = encodingNamed(preview.written);
    preview.fileExists = exists(preview.path);
    std::string onDisk;
    if (preview.fileExists) {
        std::string error;
        auto bytes = readWholeFile(filePath(preview.path), error, kMaxVmxFileBytes);
        if (!bytes) {
            preview.readError = error;
            return preview;
        }
        onDisk = std::move(*bytes);
    }
    preview.diff = unifiedDiff(onDisk, preview.written, preview.fileExists ? preview.path : "/dev/null", preview.path);
    return preview;
}

std::optional<FileBaseline::Stamp> FileBaseline::stampOf(const std::string& path) {
    if (!exists(path)) return std::nullopt;
    std::string error;
    auto bytes = readWholeFile(filePath(path), error, kMaxVmxFileBytes);
    if (!bytes) return std::nullopt;
    return Stamp{bytes->size(), std::hash<std::string_view>{}(*bytes)};
}

void FileBaseline::take(const std::string& path) {
    path_ = path;
    stamp_ = stampOf(path);
    taken_ = true;
}

void FileBaseline::take(const std::string& path, const std::string& bytes) {
    path_ = path;
    stamp_ = Stamp{bytes.size(), std::hash<std::string_view>{}(bytes)};
    taken_ = true;
}

bool FileBaseline::changedOnDisk(const std::string& path) const {
    return taken_ && path == path_ && stampOf(path) != stamp_;
}

}  // namespace arden
