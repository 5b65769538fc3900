#include "core/config/ProductLimits.h"

#include <algorithm>
#include <numeric>

#include "core/config/DeviceFeatures.h"
#include "core/config/FeatureFitting.h"
#include "core/config/HardwareFigures.h"
#include "core/config/MachineKeys.h"
#include "core/config/NetworkAdapterTypes.h"
#include "core/hardware/DeviceKeys.h"
#include "core/support/TextUtil.h"

namespace arden {
namespace {

constexpr std::string_view kFittedScsiType = "lsilogic";

// Whether the product has the SCSI controller type (an unset or unknown type is left alone).
bool scsiTypeOffered(const ProductFigures& f, std::string_view type) {
    if (equalsIgnoreCase(type, "lsisas1068")) return hasFeature(f, DeviceFeature::ScsiLsiSas);
    if (equalsIgnoreCase(type, "pvscsi")) return hasFeature(f, DeviceFeature::ScsiParavirtual);
    return true;
}

int memoryOf(const VmConfiguration& c) {
    for (const Device& m : c.devices.devices(DeviceType::Memory)) return m.settings.number("memsize").value_or(0);
    return 0;
}

// The memory the product allows nearest to `mb`: within its range, rounded down to 4 MB.
int fittedMemory(int mb, const ProductFigures& f) {
    const int within = std::clamp(mb, f.memoryMinMb, f.memoryMaxMb);
    return within - within % 4;
}

// Cores per socket that the product allows and that divide `cpus`: the largest such number
// not above `cores`.
int fittedCores(int cores, int cpus, const ProductFigures& f) {
    int fitted = std::min({cores, f.maxCoresPerSocket, cpus});
    while (fitted > 1 && cpus % fitted != 0) --fitted;
    return std::max(fitted, 1);
}

// The guest a product that does not offer `guestId` gets: the nearest offered guest before it
// in its family's list (the 32-bit one before a 64-bit one), else the family's first offered,
// else "Other".
std::optional<GuestPosition> fittedGuest(const std::string& guestId, const ProductFigures& f, int platform, int version) {
    auto guest = findGuest(guestId);
    if (!guest) return std::nullopt;  // a guest the lists do not have is kept as written
    const auto rows = guestVersions(guest->family);
    if (guestOffered(f, guest->family, rows[static_cast<std::size_t>(guest->version)])) return guest;
    const auto families = offeredGuestFamilies(platform, version);
    if (std::find(families.begin(), families.end(), guest->family) != families.end()) {
        for (int v = guest->version; v >= 0; --v) {
            if (guestOffered(f, guest->family, rows[static_cast<std::size_t>(v)])) return GuestPosition{guest->family, v};
        }
        for (std::size_t v = 0; v < rows.size(); ++v) {
            if (guestOffered(f, guest->family, rows[v])) return GuestPosition{guest->family, static_cast<int>(v)};
        }
    }
    return findGuest("other");
}

std::string plural(int n, const std::string& one, const std::string& many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

// The enabled devices of a kind beyond the product's maximum (a disabled device is not
// connected, as the PCI tally has it).
void deviceExcess(std::vector<LimitExcess>& out, const VmConfiguration& c, DeviceType type, int most,
                  const std::string& kind, const std::string& product) {
    std::string names;
    int count = 0;
    for (const Device& d : c.devices.devices(type)) {
        if (!d.enabled()) continue;
        names += (names.empty() ? "" : ", ") + c.devices.displayText(d);
        ++count;
    }
    if (count <= most) return;
    out.push_back({std::to_string(count) + " " + kind + " (" + names + "): " + product + " allows at most " +
                       std::to_string(most) + "; remove " + std::to_string(count - most),
                   false, {}, true});
}

// SATA and NVMe controllers beyond the product's four (none where it lacks the bus), and SCSI
// controllers of a type the product does not offer (fitted to LSI Logic, as adapter types are).
void busExcesses(std::vector<LimitExcess>& out, const VmConfiguration& c, const ProductFigures& f, const std::string& product) {
    const DeviceMaxima maxima = deviceMaxima(f);
    deviceExcess(out, c, DeviceType::SataController, maxima.sataControllers, "SATA controllers", product);
    deviceExcess(out, c, DeviceType::NvmeController, maxima.nvmeControllers, "NVMe controllers", product);
    for (const Device& d : c.devices.devices(DeviceType::ScsiController)) {
        const std::string type = d.settings.text(".virtualDev");
        if (!scsiTypeOffered(f, type))
            out.push_back({c.devices.displayText(d) + ": " + product + " does not offer the controller type \"" + type + "\"",
                           true, "\"" + std::string(kFittedScsiType) + "\"", false});
    }
}

// The SCSI controllers of a type the product does not offer become LSI Logic ones.
void fitScsiTypesToProduct(DeviceStore& store, const ProductFigures& f) {
    for (const Device& d : store.devices(DeviceType::ScsiController)) {
        if (!scsiTypeOffered(f, d.settings.text(".virtualDev")))
            store.find(DeviceType::ScsiController, d.identifier)->settings.set(".virtualDev", std::string(kFittedScsiType));
    }
}

}  // namespace

std::vector<LimitExcess> productExcesses(const VmConfiguration& c) {
    const ProductFigures f = c.figures();
    const std::string product = productText(c.product.platform, c.product.version);
    std::vector<LimitExcess> out;

    const int memory = memoryOf(c);
    if (!c.devices.devices(DeviceType::Memory).empty()) {
        const std::string has = "Memory " + std::to_string(memory) + " MB: ";
        const std::string becomes = std::to_string(fittedMemory(memory, f)) + " MB";
        if (memory > f.memoryMaxMb)
            out.push_back({has + product + " allows at most " + std::to_string(f.memoryMaxMb) + " MB", true, becomes});
        else if (memory < f.memoryMinMb)
            out.push_back({has + product + " allows at least " + std::to_string(f.memoryMinMb) + " MB", true, becomes});
        else if (memory % 4 != 0)
            out.push_back({has + "not a multiple of 4 MB", true, becomes});
    }

    const int cpus = c.devices.count(DeviceType::Cpu);
    const int fittedCpus = std::min(cpus, f.maxCpus);
    if (cpus > f.maxCpus)
        out.push_back({plural(cpus, "processor", "processors") + ": " + product + " allows at most " +
                           std::to_string(f.maxCpus),
                       true, plural(fittedCpus, "processor", "processors")});
    // A "numvcpus" the editor could not show stays as the file has it, and so do its cores.
    if (auto cores = coresPerSocket(c.keptLines); cores && !c.heldKeys.contains("numvcpus")) {
        const std::string change = plural(fittedCores(*cores, fittedCpus, f), "core", "cores") + " per socket";
        if (*cores > f.maxCoresPerSocket)
            out.push_back({plural(*cores, "core", "cores") + " per socket: " + product + " allows at most " +
                               std::to_string(f.maxCoresPerSocket),
                           true, change});
        else if (*cores < 1 || fittedCpus % *cores != 0)
            out.push_back({plural(fittedCpus, "processor", "processors") + " with " + plural(*cores, "core", "cores") +
                               " per socket: the processors must be a multiple of the cores per socket",
                           true, change});
    }

    if (auto guest = findGuest(c.product.guestId)) {
        if (auto fitted = fittedGuest(c.product.guestId, f, c.product.platform, c.product.version);
            fitted && (fitted->family != guest->family || fitted->version != guest->version)) {
            out.push_back({"Guest " + c.product.guestId + ": " + product + " does not offer it", true,
                           "guest " + std::string(guestVersions(fitted->family)[static_cast<std::size_t>(fitted->version)].identifier),
                           false});
        }
    }

    const int firstNicType = offeredNicTypes(c.product.platform, c.product.version).front();
    for (const Device& d : c.devices.devices(DeviceType::Network)) {
        if (!adapterTypeOffered(c.product.platform, c.product.version, d.settings))
            out.push_back({c.devices.displayText(d) + ": " + product + " does not offer the adapter type \"" +
                               d.settings.text(".virtualDev") + "\"",
                           true, "\"" + std::string(nicTypes()[static_cast<std::size_t>(firstNicType)].virtualDev) + "\"",
                           false});
    }
    featureExcesses(out, c, product);

    deviceExcess(out, c, DeviceType::Network, f.maxNics, "network adapters", product);
    deviceExcess(out, c, DeviceType::ScsiController, f.maxScsiControllers, "SCSI controllers", product);
    deviceExcess(out, c, DeviceType::SerialPort, f.maxSerialPorts, "serial ports", product);
    busExcesses(out, c, f, product);
    return out;
}

namespace {

std::string listed(const std::vector<LimitExcess>& excesses, bool withChanges) {
    std::string text;
    for (const LimitExcess& e : excesses) {
        text += "\n- " + e.text;
        if (withChanges && e.fits) text += "; becomes " + e.change;
    }
    return text;
}

}  // namespace

std::optional<Message> checkProductLimits(const VmConfiguration& config) {
    auto excesses = productExcesses(config);
    std::erase_if(excesses, [](const LimitExcess& e) { return !e.limit; });
    if (excesses.empty()) return std::nullopt;
    return Message{MessageKind::Critical, {TextPart::fromId(365)}, {TextPart::fromId(366), TextPart::fixed(listed(excesses, false))}};
}

RetargetPlan planRetarget(const VmConfiguration& config, int platform, int version) {
    VmConfiguration target = config;
    target.retarget(platform, version);
    const auto excesses = productExcesses(target);
    RetargetPlan plan;
    if (excesses.empty()) return plan;
    const std::string product = productText(platform, version);
    const bool blocked = std::any_of(excesses.begin(), excesses.end(), [](const LimitExcess& e) { return !e.fits; });
    if (blocked) {
        plan.refusal = Message{MessageKind::Warning,
                               {TextPart::fromId(361)},
                               {TextPart::fixed(product), TextPart::fromId(364), TextPart::fixed(listed(excesses, true))}};
    } else {
        plan.question = Message{MessageKind::Question,
                                {TextPart::fromId(361)},
                                {TextPart::fixed(product), TextPart::fromId(362), TextPart::fixed(listed(excesses, true) + "\n"),
                                 TextPart::fromId(363)}};
    }
    return plan;
}

std::optional<Message> retargetAndFit(VmConfiguration& c, int platform, int version) {
    c.retarget(platform, version);
    const ProductFigures f = c.figures();
    for (const Device& m : c.devices.devices(DeviceType::Memory)) {
        const int mb = m.settings.number("memsize").value_or(f.memoryMinMb);
        if (mb != fittedMemory(mb, f))
            c.devices.find(DeviceType::Memory, m.identifier)->settings.setNumber("memsize", fittedMemory(mb, f));
    }
    while (c.devices.count(DeviceType::Cpu) > std::max(f.maxCpus, 1))
        c.devices.remove(DeviceType::Cpu, c.devices.devices(DeviceType::Cpu).back().identifier);
    if (auto cores = coresPerSocket(c.keptLines); cores && !c.heldKeys.contains("numvcpus")) {
        const int fitted = fittedCores(*cores, c.devices.count(DeviceType::Cpu), f);
        if (fitted != *cores) setKeptValue(c.keptLines, "cpuid.coresPerSocket", std::to_string(fitted));
    }
    if (auto guest = fittedGuest(c.product.guestId, f, platform, version)) {
        if (auto now = findGuest(c.product.guestId); now && (now->family != guest->family || now->version != guest->version))
            c.selectGuest(guest->family, guest->version);
    }
    fitFeaturesToProduct(c);
    fitScsiTypesToProduct(c.devices, f);
    return fitNicTypesToProduct(c.devices, platform, version);
}

}  // namespace arden
