#pragma once
// Whole-file reads and writes that never leave a half-written target and only ever touch
// regular files. A write goes to a temporary file in the target's folder, which is flushed and
// renamed over the target, then the folder is flushed. Where a rename would break what the
// user has, the file is rewritten in place instead, its old bytes held in memory and put back
// if the write fails: a target reached through a symlink is the file the link points to (the
// link stays), and a file with other hard links, in a folder the user cannot write to, or
// whose owner or group the new file could not take, keeps its inode. Mode, owner and group
// stay as they were either way.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "core/support/PathText.h"

namespace arden {

// How a successful write was done: `inPlace` with the reason ("its folder is not writable")
// when the file was rewritten in place, so no copy of the old contents was on disk meanwhile.
struct FileWriteReport {
    bool inPlace = false;
    std::string reason;
};

// Writes `bytes` to `target`. Returns std::nullopt on success, otherwise a message that
// names the file and gives the system's reason. On failure the target is unchanged and
// no temporary file is left behind. A target that exists and is not a regular file (a FIFO,
// a device, a socket, a folder) is refused before anything is opened.
std::optional<std::string> writeFileAtomically(const std::filesystem::path& target, std::string_view bytes,
                                               FileWriteReport* report = nullptr);

// Reads a whole regular file as bytes. Returns std::nullopt and sets `error` (naming the file
// and the reason) when it cannot be read, is not a regular file (refused at once: a FIFO is
// never waited on), or is larger than `maxBytes`.
std::optional<std::string> readWholeFile(const std::filesystem::path& file, std::string& error,
                                         std::size_t maxBytes = std::numeric_limits<std::size_t>::max());

// What a path is, for messages ("a FIFO (named pipe)", "a character device", "a folder" ...),
// following symlinks; empty for a regular file or a path that does not exist.
std::string nonRegularKind(const std::filesystem::path& file);

// The file a path stands for once every symlink along the final name is followed (the link's
// own folder is the base of a relative link). A path that is no link is returned as it is.
std::filesystem::path followLinks(const std::filesystem::path& file);

// "Cannot write /x/y.vmx: Permission denied" style text for the last errno.
std::string describeFileError(std::string_view verb, const std::filesystem::path& file, int err);

namespace detail {
// The refusals both platforms' reads and writes give, with the file's name.
std::string notRegular(std::string_view verb, const std::filesystem::path& file, const std::string& kind,
                       std::string_view what);
std::string tooLarge(const std::filesystem::path& file, std::uintmax_t size, std::size_t maxBytes);
}  // namespace detail

}  // namespace arden
