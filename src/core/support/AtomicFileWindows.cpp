// Whole-file reads and writes on Windows. A write goes to a new temporary file beside the
// target, is flushed to the disk, and takes the target's place with ReplaceFileW, which keeps
// the target's attributes, security and creation time (a read-only target keeps its mark too);
// a target that does not exist yet is put in place with MoveFileExW. A failed write removes its temporary file and leaves the
// target as it was.
#ifdef _WIN32

#include <windows.h>

#include <random>

#include "core/support/AtomicFile.h"
#include "core/support/WindowsText.h"

namespace arden {
namespace fs = std::filesystem;

namespace {

class Handle {
public:
    explicit Handle(HANDLE h) : h_(h) {}
    ~Handle() {
        if (valid()) CloseHandle(h_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    bool valid() const { return h_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return h_; }
    // Closes now; the system's error code of a failed close, else 0.
    DWORD close() {
        DWORD error = (valid() && !CloseHandle(h_)) ? GetLastError() : 0;
        h_ = INVALID_HANDLE_VALUE;
        return error;
    }

private:
    HANDLE h_;
};

DWORD writeAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD piece = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 30));
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), piece, &written, nullptr)) return GetLastError();
        bytes.remove_prefix(written);
    }
    return FlushFileBuffers(file) ? 0 : GetLastError();
}

// A new file beside `target` that no other writer uses: "." + name + "." + random digits.
fs::path createTemporary(const fs::path& target, HANDLE& out, DWORD& error) {
    std::random_device random;
    fs::path folder = target.parent_path();
    std::wstring name = target.filename().native();
    if (name.size() > 200) name.resize(200);
    for (int attempt = 0; attempt < 100; ++attempt) {
        fs::path candidate = folder / (L"." + name + L"." + std::to_wstring(random() % 1000000u) + L".tmp");
        HANDLE h = CreateFileW(candidate.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (h != INVALID_HANDLE_VALUE) {
            out = h;
            return candidate;
        }
        error = GetLastError();
        if (error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS) return {};
    }
    return {};
}

}  // namespace

std::optional<std::string> writeFileAtomically(const fs::path& target, std::string_view bytes, FileWriteReport* report) {
    if (std::string kind = nonRegularKind(target); !kind.empty()) return detail::notRegular("Cannot write", target, kind, "replaced");
    HANDLE made = INVALID_HANDLE_VALUE;
    DWORD error = 0;
    fs::path tempPath = createTemporary(target, made, error);
    Handle temp(made);
    if (!temp.valid()) return describeWindowsError("Cannot write", target, error);
    error = writeAll(temp.get(), bytes);
    if (DWORD closeError = temp.close(); error == 0) error = closeError;
    if (error == 0) {
        const DWORD attributes = GetFileAttributesW(target.c_str());
        const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
        // A read-only target (the save has asked the user first) cannot be replaced while it is
        // marked so: the mark is lifted for the replacement and put on the new file.
        const bool readOnly = exists && (attributes & FILE_ATTRIBUTE_READONLY);
        if (readOnly) SetFileAttributesW(target.c_str(), attributes & ~FILE_ATTRIBUTE_READONLY);
        BOOL done = exists ? ReplaceFileW(target.c_str(), tempPath.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                                          nullptr, nullptr)
                           : FALSE;
        // A new target, or a file system where the replacement cannot be made (ReplaceFileW
        // needs rights to the target's attributes): renamed over it instead.
        if (!done) done = MoveFileExW(tempPath.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
        if (!done) error = GetLastError();
        if (readOnly) SetFileAttributesW(target.c_str(), attributes);  // kept, whether replaced or not
    }
    if (error != 0) {
        DeleteFileW(tempPath.c_str());
        return describeWindowsError("Cannot write", target, error);
    }
    if (report) *report = FileWriteReport{};
    return std::nullopt;
}

std::optional<std::string> readWholeFile(const fs::path& file, std::string& error, std::size_t maxBytes) {
    if (std::string kind = nonRegularKind(file); !kind.empty()) {
        error = detail::notRegular("Cannot read", file, kind, "read");
        return std::nullopt;
    }
    Handle in(CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!in.valid()) {
        error = describeWindowsError("Cannot read", file, GetLastError());
        return std::nullopt;
    }
    if (GetFileType(in.get()) != FILE_TYPE_DISK) {
        error = detail::notRegular("Cannot read", file, "not a regular file", "read");
        return std::nullopt;
    }
    LARGE_INTEGER size{};
    if (GetFileSizeEx(in.get(), &size) && static_cast<std::uintmax_t>(size.QuadPart) > maxBytes) {
        error = detail::tooLarge(file, static_cast<std::uintmax_t>(size.QuadPart), maxBytes);
        return std::nullopt;
    }
    std::string bytes;
    char buffer[65536];
    for (;;) {
        DWORD n = 0;
        if (!ReadFile(in.get(), buffer, sizeof buffer, &n, nullptr)) {
            error = describeWindowsError("Cannot read", file, GetLastError());
            return std::nullopt;
        }
        if (n == 0) break;
        bytes.append(buffer, n);
        if (bytes.size() > maxBytes) {
            error = detail::tooLarge(file, bytes.size(), maxBytes);
            return std::nullopt;
        }
    }
    return bytes;
}

}  // namespace arden

#endif
