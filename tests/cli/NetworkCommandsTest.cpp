// arden-forge-cli nic and share: edits through the editor's rules, refusals that store nothing.
#include "CliRunner.h"

using arden::test::readBytes;
using arden::test::runCli;
using arden::test::ScratchDir;

namespace {

// A new Workstation machine (one adapter, ethernet0) and its path.
std::string newMachine(const ScratchDir& dir, const std::string& version = "5.5x") {
    auto r = runCli({"new", dir.path().string(), "Net", "--platform", "Workstation", "--version", version});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    return (dir / "Net.vmx").string();
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST(CliNic, EditsTypeConnectionAddressAndOffset) {
    ScratchDir dir;
    const std::string file = newMachine(dir);
    auto r = runCli({"nic", file, "0", "--type", "e1000", "--connection", "VMnet3", "--mac", "00:50:56:3f:0a:0b"});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    std::string text = readBytes(file);
    EXPECT_TRUE(has(text, "ethernet0.virtualDev = \"e1000\"\r\n"));
    EXPECT_TRUE(has(text, "ethernet0.connectionType = \"custom\"\r\nethernet0.vnet = \"VMnet3\"\r\n"));
    EXPECT_TRUE(has(text, "ethernet0.addressType = \"static\"\r\nethernet0.address = \"00:50:56:3F:0A:0B\"\r\n"));
    EXPECT_FALSE(has(text, "generatedAddress"));
    EXPECT_TRUE(std::filesystem::exists(file + ".bak"));

    r = runCli({"nic", file, "0", "--mac", "generated", "--offset", "-5", "--connection", "nat", "--enabled", "no"});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    text = readBytes(file);
    EXPECT_TRUE(has(text, "ethernet0.present = \"FALSE\"\r\n"));
    EXPECT_TRUE(has(text, "ethernet0.connectionType = \"nat\"\r\n"));
    EXPECT_FALSE(has(text, "ethernet0.vnet"));
    // The file no longer holds a generated address: the product makes one at power-on.
    EXPECT_TRUE(has(text, "ethernet0.addressType = \"generated\"\r\nethernet0.generatedAddressOffset = \"-5\"\r\n"));
    EXPECT_FALSE(has(text, "ethernet0.address ="));
}

TEST(CliNic, BadValuesAreRefusedAndNothingIsStored) {
    ScratchDir dir;
    const std::string file = newMachine(dir, "5.0x");
    const std::string before = readBytes(file);
    struct Case {
        std::vector<std::string> options;
        int exitCode;
        const char* message;
    };
    const Case cases[] = {
        {{"--type", "e1000"}, 1,
         "Invalid Adapter Type: Workstation 5.0x does not offer the adapter type \"e1000\"; use vlance or vmxnet."},
        {{"--type", "vmxnet3"}, 2, "--type takes vlance, vmxnet or e1000, not \"vmxnet3\""},
        {{"--connection", "VMnet10"}, 1,
         "Invalid Connection: \"VMnet10\" is not a connection; use bridged, hostonly, nat or a host network VMnet0 to "
         "VMnet9."},
        {{"--mac", "00:50:56:40:00:00"}, 1,
         "Invalid Static MAC Address: The static MAC address range is 00:50:56:00:00:00-00:50:56:3F:FF:FF"},
        {{"--mac", "00:0C:29:00:00:01"}, 1, "The static MAC address range is 00:50:56:00:00:00-00:50:56:3F:FF:FF"},
        {{"--mac", "00:50:56:4G:00:00"}, 1, "Invalid Static MAC Address"},
        {{"--offset", "abc"}, 1, "Invalid Address Offset: Must be numeric!"},
        {{"--offset", "99999999999"}, 1,
         "Invalid Address Offset: The offset 99999999999 is too large: it must lie between -2147483648 and 2147483647."},
        {{"--mac", "00:50:56:00:00:01", "--offset", "4"}, 1,
         "ethernet0 has a static address; an offset applies to generated addresses only (add --mac generated)."},
        {{"--enabled", "maybe"}, 2, "--enabled takes yes or no, not \"maybe\""},
        {{}, 2, "nic needs at least one option to change"},
        {{"--colour", "red"}, 2, "unknown option --colour"},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args{"nic", file, "0"};
        args.insert(args.end(), c.options.begin(), c.options.end());
        auto r = runCli(args);
        EXPECT_EQ(r.exitCode, c.exitCode) << c.message << "\n" << r.err;
        EXPECT_TRUE(has(r.err, c.message)) << r.err;
    }
    auto none = runCli({"nic", file, "1", "--enabled", "no"});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(has(none.err, "No Such Adapter: " + file + " has no network adapter ethernet1; its adapters are ethernet0."))
        << none.err;
    EXPECT_EQ(runCli({"nic", file, "x", "--enabled", "no"}).exitCode, 2);
    EXPECT_EQ(readBytes(file), before);
    EXPECT_FALSE(std::filesystem::exists(file + ".bak"));
}

TEST(CliNic, TwoAdaptersWithOneStaticAddressAreNotSaved) {
    ScratchDir dir;
    const std::string file = newMachine(dir);
    ASSERT_EQ(runCli({"device", "add", file, "Network Adapter"}).exitCode, 0);
    ASSERT_EQ(runCli({"nic", file, "0", "--mac", "00:50:56:00:00:07"}).exitCode, 0);
    const std::string before = readBytes(file);
    auto r = runCli({"nic", file, "1", "--mac", "00:50:56:00:00:07"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(has(r.err, "Duplicate Static MAC Address: "));
    EXPECT_TRUE(has(r.err, "ethernet0 and ethernet1 use 00:50:56:00:00:07."));
    EXPECT_TRUE(has(r.err, "Answered No: nothing was written."));
    EXPECT_EQ(readBytes(file), before);
}

TEST(CliShare, AddListRemove) {
    ScratchDir dir;
    const std::string file = newMachine(dir);
    const std::string host = dir.path().string();
    ASSERT_EQ(runCli({"share", "add", file, "Music", host, "--read-only"}).exitCode, 0);
    auto r = runCli({"share", "add", file, "Later", "/no/such folder", "--this-session", "--disabled"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(has(r.err, "Shared Folder: The folder /no/such folder does not exist on this computer."));
    ASSERT_EQ(runCli({"share", "add", file, "Later", "/no/such folder", "--this-session", "--disabled", "--yes"}).exitCode, 0);

    auto list = runCli({"share", "list", file});
    ASSERT_EQ(list.exitCode, 0) << list.err;
    EXPECT_EQ(list.out, "Music\t" + host + "\tEnabled, Read-Only\nLater\t/no/such folder\tDisabled, Disable after this session\n");
    const std::string text = readBytes(file);
    EXPECT_TRUE(has(text, "sharedFolder.maxNum = \"2\"\r\n"));
    EXPECT_TRUE(has(text, "sharedFolder0.writeAccess = \"FALSE\"\r\n"));
    EXPECT_TRUE(has(text, "sharedFolder1.Enabled = \"FALSE\"\r\n"));
    EXPECT_TRUE(has(text, "sharedFolder1.expiration = \"session\"\r\n"));

    ASSERT_EQ(runCli({"share", "remove", file, "Music"}).exitCode, 0);
    EXPECT_EQ(runCli({"share", "list", file}).out, "Later\t/no/such folder\tDisabled, Disable after this session\n");
    auto missing = runCli({"share", "remove", file, "Music"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(has(missing.err, "has no shared folder named \"Music\"; its shared folders are \"Later\"."));
}

TEST(CliShare, NamesTheFileCannotHoldAreRefused) {
    ScratchDir dir;
    const std::string file = newMachine(dir);
    const std::string before = readBytes(file);
    const std::string host = dir.path().string();
    const std::pair<std::string, const char*> cases[] = {
        {"a=b", "contains \"=\""},
        {"two\nlines", "line break"},
        {"", "Enter a name for the shared folder"},
    };
    for (const auto& [name, message] : cases) {
        auto r = runCli({"share", "add", file, name, host});
        EXPECT_EQ(r.exitCode, 1) << name;
        EXPECT_TRUE(has(r.err, message)) << r.err;
    }
    EXPECT_TRUE(has(runCli({"share", "add", file, "x", "/a\nb"}).err, "The host folder contains a line break."));
    EXPECT_EQ(runCli({"share", "add", file, "x"}).exitCode, 2);
    EXPECT_EQ(runCli({"share", "move", file}).exitCode, 2);
    EXPECT_EQ(readBytes(file), before);
}
