#pragma once
// Runs a third-party tool through the shell and captures what it prints.
#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace arden::test {

struct ToolRun {
    int exitCode = -1;
    std::string output;  // standard output and error together
};

inline std::string quote(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

inline ToolRun tool(const std::string& command) {
    ToolRun run;
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (!pipe) return run;
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) run.output.append(buffer, n);
    int status = ::pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

}  // namespace arden::test
