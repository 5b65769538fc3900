// The command line on files in other encodings, on encrypted files and on files that start
// with "#!": what it prints is UTF-8, what it writes is what `iconv` reads back as the text
// given, a character the encoding cannot hold is asked about, an encrypted file is never
// written, and a "#!" file stays a runnable script.
#include <gtest/gtest.h>

#include "CliRunner.h"
#include "interop/InteropSupport.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// A corpus file copied into `dir`, its ".encoding" value replaced when `encoding` is given.
fs::path copyOfCorpusFile(const ScratchDir& dir, const std::string& name, const std::string& encoding = {}) {
    std::string text = readBytes(corpusDir() / "vmx" / name);
    if (!encoding.empty()) {
        std::size_t start = text.find(".encoding = \"") + 13;
        text.replace(start, text.find('"', start) - start, encoding);
    }
    writeBytes(dir / name, text);
    return dir / name;
}

}  // namespace

TEST(CliEncoding, SetWritesTheFilesEncodingAndShowPrintsUtf8) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    struct Case { const char* file; const char* encoding; const char* iconvName; std::string name, note; };
    const Case cases[] = {
        {"vmwareubuntu2204__Ubuntu-64-bit.vmx", "GBK", "GBK", "CentOS 7 64 \xE4\xBD\x8D", "\xE6\xB5\x8B\xE8\xAF\x95"},
        {"vmwareubuntu2204__Ubuntu-64-bit.vmx", nullptr, "CP949", "\xEC\x8B\xA4\xED\x96\x89 Ubuntu", "\xEB\xA9\x94\xEB\xAA\xA8"},
        {"win10vm__Windows-10-x64.vmx", nullptr, "CP1252", "M\xC3\xBCller", "Caf\xC3\xA9"},
        {"win7vmware17__Windows-7-x64.vmx", nullptr, "CP932", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", "\xE3\x83\xA1\xE3\x83\xA2"},
    };
    for (const Case& c : cases) {
        const fs::path file = copyOfCorpusFile(dir, c.file, c.encoding ? c.encoding : "");
        auto set = runCli({"set", file.string(), "--name", c.name, "--notes", c.note});
        ASSERT_EQ(set.exitCode, 0) << c.file << set.err;
        EXPECT_TRUE(has(set.out, "Display name: " + c.name + "\n")) << set.out;
        // What iconv reads from the written bytes is the text given.
        ToolRun read = tool("iconv -f " + std::string(c.iconvName) + " -t UTF-8 " + shellQuote(file.string()));
        EXPECT_EQ(read.exitCode, 0) << c.iconvName;
        EXPECT_TRUE(has(read.output, "displayName = \"" + c.name + "\"\r\n")) << c.iconvName;
        EXPECT_TRUE(has(read.output, "annotation = \"" + c.note + "\"\r\n")) << c.iconvName;
        auto show = runCli({"show", file.string()});
        EXPECT_EQ(show.exitCode, 0);
        EXPECT_TRUE(has(show.out, "Display name: " + c.name + "\n")) << show.out;
        fs::remove(file);
    }
}

TEST(CliEncoding, ACharacterOutsideTheEncodingIsRefusedOrConvertedWithYes) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    const fs::path file = copyOfCorpusFile(dir, "win10vm__Windows-10-x64.vmx");
    const std::string before = readBytes(file);
    const std::string name = "CentOS 7 64 \xE4\xBD\x8D";
    auto no = runCli({"set", file.string(), "--name", name});
    EXPECT_EQ(no.exitCode, 1);
    EXPECT_TRUE(has(no.err, "Convert to UTF-8: The character \"\xE4\xBD\x8D\" (U+4F4D) of displayName cannot be written in "
                            "windows-1252, the encoding of " + file.string()))
        << no.err;
    EXPECT_TRUE(has(no.err, "Answered No.\nUnable to Save: Not saved: the character \"\xE4\xBD\x8D\" (U+4F4D)")) << no.err;
    EXPECT_EQ(readBytes(file), before);
    EXPECT_FALSE(fs::exists(file.string() + ".bak"));

    auto yes = runCli({"set", file.string(), "--name", name, "--yes"});
    ASSERT_EQ(yes.exitCode, 0) << yes.err;
    EXPECT_TRUE(has(yes.err, "Converted to UTF-8: ")) << yes.err;
    const std::string after = readBytes(file);
    EXPECT_EQ(after.substr(0, 22), ".encoding = \"UTF-8\"\r\n#");
    EXPECT_EQ(tool("iconv -f UTF-8 -t UTF-8 " + shellQuote(file.string()) + " >/dev/null").exitCode, 0);
    EXPECT_TRUE(has(after, "displayName = \"" + name + "\"\r\n"));
    EXPECT_FALSE(has(after, "windows-1252"));
}

TEST(CliEncoding, AnEncryptedFileIsShownAndNeverWritten) {
    ScratchDir dir;
    const fs::path file = dir / "Secret.vmx";
    const std::string text = ".encoding = \"windows-1252\"\r\ndisplayName = \"Gehe\xEFm\"\r\n"
                             "encryption.keySafe = \"vmware:key/list/(pair/(phrase/ffFzhI3rttA%3d/pass2key%3dPBKDF2))\"\r\n"
                             "encryption.data = \"5+2COnT5XxZm2FQUF/EYo/OSAwvdEdpOAOZvbSll\"\r\n";
    writeBytes(file, text);
    auto show = runCli({"show", file.string()});
    EXPECT_EQ(show.exitCode, 0);
    EXPECT_EQ(show.out, "File: " + file.string() + "\nDisplay name: Gehe\xC3\xAFm\n"
                        "Encrypted: the settings are encrypted; only the display name can be read\n");
    const std::vector<std::vector<std::string>> edits = {
        {"resave", file.string(), "--yes", "--backup"}, {"set", file.string(), "--name", "x", "--yes"},
        {"memory", file.string(), "512"}};
    for (const auto& edit : edits) {
        auto r = runCli(edit);
        EXPECT_EQ(r.exitCode, 1) << edit[0];
        EXPECT_TRUE(has(r.err, "Read-only Configuration: " + file.string() +
                                   " cannot be saved or changed: its settings are encrypted"))
            << edit[0] << ": " << r.err;
        EXPECT_EQ(readBytes(file), text) << edit[0];
        EXPECT_FALSE(fs::exists(file.string() + ".bak")) << edit[0];
    }
}

TEST(CliEncoding, AHashBangFileKeepsItsFirstLineAndModeOverThreeSaves) {
    ScratchDir dir;
    const fs::path file = dir / "run.vmx";
    writeBytes(file, "#!/usr/bin/vmware\n.encoding = \"UTF-8\"\nconfig.version = \"8\"\nvirtualHW.version = \"7\"\n"
                     "displayName = \"run\"\nmemsize = \"256\"\n");
    fs::permissions(file, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                              fs::perms::others_read | fs::perms::others_exec);
    for (const char* name : {"one", "two", "three"}) {
        auto r = runCli({"set", file.string(), "--name", name});
        ASSERT_EQ(r.exitCode, 0) << r.err;
    }
    EXPECT_EQ(readBytes(file).substr(0, 41), "#!/usr/bin/vmware\r\n.encoding = \"UTF-8\"\r\n#");
    EXPECT_EQ(fs::status(file).permissions() & fs::perms::all, fs::perms(0755));
}
