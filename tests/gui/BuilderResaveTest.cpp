// Saving an opened file from the editor: the General page's note on a file newer than any
// target, the question before writing over a read-only file, the notice after a save in place.
#include <QLabel>

#include "BuilderTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::writeBytes;

}  // namespace

TEST(BuilderResave, NewerFileKeepsItsNumbersUntilAnotherVersionIsPicked) {
    ScratchDir dir;
    PromptScript script;
    writeBytes(dir / "new.vmx", "config.version = \"8\"\r\nvirtualHW.version = \"19\"\r\nmemsize = \"2048\"\r\n");
    auto b = openFile(dir / "new.vmx");
    auto* note = child<QLabel>(b.get(), "lblFormatNote");
    EXPECT_EQ(note->text(), "written for virtual hardware version 19; saving keeps it");
    EXPECT_FALSE(note->isHidden());
    ASSERT_TRUE(b->CreateVmxFile());
    EXPECT_NE(readBytes(dir / "new.vmx").find("virtualHW.version = \"19\"\r\n"), std::string::npos);

    child<QComboBox>(b.get(), "cboPlatformVersion")->setCurrentIndex(3);  // "5.0x"
    EXPECT_TRUE(note->isHidden());
    ASSERT_TRUE(b->CreateVmxFile());
    std::string text = readBytes(dir / "new.vmx");
    EXPECT_NE(text.find("# Version = 5.0x\r\nconfig.version = \"8\"\r\nvirtualHW.version = \"4\"\r\n"), std::string::npos);
}

TEST(BuilderResave, ReadOnlyFileOnlyAfterYes) {
    ScratchDir dir;
    PromptScript script;
    const std::string original = "displayName = \"ro\"\r\nmemsize = \"64\"\r\n";
    writeBytes(dir / "ro.vmx", original);
    std::filesystem::permissions(dir / "ro.vmx", std::filesystem::perms::owner_read);
    auto b = openFile(dir / "ro.vmx");
    script.answer(Answer::No);
    EXPECT_FALSE(b->CreateVmxFile());
    EXPECT_EQ(readBytes(dir / "ro.vmx"), original);
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Read-only File");
    EXPECT_EQ(script.messages()[0].text.toStdString(),
              "The file " + (dir / "ro.vmx").string() + " is read-only.  Save over it anyway?");
    script.answer(Answer::Yes);
    EXPECT_TRUE(b->CreateVmxFile());
    EXPECT_NE(readBytes(dir / "ro.vmx"), original);
}

TEST(BuilderResave, SaveInPlaceIsReported) {
    ScratchDir dir;
    PromptScript script;
    writeBytes(dir / "a.vmx", "displayName = \"a\"\r\n");
    std::filesystem::create_hard_link(dir / "a.vmx", dir / "b.vmx");
    auto b = openFile(dir / "a.vmx");
    ASSERT_TRUE(b->CreateVmxFile());
    EXPECT_EQ(readBytes(dir / "b.vmx"), readBytes(dir / "a.vmx"));
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].kind, MessageKind::Information);
    EXPECT_EQ(script.messages()[0].text.toStdString(),
              (dir / "a.vmx").string() + " was rewritten in place because it has other hard links; no backup copy "
                                         "of the old contents could be made beside it.");
}

}  // namespace arden::gui::test
