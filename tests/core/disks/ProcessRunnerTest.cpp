// Starting the external tools the disk back-end uses: argument vectors without a shell,
// exit codes, captured standard error, and the look-up order of programs.
#include <sys/stat.h>

#include <chrono>

#include "TestSupport.h"
#include "core/support/ProcessRunner.h"

using arden::test::ScratchDir;
namespace fs = std::filesystem;

namespace {

void writeScript(const fs::path& file, const std::string& body) {
    arden::test::writeBytes(file, "#!/bin/sh\n" + body);
    fs::permissions(file, fs::perms::owner_all);
}

}  // namespace

TEST(ProcessRunner, ExitCodeStandardErrorAndArgumentsAsGiven) {
    ScratchDir dir;
    writeScript(dir / "tool", "printf '%s|' \"$@\" >&2; echo out; exit 3\n");
    int idleCalls = 0;
    arden::ProcessResult r = arden::runProcess(dir / "tool", {"a b", "\"q\"", "$HOME", ";", ""}, [&] { ++idleCalls; });
    ASSERT_TRUE(r.started) << r.startError;
    EXPECT_EQ(r.exitCode, 3);
    EXPECT_FALSE(r.killedBySignal);
    EXPECT_EQ(r.standardError, "a b|\"q\"|$HOME|;||") << "each argument arrives whole and unexpanded";
    EXPECT_GE(idleCalls, 1);

    // More standard error than a pipe holds does not block the wait.
    writeScript(dir / "loud", "head -c 300000 /dev/zero | tr '\\0' x >&2; exit 0\n");
    arden::ProcessResult loud = arden::runProcess(dir / "loud", {});
    EXPECT_EQ(loud.exitCode, 0);
    EXPECT_EQ(loud.standardError.size(), 300000u);

    writeScript(dir / "killed", "kill -9 $$\n");
    arden::ProcessResult killed = arden::runProcess(dir / "killed", {});
    EXPECT_TRUE(killed.killedBySignal);
    EXPECT_EQ(killed.exitCode, 128 + 9);

    arden::ProcessResult absent = arden::runProcess(dir / "absent", {});
    EXPECT_FALSE(absent.started);
    EXPECT_NE(absent.startError.find((dir / "absent").string()), std::string::npos);
}

TEST(ProcessRunner, LookUpTakesTheFirstRunnableProgram) {
    ScratchDir first, second;
    arden::test::writeBytes(first / "tool", "not runnable");
    writeScript(second / "tool", "exit 0\n");
    EXPECT_EQ(arden::findProgramIn("tool", {first.path(), second.path()}), second / "tool");
    writeScript(first / "tool", "exit 0\n");
    EXPECT_EQ(arden::findProgramIn("tool", {first.path(), second.path()}), first / "tool");
    EXPECT_FALSE(arden::findProgramIn("none", {first.path(), second.path()}));
    fs::create_directories(first / "dir");
    fs::permissions(first / "dir", fs::perms::owner_all);
    EXPECT_FALSE(arden::findProgramIn("dir", {first.path()})) << "a folder is not a program";

    EXPECT_EQ(arden::splitSearchPath("/a::/b c:"), (std::vector<fs::path>{"/a", "/b c"}));
    EXPECT_TRUE(arden::splitSearchPath("").empty());
    EXPECT_TRUE(fs::exists(arden::ownExecutableFolder() / "test_disks"));
}

TEST(ProcessRunner, AStopEndsTheProgramEvenWhenItIgnoresSigterm) {
    ScratchDir dir;
    writeScript(dir / "slow", "sleep 30\n");
    writeScript(dir / "stubborn", "trap '' TERM\nwhile :; do sleep 0.1; done\n");
    for (const char* name : {"slow", "stubborn"}) {
        int asked = 0;
        auto start = std::chrono::steady_clock::now();
        arden::ProcessResult r = arden::runProcess(dir / name, {}, {}, [&] { return ++asked > 2; });
        double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        EXPECT_TRUE(r.stopped) << name;
        EXPECT_TRUE(r.killedBySignal) << name;
        EXPECT_LT(seconds, 10.0) << name;
    }
}
