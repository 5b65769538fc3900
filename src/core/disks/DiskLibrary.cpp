#include "core/disks/DiskLibrary.h"

#include <cstdlib>

namespace arden::disks {

namespace {
constexpr const char* kNoVersion = "N/A";
}

std::filesystem::path diskLibraryPath() {
    const char* common = std::getenv("CommonProgramFiles");
    if (common == nullptr || *common == '\0') return {};
    return std::filesystem::path(common) / "VMware" / "VMware Virtual Image Editing" / "vielib.dll";
}

std::string diskLibraryVersion() {
    // The library is a Windows DLL whose version sits in its version resource. This build
    // has no loader for it, so even a file at that place cannot be used: no version.
    return kNoVersion;
}

CreationMethod defaultCreationMethod() {
    return diskLibraryVersion() == kNoVersion ? CreationMethod::External : CreationMethod::VMwareLibrary;
}

}  // namespace arden::disks
