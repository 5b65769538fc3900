// A large configuration: opening 10,000 lines in an editor, and every line the editor does
// not manage written back on save. The time taken is printed, never judged.
#include <QLineEdit>
#include <chrono>
#include <iostream>

#include "BuilderTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;

TEST(BuilderLargeFile, TenThousandLinesOpenAndKeepTheirLines) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    std::string text = readBytes(arden::test::corpusDir() / "vmx" / "metasploitable2__Metasploitable.vmx");
    constexpr int kShares = 40;
    for (int i = 0; i < kShares; ++i) {
        const std::string n = "sharedFolder" + std::to_string(i);
        text += n + ".present = \"TRUE\"\n" + n + ".guestName = \"share" + std::to_string(i) + "\"\n" + n +
                ".hostPath = \"/srv/share" + std::to_string(i) + "\"\n";
    }
    int lines = static_cast<int>(std::count(text.begin(), text.end(), '\n'));
    int last = -1;
    for (; lines < 10000; ++lines) text += "custom.setting" + std::to_string(++last) + " = \"value\"\n";
    const auto file = dir / "large.vmx";
    arden::test::writeBytes(file, text);

    PromptScript script;
    Builder b;
    b.EditExistingFile = true;
    b.ExistingVmxFileName = qpath(file);
    b.CreateBackups = false;
    b.resize(1280, 800);
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(b.start());
    b.show();
    settle();
    const auto ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
    std::cout << "[ figure   ] opening a " << lines << "-line configuration in an editor, shown: " << ms << " ms\n";
    RecordProperty("open_ms", static_cast<int>(ms));

    EXPECT_FALSE(b.ChangesPending());
    EXPECT_EQ(child<QTreeWidget>(&b, "lvwSharedFolders")->topLevelItemCount(), kShares);
    child<QLineEdit>(&b, "txtWorkingDir")->setText("/srv");
    ASSERT_TRUE(b.CreateVmxFile());
    const std::string saved = readBytes(file);
    EXPECT_NE(saved.find("custom.setting0 = \"value\""), std::string::npos);
    EXPECT_NE(saved.find("custom.setting" + std::to_string(last) + " = \"value\""), std::string::npos);
}

}  // namespace
}  // namespace arden::gui::test
