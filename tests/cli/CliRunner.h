#pragma once
// Runs arden-forge-cli as a user would and captures what it prints and its exit code.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "TestSupport.h"

namespace arden::test {

struct CliResult { int exitCode = -1; std::string out; std::string err; };

// `prefix` is put before the program (environment settings such as "TMPDIR=/x", or a
// command like "setpriv ..." that runs it as another user).
inline CliResult runCli(const std::vector<std::string>& args, const std::string& prefix = {}) {
    ScratchDir capture;
    std::string cmd = prefix + (prefix.empty() ? "" : " ") + shellQuote(ARDEN_CLI_PATH);
    for (const auto& a : args) cmd += " " + shellQuote(a);
    cmd += " >" + shellQuote((capture / "out").string()) + " 2>" + shellQuote((capture / "err").string()) + " </dev/null";
    int status = std::system(cmd.c_str());
    CliResult r;
    r.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.out = readBytes(capture / "out");
    r.err = readBytes(capture / "err");
    return r;
}

}  // namespace arden::test
