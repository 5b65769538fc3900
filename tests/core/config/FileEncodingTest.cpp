// Values in the file's own encoding: real files of Windows hosts (and files made from them where
// the corpus lacks an encoding) get a new name and note, which are written in the file's code
// page, read back as the same text, and leave every kept line as it was. A character the
// encoding cannot hold asks to convert the file; files without ".encoding", values that are not
// text, unknown encodings, encrypted settings and a "#!" first line.
#include <gtest/gtest.h>

#include "VmxTestSupport.h"
#include "core/config/SaveFlow.h"

using namespace arden;
using namespace arden::test;

namespace {

// A corpus file with its ".encoding" value replaced by `encoding` (when given).
std::string corpusFile(const std::string& name, const std::string& encoding = {}) {
    std::string text = readBytes(corpusDir() / "vmx" / name);
    if (encoding.empty()) return text;
    std::size_t start = text.find(".encoding = \"") + 13;
    return text.replace(start, text.find('"', start) - start, encoding);
}

struct EncodedEdit {
    const char* file;
    const char* encoding;  // made from the file when set
    std::string name, nameBytes, note, noteBytes;
};

}  // namespace

TEST(FileEncoding, NameAndNoteAreWrittenInTheFilesCodePageAndReadBack) {
    ARDEN_REQUIRE_CORPUS();
    const EncodedEdit edits[] = {
        {"vmwareubuntu2204__Ubuntu-64-bit.vmx", "GBK", "CentOS 7 64 \xE4\xBD\x8D", "CentOS 7 64 \xCE\xBB",
         "\xE6\xB5\x8B\xE8\xAF\x95", "\xB2\xE2\xCA\xD4"},
        {"win10vm__Windows-10-x64.vmx", nullptr, "M\xC3\xBCller", "M\xFCller", "Caf\xC3\xA9", "Caf\xE9"},
        {"golovitskydd__Windows-10-x64.vmx", nullptr, "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82",
         "\xCF\xF0\xE8\xE2\xE5\xF2", "\xD0\x97\xD0\xB0\xD0\xBC\xD0\xB5\xD1\x82\xD0\xBA\xD0\xB0",
         "\xC7\xE0\xEC\xE5\xF2\xEA\xE0"},
        {"vmwareubuntu2204__Ubuntu-64-bit.vmx", nullptr, "\xEC\x8B\xA4\xED\x96\x89", "\xBD\xC7\xC7\xE0",
         "\xEB\xA9\x94\xEB\xAA\xA8", "\xB8\xDE\xB8\xF0"},
        {"win7vmware17__Windows-7-x64.vmx", nullptr, "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", "\x93\xFA\x96\x7B\x8C\xEA",
         "\xE3\x83\xA1\xE3\x83\xA2", "\x83\x81\x83\x82"},
    };
    for (const EncodedEdit& e : edits) {
        const std::string original = corpusFile(e.file, e.encoding ? e.encoding : "");
        LoadResult loaded = parseIn(original);
        ASSERT_TRUE(loaded.ok) << e.file;
        loaded.config.identity.displayName = e.name;
        loaded.config.identity.notes = e.note;
        std::optional<EncodingGap> gap;
        const std::string written = writeVmxText(loaded.config, &gap);
        EXPECT_FALSE(gap) << e.file;
        EXPECT_EQ(keyLines(written, "displayName"), Lines{"displayName = \"" + e.nameBytes + "\""}) << e.file;
        EXPECT_EQ(keyLines(written, "annotation"), Lines{"annotation = \"" + e.noteBytes + "\""}) << e.file;
        EXPECT_EQ(linesOf(written).front(), ".encoding = \"" + loaded.config.fileText.encoding + "\"") << e.file;
        EXPECT_NE(original.find(linesOf(written).front()), std::string::npos) << e.file;
        // Every kept line is written as it was read.
        for (std::string_view kept : loaded.config.keptLines) EXPECT_TRUE(hasLine(written, std::string(kept))) << kept;
        LoadResult again = parseIn(written);
        EXPECT_EQ(again.config.identity.displayName, e.name) << e.file;
        EXPECT_EQ(again.config.identity.notes, e.note) << e.file;
        EXPECT_EQ(resaved(written, 1), written) << e.file;
    }
}

