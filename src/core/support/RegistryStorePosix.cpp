// The POSIX registry store: the current user's keys in one INI file, the local machine's
// serial and parallel device maps from the host's device nodes.
//
// The file store is built on Windows too, where the program itself uses the system registry:
// it lets the settings, favourites and host-port tests run there against a store they own.
#ifndef _WIN32
#include <pwd.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <cstdlib>

#include "core/support/AtomicFile.h"
#include "core/support/IniDocument.h"
#include "core/support/RegistryStore.h"
#include "core/support/TextUtil.h"

namespace arden {

namespace {

constexpr std::string_view kDefaultValueName = "@";
constexpr std::string_view kClassesBranch = "Software\\Classes";
constexpr std::string_view kSerialMap = "HARDWARE\\DEVICEMAP\\SERIALCOMM";
constexpr std::string_view kParallelMap = "HARDWARE\\DEVICEMAP\\PARALLEL PORTS";

// How a value is spelt in the store: a plain text when it reads back unchanged, "sz:" and the
// text in double quotes when it would otherwise be trimmed, unquoted or taken for another type, "dword:" and eight
// hex digits, or "hex(N):" and comma-separated bytes ("hex:" for binary).
constexpr std::string_view kTextPrefix = "sz:";
constexpr std::string_view kDwordPrefix = "dword:";
constexpr std::string_view kBinaryPrefix = "hex:";
constexpr std::string_view kTypedPrefix = "hex(";

std::string hexBytes(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string out;
    for (unsigned char b : bytes) {
        if (!out.empty()) out += ',';
        out += kDigits[b >> 4];
        out += kDigits[b & 15];
    }
    return out;
}

std::optional<std::string> parseHexBytes(std::string_view text) {
    std::string out;
    auto nibble = [](char c) -> int {
        if (c >= '0' && c <= '9') return c - '0';
        c = asciiLower(c);
        return (c >= 'a' && c <= 'f') ? c - 'a' + 10 : -1;
    };
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t comma = text.find(',', pos);
        std::string_view item = trimBlanks(text.substr(pos, comma == std::string_view::npos ? text.npos : comma - pos));
        if (item.size() != 2 || nibble(item[0]) < 0 || nibble(item[1]) < 0) return std::nullopt;
        out += static_cast<char>(nibble(item[0]) * 16 + nibble(item[1]));
        if (comma == std::string_view::npos) break;
        pos = comma + 1;
    }
    return out;
}

bool plainTextReadsBack(std::string_view text) {
    if (text.empty()) return true;
    if (trimBlanks(text).size() != text.size()) return false;
    if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front()) return false;
    for (std::string_view prefix : {kTextPrefix, kDwordPrefix, kBinaryPrefix, kTypedPrefix}) {
        if (startsWithIgnoreCase(text, prefix)) return false;
    }
    return true;
}

std::string encodeValue(const RegistryData& data) {
    if (data.type == RegType::String && fitsOnOneLine(data.bytes)) {
        return plainTextReadsBack(data.bytes) ? data.bytes : std::string(kTextPrefix) + "\"" + data.bytes + "\"";
    }
    if (data.type == RegType::DWord && data.bytes.size() == 4) {
        char text[16];
        unsigned value = 0;
        for (int i = 3; i >= 0; --i) value = value * 256 + static_cast<unsigned char>(data.bytes[i]);
        std::snprintf(text, sizeof text, "%08x", value);
        return std::string(kDwordPrefix) + text;
    }
    if (data.type == RegType::Binary) return std::string(kBinaryPrefix) + hexBytes(data.bytes);
    return std::string(kTypedPrefix) + std::to_string(data.type) + "):" + hexBytes(data.bytes);
}

// A value the store cannot decode counts as missing.
std::optional<RegistryData> decodeValue(std::string_view text) {
    if (startsWithIgnoreCase(text, kTextPrefix)) {
        std::string_view rest = text.substr(kTextPrefix.size());
        if (rest.size() >= 2 && rest.front() == '"' && rest.back() == '"') rest = rest.substr(1, rest.size() - 2);
        return RegistryData{RegType::String, std::string(rest)};
    }
    if (startsWithIgnoreCase(text, kDwordPrefix)) {
        auto bytes = text.substr(kDwordPrefix.size());
        if (bytes.size() != 8) return std::nullopt;
        std::string hex;
        for (int i = 3; i >= 0; --i) hex += std::string(bytes.substr(static_cast<std::size_t>(i) * 2, 2)) + (i ? "," : "");
        auto raw = parseHexBytes(hex);
        if (!raw) return std::nullopt;
        return RegistryData{RegType::DWord, *raw};
    }
    if (startsWithIgnoreCase(text, kBinaryPrefix)) {
        auto raw = parseHexBytes(text.substr(kBinaryPrefix.size()));
        if (!raw) return std::nullopt;
        return RegistryData{RegType::Binary, *raw};
    }
    if (startsWithIgnoreCase(text, kTypedPrefix)) {
        std::size_t close = text.find("):");
        if (close == std::string_view::npos) return std::nullopt;
        std::string_view number = text.substr(kTypedPrefix.size(), close - kTypedPrefix.size());
        if (number.empty() || number.size() > 9 || number.find_first_not_of("0123456789") != std::string_view::npos) {
            return std::nullopt;
        }
        auto raw = parseHexBytes(text.substr(close + 2));
        if (!raw) return std::nullopt;
        return RegistryData{static_cast<std::uint32_t>(std::stoul(std::string(number))), *raw};
    }
    return RegistryData{RegType::String, std::string(text)};
}

