#include "CliRunner.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

// The temporary folder and the per-user store both inside one scratch folder.
struct Home {
    ScratchDir dir;
    Home() { fs::create_directories(dir / "tmp"); }
    std::string env() const {
        return "TMPDIR=" + shellQuote((dir / "tmp").string()) + " XDG_CONFIG_HOME=" + shellQuote((dir / "cfg").string());
    }
    CliResult run(const std::vector<std::string>& args, const std::string& as = {}) const {
        return runCli(args, env() + as);
    }
};

}  // namespace

TEST(CliFavorites, AddListRemoveAcrossRuns) {
    Home h;
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
    auto empty = h.run({"favorites"});
    EXPECT_EQ(empty.exitCode, 0) << empty.err;
    EXPECT_EQ(empty.out, "");
}

TEST(CliFavorites, UsageErrorsWriteNothing) {
    Home h;
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"favorites", "add", "X"}, {"favorites", "add", "X", "/x.vmx", "eight"},
          {"favorites", "add", "X", "/x.vmx", "0"}, {"favorites", "add", "X", "/x.vmx", "40000"},
          {"favorites", "add", "A\tB", "/x.vmx"}, {"favorites", "add", "", "/x.vmx"}, {"favorites", "remove"},
          {"favorites", "list", "extra"}, {"favorites", "rename"}, {"favorites", "--all"}}) {
        EXPECT_EQ(h.run(args).exitCode, 2) << args.back();
    }
    EXPECT_FALSE(fs::exists(h.dir / "tmp" / "ArdenForge.ini"));
}

TEST(CliFavorites, UnwritableTemporaryFolderIsRefused) {
    if (runningAsRoot() && std::system("command -v setpriv >/dev/null") != 0) {
        GTEST_SKIP() << "running as root without setpriv: a read-only folder cannot be refused";
    }
    Home locked;
    fs::permissions(locked.dir.path(), fs::perms::all);
    // Root's folder is closed to the user nobody; anyone else's folder is closed to its owner.
    fs::permissions(locked.dir / "tmp", fs::perms(runningAsRoot() ? 0755 : 0555));
    fs::create_directories(locked.dir / "cfg");
    fs::permissions(locked.dir / "cfg", fs::perms::all);
    auto refused = locked.run({"favorites", "add", "X", "/x.vmx"},
                              runningAsRoot() ? " setpriv --reuid=65534 --regid=65534 --clear-groups" : "");
    EXPECT_EQ(refused.exitCode, 1) << refused.err;
    EXPECT_NE(refused.err.find("The settings could not be saved: Cannot write " + (locked.dir / "tmp").string() +
                               "//ArdenForge.ini"),
              std::string::npos)
        << refused.err;
}
