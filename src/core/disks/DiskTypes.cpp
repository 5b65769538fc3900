#include "core/disks/DiskTypes.h"

#include <cmath>

namespace arden::disks {

namespace {

constexpr AdapterInfo kAdapters[] = {
    {DiskAdapter::Ide, "ide"},
    {DiskAdapter::BusLogic, "buslogic"},
    {DiskAdapter::LsiLogic, "lsilogic"},
};

// Split pieces: a flat piece holds at most 2047.75 MiB, a sparse piece 2047 MiB. The two
// sizes differ on purpose; both are what VMware's own split disks use.
constexpr DiskKindInfo kKinds[] = {
    {DiskKind::Growable, "growable", "", "", "", false, 0, false},
    {DiskKind::GrowableSplit, "growable-split", "twoGbMaxExtentSparse", "SPARSE", "-s", true, 4192256, false},
    {DiskKind::Preallocated, "preallocated", "monolithicFlat", "FLAT", "-flat", false, 0, true},
    {DiskKind::PreallocatedSplit, "preallocated-split", "twoGbMaxExtentFlat", "FLAT", "-f", true, 4193792, true},
    {DiskKind::GrowableDescriptor, "growable-descriptor", "twoGbMaxExtentSparse", "SPARSE", "-s", true, 0, false},
};

}  // namespace

const AdapterInfo& adapterInfo(DiskAdapter adapter) { return kAdapters[static_cast<int>(adapter)]; }

std::optional<DiskAdapter> adapterFromText(std::string_view text) {
    for (const AdapterInfo& a : kAdapters) {
        if (a.text == text) return a.adapter;
    }
    return std::nullopt;
}

const DiskKindInfo& diskKindInfo(DiskKind kind) { return kKinds[static_cast<int>(kind)]; }

std::optional<DiskKind> diskKindFromName(std::string_view name) {
    for (const DiskKindInfo& k : kKinds) {
        if (k.name == name) return k.kind;
    }
    return std::nullopt;
}

DiskAdapter adapterForNode(DiskBus bus, std::string_view scsiControllerType) {
    if (bus == DiskBus::Ide) return DiskAdapter::Ide;
    return bus == DiskBus::Scsi && scsiControllerType == "buslogic" ? DiskAdapter::BusLogic : DiskAdapter::LsiLogic;
}

std::int64_t roundHalfEven(double value) {
    double whole = std::floor(value);
    double rest = value - whole;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2.0) != 0.0)) whole += 1.0;
    return static_cast<std::int64_t>(whole);
}

}  // namespace arden::disks
