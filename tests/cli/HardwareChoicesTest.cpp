// The sound adapter's type, an added network adapter's address and two adapters with one
// static address, as a user of arden-forge-cli meets them.
#include "CliRunner.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// The value of `key` in a written file, or empty.
std::string value(const std::string& text, const std::string& key) {
    const std::size_t at = text.find(key + " = \"");
    if (at == std::string::npos) return {};
    const std::size_t start = at + key.size() + 4;
    return text.substr(start, text.find('"', start) - start);
}

}  // namespace

TEST(CliSound, EachTypeIsWrittenAndReadBack) {
    ScratchDir dir;
    ASSERT_EQ(runCli({"new", dir.path().string(), "S"}).exitCode, 0);
    const std::string file = (dir / "S.vmx").string();
    auto r = runCli({"sound", file, "SB16-Synth"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "Sound Adapter: SB16 + OPL3/Yamaha Synth\n");
    std::string text = readBytes(file);
    EXPECT_EQ(value(text, "sound.virtualDev"), "sb16");
    EXPECT_EQ(value(text, "sound.synth.operational"), "TRUE");
    EXPECT_TRUE(has(runCli({"show", file}).out, "Sound Adapter\tSB16 + OPL3/Yamaha Synth")) << "read back from the file";

    EXPECT_EQ(runCli({"sound", file, "sb16"}).exitCode, 0);
    text = readBytes(file);
    EXPECT_EQ(value(text, "sound.virtualDev"), "sb16");
    EXPECT_FALSE(has(text, "synth")) << "only the synthesiser entry writes the synthesiser line";
    EXPECT_TRUE(has(runCli({"show", file}).out, "Sound Adapter\tSB16\t"));
    EXPECT_EQ(runCli({"sound", file, "es1371"}).out, "Sound Adapter: ES1371\n");
    EXPECT_EQ(value(readBytes(file), "sound.virtualDev"), "es1371");

    const std::string before = readBytes(file);
    auto bad = runCli({"sound", file, "ac97"});
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_TRUE(has(bad.err, "unknown sound adapter type \"ac97\"; use es1371, sb16, sb16-synth, hdaudio")) << bad.err;
    // HD audio came with later products: Workstation 5.5x refuses it.
    auto old = runCli({"sound", file, "hdaudio"});
    EXPECT_EQ(old.exitCode, 1);
    EXPECT_EQ(old.err, "Invalid Adapter Type: Workstation 5.5x does not offer the sound adapter type \"hdaudio\"\n");
    EXPECT_EQ(readBytes(file), before);
}

TEST(CliNetwork, AddedAdapterGetsAnAddressAndTwoStaticAddressesAreAQuestion) {
    ScratchDir dir;
    ASSERT_EQ(runCli({"new", dir.path().string(), "N"}).exitCode, 0);
    const std::string file = (dir / "N.vmx").string();
    // A base address near the end of its last octet: the offset wraps within that octet.
    std::string text = readBytes(file);
    const std::string random = value(text, "ethernet0.generatedAddress");
    ASSERT_EQ(random.size(), 17u) << text;
    text.replace(text.find(random), random.size(), "00:0C:29:12:34:F8");
    writeBytes(file, text);
    ASSERT_EQ(runCli({"device", "add", file, "Network Adapter"}).exitCode, 0);
    text = readBytes(file);
    EXPECT_EQ(value(text, "ethernet1.generatedAddressOffset"), "10");
    EXPECT_EQ(value(text, "ethernet1.generatedAddress"), "00:0C:29:12:34:02") << text;

    ASSERT_EQ(runCli({"nic", file, "0", "--mac", "00:50:56:01:02:03"}).exitCode, 0);
    text = readBytes(file);
    auto no = runCli({"nic", file, "1", "--mac", "00:50:56:01:02:03"});
    EXPECT_EQ(no.exitCode, 1);
    EXPECT_TRUE(has(no.err, "Duplicate Static MAC Address: ") && has(no.err, "ethernet0 and ethernet1 use 00:50:56:01:02:03.") &&
                has(no.err, "Save anyway?\nAnswered No: nothing was written.\n"))
        << no.err;
    EXPECT_EQ(readBytes(file), text);
    auto yes = runCli({"nic", file, "1", "--mac", "00:50:56:01:02:03", "--yes"});
    EXPECT_EQ(yes.exitCode, 0) << yes.err;
    EXPECT_EQ(value(readBytes(file), "ethernet1.address"), "00:50:56:01:02:03");
    auto edit = runCli({"memory", file, "128"});
    EXPECT_EQ(edit.exitCode, 1) << "any saving command asks again";
    EXPECT_EQ(runCli({"memory", file, "128", "--yes"}).exitCode, 0);
}
