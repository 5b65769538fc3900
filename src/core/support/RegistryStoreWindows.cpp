// The Windows registry store: the system registry through the Reg* functions, of this computer
// or, when a computer name is given, of that one.
#ifdef _WIN32

#include <windows.h>

#include <system_error>

#include "core/support/RegistryStore.h"

namespace arden {

namespace {

std::string systemReason(LONG code) { return std::system_category().message(static_cast<int>(code)); }

class SystemRegistryStore final : public RegistryStore {
public:
    explicit SystemRegistryStore(std::string machine) : machine_(std::move(machine)) {}

    bool keyExists(RegistryRoot root, std::string_view path) override {
        Key key;
        return open(root, path, KEY_READ, key) == ERROR_SUCCESS;
    }

    Failure createKey(RegistryRoot root, std::string_view path) override {
        Key key;
        return failure(create(root, path, key));
    }

    Failure deleteKey(RegistryRoot root, std::string_view path) override {
        Key hive;
        if (LONG rc = connect(root, hive); rc != ERROR_SUCCESS) return systemReason(rc);
        return failure(RegDeleteTreeA(hive.handle, normaliseKeyPath(path).c_str()));
    }

    Failure deleteValue(RegistryRoot root, std::string_view path, std::string_view name) override {
        Key key;
        if (LONG rc = open(root, path, KEY_SET_VALUE, key); rc != ERROR_SUCCESS) return systemReason(rc);
        return failure(RegDeleteValueA(key.handle, std::string(name).c_str()));
    }

    std::optional<RegistryData> readValue(RegistryRoot root, std::string_view path, std::string_view name) override {
        Key key;
        if (open(root, path, KEY_QUERY_VALUE, key) != ERROR_SUCCESS) return std::nullopt;
        std::string valueName(name);
        DWORD type = 0, size = 0;
        if (RegQueryValueExA(key.handle, valueName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        std::string bytes(size, '\0');
        if (RegQueryValueExA(key.handle, valueName.c_str(), nullptr, &type,
                             reinterpret_cast<BYTE*>(bytes.data()), &size) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        bytes.resize(size);
        if (type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ) {
            while (!bytes.empty() && bytes.back() == '\0') bytes.pop_back();
        }
        return RegistryData{type, bytes};
    }

    Failure writeValue(RegistryRoot root, std::string_view path, std::string_view name,
                       const RegistryData& data) override {
        Key key;
        if (LONG rc = create(root, path, key); rc != ERROR_SUCCESS) return systemReason(rc);
        std::string bytes = data.bytes;
        if (data.type == REG_SZ || data.type == REG_EXPAND_SZ) bytes += '\0';
        if (data.type == REG_MULTI_SZ) bytes += std::string(2, '\0');
        return failure(RegSetValueExA(key.handle, std::string(name).c_str(), 0, data.type,
                                      reinterpret_cast<const BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size())));
    }

    std::vector<std::string> valueNames(RegistryRoot root, std::string_view path) override {
        std::vector<std::string> names;
        Key key;
        if (open(root, path, KEY_QUERY_VALUE, key) != ERROR_SUCCESS) return names;
        for (DWORD i = 0;; ++i) {
            char name[16384];
            DWORD size = sizeof name;
            if (RegEnumValueA(key.handle, i, name, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
            names.emplace_back(name, size);
        }
        return names;
    }

    std::vector<std::string> subKeys(RegistryRoot root, std::string_view path) override {
        std::vector<std::string> names;
        Key key;
        if (open(root, path, KEY_ENUMERATE_SUB_KEYS, key) != ERROR_SUCCESS) return names;
        for (DWORD i = 0;; ++i) {
            char name[256];
            if (RegEnumKeyA(key.handle, i, name, sizeof name) != ERROR_SUCCESS) break;
            names.emplace_back(name);
        }
        return names;
    }

private:
    struct Key {
        HKEY handle = nullptr;
        bool owned = false;
        Key() = default;
        Key(const Key&) = delete;
        Key& operator=(const Key&) = delete;
        ~Key() {
            if (handle && owned) RegCloseKey(handle);
        }
    };

    static Failure failure(LONG rc) {
        if (rc == ERROR_SUCCESS) return std::nullopt;
        return systemReason(rc);
    }

    LONG connect(RegistryRoot root, Key& hive) {
        HKEY predefined = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<std::uint32_t>(root)));
        if (machine_.empty()) {
            hive.handle = predefined;
            return ERROR_SUCCESS;
        }
        hive.owned = true;
        return RegConnectRegistryA(machine_.c_str(), predefined, &hive.handle);
    }

    LONG open(RegistryRoot root, std::string_view path, REGSAM access, Key& key) {
        Key hive;
        if (LONG rc = connect(root, hive); rc != ERROR_SUCCESS) return rc;
        key.owned = true;
        return RegOpenKeyExA(hive.handle, normaliseKeyPath(path).c_str(), 0, access, &key.handle);
    }

    LONG create(RegistryRoot root, std::string_view path, Key& key) {
        Key hive;
        if (LONG rc = connect(root, hive); rc != ERROR_SUCCESS) return rc;
        key.owned = true;
        return RegCreateKeyExA(hive.handle, normaliseKeyPath(path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                               KEY_ALL_ACCESS, nullptr, &key.handle, nullptr);
    }

    std::string machine_;
};

}  // namespace

std::unique_ptr<RegistryStore> openPlatformRegistryStore(const std::string& machine) {
    return std::make_unique<SystemRegistryStore>(machine);
}

}  // namespace arden

#endif
