#pragma once
// The device kinds and types that came with later hardware versions, and the first hardware
// version of each product line that has them. A kind or type appears in Add Hardware, in the
// lists and choices of the device pages, and in the CLI's choices only for a product that has
// it; a change of product to one without it goes through the fitting question. The nine
// original targets (hardware versions 3 and 4) have none of them.
#include <optional>
#include <string_view>
#include <vector>

#include "core/config/ProductTables.h"
#include "core/hardware/BusTable.h"

namespace arden {

enum class DeviceFeature {
    SataController,       // "sataN", disks and CD-ROM drives on "sataN:M"
    NvmeController,       // "nvmeN", disks on "nvmeN:M"
    ScsiLsiSas,           // scsiN.virtualDev = "lsisas1068"
    ScsiParavirtual,      // scsiN.virtualDev = "pvscsi"
    ScsiParavirtualWide,  // a paravirtual SCSI controller's nodes 0-63 (7 its own) instead of 0-15
    NicE1000e,            // ethernetN.virtualDev = "e1000e"
    NicVmxnet3,           // ethernetN.virtualDev = "vmxnet3"
    NicEnhancedVmxnet,    // ethernetN.virtualDev = "vmxnet" with ethernetN.features = "15"
    UsbEhci,              // "ehci.present": USB 2.0
    UsbXhci,              // "usb_xhci.present": USB 3
    SoundHdAudio,         // sound.virtualDev = "hdaudio"
    EfiFirmware,          // firmware = "efi"
    SecureBoot,           // uefi.secureBoot.enabled
    NestedVirtualization, // vhv.enable
    Display3d,            // mks.enable3d
    DisplayMonitors,      // svga.numDisplays
};

// The first hardware version of `line` with the feature, or nothing when the line never has it.
std::optional<int> firstHardwareVersion(DeviceFeature feature, ProductLine line);

// Whether the product of `figures` has the feature.
bool hasFeature(const ProductFigures& figures, DeviceFeature feature);
// The same for (platform, version position); false for a combination that does not exist.
bool hasFeature(int platform, int version, DeviceFeature feature);

// The sound adapter types (positions of soundAdapterTypes()) the product offers, in list order:
// ES1371 and both Sound Blaster entries everywhere, HD Audio where the product has it.
std::vector<int> offeredSoundAdapters(const ProductFigures& figures);

// What the product adds to the buses of the original products (BusTable.h): SCSI nodes n:0-n:15
// where it has the LSI Logic SAS type (hardware version 7 on: the reference confirms units
// 0-15 for every SCSI type there and none of the original products has them), a paravirtual
// controller's n:0-n:63 where it has ScsiParavirtualWide, and the newer placement order where
// it has SATA.
BusOptions busOptions(const ProductFigures& figures);

// Fixed English name for messages: "SATA controllers", "the e1000e adapter type", ...
std::string_view featureName(DeviceFeature feature);

}  // namespace arden
