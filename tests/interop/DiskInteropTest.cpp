// Every kind of disk on every adapter, checked by qemu-img info/check and vmdkinfo, with data
// written by qemu-io around the extent boundaries and read back by a second run; and every
// subformat qemu-img writes, read by our disk reader.
#include <algorithm>

#include "InteropSupport.h"
#include "core/disks/DiskCreator.h"
#include "core/disks/DiskInformation.h"
#include "core/shell/GetText.h"

using namespace arden::disks;
using arden::test::ScratchDir;
using arden::test::shellQuote;
using arden::test::tool;
using arden::test::ToolRun;
namespace fs = std::filesystem;

namespace {

bool haveTools() {
    return tool("command -v qemu-img && command -v qemu-io && command -v vmdkinfo").exitCode == 0;
}

using Case = std::tuple<DiskKind, DiskAdapter>;

std::string caseName(const testing::TestParamInfo<Case>& info) {
    std::string name = std::string(diskKindInfo(std::get<0>(info.param)).name) + "_" + std::string(adapterText(std::get<1>(info.param)));
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

// A size that gives growable split kinds a second, short extent; the others get an odd count.
// Preallocated disks reserve their whole size, so they stay at 100 MB: no test reserves more
// than 1 GiB.
std::int64_t sectorsFor(DiskKind kind) {
    const DiskKindInfo& info = diskKindInfo(kind);
    if (kind == DiskKind::Preallocated || kind == DiskKind::PreallocatedSplit) return 204801;
    if (info.numberedExtents && info.maxExtentSectors == 0) return 4194304 + 1000;  // one sparse extent above 2 GiB
    return info.numberedExtents ? info.maxExtentSectors + 1000 : 204801;
}

// Byte offsets worth writing at: the start, each side of every extent boundary, the last sector.
std::vector<std::int64_t> probeOffsets(DiskKind kind, std::int64_t sectors) {
    std::vector<std::int64_t> offsets{0};
    const DiskKindInfo& info = diskKindInfo(kind);
    for (std::int64_t b = info.maxExtentSectors; info.numberedExtents && b > 0 && b < sectors; b += info.maxExtentSectors)
        offsets.push_back((b - 1) * 512);
    offsets.push_back((sectors - 2) * 512);
    return offsets;
}

// qemu-io commands that write (or verify) 1 KiB with a per-offset pattern at each offset.
std::string ioCommands(const std::vector<std::int64_t>& offsets, const char* verb) {
    std::string commands;
    int pattern = 0x41;
    for (std::int64_t off : offsets)
        commands += " -c " + shellQuote(std::string(verb) + " -P " + std::to_string(pattern++) + " " + std::to_string(off) + " 1024");
    return commands;
}

class DiskInterop : public testing::TestWithParam<Case> {};

}  // namespace

TEST_P(DiskInterop, ReadersAcceptTheDiskAndDataSurvivesAtExtentBoundaries) {
    if (!haveTools()) ARDEN_CANNOT_RUN("qemu-img, qemu-io and vmdkinfo are needed (Debian qemu-utils, libvmdk-utils)");
    const auto [kind, adapter] = GetParam();
    ScratchDir dir;
    const std::int64_t sectors = sectorsFor(kind);
    const fs::path file = dir / "Interop Disk.vmdk";
    DiskCreationResult made = createDisk({file, adapter, sectors, kind, 3});
    ASSERT_TRUE(made.created) << (made.failure ? arden::resolveText(made.failure->text, 0) : "");
    const std::string f = shellQuote(file.string());

    ToolRun info = tool("qemu-img info --output=json " + f);
    ASSERT_EQ(info.exitCode, 0) << info.output;
    EXPECT_NE(info.output.find("\"virtual-size\": " + std::to_string(sectors * 512)), std::string::npos) << info.output;
    EXPECT_NE(info.output.find("\"format\": \"vmdk\""), std::string::npos) << info.output;

    ToolRun libvmdk = tool("vmdkinfo " + f);
    EXPECT_EQ(libvmdk.exitCode, 0) << libvmdk.output;
    EXPECT_NE(libvmdk.output.find("(" + std::to_string(sectors * 512) + " bytes)"), std::string::npos) << libvmdk.output;

    std::vector<std::int64_t> offsets = probeOffsets(kind, sectors);
    for (const char* step : {"-f vmdk", "-r -f vmdk"}) {  // write the patterns, then verify them in a second run
        ToolRun io = tool(std::string("qemu-io ") + step + ioCommands(offsets, step[1] == 'r' ? "read" : "write") + " " + f);
        EXPECT_TRUE(io.exitCode == 0 && io.output.find("fail") == std::string::npos) << io.output;  // "Pattern verification failed"
    }

    ToolRun after = tool("qemu-img check " + f);
    EXPECT_EQ(after.exitCode, 0) << after.output;
    DiskReadResult ours = readDiskInformation(file);
    ASSERT_TRUE(ours.information);
    EXPECT_EQ(ours.information->totalSectors, sectors);
    EXPECT_EQ(ours.information->adapterType, adapterText(adapter));
}

INSTANTIATE_TEST_SUITE_P(EveryKindAndAdapter, DiskInterop,
                         testing::Combine(testing::Values(DiskKind::Growable, DiskKind::GrowableSplit, DiskKind::Preallocated,
                                                          DiskKind::PreallocatedSplit, DiskKind::GrowableDescriptor),
                                          testing::Values(DiskAdapter::Ide, DiskAdapter::BusLogic, DiskAdapter::LsiLogic)),
                         caseName);

TEST(DiskInteropReader, ReadsEverySubformatQemuImgWrites) {
    if (!haveTools()) ARDEN_CANNOT_RUN("qemu-img is needed (Debian qemu-utils)");
    ScratchDir dir;
    // Two pieces of qemu-img's 2 GiB split; and 2,119,506 sectors, whose sparse header holds "RW ".
    for (std::int64_t sectors : {std::int64_t{4194304 + 2048}, std::int64_t{2119506}}) {
        for (const char* subformat : {"monolithicSparse", "monolithicFlat", "twoGbMaxExtentSparse", "twoGbMaxExtentFlat", "streamOptimized"}) {
            fs::path file = dir / (std::string(subformat) + " RW " + std::to_string(sectors) + ".vmdk");
            ToolRun made = tool("qemu-img create -q -f vmdk -o subformat=" + std::string(subformat) + ",adapter_type=buslogic " +
                                shellQuote(file.string()) + " " + std::to_string(sectors * 512));
            ASSERT_EQ(made.exitCode, 0) << made.output;
            DiskReadResult r = readDiskInformation(file);
            ASSERT_TRUE(r.information) << subformat << ": " << arden::resolveText(r.failure.text, 0);
            EXPECT_EQ(r.information->createType, subformat);
            EXPECT_EQ(r.information->totalSectors, sectors) << subformat;
            EXPECT_EQ(r.information->adapterType, "buslogic") << subformat;
            fs::remove_all(dir.path());
            fs::create_directories(dir.path());
        }
    }
}
