#pragma once
// The system's temporary folder, as the program finds it once at start-up, and the directory
// separator of built paths.
#include <string>

namespace arden {

#ifdef _WIN32
inline constexpr char kPathSeparator = '\\';
#else
inline constexpr char kPathSeparator = '/';
#endif

// The temporary folder with its trailing separator, as a text that is never normalised.
// Windows: what GetTempPathW returns into a 512-character buffer, as UTF-8, used only when its length is
// greater than 0 and less than 512 (else empty). POSIX: $TMPDIR with a separator added when it
// has none, or "/tmp/" when $TMPDIR is unset, empty or 512 characters or longer.
std::string TempFolder();

// The POSIX rule above for a given value of $TMPDIR (nullptr when unset).
std::string tempFolderFromEnvironment(const char* tmpdir);

}  // namespace arden