TEST(FileEncoding, ACharacterTheEncodingCannotHoldAsksToConvertTheWholeFile) {
    const std::string original =
        ".encoding = \"windows-1252\"\r\ndisplayName = \"M\xFCller\"\r\n# Gr\xFC\xDF" "e\r\ncustom.owner = \"J\xFCrgen\"\r\n";
    LoadResult loaded = parseIn(original);
    VmConfiguration c = loaded.config;
    c.identity.displayName = "CentOS 7 64 \xE4\xBD\x8D";
    EXPECT_EQ(shown(encodingQuestion(c)),
              "Convert to UTF-8: The character \"\xE4\xBD\x8D\" (U+4F4D) of displayName cannot be written in "
              "windows-1252, the encoding of /vms/x/x.vmx.  Convert the whole file to UTF-8 (\".encoding = "
              "\"UTF-8\"\", every line written in UTF-8)?");
    // No: the save is refused, naming the character and the encoding.
    EXPECT_EQ(shown(checkSave(c)),
              "Unable to Save: Not saved: the character \"\xE4\xBD\x8D\" (U+4F4D) of displayName cannot be written in "
              "windows-1252, the encoding of /vms/x/x.vmx.");
    EXPECT_FALSE(encodingQuestion(loaded.config));

    // Yes: the whole file in UTF-8, kept lines included, declared once and first.
    EXPECT_EQ(shown(convertToUtf8(c)),
              "Converted to UTF-8: /vms/x/x.vmx is written in UTF-8 instead of windows-1252: \".encoding = \"UTF-8\"\", "
              "and every line, the kept ones included, in UTF-8.");
    EXPECT_FALSE(checkSave(c));
    const std::string written = writeVmxText(c);
    EXPECT_EQ(linesOf(written).front(), ".encoding = \"UTF-8\"");
    EXPECT_EQ(keyLines(written, ".encoding").size(), 1u);
    EXPECT_TRUE(hasLine(written, "displayName = \"CentOS 7 64 \xE4\xBD\x8D\""));
    EXPECT_TRUE(hasLine(written, "custom.owner = \"J\xC3\xBCrgen\""));
    EXPECT_TRUE(hasLine(written, "# Gr\xC3\xBC\xC3\x9F" "e"));
    LoadResult again = parseIn(written);
    EXPECT_EQ(again.config.fileText.encoding, "UTF-8");
    EXPECT_EQ(again.config.identity.displayName, "CentOS 7 64 \xE4\xBD\x8D");
    EXPECT_TRUE(again.notices.empty());
}

TEST(FileEncoding, AFileWithoutEncodingIsUtf8WhenValidElseTheWesternCodePage) {
    LoadResult utf8 = parseIn("displayName = \"M\xC3\xBCller\"\r\n");
    EXPECT_EQ(utf8.config.identity.displayName, "M\xC3\xBCller");
    EXPECT_EQ(utf8.config.fileText.encoding, "UTF-8");
    LoadResult legacy = parseIn("displayName = \"M\xFCller\"\r\n");
    EXPECT_EQ(legacy.config.identity.displayName, "M\xC3\xBCller");
    EXPECT_EQ(legacy.config.fileText.encoding, "windows-1252");
    EXPECT_TRUE(legacy.notices.empty());
    // Written back in the code page it was read in, without gaining an ".encoding" line.
    legacy.config.identity.notes = "Caf\xC3\xA9";
    const std::string written = writeVmxText(legacy.config);
    EXPECT_TRUE(keyLines(written, ".encoding").empty());
    EXPECT_TRUE(hasLine(written, "annotation = \"Caf\xE9\""));
    EXPECT_TRUE(hasLine(written, "displayName = \"M\xFCller\""));
}

TEST(FileEncoding, AValueThatIsNotTextIsKeptAsWrittenAndNamed) {
    LoadResult r = parseIn(".encoding = \"UTF-8\"\r\ndisplayName = \"M\xFCller\"\r\nsharedFolder0.present = \"TRUE\"\r\n"
                           "sharedFolder0.guestName = \"D\xE9p\xF4t\"\r\nsharedFolder.maxNum = \"1\"\r\n");
    ASSERT_EQ(r.notices.size(), 2u);
    EXPECT_EQ(r.notices[0].line, 2);
    EXPECT_EQ(r.notices[0].text,
              "the value of displayname is not valid UTF-8 text (shown as \"M\xEF\xBF\xBDller\"); the line is kept as written");
    EXPECT_EQ(r.notices[1].line, 4);
    EXPECT_EQ(r.config.identity.displayName, "M\xEF\xBF\xBDller");
    const std::string written = writeVmxText(r.config);
    EXPECT_EQ(keyLines(written, "displayName"), Lines{"displayName = \"M\xFCller\""});
    EXPECT_EQ(keyLines(written, "sharedFolder0.guestName"), Lines{"sharedFolder0.guestName = \"D\xE9p\xF4t\""});
    // Edited, the value is the user's text.
    r.config.identity.displayName = "M\xC3\xBCller";
    EXPECT_EQ(keyLines(writeVmxText(r.config), "displayName"), Lines{"displayName = \"M\xC3\xBCller\""});
}

