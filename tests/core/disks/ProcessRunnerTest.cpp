// Starting the external tools the disk back-end uses: argument vectors without a shell, exit
// codes, captured standard error, the look-up order of programs, and a stop that ends them.
#include <chrono>

#include "TestSupport.h"
#include "core/support/ProcessRunner.h"

using arden::test::ScratchDir;
namespace fs = std::filesystem;

namespace {

fs::path script(const fs::path& file, const std::string& body) {
    arden::test::writeBytes(file, "#!/bin/sh\n" + body);
    fs::permissions(file, fs::perms::owner_all);
    return file;
}

}  // namespace

TEST(ProcessRunner, ExitCodeStandardErrorAndArgumentsAsGiven) {
    ScratchDir dir;
    int idle = 0;
    auto r = arden::runProcess(script(dir / "tool", "printf '%s|' \"$@\" >&2; exit 3\n"), {"a b", "\"q\"", "$HOME", ";", ""}, [&] { ++idle; });
    EXPECT_EQ(std::tuple(r.started, r.exitCode, r.killedBySignal), std::tuple(true, 3, false)) << r.startError;
    EXPECT_EQ(r.standardError, "a b|\"q\"|$HOME|;||") << "each argument arrives whole and unexpanded";
    EXPECT_GE(idle, 1);
    EXPECT_EQ(arden::runProcess(script(dir / "loud", "head -c 300000 /dev/zero | tr '\\0' x >&2\n"), {}).standardError.size(), 300000u)
        << "more standard error than a pipe holds does not block the wait";
    auto absent = arden::runProcess(dir / "absent", {});
    EXPECT_FALSE(absent.started);
    EXPECT_NE(absent.startError.find((dir / "absent").string()), std::string::npos);

    // A stop ends the program even when it ignores SIGTERM.
    auto start = std::chrono::steady_clock::now();
    int asked = 0;
    auto stopped = arden::runProcess(script(dir / "stubborn", "trap '' TERM\nwhile :; do sleep 0.1; done\n"), {}, {},
                                     [&] { return ++asked > 2; });
    EXPECT_TRUE(stopped.stopped && stopped.killedBySignal);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(ProcessRunner, LookUpTakesTheFirstRunnableProgram) {
    ScratchDir first, second;
    arden::test::writeBytes(first / "tool", "not runnable");
    script(second / "tool", "exit 0\n");
    EXPECT_EQ(arden::findProgramIn("tool", {first.path(), second.path()}), second / "tool");
    script(first / "tool", "exit 0\n");
    EXPECT_EQ(arden::findProgramIn("tool", {first.path(), second.path()}), first / "tool");
    fs::create_directories(first / "dir");
    EXPECT_FALSE(arden::findProgramIn("dir", {first.path()})) << "a folder is not a program";
    EXPECT_EQ(arden::splitSearchPath("/a::/b c:"), (std::vector<fs::path>{"/a", "/b c"}));
}
