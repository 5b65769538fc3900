// arden-forge-cli disk create / disk info as a user runs them.
#include "CliRunner.h"
#include "core/support/ProcessRunner.h"

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
    auto single = runCli(create(dir / "c.vmdk", "0.1G", "lsilogic", "preallocated"));
    ASSERT_EQ(single.exitCode, 0) << single.err;
    EXPECT_EQ(namesIn(dir.path()), (std::vector<std::string>{"a-s001.vmdk", "a-s002.vmdk", "a.vmdk", "c-flat.vmdk", "c.vmdk"}));
    EXPECT_EQ(fs::file_size(dir / "c-flat.vmdk"), 209715u * 512) << "0.1 G rounds to whole sectors";

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
    struct Refusal {
        const char* size;
        const char* adapter;
        const char* type;
        const char* printed;  // the start of what goes to standard error
    };
    const Refusal refusals[] = {
        {"99M", "ide", "growable-split", "Invalid Disk Size: Disk Size too small!  Minimum Size is 100 Mb\n"},
        {"268435457s", "ide", "growable-split", "Invalid Disk Size: Disk Size too large!  Maximum Size is 128/256/950 Gb\n"},
        {"257G", "buslogic", "preallocated-split", "Invalid Disk Size: Disk Size too large!  Maximum Size is 128/256/950 Gb\n"},
        {"tenM", "ide", "growable-split", "Invalid Disk Size: Disk Size must be Numeric! (\"ten\")\n"},
        {"1e-400G", "ide", "growable-split", "Invalid Disk Size: Disk Size too small!  Minimum Size is 100 Mb\n"},
        {"-1e-400G", "ide", "growable-split", "Invalid Disk Size: Disk Size too small!  Minimum Size is 100 Mb\n"},
        {"1e400G", "ide", "growable-split", "Invalid Disk Size: Disk Size too large!  Maximum Size is 128/256/950 Gb\n"},
        {"4193793s", "lsilogic", "preallocated",
         "Disk larger than 1.99Gb: Warning - you need to have double this size available on your hard drive for temporary "
         "files.  Also, the append operation will be slow.  Do you want to continue?\nAnswered No"},
    };
    for (const Refusal& r : refusals) {
        auto run = runCli(create(dir / "x.vmdk", r.size, r.adapter, r.type));
        EXPECT_EQ(run.exitCode, 1) << r.size;
        EXPECT_EQ(run.err.rfind(r.printed, 0), 0u) << run.err;
        EXPECT_TRUE(run.out.empty());
    }
    EXPECT_TRUE(namesIn(dir.path()).empty());

    auto args = create(dir / "x.vmdk", "4193793s", "lsilogic", "preallocated");
    args.push_back("--yes");
    ASSERT_EQ(runCli(args).exitCode, 0);
    EXPECT_EQ(fs::file_size(dir / "x-flat.vmdk"), 4193793u * 512);

    auto again = runCli(create(dir / "x.vmdk", "100M", "ide", "growable-split"));
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_EQ(again.err, "File Exists: Disk already exists!  Choose new name (" + (dir / "x.vmdk").string() + ")\n");
}

TEST(CliDisk, UsageErrorsSayWhatIsAllowed) {
    ScratchDir dir;
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {create(dir / "x.vmdk", "100M", "scsi", "growable"), "ide, buslogic or lsilogic"},
        {create(dir / "x.vmdk", "100M", "ide", "sparse"), "growable, growable-split, growable-descriptor, preallocated or preallocated-split"},
        {create(dir / "x.vmdk", "100", "ide", "growable"), "204800s, 100M, 20G"},
        {create(dir / "x.img", "100M", "ide", "growable"), "must be NAME.vmdk"},
        {{"disk", "create", (dir / "x.vmdk").string(), "--size", "100M"}, "needs --size, --adapter and --type"},
        {{"disk", "create", (dir / "x.vmdk").string(), "--size"}, "each need a value"},
        {{"disk", "resize", (dir / "x.vmdk").string()}, "use 'create' or 'info'"},
        {{"disk"}, "'create' or 'info'"},
        {{"disk", "info"}, "one FILE.vmdk"},
        {{"disk", "info", "a.vmdk", "--verbose"}, "unknown option --verbose"},
    };
    for (const auto& [args, said] : cases) {
        auto run = runCli(args);
        EXPECT_EQ(run.exitCode, 2) << said;
        EXPECT_NE(run.err.find(said), std::string::npos) << run.err;
    }
    EXPECT_TRUE(namesIn(dir.path()).empty());
}

