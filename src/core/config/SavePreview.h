#pragma once
// What a save would change, seen before anything is written: the file on disk against the text
// the writer would write, as a unified diff; and whether another program wrote the file since
// the editor last read or wrote it.
#include <cstddef>
#include <optional>
#include <string>

#include "core/config/VmConfiguration.h"

namespace arden {

struct SavePreview {
    std::string path;          // the file a save writes
    bool fileExists = false;   // false: a save would create it
    std::string written;       // the text the writer would write
    std::string diff;          // unified diff of the file on disk against `written`; empty when equal
    std::string encoding;      // the ".encoding" value the written text begins with, empty when none
    std::optional<std::string> readError;  // the file is there but cannot be read (no diff then)
};

// Writes nothing: reads the file at the configuration's path and compares it with the writer's
// text. The diff's labels are the path on both sides ("/dev/null" for a file not there yet).
SavePreview previewSave(const VmConfiguration& config);

// The file an editor last read or wrote, remembered by path, size and a hash of its bytes.
class FileBaseline {
public:
    // Remembers the file at `path` as it is on disk now (as absent when there is none).
    void take(const std::string& path);
    // Remembers `bytes` as the contents of `path` (after writing them).
    void take(const std::string& path, const std::string& bytes);
    // True when `path` is the remembered file and what is on disk now is not what was
    // remembered: another program wrote, created or removed it.
    bool changedOnDisk(const std::string& path) const;

private:
    struct Stamp {
        std::size_t size = 0;
        std::size_t hash = 0;
        bool operator==(const Stamp&) const = default;
    };
    static std::optional<Stamp> stampOf(const std::string& path);
    std::string path_;
    std::optional<Stamp> stamp_;
    bool taken_ = false;
};

}  // namespace arden
