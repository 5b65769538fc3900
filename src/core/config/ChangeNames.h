#pragma once
// What one edit of a configuration changed, found by comparing the machine before and after
// it: the name an undo step shows ("Remove Hard Disk 2", "Memory 512 MB", "Disable Snapshots"),
// where the change is seen (an option page or a device), and whether it is typing that goes on
// in one text box (its keystrokes make one step).
#include <optional>
#include <string>

#include "core/config/VmConfiguration.h"
#include "core/support/Message.h"

namespace arden {

struct ConfigurationChange {
    TextParts name;            // string-table ids with the language offset still to add
    int optionPage = -1;       // 0-5 (General ... Advanced) when an option changed
    bool onHardware = false;   // a device was added, removed or changed
    DeviceType deviceType = DeviceType::Cpu;
    std::string deviceIdentifier;  // the device to show; may be gone on one side
    // Not empty for a text typed into a box: two steps in a row with the same field are one.
    std::string typedField;
};

// The change from `before` to `after`, or nothing when the two are equal. When an edit changed
// several things (a new product and the adapter types it lacks; a node and the device moved
// aside) the change is named after what the user chose: the identity, then the product and
// guest, the option pages in page order, and the devices last.
std::optional<ConfigurationChange> describeChange(const VmConfiguration& before, const VmConfiguration& after);

}  // namespace arden
