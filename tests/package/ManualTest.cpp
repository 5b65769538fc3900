// The manual pages: the CLI's page lists every command form of the program's help, options
// included (a command or option added to the help alone fails here until `make manual` has
// written it into the page), both pages carry the build's version and render without warnings.
#include <gtest/gtest.h>

#include <cstdlib>

#include "PackageTestSupport.h"
#include "cli/CliRunner.h"

namespace arden::test {
namespace {

const std::filesystem::path kManualDir = ARDEN_MANUAL_DIR;

std::string unescapedTroff(std::string text) {
    for (auto [from, to] : {std::pair{"\\-", "-"}, {"\\(dq", "\""}, {"\\e", "\\"}}) {
        for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += std::string(to).size()) {
            text.replace(at, std::string(from).size(), to);
        }
    }
    return text;
}

// The tags of the COMMANDS section: `.TP` or `.TQ`, then `.B "form"`.
std::set<std::string> manualForms(const std::string& page) {
    std::set<std::string> forms;
    std::istringstream lines(page);
    bool inCommands = false, tagNext = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(".SH", 0) == 0) inCommands = line == ".SH COMMANDS";
        if (!inCommands) continue;
        if (tagNext && line.rfind(".B \"", 0) == 0 && line.back() == '"') {
            forms.insert(collapsedBlanks(unescapedTroff(line.substr(4, line.size() - 5))));
        }
        tagNext = line == ".TP" || line == ".TQ";
    }
    return forms;
}

std::string joined(const std::set<std::string>& texts) {
    std::string out;
    for (const std::string& t : texts) out += "  " + t + "\n";
    return out;
}

TEST(ManualPages, TheCliPageListsEveryCommandFormAndOptionOfTheHelp) {
    CliResult help = runCli({"help"});
    ASSERT_EQ(help.exitCode, 0) << help.err;
    const std::set<std::string> inHelp = helpForms(help.out);
    // The help is read as a user reads it: these forms are in it, continuation lines joined.
    ASSERT_TRUE(inHelp.contains("new FOLDER NAME [--platform P] [--version V]")) << joined(inHelp);
    ASSERT_TRUE(inHelp.contains("device node FILE ENTRY NODE [--yes] [--dry-run]")) << joined(inHelp);
    ASSERT_TRUE(inHelp.contains("nic FILE N [--type vlance|vmxnet|vmxnet-enhanced|e1000|e1000e|vmxnet3] "
                                "[--connection bridged|hostonly|nat|VMnetK] "
                                "[--mac generated|XX:XX:XX:XX:XX:XX] [--offset K] [--enabled yes|no] [--yes] [--dry-run]"))
        << joined(inHelp);

    const std::set<std::string> inManual = manualForms(readBytes(kManualDir / "arden-forge-cli.1"));
    std::set<std::string> missing, stale;
    for (const std::string& f : inHelp) if (!inManual.contains(f)) missing.insert(f);
    for (const std::string& f : inManual) if (!inHelp.contains(f)) stale.insert(f);
    EXPECT_TRUE(missing.empty()) << "in the help, not in the manual (run `make manual`):\n" << joined(missing);
    EXPECT_TRUE(stale.empty()) << "in the manual, no longer in the help (run `make manual`):\n" << joined(stale);
}

TEST(ManualPages, CarryTheVersionAndRenderWithoutWarnings) {
    const std::string version = projectVersion();
    ASSERT_FALSE(version.empty());
    for (const char* page : {"arden-forge.1", "arden-forge-cli.1"}) {
        SCOPED_TRACE(page);
        const std::filesystem::path file = kManualDir / page;
        const std::string text = readBytes(file);
        EXPECT_NE(text.find("\"Arden Forge " + version + "\" \"User Commands\""), std::string::npos);
        EXPECT_EQ(text.find('@'), std::string::npos) << "a placeholder was left unfilled";
        if (std::system("command -v man >/dev/null 2>&1") != 0) continue;
        ScratchDir out;
        const std::string cmd = "LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l " + shellQuote(file.string()) +
                                " >" + shellQuote((out / "page").string()) + " 2>" + shellQuote((out / "warnings").string());
        EXPECT_EQ(std::system(cmd.c_str()), 0);
        EXPECT_EQ(readBytes(out / "warnings"), "");
        EXPECT_NE(readBytes(out / "page").find("SYNOPSIS"), std::string::npos);
    }
}

}  // namespace
}  // namespace arden::test
