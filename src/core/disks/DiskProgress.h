#pragma once
// The one progress model of disk creation, shared by the command line and the desktop
// program: what is being done, to which file, and how many bytes of how many. The creation
// reports a state after every piece of work; the receiver answers false to cancel.
#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

namespace arden::disks {

enum class DiskStep {
    Reserving,     // the file system reserves the space of a preallocated extent
    WritingZeros,  // the file system cannot reserve space: zeros are written instead
    WritingExtent, // an empty growable extent is written
    RunningTool,   // an external program (qemu-img) makes the file
    Descriptor,    // the descriptor is written
};

struct DiskProgressState {
    DiskStep step = DiskStep::Reserving;
    std::string currentFile;      // full path of the file being made
    std::int64_t bytesDone = 0;   // of the whole disk
    std::int64_t bytesTotal = 0;  // 0 when an external program decides (not known beforehand)
    bool operator==(const DiskProgressState&) const = default;
};

// Receives each state; returning false cancels the creation.
using DiskProgress = std::function<bool(const DiskProgressState&)>;

// Whole percent done, 0 to 100; -1 when the total is not known.
int progressPercent(const DiskProgressState& state);

// "1.5 GiB of 4 GiB (37%)", or "12 MiB written" when the total is not known.
std::string progressAmountText(const DiskProgressState& state);

// What is being done: "Reserving space for", "Writing zeros to", "Writing",
// "Waiting for qemu-img to write", "Writing the descriptor".
std::string progressStepText(DiskStep step);

// Hands states from the thread that makes a disk to the thread that shows them: the maker
// calls `report`, the window reads `latest` on its own timer and calls `cancel` when the
// user asks; the next `report` then answers false.
class DiskProgressChannel {
public:
    bool report(const DiskProgressState& state);
    // Never waits for the maker: when it is storing a state right now, the state read the
    // time before is returned (a window must not stall on a thread that is writing a disk).
    DiskProgressState latest() const;
    void cancel() { cancelled_ = true; }
    bool cancelled() const { return cancelled_; }

private:
    mutable std::mutex mutex_;
    DiskProgressState latest_;
    mutable DiskProgressState lastRead_;
    std::atomic<bool> cancelled_{false};
};

}  // namespace arden::disks