std::string storedName(std::string_view name) { return name.empty() ? std::string(kDefaultValueName) : std::string(name); }

std::optional<std::string> unstorableName(std::string_view name) {
    if (name == kDefaultValueName || !fitsOnOneLine(name) || name.find('=') != std::string_view::npos ||
        trimBlanks(name).size() != name.size() || (!name.empty() && (name.front() == ';' || name.front() == '['))) {
        return "the value name '" + std::string(name) +
               "' cannot be kept in the store (no \"=\", line break, surrounding blank, leading \";\" or \"[\", "
               "and not \"@\")";
    }
    return std::nullopt;
}

bool sameOrBelow(std::string_view section, std::string_view path) {
    if (path.empty()) return true;
    return equalsIgnoreCase(section, path) ||
           (section.size() > path.size() && section[path.size()] == '\\' && startsWithIgnoreCase(section, path));
}

// Names of the keys directly below `path` among `paths`, first spelling, in order.
std::vector<std::string> childNames(const std::vector<std::string>& paths, std::string_view path) {
    std::vector<std::string> names;
    std::size_t skip = path.empty() ? 0 : path.size() + 1;
    for (const std::string& p : paths) {
        if (!sameOrBelow(p, path) || p.size() <= skip || (!path.empty() && equalsIgnoreCase(p, path))) continue;
        std::string child = p.substr(skip, p.find('\\', skip) == std::string::npos ? std::string::npos : p.find('\\', skip) - skip);
        if (std::none_of(names.begin(), names.end(), [&](const std::string& n) { return equalsIgnoreCase(n, child); })) {
            names.push_back(child);
        }
    }
    return names;
}

// Leading letters, then the number: "ttyS10" sorts after "ttyS2".
bool naturalLess(const std::string& a, const std::string& b) {
    auto split = [](const std::string& s) {
        std::size_t digits = s.find_last_not_of("0123456789") + 1;
        long number = digits < s.size() && s.size() - digits < 9 ? std::stol(s.substr(digits)) : -1;
        return std::pair(s.substr(0, digits), number);
    };
    return split(a) < split(b);
}

class FileRegistryStore final : public RegistryStore {
public:
    FileRegistryStore(std::filesystem::path file, std::filesystem::path devices)
        : file_(std::move(file)), devices_(std::move(devices)) {}

    bool keyExists(RegistryRoot root, std::string_view path) override {
        std::string key = normaliseKeyPath(path);
        if (root == RegistryRoot::LocalMachine) {
            return sameOrBelow(kSerialMap, key) || sameOrBelow(kParallelMap, key);
        }
        auto section = userSection(root, key);
        if (!section) return false;
        if (section->empty()) return true;
        auto doc = read();
        for (const std::string& s : doc.sectionNames()) {
            if (sameOrBelow(s, *section)) return true;
        }
        return false;
    }

    Failure createKey(RegistryRoot root, std::string_view path) override {
        return change(root, path, [](IniDocument& doc, const std::string& section) -> Failure {
            if (!doc.hasSection(section)) doc.replaceSection(section, {});
            return std::nullopt;
        });
    }

    Failure deleteKey(RegistryRoot root, std::string_view path) override {
        return change(root, path, [](IniDocument& doc, const std::string& section) -> Failure {
            bool found = false;
            for (const std::string& s : doc.sectionNames()) {
                if (sameOrBelow(s, section)) found = doc.removeSection(s) || found;
            }
            if (!found) return std::string("the key does not exist");
            return std::nullopt;
        });
    }

    Failure deleteValue(RegistryRoot root, std::string_view path, std::string_view name) override {
        return change(root, path, [&](IniDocument& doc, const std::string& section) -> Failure {
            if (!doc.removeKey(section, storedName(name))) return std::string("the value does not exist");
            return std::nullopt;
        });
    }

    std::optional<RegistryData> readValue(RegistryRoot root, std::string_view path, std::string_view name) override {
        std::string key = normaliseKeyPath(path);
        if (root == RegistryRoot::LocalMachine) {
            auto nodes = deviceMap(key);
            if (std::find(nodes.begin(), nodes.end(), name) == nodes.end()) return std::nullopt;
            return RegistryData{RegType::String, std::string(name)};
        }
        auto section = userSection(root, key);
        if (!section) return std::nullopt;
        auto text = read().value(*section, storedName(name));
        if (!text) return std::nullopt;
        return decodeValue(*text);
    }

    Failure writeValue(RegistryRoot root, std::string_view path, std::string_view name,
                       const RegistryData& data) override {
        if (!name.empty()) {
            if (auto bad = unstorableName(name)) return bad;
        }
        return change(root, path, [&](IniDocument& doc, const std::string& section) -> Failure {
            doc.setValue(section, storedName(name), encodeValue(data));
            return std::nullopt;
        });
    }

