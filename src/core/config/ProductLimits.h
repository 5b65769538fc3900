#pragma once
// A machine against the limits of its product, from the machine's row of the product table:
// memory, processors and cores per socket, the guest, adapter types, and the devices of a kind
// (network adapters, SCSI controllers, serial ports). The save checks refuse a machine over
// them, naming each limit; a change of product lists in one question what the new product
// cannot hold, and fits the machine to it when the user agrees.
#include <optional>
#include <string>
#include <vector>

#include "core/config/VmConfiguration.h"
#include "core/support/Message.h"

namespace arden {

// One thing a machine holds beyond its product's limits. `fits` when the fitting can change it
// (memory, processors, cores per socket, guest, adapter types); devices over a limit are left
// to the user to remove.
struct LimitExcess {
    std::string text;    // "Memory 1824 MB: Workstation 3.x allows at most 1024 MB"
    bool fits = false;
    std::string change;  // what the fitting makes of it: "1024 MB"
    bool limit = true;   // a limit the save checks hold (a guest or adapter type the product
                         // does not offer is only fitted when the product changes)
};

// Everything `config` holds beyond the limits of its own platform and version.
std::vector<LimitExcess> productExcesses(const VmConfiguration& config);

// The save checks' refusal of a machine over its product's limits (memory, processors, cores
// per socket, devices of a kind), or nothing.
std::optional<Message> checkProductLimits(const VmConfiguration& config);

// Choosing (platform, version) for `config`: nothing when the new product holds the machine as
// it is; a question listing every change the fitting would make; or a refusal listing what
// the new product cannot hold (devices over a limit, with the fitting's changes beside them).
struct RetargetPlan {
    std::optional<Message> question;
    std::optional<Message> refusal;
};
RetargetPlan planRetarget(const VmConfiguration& config, int platform, int version);

// Moves `config` to (platform, version) and fits it: memory to the nearest value allowed,
// processors and cores per socket down to the maximum, a guest the product does not offer to
// its family's nearest offered one, adapter types it lacks to its first type. Returns the
// notice of changed adapter types, if any.
std::optional<Message> retargetAndFit(VmConfiguration& config, int platform, int version);

}  // namespace arden
