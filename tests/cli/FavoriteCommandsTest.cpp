#include "CliRunner.h"

using arden::test::readBytes;
using arden::test::runCli;
using arden::test::ScratchDir;
using arden::test::shellQuote;
using arden::test::writeBytes;

namespace {

// The temporary folder and the per-user store both inside one scratch folder.
struct Home {
    ScratchDir dir;
    Home() { std::filesystem::create_directories(dir / "tmp"); }
    std::string env() const {
        return "TMPDIR=" + shellQuote((dir / "tmp").string()) + " XDG_CONFIG_HOME=" + shellQuote((dir / "cfg").string());
    }
    std::filesystem::path ini() const { return dir / "tmp" / "ArdenForge.ini"; }
    arden::test::CliResult run(const std::vector<std::string>& args) const { return runCli(args, env()); }
};

}  // namespace

TEST(CliFavorites, AddListRemoveAcrossRuns) {
    Home h;
    auto empty = h.run({"favorites"});
    ASSERT_EQ(empty.exitCode, 0) << empty.err;
    EXPECT_EQ(empty.out, "");
    EXPECT_NE(readBytes(h.dir / "cfg" / "Brackenware" / "Arden Forge" / "registry.ini")
                  .find("IniLocation=" + (h.dir / "tmp").string() + "/\r\n"),
              std::string::npos)
        << "the first run stores the settings folder";

    ASSERT_EQ(h.run({"favorites", "add", "My XP", "/vms/xp.vmx"}).exitCode, 0);
    ASSERT_EQ(h.run({"favorites", "add", "Old", "/vms/old.vmx", "6"}).exitCode, 0);
    ASSERT_EQ(h.run({"favorites", "add", "My XP", "/vms/moved.vmx"}).exitCode, 0);
    auto listed = h.run({"favorites", "list"});
    ASSERT_EQ(listed.exitCode, 0) << listed.err;
    EXPECT_EQ(listed.out, "My XP\t/vms/moved.vmx\t8\nOld\t/vms/old.vmx\t6\n");

    auto missing = h.run({"favorites", "remove", "my xp"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_NE(missing.err.find("No favourite is named 'my xp'"), std::string::npos) << missing.err;
    ASSERT_EQ(h.run({"favorites", "remove", "My XP"}).exitCode, 0);
    ASSERT_EQ(h.run({"favorites", "remove", "Old"}).exitCode, 0);
    EXPECT_EQ(h.run({"favorites"}).out, "");
    EXPECT_EQ(readBytes(h.ini()).find("[Favorites]"), std::string::npos);
}

TEST(CliFavorites, UsageErrors) {
    Home h;
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"favorites", "add", "X"}, {"favorites", "add", "X", "/x.vmx", "eight"},
          {"favorites", "add", "X", "/x.vmx", "0"}, {"favorites", "add", "X", "/x.vmx", "40000"},
          {"favorites", "add", "A\tB", "/x.vmx"}, {"favorites", "add", "", "/x.vmx"},
          {"favorites", "remove"}, {"favorites", "list", "extra"}, {"favorites", "rename"},
          {"favorites", "--all"}}) {
        EXPECT_EQ(h.run(args).exitCode, 2) << args.back();
    }
    EXPECT_FALSE(std::filesystem::exists(h.ini())) << "a usage error writes nothing";
}

TEST(CliFavorites, BadSettingsAndUnwritableFolder) {
    Home h;
    writeBytes(h.ini(), "[Favorites]\r\nFavorite0=A\t/a.vmx\t8\r\nFavorite1=B\r\nFavorite2=C\t/c.vmx\t8\r\n");
    auto listed = h.run({"favorites"});
    EXPECT_EQ(listed.exitCode, 0);
    EXPECT_EQ(listed.out, "A\t/a.vmx\t8\n");
    EXPECT_NE(listed.err.find("Favorite1 holds fewer than three"), std::string::npos) << listed.err;

    std::filesystem::create_directories(h.dir / "cfg" / "Brackenware" / "Arden Forge");
    writeBytes(h.dir / "cfg" / "Brackenware" / "Arden Forge" / "registry.ini", std::string("\0\xff\x01garbage", 10));
    EXPECT_EQ(h.run({"favorites"}).exitCode, 0) << "a corrupt store still starts";

    if (arden::test::runningAsRoot() && std::system("command -v setpriv >/dev/null") != 0) {
        GTEST_SKIP() << "running as root without setpriv: a read-only folder cannot be refused";
    }
    Home locked;
    std::filesystem::permissions(locked.dir.path(), std::filesystem::perms::all, std::filesystem::perm_options::add);
    std::filesystem::permissions(locked.dir / "tmp", std::filesystem::perms::owner_all | std::filesystem::perms::group_read |
                                                         std::filesystem::perms::group_exec | std::filesystem::perms::others_read |
                                                         std::filesystem::perms::others_exec);
    std::filesystem::create_directories(locked.dir / "cfg");
    std::filesystem::permissions(locked.dir / "cfg", std::filesystem::perms::all);
    std::string asNobody = arden::test::runningAsRoot() ? " setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
    auto refused = runCli({"favorites", "add", "X", "/x.vmx"}, locked.env() + asNobody);
    EXPECT_EQ(refused.exitCode, 1) << refused.err;
    EXPECT_NE(refused.err.find("The settings could not be saved: Cannot write " + (locked.dir / "tmp").string() +
                               "//ArdenForge.ini"),
              std::string::npos)
        << refused.err;
}
