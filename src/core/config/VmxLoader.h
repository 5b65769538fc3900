#pragma once
// Reads a .vmx file into a configuration: the settings the editor manages go into the model
// and the device store; every other line is kept, in file order, to be written back.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/config/VmConfiguration.h"
#include "core/support/Message.h"

namespace arden {

// Something worth telling the user about a file that was read nevertheless.
struct LoadNotice {
    int line = 0;        // 1-based line number
    std::string text;    // e.g. "line without \"=\" kept as it stands"
};

struct LoadResult {
    bool ok = false;
    VmConfiguration config;
    std::vector<LoadNotice> notices;
    std::optional<Message> error;   // set when !ok: names the file and what is wrong
};

// Largest file and line the loader accepts; anything larger is not a configuration file.
inline constexpr std::size_t kMaxVmxFileBytes = 16u * 1024u * 1024u;
inline constexpr std::size_t kMaxVmxLineBytes = 1024u * 1024u;

// Notices listed for one file; the rest are counted in one closing notice, so a file of junk
// lines costs neither minutes nor memory to read and to show.
inline constexpr std::size_t kMaxLoadNotices = 100;

// Reads and parses a file. The folder and file name of `path` fill the identity settings.
LoadResult loadVmxFile(const std::filesystem::path& path);

// Parses the bytes of a configuration; `sourceName` names the file in messages.
LoadResult parseVmxText(std::string_view bytes, const std::string& folder, const std::string& fileName,
                        const std::string& sourceName);

}  // namespace arden
