#pragma once
// Turns a configuration into the text of a .vmx file: the header banner, the sections in
// their fixed order with the keys of each, the lines kept from the opened file, the end
// banner. Lines end with CR LF; every value is quoted; no key is written twice.
#include <unordered_map>
#include <string>

#include "core/config/VmConfiguration.h"

namespace arden {

std::string writeVmxText(const VmConfiguration& config);

// The value the editor gives every key it writes (held keys included), by lower-case key: what
// the loader records as VmConfiguration::heldKeys right after opening.
std::unordered_map<std::string, std::string> editorValues(const VmConfiguration& config);

// A file name as written for a disk, image or other file: only the name when its folder is
// the configuration's folder (compared as the file system compares names: with regard to case
// on POSIX, without on Windows), otherwise the whole path.
std::string relativeToVmxFolder(const std::string& fileName, const std::string& vmxFolder);

}  // namespace arden
