#include "core/support/AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace arden {

std::string describeFileError(std::string_view verb, const std::filesystem::path& file, int err) {
    std::string text(verb);
    text += ' ';
    text += file.string();
    text += ": ";
    text += std::strerror(err);
    return text;
}

#ifndef _WIN32
namespace {

bool writeAll(int fd, std::string_view bytes) {
    const char* p = bytes.data();
    std::size_t left = bytes.size();
    while (left > 0) {
        ssize_t n = ::write(fd, p, left);
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        p += n;
        left -= static_cast<std::size_t>(n);
    }
    return true;
}

}  // namespace

std::optional<std::string> writeFileAtomically(const std::filesystem::path& target,
                                               std::string_view bytes) {
    std::filesystem::path folder = target.parent_path();
    if (folder.empty()) folder = ".";
    std::string pattern = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
    int fd = ::mkstemp(pattern.data());
    if (fd < 0) return describeFileError("Cannot write", target, errno);

    struct stat existing {};
    if (::stat(target.c_str(), &existing) == 0) {
        ::fchmod(fd, existing.st_mode & 07777);
    } else {
        mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(fd, 0666 & ~mask);
    }

    int err = 0;
    if (!writeAll(fd, bytes)) err = errno;
    if (err == 0 && ::fsync(fd) != 0 && errno != EINVAL) err = errno;
    if (::close(fd) != 0 && err == 0) err = errno;
    if (err == 0 && ::rename(pattern.c_str(), target.c_str()) != 0) err = errno;
    if (err != 0) {
        ::unlink(pattern.c_str());
        return describeFileError("Cannot write", target, err);
    }
    return std::nullopt;
}
#else
std::optional<std::string> writeFileAtomically(const std::filesystem::path& target,
                                               std::string_view bytes) {
    std::filesystem::path temp = target;
    temp += ".tmp~";
    {
        std::ofstream out(temp, std::ios::binary | std::ios::trunc);
        if (!out) return describeFileError("Cannot write", target, errno);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.flush();
        if (!out) {
            int err = errno;
            out.close();
            std::filesystem::remove(temp);
            return describeFileError("Cannot write", target, err);
        }
    }
    if (!MoveFileExW(temp.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        std::filesystem::remove(temp);
        return "Cannot write " + target.string() + ": the file could not be replaced";
    }
    return std::nullopt;
}
#endif

std::optional<std::string> readWholeFile(const std::filesystem::path& file, std::string& error) {
    std::error_code ec;
    if (std::filesystem::is_directory(file, ec)) {
        error = describeFileError("Cannot read", file, EISDIR);
        return std::nullopt;
    }
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        error = describeFileError("Cannot read", file, errno ? errno : ENOENT);
        return std::nullopt;
    }
    std::string bytes;
    in.seekg(0, std::ios::end);
    std::streamoff size = in.tellg();
    if (size > 0) {
        bytes.resize(static_cast<std::size_t>(size));
        in.seekg(0, std::ios::beg);
        in.read(bytes.data(), size);
        bytes.resize(static_cast<std::size_t>(in.gcount()));
    }
    if (in.bad()) {
        error = describeFileError("Cannot read", file, errno ? errno : EIO);
        return std::nullopt;
    }
    return bytes;
}

}  // namespace arden
