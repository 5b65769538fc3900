#pragma once
// Loading and saving configuration files for the commands: the loader's notices and refusals
// printed, the questions a save asks before anything is written, and the editor's save flow
// (save checks, backup, safe write).
#include <optional>
#include <string>

#include "cli/CliSupport.h"
#include "core/config/VmConfiguration.h"

namespace arden::cli {

// Loads FILE; prints the refusal and returns nothing when it cannot be read. The loader's
// notices are printed as "FILE:LINE: text" when `printNotices` is set.
std::optional<VmConfiguration> loadConfiguration(const std::string& file, bool printNotices = true);

// The questions asked before a save, in order, before anything is written (a backup copy
// included): a file opened read-only (encrypted, an unknown encoding) is refused (false); a
// value the file's encoding cannot hold asks to convert the file to UTF-8 (Yes converts
// `config`, No leaves the refusal to the save checks); a VMware product has the machine open,
// the file is read-only, two adapters share a static MAC address. `yes` answers them Yes;
// otherwise the first is answered No and the answer is false.
bool questionsAnswered(VmConfiguration& config, bool yes);

// Saves through the editor's save flow, the questions answered by `yes`, and prints the
// written path on standard output when `printPath` is set.
int saveConfiguration(VmConfiguration config, bool printPath = true, bool yes = false);

// Writes the configuration through the save flow without asking (the questions have been
// asked); prints the written path when `printPath` is set.
int writeConfiguration(const VmConfiguration& config, bool printPath = true);

// An edit of FILE that was loaded as `config`: after the questions and the save checks, the
// backup FILE.bak is made (its notice printed), then the edited configuration is saved.
// Nothing is written when a question is answered No, and the file stays as it was when the
// backup or the save fails. With `dryRun` the questions and checks are the same, and then the
// changes are printed (printChanges) instead of anything being written.
int saveEditedConfiguration(const std::string& file, VmConfiguration config, bool yes = false,
                            bool dryRun = false);

// --dry-run: prints on standard output the unified diff of the file on disk against what a
// save of `config` would write (from /dev/null when the file is not there yet); writes nothing.
int printChanges(const VmConfiguration& config);

// Makes the backup FILE.bak and prints its notice; false when it could not be made.
bool backupMade(const std::string& file);

// Prints the display name, the product, the format note when there is one, and the guest, a
// line each ("Product: Workstation 5.5x, hardware version 4"); of an encrypted file only its
// name and that it is encrypted.
void printTarget(const VmConfiguration& config);

}  // namespace arden::cli
