#include "core/config/ProductTables.h"

#include <algorithm>
#include <array>

#include "core/support/TextUtil.h"

namespace arden {
namespace {

constexpr std::array<std::string_view, kPlatformCount> kPlatformNames = {"GSX Server", "Workstation", "Player",
                                                                         "Server",     "Fusion",      "ESXi"};

// One row of the product table: a platform, one of its versions and that version's figures.
// Rows of a platform are in list order; the original nine targets come first.
struct ProductRow {
    int platform;
    std::string_view version;
    ProductFigures figures;
};

// The original nine targets.
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
// 64-bit guests from Workstation 5.5, Player and Server 1.0; Solaris guests from GSX Server 3
// and Workstation 4.5.
constexpr ProductFigures original(int config, int hw, int memMax, int cpus, int nics, int scsi, bool guests64,
                                  bool solaris) {
    return ProductFigures{config, hw, 4, memMax, cpus, nics, scsi, 1, 4, ProductLine::Hosted, guests64, solaris};
}

// The hosted products of hardware version 6 and later (Workstation, Player, Fusion, Server 2):
// config.version 8 and the default hardware version of each release (VMware KB 1003746 and
// its copies; Workstation 17.0 = 20 and 17.5 = 21 as the Workstation 17 files of the corpus
// and the Packer plugin show). Limits by hardware version (the products' guides):
//   hw6-7   8 GB (Server 2 guide: 8 GB for hw6 and hw7), 2 processors (unconfirmed for
//           hw6 and for Workstation 6.5, Fusion 2-3 and Server 2: the confirmed two of
//           Workstation 5.5), Workstation 7 and Player 3: 8 processors (Workstation 7 notes)
//   hw8-9   64 GB, 8 processors (Player 4 guide)
//   hw10-16 64 GB, 16 processors (Workstation 10 notes); Fusion 10 and 11: 8 (Fusion guide)
//   hw18-21 128 GB, 32 processors (Fusion 12.2 guide; Workstation 25H2 keeps the ceiling)
// Ten network adapters from hw7 (Server 2 guide; taken for hw6 too), four SCSI controllers,
// four serial ports; cores per socket up to the processor maximum; 64-bit guests everywhere.
constexpr ProductFigures hosted(int hw, int memMaxMb, int cpus, bool mac = false, bool arm = false) {
    return ProductFigures{8, hw, 4, memMaxMb, cpus, 10, 4, cpus, 4, ProductLine::Hosted, true, true, mac, arm};
}

// ESX/ESXi releases, each with the highest hardware version it runs (VMware's Go bindings,
// KB 1003746) and that version's limits (vSphere "Hardware Features Available with Virtual
// Machine Compatibility Settings"): memory, processors, cores per socket (64 where the tables
// disagree between 64 and 128), 4 network adapters on hw4 and 10 later, four SCSI controllers,
// four serial ports up to hw10 and 32 from hw11 (vCenter 6.0 table).
constexpr ProductFigures esx(int hw, int memMaxGb, int cpus, int cores) {
    return ProductFigures{8,     hw,    4,    memMaxGb * 1024, cpus, hw <= 4 ? 4 : 10, 4, cores, hw <= 10 ? 4 : 32,
                          ProductLine::Esx, true, true, hw >= 8, false};
}

constexpr ProductRow kProducts[] = {
    //                                          config hw memMax cpu nic scsi 64-bit Solaris
    {kGsxServer, "2.5x", original(6, 3, 2048, 1, 4, 1, false, false)},
    {kGsxServer, "3.x", original(7, 3, 3600, 1, 4, 4, false, true)},
    {kWorkstation, "3.x", original(6, 3, 1024, 1, 3, 1, false, false)},
    {kWorkstation, "4.0x", original(7, 3, 3600, 1, 3, 1, false, false)},
    {kWorkstation, "4.5x", original(7, 3, 3600, 1, 3, 1, false, true)},
    {kWorkstation, "5.0x", original(8, 4, 3600, 1, 3, 4, false, true)},
    {kWorkstation, "5.5x", original(8, 4, 3600, 2, 3, 4, true, true)},
    {kPlayer, "1.x", original(8, 4, 3600, 2, 3, 4, true, true)},
    {kServer, "1.x", original(8, 4, 3600, 2, 3, 4, true, true)},
    // Workstation 6.0 to 17.5
    {kWorkstation, "6.0x", hosted(6, 8192, 2)},
    {kWorkstation, "6.5x", hosted(7, 8192, 2)},
    {kWorkstation, "7.x", hosted(7, 8192, 8)},
    {kWorkstation, "8.x", hosted(8, 65536, 8)},
    {kWorkstation, "9.x", hosted(9, 65536, 8)},
    {kWorkstation, "10.x", hosted(10, 65536, 16)},
    {kWorkstation, "11.x", hosted(11, 65536, 16)},
    {kWorkstation, "12.x", hosted(12, 65536, 16)},
    {kWorkstation, "14.x", hosted(14, 65536, 16)},
    {kWorkstation, "15.x", hosted(16, 65536, 16)},
    {kWorkstation, "16.x", hosted(18, 131072, 32)},
    {kWorkstation, "16.2.x", hosted(19, 131072, 32)},
    {kWorkstation, "17.0x", hosted(20, 131072, 32)},
    {kWorkstation, "17.5x", hosted(21, 131072, 32)},
    // Player 2.0 to 17.5 (Workstation Player from 12), each with its Workstation's engine
    {kPlayer, "2.0x", hosted(6, 8192, 2)},
    {kPlayer, "2.5x", hosted(7, 8192, 2)},
    {kPlayer, "3.x", hosted(7, 8192, 8)},
    {kPlayer, "4.x", hosted(8, 65536, 8)},
    {kPlayer, "5.x", hosted(9, 65536, 8)},
    {kPlayer, "6.x", hosted(10, 65536, 16)},
    {kPlayer, "7.x", hosted(11, 65536, 16)},
    {kPlayer, "12.x", hosted(12, 65536, 16)},
    {kPlayer, "14.x", hosted(14, 65536, 16)},
    {kPlayer, "15.x", hosted(16, 65536, 16)},
    {kPlayer, "16.x", hosted(18, 131072, 32)},
    {kPlayer, "16.2.x", hosted(19, 131072, 32)},
    {kPlayer, "17.0x", hosted(20, 131072, 32)},
    {kPlayer, "17.5x", hosted(21, 131072, 32)},
    // Server 2
    {kServer, "2.x", hosted(7, 8192, 2)},
    // Fusion 1 to 13.5: macOS guests; Arm guests on Fusion 13
    {kFusion, "1.x", hosted(6, 8192, 2, true)},
    {kFusion, "2.x", hosted(7, 8192, 2, true)},
    {kFusion, "3.x", hosted(7, 8192, 2, true)},
    {kFusion, "4.x", hosted(8, 65536, 8, true)},
    {kFusion, "5.x", hosted(9, 65536, 8, true)},
    {kFusion, "6.x", hosted(10, 65536, 16, true)},
    {kFusion, "7.x", hosted(11, 65536, 16, true)},
    {kFusion, "8.x", hosted(12, 65536, 16, true)},
    {kFusion, "10.x", hosted(14, 65536, 8, true)},
    {kFusion, "11.x", hosted(16, 65536, 8, true)},
    {kFusion, "12.x", hosted(18, 131072, 32, true)},
    {kFusion, "12.2.x", hosted(19, 131072, 32, true)},
    {kFusion, "13.0x", hosted(20, 131072, 32, true, true)},
    {kFusion, "13.5x", hosted(21, 131072, 32, true, true)},
    // ESX 3.5 to ESXi 8.0 U2            memory GB  cpus  cores
    {kEsx, "3.5", esx(4, 64, 4, 1)},
    {kEsx, "4.x", esx(7, 255, 8, 8)},
    {kEsx, "5.0", esx(8, 1011, 32, 32)},
    {kEsx, "5.1", esx(9, 1011, 64, 64)},
    {kEsx, "5.5", esx(10, 1011, 64, 64)},
    {kEsx, "6.0", esx(11, 4080, 128, 64)},
    {kEsx, "6.5", esx(13, 6128, 128, 64)},
    {kEsx, "6.7", esx(14, 6128, 128, 64)},
    {kEsx, "6.7 U2", esx(15, 6128, 256, 64)},
    {kEsx, "7.0", esx(17, 6128, 256, 64)},
    {kEsx, "7.0 U1", esx(18, 24560, 768, 64)},
    {kEsx, "7.0 U2", esx(19, 24560, 768, 64)},
    {kEsx, "8.0", esx(20, 24560, 768, 256)},
    {kEsx, "8.0 U2", esx(21, 24560, 768, 256)},
};

// The rows of one platform, in list order.
std::vector<const ProductRow*> rowsOf(int platform) {
    std::vector<const ProductRow*> rows;
    for (const ProductRow& r : kProducts) {
        if (r.platform == platform) rows.push_back(&r);
    }
    return rows;
}

// Order in which an opened file without a platform line looks for the product of its hardware
// version: the hosted products first, Workstation leading, then ESXi.
constexpr int kRecognitionOrder[] = {kWorkstation, kPlayer, kFusion, kServer, kGsxServer, kEsx};

constexpr std::string_view kNicConnections[] = {
    "VMnet0 (Bridged)", "VMnet1 (Host-Only)", "VMnet2", "VMnet3", "VMnet4",
    "VMnet5", "VMnet6", "VMnet7", "VMnet8 (NAT)", "VMnet9"};

}  // namespace

std::string_view platformName(int platform) {
    if (platform < 0 || platform >= kPlatformCount) return {};
    return kPlatformNames[static_cast<std::size_t>(platform)];
}

std::optional<int> platformFromName(std::string_view name) {
    for (int p = 0; p < kPlatformCount; ++p) {
        if (equalsIgnoreCase(kPlatformNames[static_cast<std::size_t>(p)], name)) return p;
    }
    if (equalsIgnoreCase(name, "ESX") || equalsIgnoreCase(name, "ESX/ESXi")) return kEsx;
    return std::nullopt;
}

std::span<const std::string_view> platformVersions(int platform) {
    static const auto lists = [] {
        std::array<std::vector<std::string_view>, kPlatformCount> l;
        for (const ProductRow& r : kProducts) l[static_cast<std::size_t>(r.platform)].push_back(r.version);
        return l;
    }();
    if (platform < 0 || platform >= kPlatformCount) return {};
    return lists[static_cast<std::size_t>(platform)];
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
    const auto rows = rowsOf(platform);
    if (version < 0 || static_cast<std::size_t>(version) >= rows.size()) return std::nullopt;
    return rows[static_cast<std::size_t>(version)]->figures;
}

int newestHardwareVersion() {
    int newest = 0;
    for (const ProductRow& row : kProducts) newest = std::max(newest, row.figures.virtualHwVersion);
    return newest;
}

std::optional<ProductPosition> productForFile(std::optional<int> platform, int hw, bool esxFile) {
    auto position = [](const ProductRow* row) {
        const auto rows = rowsOf(row->platform);
        return ProductPosition{row->platform, static_cast<int>(std::find(rows.begin(), rows.end(), row) - rows.begin())};
    };
    if (platform) {
        // Hardware versions up to 4 (or none) stand for the platform's last version of that era,
        // as they always have.
        const int limit = std::max(hw, 4);
        const auto rows = rowsOf(*platform);
        const ProductRow* best = rows.front();
        for (const ProductRow* r : rows) {
            if (r->figures.virtualHwVersion <= limit) best = r;
        }
        return position(best);
    }
    if (esxFile) {
        for (const ProductRow* r : rowsOf(kEsx)) {
            if (r->figures.virtualHwVersion >= hw) return position(r);
        }
        return position(rowsOf(kEsx).back());
    }
    if (hw < 6) return std::nullopt;
    if (hw > newestHardwareVersion()) return position(rowsOf(kWorkstation).back());
    for (int p : kRecognitionOrder) {
        for (const ProductRow* r : rowsOf(p)) {
            if (r->figures.virtualHwVersion == hw) return position(r);
        }
    }
    return std::nullopt;
}

std::vector<int> offeredGuestFamilies(int platform, int version) {
    const auto figures = productFigures(platform, version);
    std::vector<int> families{kFamilyWindows, kFamilyLinux, kFamilyNetWare};
    if (!figures || figures->solarisGuests) families.push_back(kFamilySolaris);
    families.push_back(kFamilyOther);
    return families;
}

bool e1000Offered(int platform, int version) {
    // The products of the 64-bit era (Workstation 5.5, Player, Server and everything later).
    const auto figures = productFigures(platform, version);
    return figures && figures->guests64;
}

std::span<const std::string_view> nicConnectionEntries() { return kNicConnections; }

std::string platformCommentLine(int platform) {
    if (platform < 0 || platform >= kPlatformCount) return {};
    return "# Platform = " + std::string(kPlatformNames[static_cast<std::size_t>(platform)]);
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
