#include "core/hardware/Device.h"

#include "core/hardware/DeviceKeys.h"
#include "core/support/TextUtil.h"

namespace arden {

std::optional<std::string> DeviceSettings::get(std::string_view name) const {
    for (const auto& [k, v] : values_) {
        if (equalsIgnoreCase(k, name)) return v;
    }
    return std::nullopt;
}

void DeviceSettings::set(std::string_view name, std::string value) {
    for (auto& [k, v] : values_) {
        if (equalsIgnoreCase(k, name)) {
            v = std::move(value);
            return;
        }
    }
    values_.emplace_back(std::string(name), std::move(value));
}

void DeviceSettings::unset(std::string_view name) {
    std::erase_if(values_, [&](const auto& kv) { return equalsIgnoreCase(kv.first, name); });
}

bool DeviceSettings::flag(std::string_view name, bool fallback) const {
    auto v = get(name);
    bool b = fallback;
    if (v && parseFlag(*v, b)) return b;
    return fallback;
}

std::optional<int> DeviceSettings::number(std::string_view name) const {
    auto v = get(name);
    int n = 0;
    if (v && parseInt32(*v, n)) return n;
    return std::nullopt;
}

bool Device::enabled() const {
    if (type == DeviceType::Cpu || type == DeviceType::Memory || type == DeviceType::Display) return true;
    return settings.flag(".present", false);
}

}  // namespace arden
