#pragma once
// The sub-commands of arden-forge-cli. Each takes the arguments after its own name and
// returns the process exit code (see CliSupport.h).
#include "cli/CliSupport.h"

namespace arden::cli {

// Configuration files (ConfigCommands.cpp)
int runNew(Args args);
int runShow(Args args);
int runResave(Args args);
int runCheck(Args args);

// Virtual disks (DiskCommands.cpp)
int runDisk(Args args);

// Hardware: device add | remove | node, memory (DeviceCommands.cpp)
int runDevice(Args args);
int runMemory(Args args);

// Network adapters and shared folders: nic, share add | remove | list (NetworkCommands.cpp)
int runNic(Args args);
int runShare(Args args);

// Favourites (FavoriteCommands.cpp)
int runFavorites(Args args);

}  // namespace arden::cli
