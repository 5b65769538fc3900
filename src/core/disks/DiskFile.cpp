#include "core/disks/DiskFile.h"

#include <algorithm>
#include <cerrno>
#include <vector>

#include "core/support/AtomicFile.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace arden::disks {

namespace {

FileError failure(const std::filesystem::path& path, int err) { return describeFileError("Cannot write", path, err); }

}  // namespace

void removeFiles(const std::vector<std::filesystem::path>& files) {
    for (const auto& file : files) {
        std::error_code ec;
        std::filesystem::remove(file, ec);
    }
}

DiskFile::DiskFile(DiskFile&& other) noexcept : path_(std::move(other.path_)), handle_(other.handle_) {
    other.handle_ = -1;
}

DiskFile::~DiskFile() { close(); }

#ifndef _WIN32

DiskFile DiskFile::createNew(const std::filesystem::path& path, FileError& error) {
    int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) error = failure(path, errno);
    return DiskFile(path, fd);
}

FileError DiskFile::writeAt(std::int64_t offset, std::string_view bytes) {
    const char* p = bytes.data();
    std::size_t left = bytes.size();
    while (left > 0) {
        ssize_t n = ::pwrite(handle_, p, left, static_cast<off_t>(offset));
        if (n < 0) {
            if (errno == EINTR) continue;
            return failure(path_, errno);
        }
        p += n;
        left -= static_cast<std::size_t>(n);
        offset += n;
    }
    return std::nullopt;
}

FileError DiskFile::setLength(std::int64_t bytes) {
    if (::ftruncate(handle_, static_cast<off_t>(bytes)) != 0) return failure(path_, errno);
    return std::nullopt;
}

FileError DiskFile::allocate(std::int64_t offset, std::int64_t length, bool& unsupported) {
    int err = ::posix_fallocate(handle_, static_cast<off_t>(offset), static_cast<off_t>(length));
    unsupported = err == EOPNOTSUPP || err == EINVAL;
    if (err == 0 || unsupported) return std::nullopt;
    return failure(path_, err);
}

FileError DiskFile::flushAndRelease() {
    if (::fdatasync(handle_) != 0 && errno != EINVAL) return failure(path_, errno);
    ::posix_fadvise(handle_, 0, 0, POSIX_FADV_DONTNEED);
    return std::nullopt;
}

void lowerThreadPriority() {
#ifdef __linux__
    // On Linux the nice value belongs to the thread, so only the disk writer gives way.
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::syscall(SYS_gettid)), 10);
#endif
}

FileError DiskFile::close() {
    if (handle_ < 0) return std::nullopt;
    int fd = handle_;
    handle_ = -1;
    if (::close(fd) != 0) return failure(path_, errno);
    return std::nullopt;
}

#endif

void DiskFile::discard() {
    close();
    removeFiles({path_});
}

FileError DiskFile::writeZeros(std::int64_t offset, std::int64_t length) {
    static const std::string zeros(kZeroChunkBytes, '\0');
    while (length > 0) {
        std::int64_t n = std::min<std::int64_t>(length, static_cast<std::int64_t>(zeros.size()));
        if (FileError e = writeAt(offset, std::string_view(zeros.data(), static_cast<std::size_t>(n)))) return e;
        offset += n;
        length -= n;
    }
    return std::nullopt;
}

}  // namespace arden::disks