    std::vector<std::string> valueNames(RegistryRoot root, std::string_view path) override {
        std::string key = normaliseKeyPath(path);
        if (root == RegistryRoot::LocalMachine) return deviceMap(key);
        auto section = userSection(root, key);
        if (!section) return {};
        std::vector<std::string> names = read().keys(*section);
        for (std::string& n : names) {
            if (n == kDefaultValueName) n.clear();
        }
        return names;
    }

    std::vector<std::string> subKeys(RegistryRoot root, std::string_view path) override {
        std::string key = normaliseKeyPath(path);
        if (root == RegistryRoot::LocalMachine) {
            return childNames({std::string(kSerialMap), std::string(kParallelMap)}, key);
        }
        auto section = userSection(root, key);
        if (!section) return {};
        return childNames(read().sectionNames(), *section);
    }

private:
    // The section of a key of a hive this store keeps, or std::nullopt for other hives.
    static std::optional<std::string> userSection(RegistryRoot root, const std::string& key) {
        if (root == RegistryRoot::CurrentUser) return key;
        if (root == RegistryRoot::ClassesRoot) return std::string(kClassesBranch) + (key.empty() ? "" : "\\" + key);
        return std::nullopt;
    }

    std::vector<std::string> deviceMap(const std::string& key) const {
        if (equalsIgnoreCase(key, kSerialMap)) return hostPortNodes(devices_, true);
        if (equalsIgnoreCase(key, kParallelMap)) return hostPortNodes(devices_, false);
        return {};
    }

    // An unreadable store reads as an empty one; writes refuse it instead (see change()).
    IniDocument read() const {
        std::string error;
        auto bytes = readWholeFile(file_, error);
        return bytes ? IniDocument(*bytes) : IniDocument();
    }

    template <typename Edit>
    Failure change(RegistryRoot root, std::string_view path, Edit edit) {
        std::string key = normaliseKeyPath(path);
        auto section = userSection(root, key);
        if (!section) {
            return "the " + registryRootName(root) + " hive is read-only on this system";
        }
        if (section->empty()) return std::string("the root of a hive holds no values here");
        if (!fitsOnOneLine(*section)) return std::string("a key path is one line");
        std::error_code ec;
        std::filesystem::create_directories(file_.parent_path(), ec);
        if (ec) return describeFileError("Cannot create", file_.parent_path(), ec.value());
        IniDocument doc;
        if (std::filesystem::exists(file_, ec)) {
            std::string error;
            auto bytes = readWholeFile(file_, error);
            if (!bytes) return error;
            doc = IniDocument(*bytes);
        }
        if (auto refused = edit(doc, *section)) return refused;
        return writeFileAtomically(file_, doc.text());
    }

    std::filesystem::path file_;
    std::filesystem::path devices_;
};

}  // namespace

std::vector<std::string> hostPortNodes(const std::filesystem::path& deviceFolder, bool serial) {
    static const std::vector<std::string> kSerial = {"ttyS", "ttyUSB", "ttyACM"};
    static const std::vector<std::string> kParallel = {"parport", "lp"};
    const auto& prefixes = serial ? kSerial : kParallel;
    std::vector<std::vector<std::string>> groups(prefixes.size());
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(deviceFolder, ec)) {
        std::string name = entry.path().filename().string();
        for (std::size_t i = 0; i < prefixes.size(); ++i) {
            const std::string& p = prefixes[i];
            if (name.size() > p.size() && name.compare(0, p.size(), p) == 0 &&
                name.find_first_not_of("0123456789", p.size()) == std::string::npos) {
                groups[i].push_back(name);
            }
        }
    }
    std::vector<std::string> nodes;
    for (auto& group : groups) {
        std::sort(group.begin(), group.end(), naturalLess);
        for (const std::string& name : group) nodes.push_back(pathText(deviceFolder / name));
    }
    return nodes;
}

#ifndef _WIN32
std::filesystem::path defaultRegistryStoreFile() {
    std::filesystem::path base;
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg && *xdg && std::filesystem::path(xdg).is_absolute()) {
        base = xdg;
    } else {
        const char* home = std::getenv("HOME");
        if (!home || !*home) {
            const passwd* user = ::getpwuid(::getuid());
            home = user ? user->pw_dir : "/";
        }
        base = std::filesystem::path(home) / ".config";
    }
    return base / "Brackenware" / "Arden Forge" / "registry.ini";
}
#endif

std::unique_ptr<RegistryStore> openFileRegistryStore(std::filesystem::path storeFile,
                                                     std::filesystem::path deviceFolder) {
    return std::make_unique<FileRegistryStore>(std::move(storeFile), std::move(deviceFolder));
}

#ifndef _WIN32
std::unique_ptr<RegistryStore> openPlatformRegistryStore(const std::string& machine) {
    if (!machine.empty()) return nullptr;
    return openFileRegistryStore(defaultRegistryStoreFile());
}
#endif

}  // namespace arden
