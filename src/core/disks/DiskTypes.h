#pragma once
// The vocabulary of virtual disks: sectors, adapters, the four disk kinds the program makes,
// and the one rounding rule the disk arithmetic uses.
#include <cstdint>
#include <optional>
#include <string_view>

namespace arden::disks {

inline constexpr std::int64_t kSectorBytes = 512;

enum class DiskAdapter { Ide, BusLogic, LsiLogic };

// The bus of the node a hard disk sits on.
enum class DiskBus { Ide, Scsi, Sata, Nvme };

// The disk kinds, numbered as the create-disk dialog numbers its disk-type choice.
// GrowableDescriptor is a growable disk in one sparse extent with a descriptor file of its
// own beside it: the split growable layout with a single extent of any size.
enum class DiskKind { Growable = 0, GrowableSplit = 1, Preallocated = 2, PreallocatedSplit = 3, GrowableDescriptor = 4 };

struct AdapterInfo {
    DiskAdapter adapter;
    std::string_view text;  // as written in "ddb.adapterType" and given on the command line
};

struct DiskKindInfo {
    DiskKind kind;
    std::string_view name;            // short name used on the command line
    std::string_view createType;      // "createType" of the descriptor; empty when none is written
    std::string_view extentType;      // "SPARSE" or "FLAT"; empty when the back-end writes the file whole
    std::string_view extentSuffix;    // appended to the base name: "-s" / "-f" + number, or "-flat"
    bool numberedExtents;             // extent names carry a number ("001", "002", ...)
    std::int64_t maxExtentSectors;    // size of a full piece; 0 when the disk is one extent
    bool preallocated;                // the space is reserved when the disk is made
};

const AdapterInfo& adapterInfo(DiskAdapter adapter);
std::optional<DiskAdapter> adapterFromText(std::string_view text);
inline std::string_view adapterText(DiskAdapter adapter) { return adapterInfo(adapter).text; }

const DiskKindInfo& diskKindInfo(DiskKind kind);
std::optional<DiskKind> diskKindFromName(std::string_view name);

// The adapter a new disk gets on a node of `bus`: "ide" on IDE; on SCSI the controller's
// own type when it is "buslogic", otherwise "lsilogic" (the adapter type VMware writes for
// its LSI Logic controllers). Disks on SATA and NVMe nodes get "lsilogic" too: a descriptor
// has no SATA or NVMe adapter type, and Workstation 17 writes "lsilogic" for the disk of its
// new machines on "nvme0:0" (corpus disk of a Windows 10 machine); SATA is taken to be the same.
DiskAdapter adapterForNode(DiskBus bus, std::string_view scsiControllerType);

// Converts to an integer by rounding to the nearest integer, halves to the even neighbour
// (2.5 gives 2, 3.5 gives 4). Every rounding in the disk arithmetic is this one.
std::int64_t roundHalfEven(double value);

}  // namespace arden::disks
