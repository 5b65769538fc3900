#pragma once
// cRegistry: registry access as an object with a current root (ClassKey), key path
// (SectionKey) and value name (ValueKey). The settings code sets them and reads or assigns
// Value. On POSIX the keys live in the per-user store file (see RegistryStore.h).
//
// An operation that fails returns a RegistryFailure: a critical message whose title is the
// class name and whose text names the key, section, value name or value concerned, followed by
// " - " and the system's reason.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/support/Message.h"
#include "core/support/RegistryStore.h"

namespace arden {

using RegistryFailure = std::optional<Message>;

// A file type for CreateEXEAssociation; the "open" verb is always written.
struct ExeAssociation {
    std::string ProgramPath;
    std::string ClassName;
    std::string Description;
    std::string Extension;  // with its dot: ".vmx"
    int IconIndex = 0;
    bool Print = false;     // "&Print", switch /p
    bool Add = false;       // "&Install ", switch /a
    bool New = false;       // "&New", switch /n
};

class cRegistry {
public:
    // Uses the platform's store of the computer named by Machine.
    cRegistry() = default;
    // Uses the given store whatever Machine says (tests, other stores).
    explicit cRegistry(std::shared_ptr<RegistryStore> store) : store_(std::move(store)), fixedStore_(true) {}

    const std::string& Machine() const { return machine_; }
    void setMachine(std::string machine);

    bool KeyExists();
    RegistryFailure CreateKey();
    // Removes SectionKey with everything below it.
    RegistryFailure DeleteKey();
    RegistryFailure DeleteValue();

    // The value ValueKey of SectionKey as text (a DWORD in decimal, other types as their bytes),
    // or Default when it is missing. ValueType becomes the type read.
    std::string Value();
    // Writes the text as a value of ValueType (a DWORD from its decimal text), creating
    // SectionKey when it does not exist.
    RegistryFailure setValue(std::string_view value);

    std::vector<std::string> EnumerateValues();
    std::vector<std::string> EnumerateSections();

    // Writes, below "SOFTWARE\Classes\" of ClassKey, the extension key pointing at the class,
    // the class's description, its "DefaultIcon" and the verbs with their commands.
    RegistryFailure CreateEXEAssociation(const ExeAssociation& association);
    // Further verbs below the class's shell key, given as name, caption, command triples.
    RegistryFailure CreateAdditionalEXEAssociations(const std::vector<std::string>& nameTextCommand);
    // Removes the class and extension keys.
    RegistryFailure DeleteEXEAssociation(std::string_view className, std::string_view extension);

    std::uint32_t ValueType() const { return valueType_; }
    void setValueType(std::uint32_t type) { valueType_ = type; }
    RegistryRoot ClassKey() const { return classKey_; }
    void setClassKey(RegistryRoot root) { classKey_ = root; }
    const std::string& SectionKey() const { return sectionKey_; }
    void setSectionKey(std::string path) { sectionKey_ = std::move(path); }
    const std::string& ValueKey() const { return valueKey_; }
    void setValueKey(std::string name) { valueKey_ = std::move(name); }
    const std::string& Default() const { return default_; }
    void setDefault(std::string value) { default_ = std::move(value); }

    // One value given by root, key, name, type and default in one call; leaves the object's
    // current root, key, name, type and default as they were.
    std::string ValueEx(RegistryRoot root, std::string_view section, std::string_view name, std::uint32_t type,
                        std::string_view defaultValue);
    RegistryFailure setValueEx(RegistryRoot root, std::string_view section, std::string_view name,
                               std::uint32_t type, std::string_view value);

private:
    RegistryStore* store();
    // A copy of this object (sharing its store) pointed at another value.
    cRegistry pointedAt(RegistryRoot root, std::string_view section, std::string_view name, std::uint32_t type);
    RegistryFailure writeDefaultValue(const std::string& path, const std::string& text);

    std::shared_ptr<RegistryStore> store_;
    bool fixedStore_ = false;
    std::string machine_;
    RegistryRoot classKey_ = RegistryRoot::CurrentUser;
    std::string sectionKey_;
    std::string valueKey_;
    std::uint32_t valueType_ = RegType::String;
    std::string default_;
    std::string associationClass_;  // set by a successful CreateEXEAssociation
};

}  // namespace arden
