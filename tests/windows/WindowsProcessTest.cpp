// Starting programs on Windows: the argument vector reaches the program exactly (quotes,
// blanks, backslashes), its standard error and exit code come back, a stop ends it, and
// programs are looked for as NAME.exe. The program run is our own command-line program.
#include <string>

#include "TestSupport.h"
#include "core/support/PathText.h"
#include "core/support/ProcessRunner.h"

namespace arden {
namespace {

namespace fs = std::filesystem;

fs::path cliFolder() { return ownExecutableFolder().parent_path().parent_path() / "src" / "cli"; }

TEST(WindowsProcess, ArgumentsArriveAsGivenAndTheExitCodeAndErrorsComeBack) {
    for (const std::string& argument : {std::string("plain"), std::string("two words"), std::string("say \"hi\""),
                                        std::string("C:\\Folder With Blank\\"), std::string("a\\\\\"b"),
                                        std::string("J\xC3\xB6rg")}) {
        SCOPED_TRACE(argument);
        ProcessResult r = runProcess(cliFolder() / "arden-forge-cli.exe", {argument, "x"});
        ASSERT_TRUE(r.started) << r.startError;
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.standardError, "arden-forge-cli: unknown command '" + argument + "'\r\nTry 'arden-forge-cli help'.\r\n");
    }
}

TEST(WindowsProcess, AMissingProgramSaysWhichAndWhy) {
    ProcessResult r = runProcess("C:\\nowhere\\qemu-img.exe", {"create"});
    EXPECT_FALSE(r.started);
    EXPECT_EQ(r.startError.rfind("Cannot start C:\\nowhere\\qemu-img.exe: ", 0), 0u) << r.startError;
}

TEST(WindowsProcess, ProgramsAreFoundAsNameDotExe) {
    auto found = findProgramIn("arden-forge-cli", {fs::path("C:\\nowhere"), cliFolder()});
    ASSERT_TRUE(found);
    EXPECT_EQ(pathText(found->filename()), "arden-forge-cli.exe");
    EXPECT_FALSE(findProgramIn("arden-forge-cli.exe", {cliFolder()})) << "the suffix is added, not expected";
    EXPECT_EQ(splitSearchPath("C:\\Tools;;D:\\Other Tools"),
              (std::vector<fs::path>{fs::path("C:\\Tools"), fs::path("D:\\Other Tools")}));
}

TEST(WindowsProcess, AStopEndsTheProgram) {
    test::ScratchDir dir;
    // A 200 GB preallocated disk: writing its zeros would take far longer than the test.
    int polls = 0;
    ProcessResult r = runProcess(
        cliFolder() / "arden-forge-cli.exe",
        {"disk", "create", pathText(dir / "big.vmdk"), "--size", "200G", "--adapter", "lsilogic", "--type",
         "preallocated", "--yes"},
        [&] { ++polls; }, [&] { return polls >= 4; });
    ASSERT_TRUE(r.started) << r.startError;
    EXPECT_TRUE(r.stopped);
    EXPECT_EQ(r.exitCode, 1);
}

}  // namespace
}  // namespace arden
