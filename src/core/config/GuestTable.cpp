// The guest table of the product tables: the guest families and, per family, the guests with
// their "guestOS" identifiers, and which of them a product offers.
#include <array>

#include "core/config/ProductTables.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

constexpr std::array<std::string_view, kGuestFamilyCount> kFamilyNames = {
    "Microsoft Windows", "Linux", "NetWare", "Solaris", "Other"};

// The guest table: one column per family, the guests of the original nine targets oldest
// first (their positions never change), then those of later products with the first hardware
// version whose products write them. The identifiers are the "guestOS" values of VMware's
// guest-OS key map (open-vm-tools); a "-64" identifier is a 64-bit guest, an "arm-" one an
// Arm guest (Fusion 13 on Apple silicon), a "darwin" one macOS. The first hardware versions
// follow the products that introduced each guest (Windows 10 with Workstation 11, Windows 11
// with Workstation 16.2, Server 2022 and RHEL 9 with vSphere API 7.0.1, Debian 12, Server 2025
// and Linux 6.x with API 8.0.0.1). Windows XP Professional is row 9 of the Windows column, the
// guest a new machine starts with.
constexpr GuestEntry kWindowsGuests[] = {
    {"Windows 3.1", "win31", 32},
    {"Windows 95", "win95", 64},
    {"Windows 98", "win98", 64},
    {"Windows Me", "winMe", 128},
    {"Windows NT", "winNT", 128},
    {"Windows 2000 Professional", "win2000Pro", 192},
    {"Windows 2000 Server", "win2000Serv", 384},
    {"Windows 2000 Advanced Server", "win2000AdvServ", 384},
    {"Windows XP Home Edition", "winXPHome", 256},
    {"Windows XP Professional", "winXPPro", 256},
    {"Windows XP Professional x64 Edition", "winXPPro-64", 512},
    {"Windows Server 2003 Web Edition", "winNetWeb", 384},
    {"Windows Server 2003 Standard Edition", "winNetStandard", 384},
    {"Windows Server 2003 Enterprise Edition", "winNetEnterprise", 384},
    {"Windows Server 2003 Small Business", "winNetBusiness", 384},
    {"Windows Server 2003 Standard x64 Edition", "winNetStandard-64", 512},
    {"Windows Server 2003 Enterprise x64 Edition", "winNetEnterprise-64", 512},
    {"Longhorn (experimental)", "longhorn", 512},
    {"Windows Vista", "winVista", 512, 6},
    {"Windows Vista (64 bit)", "winVista-64", 1024, 6},
    {"Windows Server 2008 (64 bit)", "longhorn-64", 1024, 6},
    {"Windows 7", "windows7", 1024, 7},
    {"Windows 7 (64 bit)", "windows7-64", 2048, 7},
    {"Windows Server 2008 R2 (64 bit)", "windows7srv-64", 2048, 7},
    {"Windows 8", "windows8", 1024, 9},
    {"Windows 8 (64 bit)", "windows8-64", 2048, 9},
    {"Windows Server 2012 (64 bit)", "windows8srv-64", 2048, 9},
    {"Windows 10", "windows9", 1024, 11},
    {"Windows 10 (64 bit)", "windows9-64", 2048, 11},
    {"Windows Server 2016 (64 bit)", "windows9srv-64", 2048, 11},
    {"Windows Server 2019 (64 bit)", "windows2019srv-64", 2048, 14},
    {"Windows Server 2022 (64 bit)", "windows2019srvNext-64", 2048, 18},
    {"Windows 11 (64 bit)", "windows11-64", 4096, 19},
    {"Windows Server 2025 (64 bit)", "windows2022srvNext-64", 4096, 20},
    {"Windows 11 on Arm (64 bit)", "arm-windows11-64", 4096, 20},
};

constexpr GuestEntry kLinuxGuests[] = {
    {"Red Hat Linux", "redhat", 256},
    {"Red Hat Enterprise Linux 2", "rhel2", 256},
    {"Red Hat Enterprise Linux 3", "rhel3", 256},
    {"Red Hat Enterprise Linux 3 (64 bit)", "rhel3-64", 512},
    {"Red Hat Enterprise Linux 4", "rhel4", 256},
    {"Red Hat Enterprise Linux 4 (64 bit)", "rhel4-64", 512},
    {"SUSE Linux", "suse", 256},
    {"SUSE Linux (64 bit)", "suse-64", 512},
    {"SUSE Linux Enterprise Server", "sles", 256},
    {"SUSE Linux Enterprise Server (64 bit)", "sles-64", 512},
    {"Novell Linux Desktop 9", "nld9", 256},
    {"Sun Java Desktop System", "sjds", 256},
    {"Mandrake Linux", "mandrake", 256},
    {"Turbolinux", "turbolinux", 256},
    {"Ubuntu", "ubuntu", 256},
    {"Ubuntu (64 bit)", "ubuntu-64", 512},
    {"Other Linux", "otherlinux", 256},
    {"Other Linux 2.4.x kernel", "other24xlinux", 256},
    {"Other Linux 2.4.x kernel (64 bit)", "other24xlinux-64", 512},
    {"Other Linux 2.6.x kernel", "other26xlinux", 256},
    {"Other Linux 2.6.x kernel (64 bit)", "other26xlinux-64", 512},
    {"Other Linux (64 bit)", "otherlinux-64", 512},
    {"Red Hat Enterprise Linux 5", "rhel5", 512, 6},
    {"Red Hat Enterprise Linux 5 (64 bit)", "rhel5-64", 1024, 6},
    {"Red Hat Enterprise Linux 6", "rhel6", 1024, 7},
    {"Red Hat Enterprise Linux 6 (64 bit)", "rhel6-64", 1024, 7},
    {"Red Hat Enterprise Linux 7 (64 bit)", "rhel7-64", 2048, 10},
    {"Red Hat Enterprise Linux 8 (64 bit)", "rhel8-64", 2048, 14},
    {"Red Hat Enterprise Linux 9 (64 bit)", "rhel9-64", 2048, 18},
    {"CentOS", "centos", 1024, 7},
    {"CentOS (64 bit)", "centos-64", 1024, 7},
    {"CentOS 7 (64 bit)", "centos7-64", 2048, 11},
    {"CentOS 8 (64 bit)", "centos8-64", 2048, 14},
    {"Debian 6", "debian6", 512, 7},
    {"Debian 6 (64 bit)", "debian6-64", 512, 7},
    {"Debian 10 (64 bit)", "debian10-64", 2048, 14},
    {"Debian 11 (64 bit)", "debian11-64", 2048, 18},
    {"Debian 12 (64 bit)", "debian12-64", 2048, 20},
    {"Fedora (64 bit)", "fedora-64", 2048, 7},
    {"Other Linux 3.x kernel (64 bit)", "other3xlinux-64", 1024, 9},
    {"Other Linux 4.x kernel (64 bit)", "other4xlinux-64", 1024, 12},
    {"Other Linux 5.x kernel (64 bit)", "other5xlinux-64", 2048, 18},
    {"Other Linux 6.x kernel (64 bit)", "other6xlinux-64", 2048, 20},
    {"Ubuntu on Arm (64 bit)", "arm-ubuntu-64", 4096, 20},
    {"Debian 12 on Arm (64 bit)", "arm-debian12-64", 2048, 20},
    {"Other Linux 6.x kernel on Arm (64 bit)", "arm-other6xlinux-64", 2048, 20},
};