TEST(CliDisk, InfoOnFilesThatAreNotDisks) {
    ScratchDir dir;
    arden::test::writeBytes(dir / "junk.vmdk", std::string("\x01\x02garbage\xff\n=RW \n", 16));
    for (const fs::path& file : {dir / "junk.vmdk", dir / "none.vmdk"}) {
        auto run = runCli({"disk", "info", file.string()});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_NE(run.err.find("Unable to Read current disk (" + file.string()), std::string::npos) << run.err;
        EXPECT_TRUE(run.out.empty());
    }
}

TEST(CliDisk, InfoRefusesSizesNoDiskCanHave) {
    ScratchDir dir;
    arden::test::writeBytes(dir / "huge.vmdk", "# Disk DescriptorFile\nversion=1\ncreateType=\"twoGbMaxExtentFlat\"\n"
                                               "RW 9223372036854775807 FLAT \"huge-f001.vmdk\" 0\nRW 1 FLAT \"huge-f002.vmdk\" 0\n");
    auto run = runCli({"disk", "info", (dir / "huge.vmdk").string()});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.empty()) << run.out;
    EXPECT_NE(run.err.find("a size no disk can have"), std::string::npos) << run.err;
}

TEST(CliDisk, NamesThatBreakReadersAreRefusedAndAwkwardOnesWork) {
    ScratchDir dir;
    const std::pair<std::string, const char*> refused[] = {
        {"say \"hi\".vmdk", "it holds a double quote"},
        {"line\nbreak.vmdk", "it holds a control character"},
        {std::string(241, 'n') + ".vmdk", "it is 241 bytes long; at most 240 are allowed"}};
    for (const auto& [name, why] : refused) {
        auto run = runCli(create(dir / name, "100M", "ide", "growable-split"));
        EXPECT_EQ(run.exitCode, 1) << name;
        EXPECT_EQ(run.err.rfind("Invalid Disk Name: The disk name \"", 0), 0u) << run.err;
        EXPECT_NE(run.err.find(why), std::string::npos) << run.err;
    }
    EXPECT_TRUE(namesIn(dir.path()).empty());

    // 240 characters: the extents and the temporary descriptor still fit a file name.
    const std::string longest(240, 'n');
    for (const char* type : {"growable-split", "preallocated"}) {
        fs::path folder = dir / type;
        fs::create_directories(folder);
        auto run = runCli(create(folder / (longest + ".vmdk"), "100M", "ide", type));
        EXPECT_EQ(run.exitCode, 0) << run.err;
        auto info = runCli({"disk", "info", (folder / (longest + ".vmdk")).string()});
        EXPECT_NE(info.out.find("Size: 204800 sectors (100 Mb)"), std::string::npos) << info.err;
    }

    // A relative name with ":" reaches qemu-img as a file, not as a protocol prefix.
    if (!arden::findProgram("qemu-img")) ARDEN_CANNOT_RUN("qemu-img is not installed");
    auto colon = runCli(create("at:10.vmdk", "100M", "ide", "growable"), "cd " + arden::test::shellQuote(dir.path().string()) + " &&");
    EXPECT_EQ(colon.exitCode, 0) << colon.err;
    EXPECT_TRUE(fs::exists(dir / "at:10.vmdk"));
}

TEST(CliDisk, FolderWithoutWritePermission) {
    if (!fs::exists("/usr/bin/setpriv")) ARDEN_CANNOT_RUN("setpriv is needed to run the command as another user");
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
