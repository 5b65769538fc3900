// What a file's lines mean to the editor: flag spellings, a key written twice, the figures of a
// file without memory or processor lines.
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "core/hardware/DeviceTexts.h"
#include "core/support/TextUtil.h"
#include "core/config/VmxTestSupport.h"  // tests/core/config

using namespace arden;
using test::parseIn;

// The README: `true`, `yes`, `on` and `1` read as true, in any letter case; their opposites
// read as false.
TEST(LoadedFlags, EverySpellingOfTrueAndFalse) {
    struct Case { const char* spelling; bool expected; };
    const Case cases[] = {{"true", true},   {"TRUE", true},  {"True", true}, {"yes", true},  {"YES", true},
                          {"Yes", true},    {"on", true},    {"ON", true},   {"oN", true},   {"1", true},
                          {"false", false}, {"FALSE", false}, {"no", false}, {"No", false},  {"off", false},
                          {"OFF", false},   {"0", false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.spelling);
        auto r = parseIn(std::string("debug = \"") + c.spelling + "\"\r\ngui.exitAtPowerOff = \"" + c.spelling +
                       "\"\r\nisolation.tools.dnd.disable = \"" + c.spelling + "\"\r\n");
        ASSERT_TRUE(r.ok);
        EXPECT_EQ(r.config.advanced.debug, c.expected);
        EXPECT_EQ(r.config.power.closeAfterPowerOff, c.expected);
        EXPECT_EQ(r.config.isolation.dragAndDropAllowed, !c.expected);
        EXPECT_TRUE(r.notices.empty()) << "a spelling the README names is not an odd value";
    }
}

// Of a key written several times the last line counts, whatever the letter case of its key.
TEST(LoadedKeys, TheLastOfRepeatedLinesCounts) {
    auto r = parseIn("memsize = \"64\"\r\nMEMSIZE = \"128\"\r\ndebug = \"TRUE\"\r\ndebug = \"FALSE\"\r\n"
                   "displayName = \"first\"\r\ndisplayname = \"second\"\r\n");
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(deviceSummary(r.config.devices.devices(DeviceType::Memory)[0]), "128 MB");
    EXPECT_FALSE(r.config.advanced.debug);
    EXPECT_EQ(r.config.identity.displayName, "second");
    std::string written = writeVmxText(r.config);
    EXPECT_TRUE(test::hasLine(written, "memsize = \"128\"")) << written;
    EXPECT_EQ(written.find("\"64\""), std::string::npos) << "the earlier line is not kept";
}

// A file without `memsize` or `numvcpus` shows one processor and 32 MB, and a re-save adds
// neither key.
TEST(LoadedKeys, WithoutMemoryOrProcessorsTheProductsFigures) {
    auto r = parseIn("displayName = \"bare\"\r\nguestOS = \"winxppro\"\r\n");
    ASSERT_TRUE(r.ok);
    ASSERT_EQ(r.config.devices.count(DeviceType::Cpu), 1);
    EXPECT_EQ(deviceSummary(r.config.devices.devices(DeviceType::Cpu)[0]), "Virtual processor");
    ASSERT_EQ(r.config.devices.count(DeviceType::Memory), 1);
    EXPECT_EQ(deviceSummary(r.config.devices.devices(DeviceType::Memory)[0]), "32 MB");
    std::string written = writeVmxText(r.config);
    EXPECT_EQ(toLowerAscii(written).find("memsize"), std::string::npos) << written;
    EXPECT_EQ(toLowerAscii(written).find("numvcpus"), std::string::npos) << written;
}
