#include "core/config/DeviceFeatures.h"

#include <algorithm>

#include "core/hardware/SoundAdapter.h"

namespace arden {
namespace {

constexpr int kNever = 0;

// One row per feature: its name and the first hardware version on hosted products
// (Workstation, Player, Fusion, Server) and on ESX/ESXi.
//
// ESX/ESXi: the vSphere "Hardware Features Available with Virtual Machine Compatibility
// Settings" tables (hw7: LSI Logic SAS, paravirtual SCSI, vmxnet3, USB 2.0; hw8: e1000e, USB 3,
// EFI, 3D; hw9: nested virtualisation; hw10: SATA; hw13: NVMe, secure boot). The enhanced vmxnet
// adapter is the ESX adapter of hardware version 4. A paravirtual SCSI controller's 64 nodes
// are taken from hw14, the first version a VMware-written file uses them on (unconfirmed: one
// source puts them at hw17). Sound cards are not offered on ESXi.
//
// Hosted products, where the guides say less: SATA from hw10 (no hosted file below hw11 has a
// SATA controller; Workstation 10 is taken as the first), NVMe from hw14 (Workstation 14;
// unconfirmed), secure boot from hw14 (a Fusion 10 file of hw14 has it), USB 2.0 from hw6 (a
// hw6 file has it), HD audio from hw7 (Workstation 7; unconfirmed), 3D from hw7 (Workstation 6.5;
// unconfirmed), several monitors from hw7 (unconfirmed), LSI Logic SAS, paravirtual SCSI,
// vmxnet3, e1000e, USB 3, EFI and nested virtualisation as on ESXi. Hosted products never
// wrote the enhanced vmxnet adapter or the paravirtual controller's wide node range.
struct FeatureRow {
    DeviceFeature feature;
    std::string_view name;
    int hosted;
    int esx;
};

constexpr FeatureRow kFeatures[] = {
    {DeviceFeature::SataController, "SATA controllers", 10, 10},
    {DeviceFeature::NvmeController, "NVMe controllers", 14, 13},
    {DeviceFeature::ScsiLsiSas, "the LSI Logic SAS controller type", 7, 7},
    {DeviceFeature::ScsiParavirtual, "the VMware Paravirtual controller type", 7, 7},
    {DeviceFeature::ScsiParavirtualWide, "paravirtual SCSI nodes above 15", kNever, 14},
    {DeviceFeature::NicE1000e, "the e1000e adapter type", 8, 8},
    {DeviceFeature::NicVmxnet3, "the vmxnet3 adapter type", 7, 7},
    {DeviceFeature::NicEnhancedVmxnet, "the enhanced vmxnet adapter type", kNever, 4},
    {DeviceFeature::UsbEhci, "USB 2.0 controllers", 6, 7},
    {DeviceFeature::UsbXhci, "USB 3 controllers", 8, 8},
    {DeviceFeature::SoundHdAudio, "HD audio", 7, kNever},
    {DeviceFeature::EfiFirmware, "EFI firmware", 8, 8},
    {DeviceFeature::SecureBoot, "secure boot", 14, 13},
    {DeviceFeature::NestedVirtualization, "nested virtualisation", 9, 9},
    {DeviceFeature::Display3d, "3D acceleration", 7, 8},
    {DeviceFeature::DisplayMonitors, "several monitors", 7, 7},
};

const FeatureRow& rowOf(DeviceFeature feature) {
    return *std::find_if(std::begin(kFeatures), std::end(kFeatures),
                         [&](const FeatureRow& r) { return r.feature == feature; });
}

}  // namespace

std::optional<int> firstHardwareVersion(DeviceFeature feature, ProductLine line) {
    const FeatureRow& row = rowOf(feature);
    int first = line == ProductLine::Esx ? row.esx : row.hosted;
    if (first == kNever) return std::nullopt;
    return first;
}

bool hasFeature(const ProductFigures& figures, DeviceFeature feature) {
    auto first = firstHardwareVersion(feature, figures.line);
    return first && figures.virtualHwVersion >= *first;
}

bool hasFeature(int platform, int version, DeviceFeature feature) {
    auto figures = productFigures(platform, version);
    return figures && hasFeature(*figures, feature);
}

std::vector<int> offeredSoundAdapters(const ProductFigures& figures) {
    std::vector<int> positions;
    const auto types = soundAdapterTypes();
    for (std::size_t i = 0; i < types.size(); ++i) {
        if (!types[i].hdAudio || hasFeature(figures, DeviceFeature::SoundHdAudio)) positions.push_back(static_cast<int>(i));
    }
    return positions;
}

BusOptions busOptions(const ProductFigures& figures) {
    return BusOptions{hasFeature(figures, DeviceFeature::ScsiLsiSas), hasFeature(figures, DeviceFeature::ScsiParavirtualWide),
                      hasFeature(figures, DeviceFeature::SataController)};
}

std::string_view featureName(DeviceFeature feature) { return rowOf(feature).name; }

}  // namespace arden
