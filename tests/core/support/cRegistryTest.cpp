#include "core/support/cRegistry.h"

#include "TestSupport.h"
#include "core/support/TempFolder.h"

using arden::cRegistry;
using arden::RegistryRoot;
using namespace arden::test;

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
    ASSERT_FALSE(f.reg.setValue("/tmp/")) << "the key and the store's folders are created";
    EXPECT_EQ(readBytes(f.file), "[Software\\Brackenware\\Arden Forge]\r\nIniLocation=/tmp/\r\n");
    f.reg.setSectionKey("\\software\\BRACKENWARE\\arden forge\\");
    f.reg.setValueKey("inilocation");
    EXPECT_EQ(f.reg.Value(), "/tmp/") << "keys and names are found without regard to case";
    // Texts that would read back differently as plain INI values.
    for (const std::string value : {"  padded  ", "\"quoted\"", "dword:00000001", "two\r\nlines", ""}) {
        ASSERT_FALSE(f.reg.setValue(value));
        EXPECT_EQ(f.reg.Value(), value);
    }
    f.reg.setClassKey(RegistryRoot::LocalMachine);
    EXPECT_NE(text(f.reg.setValue("v")).find("read-only"), std::string::npos);
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
    auto failure = blocked.setValueEx(RegistryRoot::CurrentUser, "K", "V", arden::RegType::String, "v");
    EXPECT_NE(text(failure).find((dir / "plain").string()), std::string::npos) << text(failure);

}

TEST(TempFolderRule, KeepsOrAddsTheTrailingSeparator) {
    const std::string tooLong(600, 'a');
    const std::pair<const char*, const char*> cases[] = {
        {"/var/tmp", "/var/tmp/"}, {"/var/tmp/", "/var/tmp/"}, {nullptr, "/tmp/"}, {"", "/tmp/"}, {tooLong.c_str(), "/tmp/"}};
    for (const auto& [env, expected] : cases) EXPECT_EQ(arden::tempFolderFromEnvironment(env), expected) << (env ? env : "unset");
}
