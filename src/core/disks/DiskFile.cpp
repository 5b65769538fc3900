#include "core/disks/DiskFile.h"

#include <algorithm>
#include <cerrno>
#include <vector>

#include "core/support/AtomicFile.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include "core/support/WindowsText.h"
#else
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace arden::disks {

namespace {

FileError failure(const std::filesystem::path& path, int err) { return describeFileError("Cannot write", path, err); }

#ifdef _WIN32
FileError windowsFailure(const std::filesystem::path& path) { return describeWindowsError("Cannot write", path, GetLastError()); }

HANDLE systemHandle(int fd) { return reinterpret_cast<HANDLE>(::_get_osfhandle(fd)); }
#endif

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

#else

// The file is opened through the C runtime (so the handle is an int on both systems) and
// written and sized through its Windows handle.
DiskFile DiskFile::createNew(const std::filesystem::path& path, FileError& error) {
    int fd = ::_wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    if (fd < 0) error = failure(path, errno);
    return DiskFile(path, fd);
}

FileError DiskFile::writeAt(std::int64_t offset, std::string_view bytes) {
    HANDLE file = systemHandle(handle_);
    while (!bytes.empty()) {
        OVERLAPPED at{};
        at.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
        at.OffsetHigh = static_cast<DWORD>(offset >> 32);
        DWORD written = 0;
        DWORD piece = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 30));
        if (!WriteFile(file, bytes.data(), piece, &written, &at)) return windowsFailure(path_);
        bytes.remove_prefix(written);
        offset += written;
    }
    return std::nullopt;
}

FileError DiskFile::setLength(std::int64_t bytes) {
    HANDLE file = systemHandle(handle_);
    LARGE_INTEGER end{};
    end.QuadPart = bytes;
    if (!SetFilePointerEx(file, end, nullptr, FILE_BEGIN) || !SetEndOfFile(file)) return windowsFailure(path_);
    return std::nullopt;
}

// The file system reserves the clusters (FileAllocationInfo), then the file is made long
// enough to cover them (SetEndOfFile): what is reserved is real space, and reads of the part
// not yet written give zeros. Where the call is not available (Wine does not implement it for
// files), the caller writes zeros instead.
FileError DiskFile::allocate(std::int64_t offset, std::int64_t length, bool& unsupported) {
    unsupported = false;
    HANDLE file = systemHandle(handle_);
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file, &size)) return windowsFailure(path_);
    if (offset + length <= size.QuadPart) return std::nullopt;
    FILE_ALLOCATION_INFO reserve{};
    reserve.AllocationSize.QuadPart = offset + length;
    if (!SetFileInformationByHandle(file, FileAllocationInfo, &reserve, sizeof reserve)) {
        DWORD code = GetLastError();
        if (code == ERROR_INVALID_PARAMETER || code == ERROR_NOT_SUPPORTED || code == ERROR_INVALID_FUNCTION ||
            code == ERROR_CALL_NOT_IMPLEMENTED) {
            unsupported = true;
            return std::nullopt;
        }
        return windowsFailure(path_);
    }
    return setLength(offset + length);
}

FileError DiskFile::flushAndRelease() {
    if (!FlushFileBuffers(systemHandle(handle_))) return windowsFailure(path_);
    return std::nullopt;
}

void lowerThreadPriority() { SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_BELOW_NORMAL); }

#endif

FileError DiskFile::close() {
    if (handle_ < 0) return std::nullopt;
    int fd = handle_;
    handle_ = -1;
#ifdef _WIN32
    const int closed = ::_close(fd);
#else
    const int closed = ::close(fd);
#endif
    if (closed != 0) return failure(path_, errno);
    return std::nullopt;
}

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
