#include "CliRunner.h"

using arden::test::runCli;
using arden::test::ScratchDir;

TEST(CliNew, WritesTheNewMachineAndPrintsItsPath) {
    ScratchDir dir;
    auto r = runCli({"new", (dir / "vms").string(), "My XP"});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    std::string path = (dir / "vms" / "My XP.vmx").string();
    EXPECT_EQ(r.out, path + "\n");
    std::string text = arden::test::readBytes(path);
    EXPECT_NE(text.find("# Platform = Workstation\r\n# Version = 5.5x\r\n"), std::string::npos);
    EXPECT_NE(text.find("guestOS = \"winXPPro\""), std::string::npos);

    auto again = runCli({"new", (dir / "vms").string(), "My XP"});
    EXPECT_EQ(again.exitCode, 1) << "an existing configuration is never written over";
    EXPECT_EQ(arden::test::readBytes(path), text);

    auto gsx = runCli({"new", dir.path().string(), "Old", "--platform", "GSX Server", "--version", "2.5x"});
    ASSERT_EQ(gsx.exitCode, 0) << gsx.err;
    std::string old = arden::test::readBytes(dir / "Old.vmx");
    EXPECT_NE(old.find("# Platform = GSX Server\r\n# Version = 2.5x\r\nconfig.version = \"6\""), std::string::npos);
    auto player = runCli({"new", dir.path().string(), "P", "--platform", "Player"});
    ASSERT_EQ(player.exitCode, 0) << player.err;
    EXPECT_NE(arden::test::readBytes(dir / "P.vmx").find("# Version = 1.x"), std::string::npos);
}

TEST(CliNew, UsageErrors) {
    ScratchDir dir;
    auto badVersion = runCli({"new", dir.path().string(), "X", "--platform", "Player", "--version", "5.5x"});
    EXPECT_EQ(badVersion.exitCode, 2);
    EXPECT_NE(badVersion.err.find("\"1.x\""), std::string::npos) << "the message says what is allowed";
    EXPECT_EQ(runCli({"new", dir.path().string(), "X", "--platform", "ESX"}).exitCode, 2);
    EXPECT_EQ(runCli({"new", dir.path().string()}).exitCode, 2);
    EXPECT_EQ(runCli({"new", dir.path().string(), "X", "--colour", "red"}).exitCode, 2);
    EXPECT_EQ(runCli({"frobnicate"}).exitCode, 2);
    EXPECT_FALSE(std::filesystem::exists(dir / "X.vmx"));
    // One missing folder level is created; two are refused with the folder named.
    auto deep = runCli({"new", (dir / "a" / "b").string(), "X"});
    EXPECT_EQ(deep.exitCode, 1);
    EXPECT_NE(deep.err.find((dir / "a" / "b").string()), std::string::npos);
}

TEST(CliShowResaveCheck, OnAWrittenMachine) {
    ScratchDir dir;
    ASSERT_EQ(runCli({"new", dir.path().string(), "M"}).exitCode, 0);
    std::string file = (dir / "M.vmx").string();
    auto show = runCli({"show", file});
    ASSERT_EQ(show.exitCode, 0) << show.err;
    EXPECT_NE(show.out.find("Product: Workstation 5.5x\n"), std::string::npos);
    EXPECT_NE(show.out.find("Guest: Microsoft Windows, Windows XP Professional (winXPPro)\n"), std::string::npos);
    EXPECT_NE(show.out.find("Memory: 256 MB\n"), std::string::npos);
    EXPECT_NE(show.out.find("  CD-ROM 1\tIDE 1:0, auto detect\tIDE 1:0\n"), std::string::npos);
    EXPECT_NE(show.out.find("Kept lines: 0\n"), std::string::npos);

    std::string before = arden::test::readBytes(file);
    auto resave = runCli({"resave", file, "--backup"});
    ASSERT_EQ(resave.exitCode, 0) << resave.err;
    EXPECT_NE(resave.err.find("Backup Made: Backup file created as: " + file + ".bak"), std::string::npos);
    EXPECT_EQ(arden::test::readBytes(file + ".bak"), before);
    EXPECT_EQ(arden::test::readBytes(file), before) << "re-saving an unchanged machine gives the same bytes";

    auto check = runCli({"check", file});
    EXPECT_EQ(check.exitCode, 0) << check.err;
    std::filesystem::create_directory(file + ".lck");
    auto busy = runCli({"resave", file});
    EXPECT_EQ(busy.exitCode, 1);
    EXPECT_NE(busy.err.find("Virtual Machine in Use: "), std::string::npos);
}