constexpr GuestEntry kNetWareGuests[] = {
    {"Novell NetWare 4", "netware4", 256},
    {"Novell NetWare 5.1", "netware5", 512},
    {"Novell NetWare 6.x", "netware6", 512},
};

constexpr GuestEntry kSolarisGuests[] = {
    {"Solaris 6", "solaris6", 256},
    {"Solaris 7", "solaris7", 256},
    {"Solaris 8", "solaris8", 512},
    {"Solaris 9", "solaris9", 512},
    {"Solaris 10", "solaris10", 512},
    {"Solaris 10 (64 bit)", "solaris10-64", 512},
    {"Solaris 11 (64 bit)", "solaris11-64", 2048, 8},
};

constexpr GuestEntry kOtherGuests[] = {
    {"MS-DOS", "dos", 32},
    {"OS/2", "os2", 128},
    {"FreeBSD", "freeBSD", 256},
    {"FreeBSD (64 bit)", "freeBSD-64", 256},
    {"Other", "other", 256},
    {"Other (64 bit)", "other-64", 256},
    {"FreeBSD 12 (64 bit)", "freeBSD12-64", 2048, 14},
    {"FreeBSD 13 (64 bit)", "freeBSD13-64", 2048, 18},
    {"VMware ESXi 6.x", "vmkernel6", 4096, 11},
    {"VMware ESXi 7", "vmkernel7", 4096, 17},
    {"VMware ESXi 8", "vmkernel8", 8192, 20},
    {"Mac OS X 10.6 (64 bit)", "darwin10-64", 2048, 7},
    {"macOS 10.15 (64 bit)", "darwin19-64", 4096, 16},
    {"macOS 11 (64 bit)", "darwin20-64", 4096, 18},
    {"macOS 12 (64 bit)", "darwin21-64", 4096, 19},
    {"macOS 13 (64 bit)", "darwin22-64", 4096, 20},
    {"macOS 14 (64 bit)", "darwin23-64", 4096, 21},
};

// Older identifiers the products still read, and the table entry each stands for.
struct GuestAlias { std::string_view alias; std::string_view identifier; };
constexpr GuestAlias kGuestAliases[] = {
    {"nt4", "winNT"},      {"win2000", "win2000Pro"}, {"whistler", "winXPHome"},
    {"linux", "otherlinux"}, {"os2experimental", "os2"},
};

}  // namespace

std::string_view guestFamilyName(int family) {
    if (family < 0 || family >= kGuestFamilyCount) return {};
    return kFamilyNames[static_cast<std::size_t>(family)];
}

std::span<const GuestEntry> guestVersions(int family) {
    switch (family) {
        case kFamilyWindows: return kWindowsGuests;
        case kFamilyLinux: return kLinuxGuests;
        case kFamilyNetWare: return kNetWareGuests;
        case kFamilySolaris: return kSolarisGuests;
        case kFamilyOther: return kOtherGuests;
        default: return {};
    }
}

std::optional<GuestPosition> findGuest(std::string_view identifier) {
    std::string_view wanted = identifier;
    for (const GuestAlias& a : kGuestAliases) {
        if (equalsIgnoreCase(a.alias, identifier)) wanted = a.identifier;
    }
    for (int f = 0; f < kGuestFamilyCount; ++f) {
        auto rows = guestVersions(f);
        for (std::size_t v = 0; v < rows.size(); ++v) {
            if (equalsIgnoreCase(rows[v].identifier, wanted)) return GuestPosition{f, static_cast<int>(v)};
        }
    }
    return std::nullopt;
}


bool guestOffered(const ProductFigures& f, int family, const GuestEntry& guest) {
    const std::string id = toLowerAscii(guest.identifier);
    if (family == kFamilySolaris && !f.solarisGuests) return false;
    if (guest.firstHwVersion > f.virtualHwVersion) return false;
    if (id.ends_with("-64") && !f.guests64) return false;
    if (id.starts_with("darwin") && !f.macGuests) return false;
    return !id.starts_with("arm-") || f.armGuests;
}

}  // namespace arden
