// --version and --help of both programs, in the usual form: name, version of the build, exit 0,
// on standard output, and without a display for the desktop program.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include "PackageTestSupport.h"
#include "cli/CliRunner.h"

namespace arden::test {
namespace {

TEST(VersionAndHelp, TheCommandLineProgramPrintsItsVersionAndHelp) {
    CliResult version = runCli({"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.out, "arden-forge-cli (Arden Forge) " + projectVersion() + "\n");
    EXPECT_EQ(version.err, "");
    for (const char* option : {"--help", "-h", "help"}) {
        CliResult help = runCli({option});
        EXPECT_EQ(help.exitCode, 0) << option;
        EXPECT_EQ(help.out.rfind("Usage: arden-forge-cli COMMAND [ARGS]\n       arden-forge-cli --help | --version\n", 0), 0u)
            << help.out;
    }
}

#ifdef ARDEN_APP_PATH
TEST(VersionAndHelp, TheDesktopProgramAnswersWithoutADisplay) {
    ScratchDir capture;
    auto run = [&](const std::string& option) {
        const std::string cmd = "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM " + shellQuote(ARDEN_APP_PATH) + " " +
                                option + " >" + shellQuote((capture / "out").string()) + " 2>&1 </dev/null";
        int status = std::system(cmd.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    EXPECT_EQ(run("--version"), 0);
    EXPECT_EQ(readBytes(capture / "out"), "arden-forge (Arden Forge) " + projectVersion() + "\n");
    EXPECT_EQ(run("--help"), 0);
    EXPECT_EQ(readBytes(capture / "out").rfind("Usage: arden-forge [FILE.vmx]\n       arden-forge --help | --version\n", 0), 0u)
        << readBytes(capture / "out");
}
#endif

}  // namespace
}  // namespace arden::test
