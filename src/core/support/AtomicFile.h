#pragma once
// Whole-file writes that never leave a half-written target: the bytes go to a temporary
// file in the target's folder, which is flushed and then renamed over the target.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace arden {

// Writes `bytes` to `target`. Returns std::nullopt on success, otherwise a message that
// names the file and gives the system's reason. On failure the target is unchanged and
// no temporary file is left behind. An existing target keeps its permission bits.
std::optional<std::string> writeFileAtomically(const std::filesystem::path& target,
                                               std::string_view bytes);

// Reads a whole file as bytes. Returns std::nullopt and sets `error` (naming the file and
// the reason) when it cannot be read.
std::optional<std::string> readWholeFile(const std::filesystem::path& file, std::string& error);

// "Cannot write /x/y.vmx: Permission denied" style text for the last errno.
std::string describeFileError(std::string_view verb, const std::filesystem::path& file, int err);

}  // namespace arden
