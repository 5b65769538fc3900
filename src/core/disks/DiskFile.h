#pragma once
// The few file operations the disk writers need, kept behind one small class so that each
// operating system supplies its own: create a new file (never opening an existing one),
// write bytes at an offset, set the length without writing data, and reserve real space.
// Every failure comes back as a text naming the file and the system's reason.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arden::disks {

using FileError = std::optional<std::string>;

// Zeros are written in pieces of this size (one progress report each).
inline constexpr std::int64_t kZeroChunkBytes = std::int64_t{1} << 20;

class DiskFile {
public:
    // Creates `path`, which must not exist yet.
    static DiskFile createNew(const std::filesystem::path& path, FileError& error);

    DiskFile(DiskFile&& other) noexcept;
    DiskFile& operator=(DiskFile&&) = delete;
    DiskFile(const DiskFile&) = delete;
    DiskFile& operator=(const DiskFile&) = delete;
    ~DiskFile();

    bool isOpen() const { return handle_ >= 0; }
    const std::filesystem::path& path() const { return path_; }

    FileError writeAt(std::int64_t offset, std::string_view bytes);
    // Makes the file `bytes` long; a file grown this way holds no data blocks for the new part.
    FileError setLength(std::int64_t bytes);
    // Asks the file system to reserve real space for [offset, offset + length); the file grows
    // to cover it. When the file system cannot reserve space directly, `unsupported` is set,
    // nothing is done and the caller writes zeros instead (writeZeros).
    FileError allocate(std::int64_t offset, std::int64_t length, bool& unsupported);
    // Writes `length` zero bytes at `offset`.
    FileError writeZeros(std::int64_t offset, std::int64_t length);
    // Puts what was written so far on the disk and lets the system drop it from its cache, so
    // that gigabytes of zeros do not crowd out the memory other programs (and our window) use.
    FileError flushAndRelease();
    FileError close();
    // Closes and removes the file: used when writing it failed or was cancelled.
    void discard();

private:
    DiskFile(std::filesystem::path path, int handle) : path_(std::move(path)), handle_(handle) {}

    std::filesystem::path path_;
    int handle_ = -1;
};

// Lets the calling thread give way to the program's other threads (on Linux a thread has a
// scheduling priority of its own): used by the thread that writes a disk while a window runs.
void lowerThreadPriority();

// Removes the files that a failed or cancelled creation made; errors are ignored because the
// creation's own failure is what gets reported.
void removeFiles(const std::vector<std::filesystem::path>& files);

}  // namespace arden::disks
