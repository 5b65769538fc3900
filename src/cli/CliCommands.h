#pragma once
// The sub-commands of arden-forge-cli. Each takes the arguments after its own name and
// returns the process exit code (see CliSupport.h).
#include <optional>
#include <string>
#include <utility>

#include "cli/CliSupport.h"

namespace arden::cli {

// Configuration files (ConfigCommands.cpp)
int runNew(Args args);
int runShow(Args args);
int runResave(Args args);
int runCheck(Args args);

// The display name, notes, product target and guest: set (ProductCommands.cpp)
int runSet(Args args);
// The platform and version that --platform and --version name: `platform` (the machine's own)
// when only a version is given, the platform's last version when only a platform is; nothing,
// after printing the usage error, when either is not one the products have.
std::optional<std::pair<int, int>> productTarget(const std::optional<std::string>& platformText,
                                                 const std::optional<std::string>& versionText, int platform);

// The Options tab's settings by name: option (OptionCommands.cpp)
int runOption(Args args);

// Virtual disks (DiskCommands.cpp)
int runDisk(Args args);

// Hardware: device add | remove | node, memory, sound (DeviceCommands.cpp)
int runDevice(Args args);
int runMemory(Args args);
// The sound adapter's type: sound (DeviceCommands.cpp)
int runSound(Args args);

// Network adapters and shared folders: nic, share add | remove | list (NetworkCommands.cpp)
int runNic(Args args);
int runShare(Args args);

// Firmware, secure boot, nested virtualisation, USB controllers, cores per socket: machine
// (MachineCommands.cpp)
int runMachine(Args args);

// Favourites (FavoriteCommands.cpp)
int runFavorites(Args args);

// What the shell's completion offers (CompleteCommand.cpp): __complete types | entries FILE |
// nodes FILE, one a line.
int runComplete(Args args);

}  // namespace arden::cli
