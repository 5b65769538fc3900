#include "core/support/cRegistry.h"

#include <charconv>

namespace arden {

namespace {

constexpr std::string_view kClassesBranch = "SOFTWARE\\Classes\\";

Message registryError(std::string text, const std::optional<std::string>& reason = std::nullopt) {
    if (reason) text += " - " + *reason;
    return Message{MessageKind::Critical, {TextPart::fixed("cRegistry")}, {TextPart::fixed(std::move(text))}};
}

std::string inQuotes(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string createKeyText(std::string_view path) { return "Failed to create registry Key: " + inQuotes(path); }
std::string openForDeleteText(std::string_view path) { return "Failed to open key " + inQuotes(path) + " for delete access"; }
std::string deleteKeyText(std::string_view path) { return "Failed to delete registry Key: " + inQuotes(path); }
std::string setValueText(RegistryRoot root, std::string_view path, std::string_view name, std::string_view value) {
    return "Failed to set registry value Key: '" + registryRootName(root) + "',Section: '" + std::string(path) +
           "',Key: '" + std::string(name) + "' to value: '" + std::string(value) + "'";
}

std::string dwordBytes(std::uint32_t value) {
    std::string bytes(4, '\0');
    for (int i = 0; i < 4; ++i) bytes[static_cast<std::size_t>(i)] = static_cast<char>((value >> (8 * i)) & 0xFF);
    return bytes;
}

std::optional<std::uint32_t> parseDword(std::string_view text) {
    bool negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    std::uint32_t value = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
    if (negative && value > 0x80000000u) return std::nullopt;
    return negative ? static_cast<std::uint32_t>(0u - value) : value;
}

// The verbs CreateEXEAssociation may write, in the order it writes them.
struct Verb {
    std::string_view key;
    std::string_view caption;
    std::string_view commandSwitch;
    bool ExeAssociation::*wanted;  // nullptr: always written
};
constexpr Verb kVerbs[] = {
    {"open", "&Open", "", nullptr},
    {"print", "&Print", "/p", &ExeAssociation::Print},
    {"add", "&Install ", "/a", &ExeAssociation::Add},
    {"new", "&New", "/n", &ExeAssociation::New},
};

std::string verbCommand(std::string_view program, std::string_view commandSwitch) {
    std::string command = "\"" + std::string(program) + "\" ";
    if (!commandSwitch.empty()) command += std::string(commandSwitch) + " ";
    return command + "\"%1\"";
}

std::string unreachable(const std::string& machine) {
    return "the registry of computer '" + machine + "' cannot be reached on this system";
}

}  // namespace

void cRegistry::setMachine(std::string machine) {
    if (machine != machine_ && !fixedStore_) store_.reset();
    machine_ = std::move(machine);
}

RegistryStore* cRegistry::store() {
    if (!store_) store_ = openPlatformRegistryStore(machine_);
    return store_.get();
}

bool cRegistry::KeyExists() { return store() && store()->keyExists(classKey_, sectionKey_); }

RegistryFailure cRegistry::CreateKey() {
    if (!store()) return registryError(createKeyText(sectionKey_), unreachable(machine_));
    if (auto reason = store()->createKey(classKey_, sectionKey_)) return registryError(createKeyText(sectionKey_), reason);
    return std::nullopt;
}

RegistryFailure cRegistry::DeleteKey() {
    if (!KeyExists()) return registryError(openForDeleteText(sectionKey_));
    if (auto reason = store()->deleteKey(classKey_, sectionKey_)) return registryError(deleteKeyText(sectionKey_), reason);
    return std::nullopt;
}

RegistryFailure cRegistry::DeleteValue() {
    if (!KeyExists()) return registryError(openForDeleteText(sectionKey_));
    if (auto reason = store()->deleteValue(classKey_, sectionKey_, valueKey_)) {
        return registryError(deleteKeyText(sectionKey_) + ",Value: " + inQuotes(valueKey_), reason);
    }
    return std::nullopt;
}

std::string cRegistry::Value() {
    auto data = store() ? store()->readValue(classKey_, sectionKey_, valueKey_) : std::nullopt;
    if (!data) return default_;
    valueType_ = data->type;
    if (data->type == RegType::DWord && data->bytes.size() == 4) {
        std::uint32_t value = 0;
        for (int i = 3; i >= 0; --i) value = value * 256 + static_cast<unsigned char>(data->bytes[static_cast<std::size_t>(i)]);
        return std::to_string(value);
    }
    return data->bytes;
}

RegistryFailure cRegistry::setValue(std::string_view value) {
    std::string failed = setValueText(classKey_, sectionKey_, valueKey_, value);
    if (!store()) return registryError(failed, unreachable(machine_));
    RegistryData data{valueType_, std::string(value)};
    if (valueType_ == RegType::DWord) {
        auto number = parseDword(value);
        if (!number) return registryError(failed, "a DWORD value is a whole number from -2147483648 to 4294967295");
        data.bytes = dwordBytes(*number);
    }
    if (auto reason = store()->writeValue(classKey_, sectionKey_, valueKey_, data)) return registryError(failed, reason);
    return std::nullopt;
}

std::vector<std::string> cRegistry::EnumerateValues() {
    return store() ? store()->valueNames(classKey_, sectionKey_) : std::vector<std::string>{};
}

std::vector<std::string> cRegistry::EnumerateSections() {
    return store() ? store()->subKeys(classKey_, sectionKey_) : std::vector<std::string>{};
}

RegistryFailure cRegistry::writeDefaultValue(const std::string& path, const std::string& text) {
    return setValueEx(classKey_, path, "", RegType::String, text);
}

RegistryFailure cRegistry::CreateEXEAssociation(const ExeAssociation& a) {
    const std::string classPath = std::string(kClassesBranch) + a.ClassName;
    if (a.ClassName.empty() || a.Extension.empty() || a.ProgramPath.empty()) {
        return registryError(createKeyText(classPath), "a program path, a class name and an extension are needed");
    }
    RegistryFailure failure = writeDefaultValue(std::string(kClassesBranch) + a.Extension, a.ClassName);
    if (!failure) failure = writeDefaultValue(classPath, a.Description);
    if (!failure) failure = writeDefaultValue(classPath + "\\DefaultIcon", a.ProgramPath + "," + std::to_string(a.IconIndex));
    for (const Verb& verb : kVerbs) {
        if (failure) break;
        if (verb.wanted && !(a.*verb.wanted)) continue;
        const std::string verbPath = classPath + "\\shell\\" + std::string(verb.key);
        failure = writeDefaultValue(verbPath, std::string(verb.caption));
        if (!failure) failure = writeDefaultValue(verbPath + "\\command", verbCommand(a.ProgramPath, verb.commandSwitch));
    }
    if (!failure) associationClass_ = a.ClassName;
    return failure;
}

RegistryFailure cRegistry::CreateAdditionalEXEAssociations(const std::vector<std::string>& nameTextCommand) {
    if (nameTextCommand.empty() || nameTextCommand.size() % 3 != 0) {
        return registryError("Invalid parameter list passed to CreateAdditionalEXEAssociations - expected Name/Text/Command");
    }
    if (associationClass_.empty()) {
        return registryError("Error - attempt to create additional associations before class defined.");
    }
    for (std::size_t i = 0; i < nameTextCommand.size(); i += 3) {
        const std::string verbPath = std::string(kClassesBranch) + associationClass_ + "\\shell\\" + nameTextCommand[i];
        if (auto failure = writeDefaultValue(verbPath, nameTextCommand[i + 1])) return failure;
        if (auto failure = writeDefaultValue(verbPath + "\\command", nameTextCommand[i + 2])) return failure;
    }
    return std::nullopt;
}

RegistryFailure cRegistry::DeleteEXEAssociation(std::string_view className, std::string_view extension) {
    for (std::string_view name : {className, extension}) {
        cRegistry key = pointedAt(classKey_, std::string(kClassesBranch) + std::string(name), "", RegType::String);
        if (name.empty()) return registryError(openForDeleteText(key.SectionKey()));
        if (auto failure = key.DeleteKey()) return failure;
    }
    if (className == associationClass_) associationClass_.clear();
    return std::nullopt;
}

cRegistry cRegistry::pointedAt(RegistryRoot root, std::string_view section, std::string_view name,
                               std::uint32_t type) {
    store();  // the copy shares this object's store
    cRegistry one = *this;
    one.setClassKey(root);
    one.setSectionKey(std::string(section));
    one.setValueKey(std::string(name));
    one.setValueType(type);
    return one;
}

std::string cRegistry::ValueEx(RegistryRoot root, std::string_view section, std::string_view name,
                               std::uint32_t type, std::string_view defaultValue) {
    cRegistry one = pointedAt(root, section, name, type);
    one.setDefault(std::string(defaultValue));
    return one.Value();
}

RegistryFailure cRegistry::setValueEx(RegistryRoot root, std::string_view section, std::string_view name,
                                      std::uint32_t type, std::string_view value) {
    return pointedAt(root, section, name, type).setValue(value);
}

}  // namespace arden
