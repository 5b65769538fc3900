#pragma once
// Loading and saving configuration files for the commands: the loader's notices and refusals
// printed, and the editor's save flow (in-use question answered No, save checks, atomic write).
#include <optional>
#include <string>

#include "cli/CliSupport.h"
#include "core/config/VmConfiguration.h"

namespace arden::cli {

// Loads FILE; prints the refusal and returns nothing when it cannot be read. The loader's
// notices are printed as "FILE:LINE: text" when `printNotices` is set.
std::optional<VmConfiguration> loadConfiguration(const std::string& file, bool printNotices = true);

// Saves through the editor's save flow and prints the written path on standard output when
// `printPath` is set. A machine that a VMware product has open is not written over.
int saveConfiguration(const VmConfiguration& config, bool printPath = true);

// An edit of FILE that was loaded as `config`: the backup FILE.bak is made first (its notice
// printed), then the edited configuration is saved. Nothing is written when the machine is in
// use, and the file stays as it was when the backup or the save fails.
int saveEditedConfiguration(const std::string& file, const VmConfiguration& config);

}  // namespace arden::cli
