// The editor on files it may not write as they are: an encrypted machine opens read-only and
// no save writes it; a name the file's code page cannot hold is asked about, No keeps the file
// as it was, Yes writes it all in UTF-8 and the notes say so.
#include "GuiTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::writeBytes;

TEST(EncodingTab, AnEncryptedMachineOpensReadOnlyAndIsNeverWritten) {
    ScratchDir dir;
    PromptScript script;
    const auto file = dir / "Secret.vmx";
    const std::string text = ".encoding = \"UTF-8\"\r\ndisplayName = \"Secret\"\r\n"
                             "encryption.keySafe = \"vmware:key/list/(pair/(phrase/abc/pass2key%3dPBKDF2))\"\r\n"
                             "encryption.data = \"5+2COnT5XxZm2FQUF/EYo/OSAwvdEdpO\"\r\n";
    writeBytes(file, text);
    auto b = openFile(file, true);
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Opened Read-only");
    EXPECT_FALSE(std::filesystem::exists(dir / "Secret.vmx.bak")) << "nothing to back up";
    EXPECT_FALSE(child<QLineEdit>(b.get(), "txtDisplayName")->isEnabled());
    EXPECT_FALSE(child<QTreeWidget>(b.get(), "lvwHardwareList")->isEnabled());
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtDisplayName")->text(), "Secret");
    script.clear();
    EXPECT_FALSE(b->CreateVmxFile());
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_TRUE(script.messages()[0].text.startsWith(qpath(file) + " cannot be saved or changed: its settings are encrypted"))
        << script.messages()[0].text;
    EXPECT_EQ(readBytes(file), text);
}

TEST(EncodingTab, ANameTheCodePageCannotHoldAsksToConvertTheFile) {
    ScratchDir dir;
    PromptScript script;
    const auto file = dir / "West.vmx";
    const std::string text = ".encoding = \"windows-1252\"\r\ndisplayName = \"M\xFCller\"\r\ncustom.owner = \"J\xFCrgen\"\r\n";
    writeBytes(file, text);
    auto b = openFile(file);
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtDisplayName")->text(), QString::fromUtf8("M\xC3\xBCller"));
    child<QLineEdit>(b.get(), "txtDisplayName")->setText(QString::fromUtf8("CentOS 7 64 \xE4\xBD\x8D"));

    script.answer(Answer::No);
    EXPECT_FALSE(b->CreateVmxFile());
    ASSERT_EQ(script.messages().size(), 2u);
    EXPECT_EQ(script.messages()[0].title, "Convert to UTF-8");
    EXPECT_EQ(script.messages()[1].text, QString::fromUtf8("Not saved: the character \"\xE4\xBD\x8D\" (U+4F4D) of displayName "
                                                           "cannot be written in windows-1252, the encoding of ") +
                                             qpath(file) + ".");
    EXPECT_EQ(readBytes(file), text);

    script.clear();
    script.answer(Answer::Yes);
    EXPECT_TRUE(b->CreateVmxFile());
    const std::string written = readBytes(file);
    EXPECT_EQ(written.substr(0, 21), ".encoding = \"UTF-8\"\r\n");
    EXPECT_NE(written.find("displayName = \"CentOS 7 64 \xE4\xBD\x8D\"\r\n"), std::string::npos);
    EXPECT_NE(written.find("custom.owner = \"J\xC3\xBCrgen\"\r\n"), std::string::npos);
    EXPECT_TRUE(b->loadNotices().last().startsWith(qpath(file) + " is written in UTF-8 instead of windows-1252"))
        << b->loadNotices().join("\n").toStdString();
}

}  // namespace
}  // namespace arden::gui::test
