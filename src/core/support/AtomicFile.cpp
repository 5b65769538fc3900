#include "core/support/AtomicFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace arden {
namespace fs = std::filesystem;

std::string describeFileError(std::string_view verb, const fs::path& file, int err) {
    std::string text(verb);
    text += ' ';
    text += pathText(file);
    text += ": ";
    text += std::strerror(err);
    return text;
}

fs::path followLinks(const fs::path& file) {
    fs::path current = file;
    std::error_code ec;
    for (int hops = 0; hops < 40 && fs::is_symlink(fs::symlink_status(current, ec)); ++hops) {
        fs::path link = fs::read_symlink(current, ec);
        if (ec) break;
        current = link.is_absolute() ? link : current.parent_path() / link;
    }
    return current;
}

std::string nonRegularKind(const fs::path& file) {
    std::error_code ec;
    fs::file_status st = fs::status(file, ec);
    switch (st.type()) {
        case fs::file_type::directory: return "a folder";
        case fs::file_type::fifo: return "a FIFO (named pipe)";
        case fs::file_type::character: return "a character device";
        case fs::file_type::block: return "a block device";
        case fs::file_type::socket: return "a socket";
        case fs::file_type::regular:
        case fs::file_type::not_found:
        case fs::file_type::none: return {};
        default: return "not a regular file";
    }
}

namespace detail {

std::string notRegular(std::string_view verb, const fs::path& file, const std::string& kind, std::string_view what) {
    return std::string(verb) + " " + pathText(file) + ": it is " + kind +
           ", not a regular file; only regular files are " + std::string(what);
}

std::string tooLarge(const fs::path& file, std::uintmax_t size, std::size_t maxBytes) {
    return "Cannot read " + pathText(file) + ": the file is " + std::to_string(size) + " bytes long; at most " +
           std::to_string(maxBytes) + " bytes are read";
}

}  // namespace detail

using detail::notRegular;
using detail::tooLarge;

// The Windows halves of the two functions below are in AtomicFileWindows.cpp.
#ifndef _WIN32
namespace {

bool writeAllAt(int fd, std::string_view bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = ::pwrite(fd, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    return true;
}

// Replaces the contents of `fd` with `bytes`, flushed. Returns 0 or the errno of the failure.
int replaceContents(int fd, std::string_view bytes) {
    if (!writeAllAt(fd, bytes) || ::ftruncate(fd, static_cast<off_t>(bytes.size())) != 0) return errno;
    if (::fsync(fd) != 0 && errno != EINVAL) return errno;
    return 0;
}

void syncFolder(const fs::path& folder) {
    int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

// Rewrites an existing file in place; its old bytes are put back if the new ones cannot be written.
std::optional<std::string> rewriteInPlace(const fs::path& file, std::string_view bytes) {
    std::string error;
    auto old = readWholeFile(file, error);
    if (!old) return error;
    int fd = ::open(file.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) return describeFileError("Cannot write", file, errno);
    int err = replaceContents(fd, bytes);
    if (err != 0) {
        bool restored = replaceContents(fd, *old) == 0;
        ::close(fd);
        return describeFileError("Cannot write", file, err) +
               (restored ? "; its old contents were put back" : "; its old contents could not all be put back");
    }
    if (::close(fd) != 0) return describeFileError("Cannot write", file, errno);
    return std::nullopt;
}

// A temporary name beside `file` that stays within the 255-byte name limit however long the
// file's own name is.
std::string temporaryPattern(const fs::path& file) {
    std::string name = file.filename().string();
    if (name.size() > 200) name.resize(200);
    fs::path folder = file.parent_path();
    if (folder.empty()) folder = ".";
    return (folder / ("." + name + ".XXXXXX")).string();
}

}  // namespace

std::optional<std::string> writeFileAtomically(const fs::path& target, std::string_view bytes, FileWriteReport* report) {
    const fs::path real = followLinks(target);
    if (std::string kind = nonRegularKind(real); !kind.empty()) return notRegular("Cannot write", target, kind, "replaced");
    struct stat existing {};
    const bool exists = ::stat(real.c_str(), &existing) == 0;
    auto inPlace = [&](std::string reason) -> std::optional<std::string> {
        auto error = rewriteInPlace(real, bytes);
        if (!error && report) *report = FileWriteReport{true, std::move(reason)};
        return error;
    };
    if (exists && existing.st_nlink > 1) return inPlace("it has other hard links");

    std::string pattern = temporaryPattern(real);
    int fd = ::mkstemp(pattern.data());
    if (fd < 0) {
        int err = errno;
        if (exists && (err == EACCES || err == EPERM)) return inPlace("its folder is not writable");
        return describeFileError("Cannot write", target, err);
    }
    if (exists) {
        ::fchmod(fd, existing.st_mode & 07777);
        struct stat made {};
        ::fstat(fd, &made);
        if ((made.st_uid != existing.st_uid || made.st_gid != existing.st_gid) &&
            ::fchown(fd, existing.st_uid, existing.st_gid) != 0) {
            ::close(fd);
            ::unlink(pattern.c_str());
            return inPlace("its owner or group could not be kept on a new file");
        }
        // The mode again: changing the owner may clear the set-id bits.
        ::fchmod(fd, existing.st_mode & 07777);
    } else {
        mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(fd, 0666 & ~mask);
    }

    int err = replaceContents(fd, bytes);
    if (::close(fd) != 0 && err == 0) err = errno;
    if (err == 0 && ::rename(pattern.c_str(), real.c_str()) != 0) err = errno;
    if (err != 0) {
        ::unlink(pattern.c_str());
        return describeFileError("Cannot write", target, err);
    }
    syncFolder(real.parent_path().empty() ? fs::path(".") : real.parent_path());
    if (report) *report = FileWriteReport{};
    return std::nullopt;
}

std::optional<std::string> readWholeFile(const fs::path& file, std::string& error, std::size_t maxBytes) {
    // Opened without waiting (a FIFO would block a plain open), then looked at before reading.
    int fd = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        error = describeFileError("Cannot read", file, errno);
        return std::nullopt;
    }
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        std::string kind = nonRegularKind(file);
        error = notRegular("Cannot read", file, kind.empty() ? "not a regular file" : kind, "read");
        return std::nullopt;
    }
    if (static_cast<std::uintmax_t>(st.st_size) > maxBytes) {
        ::close(fd);
        error = tooLarge(file, static_cast<std::uintmax_t>(st.st_size), maxBytes);
        return std::nullopt;
    }
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(st.st_size));  // one allocation for a file that does not grow meanwhile
    char buffer[65536];
    for (;;) {
        ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            error = describeFileError("Cannot read", file, errno);
            ::close(fd);
            return std::nullopt;
        }
        if (n == 0) break;
        bytes.append(buffer, static_cast<std::size_t>(n));
        if (bytes.size() > maxBytes) {
            ::close(fd);
            error = tooLarge(file, bytes.size(), maxBytes);
            return std::nullopt;
        }
    }
    ::close(fd);
    return bytes;
}
#endif

}  // namespace arden