TEST(CliCheck, RefusesTooManyPciDevicesWithTheExactMessage) {
    ScratchDir dir;
    std::string text = "displayName = \"pci\"\r\nsound.present = \"TRUE\"\r\n";
    for (int i = 0; i < 5; ++i) text += "ethernet" + std::to_string(i) + ".present = \"TRUE\"\r\n";
    arden::test::writeBytes(dir / "pci.vmx", text);
    auto r = runCli({"check", (dir / "pci.vmx").string()});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err,
              "Too many virtual PCI Devices enabled: You currently have 6 virtual PCI devices enabled (SCSI controllers, "
              "Network adapters, Sound adapters).  VMware will only accept 5.  Please go back and Disable some devices.\n");
    auto resave = runCli({"resave", (dir / "pci.vmx").string()});
    EXPECT_EQ(resave.exitCode, 1);
    EXPECT_EQ(arden::test::readBytes(dir / "pci.vmx"), text);
}

TEST(CliBadInput, ClearMessagesAndNothingChanges) {
    ScratchDir dir;
    auto missing = runCli({"show", (dir / "none.vmx").string()});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_NE(missing.err.find((dir / "none.vmx").string()), std::string::npos);

    std::string garbage("\x7f" "ELF\x02\x01\x01\x00\x00\x00garbage\xff\xfe", 19);
    arden::test::writeBytes(dir / "bin.vmx", garbage);
    auto bin = runCli({"resave", (dir / "bin.vmx").string()});
    EXPECT_EQ(bin.exitCode, 1);
    EXPECT_NE(bin.err.find("binary"), std::string::npos);
    EXPECT_EQ(arden::test::readBytes(dir / "bin.vmx"), garbage);

    arden::test::writeBytes(dir / "odd.vmx", "memsize = \"64\"\nno equals here\nx = \"open\n");
    auto odd = runCli({"show", (dir / "odd.vmx").string()});
    EXPECT_EQ(odd.exitCode, 0);
    EXPECT_NE(odd.err.find("odd.vmx:2:"), std::string::npos);
    EXPECT_NE(odd.err.find("odd.vmx:3:"), std::string::npos);
    EXPECT_NE(odd.out.find("Kept lines: 2"), std::string::npos);
}

TEST(CliSaveInPlace, ReadOnlyFolderWithAWritableFileSaves) {
    // Run as an unprivileged user: root is not stopped by permission bits.
    if (std::system("command -v setpriv >/dev/null 2>&1") != 0) ARDEN_CANNOT_RUN("setpriv is not available");
    ScratchDir dir;
    std::filesystem::permissions(dir.path(), std::filesystem::perms::all);
    std::filesystem::create_directory(dir / "ro");
    std::string original = "displayName = \"ro\"\r\nmemsize = \"64\"\r\n";
    arden::test::writeBytes(dir / "ro" / "ro.vmx", original);
    std::filesystem::permissions(dir / "ro" / "ro.vmx", std::filesystem::perms::all);
    std::filesystem::permissions(dir / "ro", std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec |
                                                 std::filesystem::perms::others_read | std::filesystem::perms::others_exec);
    std::string asNobody = arden::test::runningAsRoot() ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
    auto r = runCli({"resave", (dir / "ro" / "ro.vmx").string()}, asNobody);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_NE(r.err.find("Saved in Place: " + (dir / "ro" / "ro.vmx").string() +
                         " was rewritten in place because its folder is not writable; no backup copy of the old "
                         "contents could be made beside it."),
              std::string::npos)
        << r.err;
    std::string saved = arden::test::readBytes(dir / "ro" / "ro.vmx");
    EXPECT_NE(saved.find("displayName = \"ro\"\r\n"), std::string::npos);
    EXPECT_NE(saved.find("####### end of file"), std::string::npos);
    // Asked for a backup it cannot make, it writes nothing.
    auto backup = runCli({"resave", (dir / "ro" / "ro.vmx").string(), "--backup"}, asNobody);
    EXPECT_EQ(backup.exitCode, 1);
    EXPECT_NE(backup.err.find("Backup Failed: No backup was made: Cannot write " + (dir / "ro" / "ro.vmx.bak").string() +
                              ": Permission denied"),
              std::string::npos)
        << backup.err;
    EXPECT_EQ(arden::test::readBytes(dir / "ro" / "ro.vmx"), saved);
}
