#include "core/disks/DiskProgress.h"

#include <cstdio>

namespace arden::disks {

namespace {

struct StepText {
    DiskStep step;
    const char* text;
};

constexpr StepText kStepTexts[] = {
    {DiskStep::Reserving, "Reserving space for"},
    {DiskStep::WritingZeros, "Writing zeros to"},
    {DiskStep::WritingExtent, "Writing"},
    {DiskStep::RunningTool, "Waiting for qemu-img to write"},
    {DiskStep::Descriptor, "Writing the descriptor"},
};

// Bytes in binary units with up to one decimal: "512 KiB", "1.5 GiB".
std::string byteText(std::int64_t bytes) {
    static const char* const kUnits[] = {"bytes", "KiB", "MiB", "GiB", "TiB"};
    double value = static_cast<double>(bytes);
    std::size_t unit = 0;
    while (value >= 1024 && unit + 1 < std::size(kUnits)) {
        value /= 1024;
        ++unit;
    }
    char buffer[48];
    std::snprintf(buffer, sizeof buffer, unit == 0 ? "%.0f %s" : "%.3g %s", value, kUnits[unit]);
    return buffer;
}

}  // namespace

int progressPercent(const DiskProgressState& state) {
    if (state.bytesTotal <= 0) return -1;
    if (state.bytesDone >= state.bytesTotal) return 100;
    return static_cast<int>(static_cast<double>(state.bytesDone) * 100.0 / static_cast<double>(state.bytesTotal));
}

std::string progressAmountText(const DiskProgressState& state) {
    if (state.bytesTotal <= 0) return byteText(state.bytesDone) + " written";
    return byteText(state.bytesDone) + " of " + byteText(state.bytesTotal) + " (" +
           std::to_string(progressPercent(state)) + "%)";
}

std::string progressStepText(DiskStep step) {
    for (const StepText& s : kStepTexts) {
        if (s.step == step) return s.text;
    }
    return {};
}

bool DiskProgressChannel::report(const DiskProgressState& state) {
    {
        std::lock_guard lock(mutex_);
        latest_ = state;
    }
    return !cancelled_;
}

DiskProgressState DiskProgressChannel::latest() const {
    std::unique_lock lock(mutex_, std::try_to_lock);
    if (lock.owns_lock()) lastRead_ = latest_;
    return lastRead_;
}

}  // namespace arden::disks
