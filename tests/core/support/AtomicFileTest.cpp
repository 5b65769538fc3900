#include "core/support/AtomicFile.h"

#include "TestSupport.h"

using arden::test::ScratchDir;

TEST(AtomicFile, ReplacesWholeFileAndLeavesNoTemporary) {
    ScratchDir dir;
    auto target = dir / "a.vmx";
    arden::test::writeBytes(target, "old contents that are longer than the new ones");
    EXPECT_FALSE(arden::writeFileAtomically(target, "new"));
    EXPECT_EQ(arden::test::readBytes(target), "new");
    int entries = 0;
    for (auto& e : std::filesystem::directory_iterator(dir.path())) { (void)e; ++entries; }
    EXPECT_EQ(entries, 1);
}

TEST(AtomicFile, FailureNamesTheFileAndKeepsTheOldOne) {
    ScratchDir dir;
    auto target = dir / "missing-folder" / "a.vmx";
    auto error = arden::writeFileAtomically(target, "x");
    ASSERT_TRUE(error);
    EXPECT_NE(error->find(target.string()), std::string::npos);
    EXPECT_NE(error->find("No such file"), std::string::npos);
}

TEST(AtomicFile, ReadWholeFileReportsMissingFile) {
    ScratchDir dir;
    std::string error;
    EXPECT_FALSE(arden::readWholeFile(dir / "nope.vmx", error));
    EXPECT_NE(error.find("nope.vmx"), std::string::npos);
    arden::test::writeBytes(dir / "b", std::string("a\0b", 3));
    auto bytes = arden::readWholeFile(dir / "b", error);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 3u);
}
