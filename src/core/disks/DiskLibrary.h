#pragma once
// The VMware disk library, the first of the two ways a disk can be made. It is a Windows
// library found below the common program-files folder; where it cannot be loaded its
// version text is "N/A" and disks are made by the external method.
#include <filesystem>
#include <string>

namespace arden::disks {

enum class CreationMethod { VMwareLibrary, External };

// Where the library would be: the "CommonProgramFiles" environment value followed by
// "VMware/VMware Virtual Image Editing/vielib.dll"; empty when the value is not set.
std::filesystem::path diskLibraryPath();

// The library's version text, or "N/A" when it is absent or cannot be used on this system.
std::string diskLibraryVersion();

// The method the dialog selects when it opens.
CreationMethod defaultCreationMethod();

}  // namespace arden::disks
