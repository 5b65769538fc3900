// `arden-forge-cli resave FILE --output OUT` writes OUT and leaves FILE as it was.
#include "cli/CliRunner.h"

using arden::test::readBytes;
using arden::test::runCli;
using arden::test::ScratchDir;
using arden::test::writeBytes;
namespace fs = std::filesystem;

TEST(CliResaveOutput, WritesTheOutputAndLeavesTheInputUntouched) {
    ScratchDir dir;
    const std::string input = "displayName = \"m\"\nmemsize = \"64\"\nfoo.bar = \"kept\"\n";
    writeBytes(dir / "m.vmx", input);
    fs::create_directory(dir / "out");
    const fs::path out = dir / "out" / "copy.vmx";
    auto r = runCli({"resave", (dir / "m.vmx").string(), "--output", out.string(), "--backup"});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(readBytes(dir / "m.vmx"), input) << "the input is not rewritten";
    ASSERT_TRUE(fs::exists(out));
    const std::string written = readBytes(out);
    EXPECT_NE(written.find("\r\nmemsize = \"64\"\r\n"), std::string::npos) << written;
    EXPECT_NE(written.find("\r\n##### other params from old file ######\r\nfoo.bar = \"kept\"\r\n"), std::string::npos)
        << written;
    // The backup is of the input, beside it; nothing else appears in either folder.
    EXPECT_EQ(readBytes(dir / "m.vmx.bak"), input);
    std::vector<std::string> names;
    for (const auto& e : fs::recursive_directory_iterator(dir.path())) names.push_back(e.path().lexically_relative(dir.path()).string());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"m.vmx", "m.vmx.bak", "out", "out/copy.vmx"}));

    // An output over an existing file replaces that file only.
    writeBytes(out, "old\n");
    auto again = runCli({"resave", (dir / "m.vmx").string(), "--output", out.string()});
    ASSERT_EQ(again.exitCode, 0) << again.err;
    EXPECT_EQ(readBytes(out), written);
    EXPECT_EQ(readBytes(dir / "m.vmx"), input);
}
