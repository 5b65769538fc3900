#include "core/support/cRegistry.h"

#include "TestSupport.h"
#include "core/support/TempFolder.h"

using arden::cRegistry;
using arden::RegistryRoot;
using namespace arden::test;
namespace RegType = arden::RegType;

namespace {

struct Fixture {
    ScratchDir dir;
    std::filesystem::path file = dir / "cfg" / "registry.ini";
    std::shared_ptr<arden::RegistryStore> store{arden::openFileRegistryStore(file, dir / "dev")};
    cRegistry reg{store};
    Fixture() {
        reg.setClassKey(RegistryRoot::CurrentUser);
        reg.setSectionKey("Software\\Brackenware\\Arden Forge");
        reg.setValueKey("IniLocation");
    }
};

std::string text(const arden::RegistryFailure& f) { return f ? f->text.at(0).literal : std::string(); }

}  // namespace

TEST(cRegistryStore, ValuesRoundTripThroughTheStoreFile) {
    Fixture f;
    f.reg.setDefault("none");
    EXPECT_EQ(f.reg.Value(), "none");
    EXPECT_FALSE(f.reg.KeyExists());
    ASSERT_FALSE(f.reg.setValue("/tmp/")) << "the key and the store's folders are created";
    EXPECT_EQ(readBytes(f.file), "[Software\\Brackenware\\Arden Forge]\r\nIniLocation=/tmp/\r\n");
    EXPECT_TRUE(f.reg.KeyExists());
    f.reg.setSectionKey("\\software\\BRACKENWARE\\arden forge\\");
    f.reg.setValueKey("inilocation");
    EXPECT_EQ(f.reg.Value(), "/tmp/") << "keys and names are found without regard to case";
    f.reg.setSectionKey("Software");
    EXPECT_EQ(f.reg.EnumerateSections(), std::vector<std::string>{"Brackenware"});

    // Texts that would read back differently as plain INI values, and the other types.
    const std::pair<std::uint32_t, std::string> values[] = {
        {RegType::String, "  padded  "}, {RegType::String, "\"quoted\""}, {RegType::String, "dword:00000001"},
        {RegType::String, "two\r\nlines"}, {RegType::String, ""},          {RegType::DWord, "4294967295"},
        {RegType::Binary, std::string("\0\x01\xff", 3)}, {RegType::MultiString, std::string("a\0b", 3)},
        {RegType::ExpandString, "%TEMP%"}};
    int n = 0;
    for (const auto& [type, value] : values) {
        f.reg.setValueType(type);
        f.reg.setValueKey("v" + std::to_string(n++));
        ASSERT_FALSE(f.reg.setValue(value));
        f.reg.setValueType(RegType::None);
        EXPECT_EQ(f.reg.Value(), value);
        EXPECT_EQ(f.reg.ValueType(), type);
    }
    ASSERT_FALSE(f.reg.setValueEx(RegistryRoot::CurrentUser, "Software", "neg", RegType::DWord, "-1"));
    EXPECT_EQ(f.reg.ValueEx(RegistryRoot::CurrentUser, "Software", "neg", RegType::String, ""), "4294967295");
}

TEST(cRegistryStore, DeletesAndReportsWithItsTexts) {
    Fixture f;
    ASSERT_FALSE(f.reg.setValue("x"));
    f.reg.setValueKey("Gone");
    EXPECT_NE(text(f.reg.DeleteValue()).find("Failed to delete registry Key: 'Software\\Brackenware\\Arden Forge'"), std::string::npos);
    f.reg.setValueKey("IniLocation");
    EXPECT_FALSE(f.reg.DeleteValue());
    EXPECT_TRUE(f.reg.EnumerateValues().empty());
    f.reg.setSectionKey("Software");
    EXPECT_FALSE(f.reg.DeleteKey());
    EXPECT_FALSE(f.reg.KeyExists());
    EXPECT_EQ(text(f.reg.DeleteKey()), "Failed to open key 'Software' for delete access");

    f.reg.setDefault("d");
    f.reg.setValueType(RegType::DWord);
    EXPECT_NE(text(f.reg.setValue("12x")).find("Failed to set registry value Key: 'HKEY_CURRENT_USER',Section: "
                                                "'Software',Key: 'IniLocation' to value: '12x' - "),
              std::string::npos);
    f.reg.setClassKey(RegistryRoot::LocalMachine);
    f.reg.setValueType(RegType::String);
    EXPECT_NE(text(f.reg.setValue("v")).find("read-only"), std::string::npos);
    EXPECT_NE(text(f.reg.CreateKey()).find("Failed to create registry Key: 'Software'"), std::string::npos);
    f.reg.setClassKey(RegistryRoot::CurrentUser);
    f.reg.setValueKey("a=b");
    EXPECT_TRUE(f.reg.setValue("v")) << "a name the store cannot hold is refused, not mangled";
}

TEST(cRegistryStore, CorruptOrUnwritableStore) {
    Fixture f;
    std::filesystem::create_directories(f.file.parent_path());
    const std::string garbage("\x00\x7f[Soft\xff\r\nIniLocation=dword:zz\n\x01\x02", 33);
    writeBytes(f.file, garbage);
    f.reg.setDefault("default");
    EXPECT_EQ(f.reg.Value(), "default");
    ASSERT_FALSE(f.reg.setValue("/tmp/"));
    EXPECT_EQ(f.reg.Value(), "/tmp/");
    EXPECT_EQ(readBytes(f.file).substr(0, 33), garbage) << "what the store held is kept";

    ScratchDir dir;
    writeBytes(dir / "plain", "x");
    cRegistry blocked{arden::openFileRegistryStore(dir / "plain" / "registry.ini", dir.path())};
    auto failure = blocked.setValueEx(RegistryRoot::CurrentUser, "K", "V", RegType::String, "v");
    EXPECT_NE(text(failure).find((dir / "plain").string()), std::string::npos) << text(failure);

}

TEST(TempFolderRule, KeepsOrAddsTheTrailingSeparator) {
    const std::string tooLong(600, 'a');
    const std::pair<const char*, const char*> cases[] = {
        {"/var/tmp", "/var/tmp/"}, {"/var/tmp/", "/var/tmp/"}, {nullptr, "/tmp/"}, {"", "/tmp/"}, {tooLong.c_str(), "/tmp/"}};
    for (const auto& [env, expected] : cases) EXPECT_EQ(arden::tempFolderFromEnvironment(env), expected) << (env ? env : "unset");
}