TEST(FileEncoding, AnUnknownEncodingOpensTheFileReadOnly) {
    LoadResult r = parseIn(".encoding = \"x-klingon\"\r\ndisplayName = \"ok\"\r\n");
    ASSERT_TRUE(r.ok);
    ASSERT_EQ(r.notices.size(), 1u);
    EXPECT_EQ(r.notices[0].line, 1);
    EXPECT_EQ(r.notices[0].text,
              "the encoding \"x-klingon\" is unknown: values are shown as UTF-8 and the file is opened read-only");
    EXPECT_EQ(shown(checkSave(r.config)),
              "Read-only Configuration: /vms/x/x.vmx cannot be saved or changed: its encoding \"x-klingon\" (.encoding) "
              "is not one the editor can write. Nothing was written.");
}

TEST(FileEncoding, EncryptedSettingsOpenReadOnlyAPartlyEncryptedFileStaysEditable) {
    LoadResult full = parseIn(".encoding = \"UTF-8\"\r\ndisplayName = \"Secret\"\r\n"
                              "encryption.keySafe = \"vmware:key/list/(pair/(phrase/abc/pass2key%3dPBKDF2))\"\r\n"
                              "encryption.data = \"5+2COnT5XxZm2FQUF/EYo/OSAwvdEdpO\"\r\n");
    EXPECT_TRUE(full.config.fileText.encrypted);
    EXPECT_EQ(full.config.identity.displayName, "Secret");
    EXPECT_EQ(shown(readOnlyNotice(full.config)),
              "Opened Read-only: /vms/x/x.vmx is opened read-only: its settings are encrypted (encryption.keySafe, "
              "encryption.data); only its name can be read, and the file is opened read-only. It cannot be changed or "
              "saved.");
    EXPECT_TRUE(checkSave(full.config));

    ARDEN_REQUIRE_CORPUS();
    const std::string original = readBytes(corpusDir() / "vmx" / "vms11__Windows-11-x64.vmx");
    LoadResult partial = parseIn(original);
    EXPECT_FALSE(partial.config.fileText.encrypted);
    EXPECT_FALSE(readOnlyNotice(partial.config));
    partial.config.identity.displayName = "Windows 11 \xE2\x80\x93 renamed";
    EXPECT_FALSE(checkSave(partial.config));
    const std::string written = writeVmxText(partial.config);
    // The encryption and TPM lines, byte for byte and in their order.
    Lines sealed;
    for (const std::string& line : linesOf(original)) {
        for (std::string_view prefix : {"encryption.", "encryptedVM.", "vtpm.", "vmx.encryptionType"})
            if (line.rfind(prefix, 0) == 0) sealed.push_back(line);
    }
    ASSERT_EQ(sealed.size(), 7u);
    Lines found;
    for (const std::string& line : linesOf(written)) {
        if (std::find(sealed.begin(), sealed.end(), line) != sealed.end()) found.push_back(line);
    }
    EXPECT_EQ(found, sealed);
}

TEST(FileEncoding, AHashBangFirstLineStaysFirstOverSaves) {
    const std::string original = "#!/usr/bin/vmware\n.encoding = \"UTF-8\"\nconfig.version = \"8\"\ndisplayName = \"A\"\n";
    LoadResult loaded = parseIn(original);
    loaded.config.identity.displayName = "B";
    const std::string text = resaved(writeVmxText(loaded.config), 3);
    const Lines lines = linesOf(text);
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[0], "#!/usr/bin/vmware");
    EXPECT_EQ(lines[1], ".encoding = \"UTF-8\"");
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "#!/usr/bin/vmware"), 1);
    // A "#!" further down is an ordinary comment, kept where comments go.
    LoadResult later = parseIn(".encoding = \"UTF-8\"\n#!/usr/bin/vmware\n");
    EXPECT_EQ(linesOf(writeVmxText(later.config)).front(), ".encoding = \"UTF-8\"");
}
