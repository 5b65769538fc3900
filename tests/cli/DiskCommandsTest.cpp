// arden-forge-cli disk create / disk info as a user runs them.
#include "CliRunner.h"

using arden::test::runCli;
using arden::test::ScratchDir;
namespace fs = std::filesystem;

namespace {

std::vector<std::string> namesIn(const fs::path& dir) {
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(dir)) names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> create(const fs::path& file, const std::string& size, const std::string& adapter,
                                const std::string& type) {
    return {"disk", "create", file.string(), "--size", size, "--adapter", adapter, "--type", type};
}

}  // namespace

TEST(CliDisk, CreatesEachKindAndPrintsTheDescriptorPath) {
    ScratchDir dir;
    auto split = runCli(create(dir / "a.vmdk", "2049M", "buslogic", "growable-split"));
    ASSERT_EQ(split.exitCode, 0) << split.err;
    EXPECT_EQ(split.out, (dir / "a.vmdk").string() + "\n");
    auto flat = runCli(create(dir / "b.vmdk", "204800s", "ide", "preallocated-split"));
    ASSERT_EQ(flat.exitCode, 0) << flat.err;
    auto single = runCli(create(dir / "c.vmdk", "0.1G", "lsilogic", "preallocated"));
    ASSERT_EQ(single.exitCode, 0) << single.err;
    EXPECT_EQ(namesIn(dir.path()), (std::vector<std::string>{"a-s001.vmdk", "a-s002.vmdk", "a.vmdk", "b-f001.vmdk", "b.vmdk",
                                                             "c-flat.vmdk", "c.vmdk"}));
    EXPECT_EQ(fs::file_size(dir / "c-flat.vmdk"), 209715u * 512) << "0.1 G rounds to whole sectors";
    EXPECT_NE(arden::test::readBytes(dir / "a.vmdk").find("RW 4192256 SPARSE \"a-s001.vmdk\"\r\nRW 4096 SPARSE"),
              std::string::npos);

    auto info = runCli({"disk", "info", (dir / "a.vmdk").string()});
    ASSERT_EQ(info.exitCode, 0) << info.err;
    EXPECT_EQ(info.out.rfind("Disk Path: " + dir.path().string() + "\nDisk Name: a.vmdk\nDisk Type: twoGbMaxExtentSparse (1)\n"
                             "Adapter Type: buslogic\nSize: 4196352 sectors (2.000977 Gb)\n"
                             "Geometry: Cylinders 261, Heads 255, Sectors 63\nHardware Version: 3\nCID: ",
                             0),
              0u)
        << info.out;
}

TEST(CliDisk, RefusalsAndQuestionsCreateNothing) {
    ScratchDir dir;
    auto small = runCli(create(dir / "x.vmdk", "99M", "ide", "growable-split"));
    EXPECT_EQ(small.exitCode, 1);
    EXPECT_EQ(small.err, "Invalid Disk Size: Disk Size too small!  Minimum Size is 100 Mb\n");
    auto large = runCli(create(dir / "x.vmdk", "268435457s", "ide", "growable-split"));
    EXPECT_EQ(large.exitCode, 1);
    EXPECT_EQ(large.err, "Invalid Disk Size: Disk Size too large!  Maximum Size is 128/256/950 Gb\n");
    auto text = runCli(create(dir / "x.vmdk", "tenM", "ide", "growable-split"));
    EXPECT_EQ(text.exitCode, 1);
    EXPECT_NE(text.err.find("Invalid Disk Size: Disk Size must be Numeric!"), std::string::npos);

    auto asked = runCli(create(dir / "x.vmdk", "4193793s", "lsilogic", "preallocated"));
    EXPECT_EQ(asked.exitCode, 1);
    EXPECT_NE(asked.err.find("Disk larger than 1.99Gb: Warning - you need to have double this size"), std::string::npos);
    EXPECT_NE(asked.err.find("Answered No"), std::string::npos);
    EXPECT_TRUE(namesIn(dir.path()).empty());

    ASSERT_EQ(runCli({"disk", "create", (dir / "x.vmdk").string(), "--size", "4193793s", "--adapter", "lsilogic", "--type",
                      "preallocated", "--yes"})
                  .exitCode,
              0);
    EXPECT_EQ(fs::file_size(dir / "x-flat.vmdk"), 4193793u * 512);

    auto again = runCli(create(dir / "x.vmdk", "100M", "ide", "growable-split"));
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_EQ(again.err, "File Exists: Disk already exists!  Choose new name (" + (dir / "x.vmdk").string() + ")\n");
}

