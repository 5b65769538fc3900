// What a shared folder may be: refusals that store nothing, the question for a host folder
// this computer does not have, and the attributes column of the list.
#include "core/hardware/SharedFolderRules.h"

#include "core/shell/GetText.h"
#include "TestSupport.h"

using namespace arden;

TEST(SharedFolderRules, RefusalsAndTheMissingFolderQuestion) {
    test::ScratchDir dir;
    const std::string here = dir.path().string();
    const std::tuple<std::string, std::string, const char*> refused[] = {
        {"", here, "Enter a name for the shared folder: the guest sees the folder under this name."},
        {"a=b", here, "The share name \"a=b\" contains \"=\". Use letters, digits, blanks and punctuation other than \"=\"."},
        {"two\nlines", here, "The share name contains a line break or another control character. Enter the name on one line."},
        {std::string("tab\tname"), here, "The share name contains a line break or another control character."},
        {"x", "", "Enter the host folder to share, or choose it with Browse."},
        {"x", "/a\nb", "The host folder contains a line break. Enter the folder on one line."},
        {"x", "/a\rb", "The host folder contains a line break."},
        {"unit\x1fseparator", here, "The share name contains a line break or another control character."},
        {"MUSIC", here, "Another shared folder of this virtual machine is already named \"Music\". Choose a name of its own."},
    };
    for (const auto& [name, host, text] : refused) {
        ShareCheck c = checkShare(name, host, {"Music"});
        EXPECT_TRUE(test::shown(c.refusal).starts_with("Shared Folder: " + std::string(text))) << test::shown(c.refusal);
    }
    ShareCheck fine = checkShare("Music 2", here, {"Music"});
    EXPECT_FALSE(fine.refusal || fine.question);
    ShareCheck missing = checkShare("Later", "/no/such folder", {});
    ASSERT_TRUE(missing.question && !missing.refusal);
    EXPECT_EQ(resolveText(missing.question->text, 0),
              "The folder /no/such folder does not exist on this computer. The guest may run on a host where it does.  "
              "Share it anyway?");
    EXPECT_EQ(resolveText(shareAttributes(true, true, false), 0), "Enabled, Read-Only");
    EXPECT_EQ(resolveText(shareAttributes(false, false, true), 0), "Disabled, Disable after this session");
}
