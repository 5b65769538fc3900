// The progress lines that the command line prints and the progress dialog shows.
#include "TestSupport.h"
#include "core/disks/DiskProgress.h"

using namespace arden::disks;

TEST(DiskProgress, StepFileAndAmountTexts) {
    const std::pair<DiskProgressState, const char*> cases[] = {
        {{DiskStep::WritingZeros, "/vm/d-flat.vmdk", std::int64_t{3} << 29, std::int64_t{4} << 30}, "Writing zeros to: 1.5 GiB of 4 GiB (37%)"},
        {{DiskStep::Reserving, "/vm/d-flat.vmdk", 0, 1000}, "Reserving space for: 0 bytes of 1000 bytes (0%)"},
        {{DiskStep::Reserving, "/vm/d-flat.vmdk", 1000, 1000}, "Reserving space for: 1000 bytes of 1000 bytes (100%)"},
        {{DiskStep::RunningTool, "/vm/d.vmdk", 196608, 0}, "Waiting for qemu-img to write: 192 KiB written"},
        {{DiskStep::WritingExtent, "/vm/d-s001.vmdk", 0, 0}, "Writing: 0 bytes written"},
    };
    for (const auto& [state, text] : cases) {
        EXPECT_EQ(progressStepText(state.step) + ": " + progressAmountText(state), text);
    }
}

TEST(DiskProgress, ChannelHandsTheLatestStateOverAndCarriesTheCancel) {
    DiskProgressChannel channel;
    EXPECT_TRUE(channel.report({DiskStep::WritingZeros, "a", 1, 10}));
    EXPECT_TRUE(channel.report({DiskStep::WritingZeros, "a", 2, 10}));
    EXPECT_EQ(channel.latest().bytesDone, 2);
    channel.cancel();
    EXPECT_FALSE(channel.report({DiskStep::WritingZeros, "a", 3, 10}));
}
