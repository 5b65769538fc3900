#pragma once
// What a shared folder of the host may be: the checks run when the shared-folder dialog is
// confirmed (or a share is added on the command line), and the attribute text of the list.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/support/Message.h"

namespace arden {

// The outcome of checking a share: a refusal (nothing is stored), or a question that must be
// answered Yes before the share is stored, or neither.
struct ShareCheck {
    std::optional<Message> refusal;
    std::optional<Message> question;
};

// Refused: an empty name or host folder; a name that holds "=" or a control character such
// as a line break; a host folder with a line break; a name another share of the machine
// already uses (`otherNames`, compared without regard to case, as the guest sees them).
// Asked: a host folder that does not exist on this computer (the guest may run where it does).
ShareCheck checkShare(std::string_view name, std::string_view hostPath, const std::vector<std::string>& otherNames);

// The attributes column of the share list: "Enabled" or "Disabled", then "Read-Only" and
// "Disable after this session" when set, joined by ", ".
TextParts shareAttributes(bool enabled, bool readOnly, bool disableAfterSession);

}  // namespace arden
