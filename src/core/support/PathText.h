#pragma once
// Paths and the program's texts meet here. Texts (file names in a .vmx, command-line
// arguments, messages) are UTF-8; a path made from a text, or shown as one, is converted as
// UTF-8 on every system. On Windows a path holds UTF-16, and building it from a plain
// std::string would read the text in the C runtime's code page instead, so a folder named
// with non-ASCII letters would become another folder.
#include <filesystem>
#include <string>
#include <string_view>

namespace arden {

inline std::filesystem::path filePath(std::string_view text) {
    return std::filesystem::path(std::u8string_view(reinterpret_cast<const char8_t*>(text.data()), text.size()));
}

inline std::string pathText(const std::filesystem::path& path) {
    std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

}  // namespace arden
