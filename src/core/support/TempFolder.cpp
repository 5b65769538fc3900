#include "core/support/TempFolder.h"

#include <cstdlib>

#ifdef _WIN32
#include <windows.h>
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
    char buffer[kBufferSize];
    DWORD length = GetTempPathA(static_cast<DWORD>(kBufferSize), buffer);
    if (length > 0 && length < kBufferSize) return std::string(buffer, length);
    return {};
#else
    return tempFolderFromEnvironment(std::getenv("TMPDIR"));
#endif
}

}  // namespace arden
