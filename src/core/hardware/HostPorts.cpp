#include "core/hardware/HostPorts.h"

namespace arden {
namespace {

constexpr std::string_view kSerialMap = "HARDWARE\\DEVICEMAP\\SERIALCOMM";
constexpr std::string_view kParallelMap = "HARDWARE\\DEVICEMAP\\PARALLEL PORTS";

std::vector<std::string> portsOf(cRegistry& registry, std::string_view map) {
    cRegistry reader = registry;  // shares the store; leaves the caller's settings alone
    reader.setClassKey(RegistryRoot::LocalMachine);
    reader.setSectionKey(std::string(map));
    reader.setDefault({});
    std::vector<std::string> ports;
    for (const std::string& name : reader.EnumerateValues()) {
        reader.setValueKey(name);
        std::string data = reader.Value();
        if (!data.empty()) ports.push_back(portNameFromMapData(data));
    }
    return ports;
}

}  // namespace

std::string portNameFromMapData(const std::string& data) {
    std::size_t slash = data.rfind('\\');
    return slash == std::string::npos ? data : data.substr(slash + 1);
}

HostPorts readHostPorts(cRegistry& registry) {
    return HostPorts{portsOf(registry, kSerialMap), portsOf(registry, kParallelMap)};
}

}  // namespace arden
