#include "core/support/TempFolder.h"

#include <cstdlib>

#ifdef _WIN32
#include <windows.h>

#include "core/support/WindowsText.h"
#endif

namespace arden {

namespace {
constexpr std::size_t kBufferSize = 512;
}

std::string tempFolderFromEnvironment(const char* tmpdir) {
    std::string folder = tmpdir ? tmpdir : "";
    if (!folder.empty() && folder.back() != kPathSeparator) folder += kPathSeparator;
    if (folder.empty() || folder.size() >= kBufferSize) return std::string("/tmp") + kPathSeparator;
    return folder;
}

std::string TempFolder() {
#ifdef _WIN32
    // The wide call, so a temporary folder below a user name with non-ASCII letters is kept
    // as it is (as UTF-8) instead of passing through the system code page.
    wchar_t buffer[kBufferSize];
    DWORD length = GetTempPathW(static_cast<DWORD>(kBufferSize), buffer);
    if (length > 0 && length < kBufferSize) return wideToUtf8(std::wstring_view(buffer, length));
    return {};
#else
    return tempFolderFromEnvironment(std::getenv("TMPDIR"));
#endif
}

}  // namespace arden
