#include "core/config/VmConfiguration.h"

#include "core/config/DeviceFeatures.h"

#include "core/hardware/DeviceDefaults.h"
#include "core/hardware/DeviceKeys.h"

namespace arden {

VmConfiguration VmConfiguration::newMachine(const std::string& displayName, const std::string& folder,
                                            const std::string& defaultName, std::uint32_t macSeed) {
    VmConfiguration c;
    const std::string name = displayName.empty() ? defaultName : displayName;
    c.identity.vmxFileName = name + ".vmx";
    c.identity.displayName = name;
    c.identity.vmxFolder = folder;
    const GuestEntry& guest = guestVersions(c.product.guestFamily)[static_cast<std::size_t>(c.product.guestVersion)];
    addNewMachineDevices(c.devices, guest.recommendedMemoryMb, macSeed);
    return c;
}

ProductFigures VmConfiguration::figures() const {
    if (auto f = productFigures(product.platform, product.version)) return *f;
    if (auto f = productFigures(product.platform, lastVersion(product.platform))) return *f;
    return *productFigures(kWorkstation, ProductSettings{}.version);
}

std::string VmConfiguration::configVersionText() const {
    return product.configVersionAsRead.empty() ? std::to_string(figures().configVersion) : product.configVersionAsRead;
}

std::string VmConfiguration::hwVersionText() const {
    return product.hwVersionAsRead.empty() ? std::to_string(figures().virtualHwVersion) : product.hwVersionAsRead;
}

void VmConfiguration::retarget(int platform, int version) {
    product.platform = platform;
    product.version = version;
    product.configVersionAsRead.clear();
    product.hwVersionAsRead.clear();
    devices.busOptions = busOptions(figures());
}

std::string formatNote(const VmConfiguration& config) {
    int hw = 0;
    if (!parseInt32(config.product.hwVersionAsRead, hw) || hw <= newestHardwareVersion()) return {};
    return "written for virtual hardware version " + std::to_string(hw) + "; saving keeps it";
}

std::string VmConfiguration::vmxPath() const {
    const std::string& folder = identity.vmxFolder;
    if (folder.empty()) return identity.vmxFileName;
    char last = folder.back();
    if (last == '/' || last == '\\') return folder + identity.vmxFileName;
#ifdef _WIN32
    return folder + "\\" + identity.vmxFileName;
#else
    return folder + "/" + identity.vmxFileName;
#endif
}

bool VmConfiguration::selectGuest(int family, int version) {
    auto rows = guestVersions(family);
    if (version < 0 || static_cast<std::size_t>(version) >= rows.size()) return false;
    product.guestFamily = family;
    product.guestVersion = version;
    product.guestId = std::string(rows[static_cast<std::size_t>(version)].identifier);
    return true;
}

}  // namespace arden
