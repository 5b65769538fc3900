// The bash completion of arden-forge-cli, run in bash as the shell runs it when Tab is pressed
// after the words given: commands, actions, options and their listed values, device types,
// the hardware entries and nodes of the file being edited, and .vmx/.vmdk file names.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "PackageTestSupport.h"
#include "cli/CliRunner.h"

namespace arden::test {
namespace {

const char* const kBashCompletion = "/usr/share/bash-completion/bash_completion";

class Completion : public ::testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(kBashCompletion)) {
            if (inCi()) FAIL() << kBashCompletion << " is missing (Debian package bash-completion)";
            GTEST_SKIP() << kBashCompletion << " is missing (Debian package bash-completion)";
        }
        // A new machine (a CD-ROM drive on IDE) with a SCSI controller, and files of both kinds
    // beside it.
        ASSERT_EQ(runCli({"new", dir_.path().string(), "Test"}).exitCode, 0);
        ASSERT_EQ(runCli({"device", "add", vmx(), "SCSI Controller"}).exitCode, 0);
        writeBytes(dir_ / "Disk One.vmdk", "# Disk DescriptorFile\n");
        writeBytes(dir_ / "notes.txt", "text\n");
        std::filesystem::create_directory(dir_ / "Sub Folder");
    }

    std::string vmx() const { return (dir_ / "Test.vmx").string(); }

    // What Tab offers after `words` (the last one is the word being completed), run in the
    // machine's folder: words as they are put on the command line, file names as bash
    // completes them (it quotes those itself).
    std::vector<std::string> offers(const std::vector<std::string>& words) {
        std::string script = "source " + shellQuote(kBashCompletion) + "\nsource " +
                             shellQuote(ARDEN_COMPLETION_SCRIPT) + "\nCOMP_WORDS=(" + shellQuote(ARDEN_CLI_PATH);
        std::string line = ARDEN_CLI_PATH;
        for (const std::string& w : words) {
            script += " " + shellQuote(w);
            line += " " + w;
        }
        script += ")\nCOMP_CWORD=" + std::to_string(words.size()) + "\nCOMP_LINE=" + shellQuote(line) +
                  "\nCOMP_POINT=${#COMP_LINE}\n_arden_forge_cli\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n";
        writeBytes(dir_ / "complete.sh", script);
        const std::string cmd = "cd " + shellQuote(dir_.path().string()) + " && bash complete.sh >complete.out 2>complete.err";
        EXPECT_EQ(std::system(cmd.c_str()), 0) << readBytes(dir_ / "complete.err");
        EXPECT_EQ(readBytes(dir_ / "complete.err"), "");
        std::vector<std::string> result;
        std::istringstream lines(readBytes(dir_ / "complete.out"));
        for (std::string l; std::getline(lines, l);) if (!l.empty()) result.push_back(l);
        std::sort(result.begin(), result.end());
        return result;
    }

    static bool has(const std::vector<std::string>& list, const std::string& word) {
        return std::find(list.begin(), list.end(), word) != list.end();
    }

    ScratchDir dir_;
};

using Words = std::vector<std::string>;

TEST_F(Completion, OffersTheCommandsActionsAndOptionsOfTheHelp) {
    Words commands = offers({""});
    for (const char* c : {"new", "show", "resave", "check", "set", "option", "device", "memory", "nic", "share", "disk", "favorites"}) {
        EXPECT_TRUE(has(commands, c)) << c;
    }
    EXPECT_FALSE(has(commands, "__complete"));
    EXPECT_EQ(std::adjacent_find(commands.begin(), commands.end()), commands.end()) << "a command offered twice";
    EXPECT_EQ(offers({"de"}), Words{"device"});
    EXPECT_EQ(offers({"--"}), (Words{"--help", "--version"}));
    EXPECT_EQ(offers({"device", ""}), (Words{"add", "node", "remove"}));
    EXPECT_EQ(offers({"favorites", ""}), (Words{"add", "list", "remove"}));
    EXPECT_EQ(offers({"resave", vmx(), "--"}), (Words{"--backup", "--dry-run", "--output", "--yes"}));
}

TEST_F(Completion, OffersTheValuesTheHelpListsForAnOption) {
    EXPECT_EQ(offers({"nic", vmx(), "0", "--type", ""}),
              (Words{"e1000", "e1000e", "vlance", "vmxnet", "vmxnet-enhanced", "vmxnet3"}));
    EXPECT_EQ(offers({"nic", vmx(), "0", "--enabled", ""}), (Words{"no", "yes"}));
    Words connections = offers({"nic", vmx(), "0", "--connection", ""});
    EXPECT_TRUE(has(connections, "bridged") && has(connections, "nat") && has(connections, "VMnet9")) << connections.size();
    EXPECT_FALSE(has(connections, "VMnetK"));
    EXPECT_EQ(offers({"disk", "create", "x.vmdk", "--adapter", "l"}), Words{"lsilogic"});
    // A value list on the help's continuation line.
    EXPECT_EQ(offers({"disk", "create", "x.vmdk", "--type", "pre"}), (Words{"preallocated", "preallocated-split"}));
    EXPECT_EQ(offers({"new", ".", "X", "--platform", "G"}), Words{"GSX\\ Server"});
}

TEST_F(Completion, OffersTheDeviceTypesEntriesAndNodesOfTheFileBeingEdited) {
    Words types = offers({"device", "add", vmx(), ""});
    EXPECT_TRUE(has(types, "Hard\\ Disk") && has(types, "DVD/CD-ROM\\ Drive") && has(types, "Serial\\ Port"));
    EXPECT_EQ(offers({"device", "add", vmx(), "Gen"}), Words{"Generic\\ SCSI\\ Device"});
    // An option's value is not taken for a positional word: the type still comes after --node NODE.
    EXPECT_EQ(offers({"device", "add", vmx(), "--node", "IDE 0:1", "Gen"}), Words{"Generic\\ SCSI\\ Device"});

    // The entries as `show` lists them, the file named as the user typed it (quoted, relative).
    Words entries = offers({"device", "remove", "'Test.vmx'", ""});
    EXPECT_TRUE(has(entries, "CD-ROM\\ 1")) << entries.size();
    EXPECT_TRUE(has(entries, "Memory") && has(entries, "SCSI\\ Controller\\ 0")) << entries.size();
    EXPECT_EQ(offers({"device", "node", "Test.vmx", "\"CD"}), Words{"CD-ROM\\ 1"});

    Words nodes = offers({"device", "node", vmx(), "CD-ROM 1", ""});
    EXPECT_TRUE(has(nodes, "IDE\\ 0:0") && has(nodes, "IDE\\ 1:1") && has(nodes, "SCSI\\ 0:6")) << nodes.size();
    EXPECT_FALSE(has(nodes, "SCSI\\ 0:7")) << "the controller's own node";
    EXPECT_EQ(offers({"device", "add", vmx(), "Hard Disk", "--node", ""}), nodes);
}

TEST_F(Completion, OffersConfigurationsForFilesAndDisksForDiskCommands) {
    EXPECT_EQ(offers({"show", ""}), (Words{"Sub Folder", "Test.vmx"}));
    EXPECT_EQ(offers({"disk", "info", ""}), (Words{"Disk One.vmdk", "Sub Folder"}));
    EXPECT_EQ(offers({"new", ""}), Words{"Sub Folder"});
    EXPECT_EQ(offers({"device", "add", "T"}), Words{"Test.vmx"});
    Words names = offers({"option", vmx(), "snap"});
    EXPECT_EQ(names, Words{"snapshots"});
}

}  // namespace
}  // namespace arden::test
