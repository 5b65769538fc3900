#pragma once
// Where cRegistry keeps its keys and values. Windows: the system registry (optionally of
// another computer). POSIX: a per-user store file, one INI section per key path, which stands
// for the current user's hive (classes written below HKEY_CLASSES_ROOT go to its
// "Software\Classes" branch, as per-user classes do on Windows); the local machine's serial and
// parallel device maps are read from the host's device nodes.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arden {

enum class RegistryRoot : std::uint32_t {
    ClassesRoot = 0x80000000u,
    CurrentUser = 0x80000001u,
    LocalMachine = 0x80000002u,
    Users = 0x80000003u,
    CurrentConfig = 0x80000005u,
};

// "HKEY_CURRENT_USER" and so on; the number in hexadecimal for an unknown root.
std::string registryRootName(RegistryRoot root);

// Registry value types, numbered as the platform numbers them.
namespace RegType {
inline constexpr std::uint32_t None = 0, String = 1, ExpandString = 2, Binary = 3, DWord = 4, MultiString = 7;
}

// One value: strings without their terminating NUL, a DWORD as 4 little-endian bytes,
// a multi-string as its strings joined by NUL.
struct RegistryData {
    std::uint32_t type = RegType::String;
    std::string bytes;
    bool operator==(const RegistryData&) const = default;
};

class RegistryStore {
public:
    // std::nullopt on success, else the reason.
    using Failure = std::optional<std::string>;
    virtual ~RegistryStore() = default;

    virtual bool keyExists(RegistryRoot root, std::string_view path) = 0;
    virtual Failure createKey(RegistryRoot root, std::string_view path) = 0;
    // Removes the key with everything below it.
    virtual Failure deleteKey(RegistryRoot root, std::string_view path) = 0;
    virtual Failure deleteValue(RegistryRoot root, std::string_view path, std::string_view name) = 0;
    virtual std::optional<RegistryData> readValue(RegistryRoot root, std::string_view path, std::string_view name) = 0;
    // Creates the key when it does not exist.
    virtual Failure writeValue(RegistryRoot root, std::string_view path, std::string_view name,
                               const RegistryData& data) = 0;
    virtual std::vector<std::string> valueNames(RegistryRoot root, std::string_view path) = 0;
    virtual std::vector<std::string> subKeys(RegistryRoot root, std::string_view path) = 0;
};

// The store of the platform for `machine` (empty: this computer). On POSIX another computer's
// registry cannot be reached: the result is nullptr.
std::unique_ptr<RegistryStore> openPlatformRegistryStore(const std::string& machine);

#ifndef _WIN32
// $XDG_CONFIG_HOME (when set to an absolute path) or ~/.config, then
// "Brackenware/Arden Forge/registry.ini".
std::filesystem::path defaultRegistryStoreFile();
#endif

// A store over `storeFile` whose local-machine device maps list the nodes in `deviceFolder`.
std::unique_ptr<RegistryStore> openFileRegistryStore(std::filesystem::path storeFile,
                                                     std::filesystem::path deviceFolder = "/dev");

// The host's serial (ttyS*, ttyUSB*, ttyACM*) or parallel (parport*, lp*) device nodes in
// `deviceFolder`, as full paths, grouped by kind and numbered naturally (ttyS2 before ttyS10).
std::vector<std::string> hostPortNodes(const std::filesystem::path& deviceFolder, bool serial);

// Turns a key path into the form stores compare: no separator at either end, none doubled.
std::string normaliseKeyPath(std::string_view path);

}  // namespace arden
