#include "core/config/FeatureFitting.h"

#include <cctype>
#include <functional>

#include "core/config/DeviceFeatures.h"
#include "core/config/MachineKeys.h"
#include "core/hardware/SoundAdapter.h"

namespace arden {
namespace {

// One feature a machine can use: whether it does, and how the fitting takes it away.
struct FittedFeature {
    DeviceFeature feature;
    std::string_view becomes;  // shown after "becomes" in the question
    std::function<bool(const VmConfiguration&)> used;
    std::function<void(VmConfiguration&)> fit;
};

Device* soleDevice(VmConfiguration& c, DeviceType type) {
    const auto& list = c.devices.devices(type);
    return list.empty() ? nullptr : c.devices.find(type, list.front().identifier);
}

const Device* soleDevice(const VmConfiguration& c, DeviceType type) {
    const auto& list = c.devices.devices(type);
    return list.empty() ? nullptr : &list.front();
}

bool hdAudioUsed(const VmConfiguration& c) {
    const Device* sound = soleDevice(c, DeviceType::Sound);
    if (!sound) return false;
    const auto position = soundAdapterPosition(sound->settings);
    return position && soundAdapterTypes()[static_cast<std::size_t>(*position)].hdAudio;
}

FittedFeature switchFeature(MachineSwitch which, std::string_view becomes) {
    return {machineSwitch(which).feature, becomes, [which](const VmConfiguration& c) { return switchOn(c, which); },
            [which](VmConfiguration& c) { removeSwitch(c, which); }};
}

const std::vector<FittedFeature>& fittedFeatures() {
    static const std::vector<FittedFeature> features{
        {DeviceFeature::SoundHdAudio, "ES1371", hdAudioUsed,
         [](VmConfiguration& c) { setSoundAdapter(soleDevice(c, DeviceType::Sound)->settings, 0); }},
        switchFeature(MachineSwitch::Efi, "BIOS"),
        switchFeature(MachineSwitch::SecureBoot, "off"),
        switchFeature(MachineSwitch::NestedVirtualization, "off"),
        switchFeature(MachineSwitch::Usb2, "none"),
        switchFeature(MachineSwitch::Usb3, "none"),
        {DeviceFeature::DisplayMonitors, "one monitor",
         [](const VmConfiguration& c) {
             const Device* d = soleDevice(c, DeviceType::Display);
             return d && d->settings.number("svga.numDisplays").value_or(1) > 1;
         },
         [](VmConfiguration& c) { soleDevice(c, DeviceType::Display)->settings.unset("svga.numDisplays"); }},
    };
    return features;
}

}  // namespace

void featureExcesses(std::vector<LimitExcess>& out, const VmConfiguration& c, const std::string& product) {
    const ProductFigures f = c.figures();
    for (const FittedFeature& feature : fittedFeatures()) {
        if (hasFeature(f, feature.feature) || !feature.used(c)) continue;
        std::string name(featureName(feature.feature));
        name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
        out.push_back({name + ": not offered by " + product, true, std::string(feature.becomes), false});
    }
}

void fitFeaturesToProduct(VmConfiguration& c) {
    const ProductFigures f = c.figures();
    for (const FittedFeature& feature : fittedFeatures()) {
        if (!hasFeature(f, feature.feature) && feature.used(c)) feature.fit(c);
    }
}

}  // namespace arden