TEST(CliDisk, UsageErrorsSayWhatIsAllowed) {
    ScratchDir dir;
    auto adapter = runCli(create(dir / "x.vmdk", "100M", "scsi", "growable"));
    EXPECT_EQ(adapter.exitCode, 2);
    EXPECT_NE(adapter.err.find("ide, buslogic or lsilogic"), std::string::npos);
    auto type = runCli(create(dir / "x.vmdk", "100M", "ide", "sparse"));
    EXPECT_EQ(type.exitCode, 2);
    EXPECT_NE(type.err.find("growable, growable-split, preallocated or preallocated-split"), std::string::npos);
    auto unit = runCli(create(dir / "x.vmdk", "100", "ide", "growable"));
    EXPECT_EQ(unit.exitCode, 2);
    EXPECT_NE(unit.err.find("204800s, 100M, 20G"), std::string::npos);
    EXPECT_EQ(runCli(create(dir / "x.img", "100M", "ide", "growable")).exitCode, 2);
    EXPECT_EQ(runCli({"disk", "create", (dir / "x.vmdk").string(), "--size", "100M"}).exitCode, 2);
    EXPECT_EQ(runCli({"disk", "create", (dir / "x.vmdk").string(), "--size"}).exitCode, 2);
    EXPECT_EQ(runCli({"disk", "resize", (dir / "x.vmdk").string()}).exitCode, 2);
    EXPECT_EQ(runCli({"disk"}).exitCode, 2);
    EXPECT_EQ(runCli({"disk", "info"}).exitCode, 2);
    EXPECT_TRUE(namesIn(dir.path()).empty());
}

TEST(CliDisk, InfoOnFilesThatAreNotDisks) {
    ScratchDir dir;
    arden::test::writeBytes(dir / "junk.vmdk", std::string("\x01\x02garbage\xff\n=RW \n", 16));
    auto junk = runCli({"disk", "info", (dir / "junk.vmdk").string()});
    EXPECT_EQ(junk.exitCode, 1);
    EXPECT_NE(junk.err.find("Unable to Read current disk"), std::string::npos);
    EXPECT_NE(junk.err.find((dir / "junk.vmdk").string()), std::string::npos);
    auto missing = runCli({"disk", "info", (dir / "none.vmdk").string()});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_NE(missing.err.find("Unable to Read current disk"), std::string::npos);
    EXPECT_TRUE(missing.out.empty());
}

TEST(CliDisk, FolderWithoutWritePermission) {
    if (!fs::exists("/usr/bin/setpriv")) GTEST_SKIP() << "setpriv is needed to run the command as another user";
    ScratchDir dir;
    fs::permissions(dir.path(), fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                    fs::perms::others_read | fs::perms::others_exec);
    std::string asNobody = arden::test::runningAsRoot() ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
    if (!arden::test::runningAsRoot() && ::access(dir.path().c_str(), W_OK) == 0) {
        fs::permissions(dir.path(), fs::perms::owner_write, fs::perm_options::remove);
    }
    for (const char* type : {"growable-split", "preallocated-split", "preallocated"}) {
        auto r = runCli(create(dir / "d.vmdk", "100M", "ide", type), asNobody);
        EXPECT_EQ(r.exitCode, 1) << type;
        EXPECT_NE(r.err.find("Create New Hard Disk: Cannot write " + dir.path().string()), std::string::npos) << r.err;
        EXPECT_NE(r.err.find("Permission denied"), std::string::npos) << r.err;
    }
    EXPECT_TRUE(namesIn(dir.path()).empty());
}

TEST(CliDisk, MissingQemuImgIsReported) {
    ScratchDir dir;
    auto r = runCli(create(dir / "g.vmdk", "100M", "ide", "growable"), "env PATH=" + arden::test::shellQuote(dir.path().string()));
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err,
              "Missing required external application: Qemu-img.exe not found!  Make sure qemu-img.exe is in the path "
              "with this application.\n");
    EXPECT_TRUE(namesIn(dir.path()).empty());
}
