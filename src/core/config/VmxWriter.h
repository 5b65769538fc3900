#pragma once
// Turns a configuration into the text of a .vmx file: the header banner, the sections in
// their fixed order with the keys of each, the lines kept from the opened file, the end
// banner. Lines end with CR LF; every value is quoted; no key is written twice.
#include <map>
#include <optional>
#include <string>
#include <unordered_map>

#include "core/config/VmConfiguration.h"

namespace arden {

// Values are written in the opened file's encoding (in UTF-8, every line re-encoded, when the
// file is being converted); the first value that encoding cannot hold goes into `gap`, and such
// a text is not to be written.
std::string writeVmxText(const VmConfiguration& config, std::optional<EncodingGap>* gap = nullptr);

// The value the editor gives every key it writes (held keys included), by lower-case key: what
// the loader records as VmConfiguration::heldKeys right after opening.
std::unordered_map<std::string, std::string> editorValues(const VmConfiguration& config);

// Whether the writer writes any key of the device's own settings (`held`: the keys held back,
// as VmConfiguration::heldKeys). The lines kept under a device that writes none go to the end
// of the file with the other kept lines.
bool writesOwnKeys(const Device& device, const std::string& vmxFolder, const std::map<std::string, std::string>& held);

// A file name as written for a disk, image or other file: only the name when its folder is
// the configuration's folder (compared as the file system compares names: with regard to case
// on POSIX, without on Windows), otherwise the whole path.
std::string relativeToVmxFolder(const std::string& fileName, const std::string& vmxFolder);

}  // namespace arden
