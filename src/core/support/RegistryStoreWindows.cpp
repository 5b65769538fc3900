// The Windows registry store: the system registry through the wide (UTF-16) Reg*W functions,
// of this computer or, when a computer name is given, of that one. Key paths, value names and
// string data are UTF-8 on our side and UTF-16 in the registry; DWORD and binary data are kept
// as bytes.
#ifdef _WIN32

#include <windows.h>

#include "core/support/RegistryStore.h"
#include "core/support/WindowsText.h"

namespace arden {

namespace {

bool isText(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ; }

// Registry data as the registry holds it: texts as UTF-16 with their terminating NUL (a
// multi-string with two), everything else as given.
std::string toRegistryBytes(const RegistryData& data) {
    if (!isText(data.type)) return data.bytes;
    std::wstring wide = utf8ToWide(data.bytes);
    wide.push_back(L'\0');
    if (data.type == REG_MULTI_SZ) wide.push_back(L'\0');
    return std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t));
}

std::string fromRegistryBytes(DWORD type, const std::string& bytes) {
    if (!isText(type)) return bytes;
    std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
    std::copy(bytes.data(), bytes.data() + wide.size() * sizeof(wchar_t), reinterpret_cast<char*>(wide.data()));
    while (!wide.empty() && wide.back() == L'\0') wide.pop_back();
    return wideToUtf8(wide);
}

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
        if (LONG rc = connect(root, hive); rc != ERROR_SUCCESS) return windowsErrorText(static_cast<DWORD>(rc));
        return failure(RegDeleteTreeW(hive.handle, keyPath(path).c_str()));
    }

    Failure deleteValue(RegistryRoot root, std::string_view path, std::string_view name) override {
        Key key;
        if (LONG rc = open(root, path, KEY_SET_VALUE, key); rc != ERROR_SUCCESS) return windowsErrorText(static_cast<DWORD>(rc));
        return failure(RegDeleteValueW(key.handle, utf8ToWide(name).c_str()));
    }

    std::optional<RegistryData> readValue(RegistryRoot root, std::string_view path, std::string_view name) override {
        Key key;
        if (open(root, path, KEY_QUERY_VALUE, key) != ERROR_SUCCESS) return std::nullopt;
        std::wstring valueName = utf8ToWide(name);
        DWORD type = 0, size = 0;
        if (RegQueryValueExW(key.handle, valueName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        std::string bytes(size, '\0');
        if (RegQueryValueExW(key.handle, valueName.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()),
                             &size) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        bytes.resize(size);
        return RegistryData{type, fromRegistryBytes(type, bytes)};
    }

    Failure writeValue(RegistryRoot root, std::string_view path, std::string_view name,
                       const RegistryData& data) override {
        Key key;
        if (LONG rc = create(root, path, key); rc != ERROR_SUCCESS) return windowsErrorText(static_cast<DWORD>(rc));
        std::string bytes = toRegistryBytes(data);
        return failure(RegSetValueExW(key.handle, utf8ToWide(name).c_str(), 0, data.type,
                                      reinterpret_cast<const BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size())));
    }

    std::vector<std::string> valueNames(RegistryRoot root, std::string_view path) override {
        std::vector<std::string> names;
        Key key;
        if (open(root, path, KEY_QUERY_VALUE, key) != ERROR_SUCCESS) return names;
        for (DWORD i = 0;; ++i) {
            wchar_t name[16384];
            DWORD size = sizeof name / sizeof name[0];
            if (RegEnumValueW(key.handle, i, name, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
            names.push_back(wideToUtf8(std::wstring_view(name, size)));
        }
        return names;
    }

    std::vector<std::string> subKeys(RegistryRoot root, std::string_view path) override {
        std::vector<std::string> names;
        Key key;
        if (open(root, path, KEY_ENUMERATE_SUB_KEYS, key) != ERROR_SUCCESS) return names;
        for (DWORD i = 0;; ++i) {
            wchar_t name[256];
            DWORD size = sizeof name / sizeof name[0];
            if (RegEnumKeyExW(key.handle, i, name, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
            names.push_back(wideToUtf8(std::wstring_view(name, size)));
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
        return windowsErrorText(static_cast<DWORD>(rc));
    }

    static std::wstring keyPath(std::string_view path) { return utf8ToWide(normaliseKeyPath(path)); }

    LONG connect(RegistryRoot root, Key& hive) {
        HKEY predefined = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<std::uint32_t>(root)));
        if (machine_.empty()) {
            hive.handle = predefined;
            return ERROR_SUCCESS;
        }
        hive.owned = true;
        return RegConnectRegistryW(utf8ToWide(machine_).c_str(), predefined, &hive.handle);
    }

    LONG open(RegistryRoot root, std::string_view path, REGSAM access, Key& key) {
        Key hive;
        if (LONG rc = connect(root, hive); rc != ERROR_SUCCESS) return rc;
        key.owned = true;
        return RegOpenKeyExW(hive.handle, keyPath(path).c_str(), 0, access, &key.handle);
    }

    LONG create(RegistryRoot root, std::string_view path, Key& key) {
        Key hive;
        if (LONG rc = connect(root, hive); rc != ERROR_SUCCESS) return rc;
        key.owned = true;
        return RegCreateKeyExW(hive.handle, keyPath(path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
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
