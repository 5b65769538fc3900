#include "core/config/ProductTables.h"

#include <algorithm>
#include <array>

#include "core/support/TextUtil.h"

namespace arden {
namespace {

constexpr std::array<std::string_view, kPlatformCount> kPlatformNames = {"GSX Server", "Workstation",
                                                                         "Player", "Server"};

constexpr std::string_view kGsxVersions[] = {"2.5x", "3.x"};
constexpr std::string_view kWorkstationVersions[] = {"3.x", "4.0x", "4.5x", "5.0x", "5.5x"};
constexpr std::string_view kOneVersion[] = {"1.x"};

// Format numbers and limits per platform and version.
//
// config.version: 6 for Workstation 3.x (VMware's own config-version history names 6 "WS3"),
// 7 for Workstation 4.x ("WS4.0.x"), 8 for Workstation 5.x and the products of its engine
// (Player 1.x, Server 1.x). GSX Server 2.5x and 3.x share the engine of Workstation 3 and 4
// respectively, so they take 6 and 7.
// virtualHW.version: 3 for Workstation 4.x and GSX Server 3.x, 4 for Workstation 5.x,
// Player 1.x and Server 1.x (VMware's hardware-version table). For Workstation 3.x and GSX
// Server 2.5x no figure is published; they take 3, the number of ESX Server 2.x, which shares
// their configuration version 6.
// Memory: at least 4 MB everywhere. 3600 MB ("3.6 GB", VMware Server 2.0 guide on hardware
// version 4) for the Workstation 4/5 generation, GSX Server 3.x, Player and Server; 1024 MB for
// Workstation 3.x and 2048 MB for GSX Server 2.5x are chosen conservatively (not published).
// CPUs: two-way virtual SMP from Workstation 5.5 (Workstation 5.5 manual), Player 1.x (same
// engine) and Server 1.0 (administration guide); one elsewhere.
// Network adapters: three on the hosted hardware-version-4 products (Server 2.0 guide), three
// on Workstation 3.x/4.x; four on GSX Server, whose adapters follow the server products.
// SCSI controllers: four on the Workstation 5 generation, Player, Server and GSX Server 3.x;
// one on Workstation 3.x/4.x and GSX Server 2.5x (a single BusLogic adapter); not published.
struct FigureRow {
    int platform;
    int version;
    ProductFigures figures;
};

constexpr FigureRow kFigures[] = {
    //                     config hw  memMin memMax cpu nic scsi
    {kGsxServer, 0, {6, 3, 4, 2048, 1, 4, 1}},
    {kGsxServer, 1, {7, 3, 4, 3600, 1, 4, 4}},
    {kWorkstation, 0, {6, 3, 4, 1024, 1, 3, 1}},
    {kWorkstation, 1, {7, 3, 4, 3600, 1, 3, 1}},
    {kWorkstation, 2, {7, 3, 4, 3600, 1, 3, 1}},
    {kWorkstation, 3, {8, 4, 4, 3600, 1, 3, 4}},
    {kWorkstation, 4, {8, 4, 4, 3600, 2, 3, 4}},
    {kPlayer, 0, {8, 4, 4, 3600, 2, 3, 4}},
    {kServer, 0, {8, 4, 4, 3600, 2, 3, 4}},
};

constexpr std::array<std::string_view, kGuestFamilyCount> kFamilyNames = {
    "Microsoft Windows", "Linux", "NetWare", "Solaris", "Other"};

// The guest table: one column per family, versions oldest first. The identifiers are the
// "guestOS" values of the products of this era (VMware's guest-OS key map); 64-bit guests
// need Workstation 5.5, Player or Server. Windows XP Professional is row 9 of the Windows
// column, the guest a new machine starts with.
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
};

constexpr GuestEntry kOtherGuests[] = {
    {"MS-DOS", "dos", 32},
    {"OS/2", "os2", 128},
    {"FreeBSD", "freeBSD", 256},
    {"FreeBSD (64 bit)", "freeBSD-64", 256},
    {"Other", "other", 256},
    {"Other (64 bit)", "other-64", 256},
};

// Older identifiers the products still read, and the table entry each stands for.
struct GuestAlias { std::string_view alias; std::string_view identifier; };
constexpr GuestAlias kGuestAliases[] = {
    {"nt4", "winNT"},      {"win2000", "win2000Pro"}, {"whistler", "winXPHome"},
    {"linux", "otherlinux"}, {"os2experimental", "os2"},
};

constexpr std::string_view kNicTypeNames[] = {"AMD Lance", "VMXNet", "E1000"};
constexpr std::string_view kNicTypeValues[] = {"vlance", "vmxnet", "e1000"};

constexpr std::string_view kNicConnections[] = {
    "VMnet0 (Bridged)", "VMnet1 (Host-Only)", "VMnet2", "VMnet3", "VMnet4",
    "VMnet5", "VMnet6", "VMnet7", "VMnet8 (NAT)", "VMnet9"};

constexpr std::string_view kPlatformComments[] = {"# Platform = GSX Server", "# Platform = Workstation",
                                                  "# Platform = Player", "# Platform = Server"};

}  // namespace

