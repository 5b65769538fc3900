#pragma once
// Product data that the editor only reads: the target platforms and their versions, the
// guest families and the guest table, memory limits, device maxima and the file-format
// numbers per platform and version, and the lists that depend on them.
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace arden {

// Platform positions of the target-platform list.
enum PlatformIndex : int { kGsxServer = 0, kWorkstation = 1, kPlayer = 2, kServer = 3, kFusion = 4, kEsx = 5 };
constexpr int kPlatformCount = 6;

// Guest family numbers (columns of the guest table).
enum GuestFamily : int { kFamilyWindows = 0, kFamilyLinux = 1, kFamilyNetWare = 2, kFamilySolaris = 3, kFamilyOther = 4 };
constexpr int kGuestFamilyCount = 5;

// Fixed English platform names ("GSX Server", "Workstation", "Player", "Server", "Fusion",
// "ESXi"); the list shows the texts 213-216, 359 and 360.
std::string_view platformName(int platform);
constexpr int platformNameId(int platform) { return platform < kFusion ? 213 + platform : 359 + platform - kFusion; }
// Case-insensitive; "ESX" and "ESX/ESXi" name the ESXi platform too.
std::optional<int> platformFromName(std::string_view name);

// The versions a platform offers, in list order ("2.5x", "3.x" for GSX Server ...). The
// versions of the original nine targets come first, so their positions never change.
std::span<const std::string_view> platformVersions(int platform);
std::optional<int> versionFromText(int platform, std::string_view text);
// The last version of a platform (the default when none is chosen).
int lastVersion(int platform);
// "Workstation 5.0x": the platform's name and, when it has it, the version.
std::string productText(int platform, int version);

// Figures of one platform and version: one row of the product table. Rules that depend on
// the product (limits, guests, adapter types, later device kinds) read these fields, never the
// platform: `virtualHwVersion` and `line` are what a "from hardware version N on" gate asks.
enum class ProductLine { Hosted, Esx };
struct ProductFigures {
    int configVersion;      // written as "config.version"
    int virtualHwVersion;   // written as "virtualHW.version"
    int memoryMinMb;
    int memoryMaxMb;
    int maxCpus;
    int maxNics;
    int maxScsiControllers;
    int maxCoresPerSocket = 1;   // "cpuid.coresPerSocket"
    int maxSerialPorts = 4;
    ProductLine line = ProductLine::Hosted;
    bool guests64 = false;       // runs 64-bit guests ("-64" identifiers)
    bool solarisGuests = true;   // offers the Solaris family
    bool macGuests = false;      // offers macOS guests ("darwin" identifiers)
    bool armGuests = false;      // offers Arm guests ("arm-" identifiers)
    // Whether a save counts the machine's PCI devices against five (hardware versions 3 and
    // 4 have no PCI bridge).
    bool fivePciDevices() const { return virtualHwVersion <= 4; }
};

// Figures of (platform, version position), or nothing for a combination that does not exist.
std::optional<ProductFigures> productFigures(int platform, int version);

// The highest "virtualHW.version" of any platform and version the editor targets.
int newestHardwareVersion();

// The product an opened file without a "# Version" line is shown as, from its
// "virtualHW.version" (0 when it has none) and whether it is plainly an ESXi file.
//   With a "# Platform" line: the platform's last version of that hardware version or older
//   (of hardware version 4 or older when the file's is older or unknown), else its first.
//   Without: an ESXi file is the first ESXi release that runs its hardware version; another
//   file of hardware version 6 or later is the first product (Workstation, Player, Fusion,
//   Server, then ESXi) that writes it; a file newer than every product is the newest
//   Workstation. Nothing for an older (or unknown) hardware version: the default stays.
struct ProductPosition { int platform; int version; };
std::optional<ProductPosition> productForFile(std::optional<int> platform, int hwVersion, bool esxFile);

// The guest families offered for (platform, version), as family numbers in list order.
std::vector<int> offeredGuestFamilies(int platform, int version);
constexpr int guestFamilyNameId(int family) { return 220 + family; }
std::string_view guestFamilyName(int family);  // fixed English

// One cell of the guest table.
struct GuestEntry {
    std::string_view name;        // shown in the guest-version list
    std::string_view identifier;  // written as "guestOS"
    int recommendedMemoryMb;      // memory a new machine with this guest starts with
    int firstHwVersion = 0;       // offered by products of this hardware version and later
};

// Whether the product of `figures` offers `guest` of `family`: its family, its hardware
// version, and 64-bit, macOS and Arm guests only where the product runs them.
bool guestOffered(const ProductFigures& figures, int family, const GuestEntry& guest);

// The versions of a family, in list order (every non-empty cell of the family's column).
std::span<const GuestEntry> guestVersions(int family);

// Looks up a "guestOS" identifier (without regard to case, including the legacy aliases the
// products accept). Returns family and version position.
struct GuestPosition { int family; int version; };
std::optional<GuestPosition> findGuest(std::string_view identifier);

// Whether (platform, version) offers the E1000 adapter type: Workstation 5.5x, Player, Server
// and every product of hardware version 6 or later (the adapter types are NetworkAdapterTypes.h).
bool e1000Offered(int platform, int version);

// "VMnet0 (Bridged)" ... "VMnet9": position n stands for host network "VMnet" + n.
std::span<const std::string_view> nicConnectionEntries();

// Platform and version comment lines of the configuration file.
std::string platformCommentLine(int platform);  // "# Platform = Workstation"
// "# Version = 5.5x" for an existing (platform, version), else empty.
std::string versionCommentLine(int platform, int version);

}  // namespace arden
