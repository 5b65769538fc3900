// arden-forge-cli new / show / check / resave as a user runs them: each prints what core
// decides, with exit 1 for a refusal and 2 for a usage error, and writes nothing it was refused.
#include "CliRunner.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST(CliNew, WritesTheMachineOnceAndSaysWhatIsAllowed) {
    ScratchDir dir;
    auto r = runCli({"new", (dir / "vms").string(), "My XP"});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const std::string path = (dir / "vms" / "My XP.vmx").string();
    EXPECT_EQ(r.out, path + "\n");
    const std::string text = readBytes(path);
    EXPECT_TRUE(has(text, "# Platform = Workstation\r\n# Version = 5.5x\r\nconfig.version = \"8\"\r\n"));
    EXPECT_TRUE(has(text, "guestOS = \"winXPPro\""));
    EXPECT_EQ(runCli({"new", (dir / "vms").string(), "My XP"}).exitCode, 1) << "never written over";
    EXPECT_EQ(readBytes(path), text);

    ASSERT_EQ(runCli({"new", dir.path().string(), "Old", "--platform", "GSX Server", "--version", "2.5x"}).exitCode, 0);
    EXPECT_TRUE(has(readBytes(dir / "Old.vmx"), "# Platform = GSX Server\r\n# Version = 2.5x\r\nconfig.version = \"6\""));
    auto bad = runCli({"new", dir.path().string(), "X", "--platform", "Player", "--version", "5.5x"});
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_TRUE(has(bad.err, "\"1.x\"")) << bad.err;
    EXPECT_EQ(runCli({"frobnicate"}).exitCode, 2);
    EXPECT_FALSE(fs::exists(dir / "X.vmx"));
}

TEST(CliShowResaveCheck, OnAWrittenMachine) {
    ScratchDir dir;
    ASSERT_EQ(runCli({"new", dir.path().string(), "M"}).exitCode, 0);
    const std::string file = (dir / "M.vmx").string();
    auto show = runCli({"show", file});
    ASSERT_EQ(show.exitCode, 0) << show.err;
    for (const char* line : {"Product: Workstation 5.5x\n", "Guest: Microsoft Windows, Windows XP Professional (winXPPro)\n",
                             "Memory: 256 MB\n", "  CD-ROM 1\tIDE 1:0, auto detect\tIDE 1:0\n", "Kept lines: 0\n"})
        EXPECT_TRUE(has(show.out, line)) << line;

    const std::string before = readBytes(file);
    auto resave = runCli({"resave", file, "--backup"});
    ASSERT_EQ(resave.exitCode, 0) << resave.err;
    EXPECT_EQ(resave.err, "Backup Made: Backup file created as: " + file + ".bak\n");
    EXPECT_EQ(readBytes(file + ".bak"), before);
    EXPECT_EQ(readBytes(file), before) << "re-saving an unchanged machine gives the same bytes";
    EXPECT_EQ(runCli({"check", file}).exitCode, 0);
}

TEST(CliCheck, ACoreRefusalIsPrintedAndNothingIsWritten) {
    ScratchDir dir;
    std::string text = "displayName = \"pci\"\r\nsound.present = \"TRUE\"\r\n";
    for (int i = 0; i < 5; ++i) text += "ethernet" + std::to_string(i) + ".present = \"TRUE\"\r\n";
    writeBytes(dir / "pci.vmx", text);
    const char* expected =
        "Too many virtual PCI Devices enabled: You currently have 6 virtual PCI devices enabled (SCSI controllers, "
        "Network adapters, Sound adapters).  VMware will only accept 5.  Please go back and Disable some devices.\n";
    for (const char* command : {"check", "resave"}) {
        auto r = runCli({command, (dir / "pci.vmx").string()});
        EXPECT_EQ(r.exitCode, 1) << command;
        EXPECT_EQ(r.err, expected) << command;
    }
    EXPECT_EQ(readBytes(dir / "pci.vmx"), text);
}

TEST(CliBadInput, ClearMessagesAndNothingChanges) {
    ScratchDir dir;
    const std::string garbage("\x7f" "ELF\x02\x01\x01\x00\x00\x00garbage\xff\xfe", 19);
    writeBytes(dir / "bin.vmx", garbage);
    auto bin = runCli({"resave", (dir / "bin.vmx").string()});
    EXPECT_EQ(bin.exitCode, 1);
    EXPECT_TRUE(has(bin.err, "binary")) << bin.err;
    EXPECT_EQ(readBytes(dir / "bin.vmx"), garbage);

    writeBytes(dir / "odd.vmx", "memsize = \"64\"\nno equals here\nx = \"open\n");
    auto odd = runCli({"show", (dir / "odd.vmx").string()});
    EXPECT_EQ(odd.exitCode, 0);
    EXPECT_TRUE(has(odd.err, (dir / "odd.vmx").string() + ":2: ")) << odd.err;
    EXPECT_TRUE(has(odd.out, "Kept lines: 2"));

}

// A question is printed and answered No unless --yes is given.
TEST(CliResave, QuestionsAreAnsweredNoWithoutYes) {
    ScratchDir dir;
    const fs::path file = dir / "m.vmx";
    const std::string machine = "displayName = \"m\"\r\nmemsize = \"64\"\r\n";
    writeBytes(file, machine);
    const auto readOnly = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    fs::permissions(file, readOnly);
    auto no = runCli({"resave", file.string(), "--backup"});
    EXPECT_EQ(no.exitCode, 1);
    EXPECT_EQ(no.err, "Read-only File: The file " + file.string() +
                          " is read-only.  Save over it anyway?\nAnswered No: nothing was written.\n");
    EXPECT_EQ(readBytes(file), machine);
    EXPECT_FALSE(fs::exists(dir / "m.vmx.bak")) << "asked before the backup is made";
    auto yes = runCli({"resave", file.string(), "--yes"});
    EXPECT_EQ(yes.exitCode, 0) << yes.err;
    EXPECT_TRUE(has(readBytes(file), "####### end of file"));
    EXPECT_EQ(fs::status(file).permissions() & fs::perms::all, readOnly);
}
