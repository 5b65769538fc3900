#pragma once
// Windows only: the program holds texts and paths as UTF-8; the wide (UTF-16) Windows functions
// get and give UTF-16. These convert at that boundary, so a folder named with non-ASCII
// letters reaches the system unchanged whatever the system code page is.
#ifdef _WIN32
#include <filesystem>
#include <string>
#include <string_view>

namespace arden {

std::wstring utf8ToWide(std::string_view text);
std::string wideToUtf8(std::wstring_view text);

// The system's text for a Windows error code ("Access is denied."), without the line end.
std::string windowsErrorText(unsigned long code);

// "Cannot write C:\x\y.vmx: Access is denied." for a Windows error code.
std::string describeWindowsError(std::string_view verb, const std::filesystem::path& file, unsigned long code);

}  // namespace arden
#endif
