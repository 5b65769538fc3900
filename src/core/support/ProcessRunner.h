#pragma once
// Starting an external program and waiting for it: the program is started directly with an
// argument vector (no shell, so no quoting rules), its standard error is captured and its
// exit code reported. Programs are looked for next to our own executable first, then on PATH.
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arden {

struct ProcessResult {
    bool started = false;      // false: the program could not be started (see startError)
    int exitCode = -1;         // the program's exit code; 128 + signal number when it was killed
    bool killedBySignal = false;
    std::string standardError; // everything the program wrote to its standard error
    std::string startError;    // why it could not be started (names the program)
    bool stopped = false;      // `stop` asked for it: the program was ended before it finished
};

// Called repeatedly while the program runs (about every 50 ms), so a window can keep
// handling its events during the wait.
using ProcessIdle = std::function<void()>;

// Asked as often as `idle`; true ends the program and whatever it started (SIGTERM to its
// process group, SIGKILL about a second later).
using ProcessStop = std::function<bool()>;

// Runs `program` with `arguments` (not including the program name) and waits for it to end.
// Standard input and output are the null device; standard error is captured.
ProcessResult runProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                         const ProcessIdle& idle = {}, const ProcessStop& stop = {});

// The folder that holds the running executable, or an empty path when it cannot be told.
std::filesystem::path ownExecutableFolder();

// Finds the executable `name` (for example "qemu-img"): first in `ownExecutableFolder()`,
// then in each folder of the PATH environment value. std::nullopt when found nowhere.
std::optional<std::filesystem::path> findProgram(std::string_view name);

// The same look-up over an explicit list of folders, in order.
std::optional<std::filesystem::path> findProgramIn(std::string_view name,
                                                   const std::vector<std::filesystem::path>& folders);

// The folders of a PATH-style value ("/usr/bin:/bin"); empty entries are left out.
std::vector<std::filesystem::path> splitSearchPath(std::string_view value);

}  // namespace arden
