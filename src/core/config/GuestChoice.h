#pragma once
// Choosing the guest operating system by its "guestOS" identifier, as a script names it: the
// identifier must be in the guest list, and its family one that the machine's product offers
// (the editor's lists offer only those).
#include <optional>
#include <string_view>

#include "core/config/VmConfiguration.h"
#include "core/support/Message.h"

namespace arden {

// Sets the guest of `config` to `identifier` (any letter case, the older names included; the
// list's own spelling is stored). Returns the refusal, and changes nothing, when the identifier
// is not in the guest list or the product does not offer its family or the guest itself.
std::optional<Message> selectGuestById(VmConfiguration& config, std::string_view identifier);

}  // namespace arden