std::string_view platformName(int platform) {
    if (platform < 0 || platform >= kPlatformCount) return {};
    return kPlatformNames[static_cast<std::size_t>(platform)];
}

std::optional<int> platformFromName(std::string_view name) {
    for (int p = 0; p < kPlatformCount; ++p) {
        if (equalsIgnoreCase(kPlatformNames[static_cast<std::size_t>(p)], name)) return p;
    }
    return std::nullopt;
}

std::span<const std::string_view> platformVersions(int platform) {
    switch (platform) {
        case kGsxServer: return kGsxVersions;
        case kWorkstation: return kWorkstationVersions;
        case kPlayer:
        case kServer: return kOneVersion;
        default: return {};
    }
}

std::optional<int> versionFromText(int platform, std::string_view text) {
    auto versions = platformVersions(platform);
    for (std::size_t i = 0; i < versions.size(); ++i) {
        if (equalsIgnoreCase(versions[i], text)) return static_cast<int>(i);
    }
    return std::nullopt;
}

int lastVersion(int platform) { return static_cast<int>(platformVersions(platform).size()) - 1; }

std::optional<ProductFigures> productFigures(int platform, int version) {
    for (const FigureRow& row : kFigures) {
        if (row.platform == platform && row.version == version) return row.figures;
    }
    return std::nullopt;
}

int newestHardwareVersion() {
    int newest = 0;
    for (const FigureRow& row : kFigures) newest = std::max(newest, row.figures.virtualHwVersion);
    return newest;
}

std::vector<int> offeredGuestFamilies(int platform, int version) {
    // Solaris guests arrived with GSX Server 3 and Workstation 4.5.
    bool solaris = !((platform == kGsxServer && version == 0) || (platform == kWorkstation && version <= 1));
    std::vector<int> families{kFamilyWindows, kFamilyLinux, kFamilyNetWare};
    if (solaris) families.push_back(kFamilySolaris);
    families.push_back(kFamilyOther);
    return families;
}

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

bool e1000Offered(int platform, int version) {
    return (platform == kWorkstation && version >= 4) || platform == kPlayer || platform == kServer;
}

std::vector<std::string_view> nicTypeEntries(int platform, int version) {
    std::vector<std::string_view> entries{kNicTypeNames[0], kNicTypeNames[1]};
    if (e1000Offered(platform, version)) entries.push_back(kNicTypeNames[2]);
    return entries;
}

std::string_view nicTypeValue(int position) {
    if (position < 0 || position >= 3) return {};
    return kNicTypeValues[position];
}

std::string_view nicTypeName(int position) {
    if (position < 0 || position >= 3) return {};
    return kNicTypeNames[position];
}

std::optional<int> nicTypePosition(std::string_view value) {
    for (int i = 0; i < 3; ++i) {
        if (equalsIgnoreCase(kNicTypeValues[i], value)) return i;
    }
    return std::nullopt;
}

std::span<const std::string_view> nicConnectionEntries() { return kNicConnections; }

std::string_view platformCommentLine(int platform) {
    if (platform < 0 || platform >= kPlatformCount) return {};
    return kPlatformComments[platform];
}

std::string productText(int platform, int version) {
    auto versions = platformVersions(platform);
    std::string text(platformName(platform));
    if (version >= 0 && static_cast<std::size_t>(version) < versions.size())
        text += " " + std::string(versions[static_cast<std::size_t>(version)]);
    return text;
}

std::string versionCommentLine(int platform, int version) {
    auto versions = platformVersions(platform);
    if (version < 0 || static_cast<std::size_t>(version) >= versions.size()) return {};
    return "# Version = " + std::string(versions[static_cast<std::size_t>(version)]);
}

}  // namespace arden
