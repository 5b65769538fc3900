#pragma once
// Runs a program of this project as a whole, the way a user starts it, and measures it: wall
// time, processor time (user and system) and peak resident memory. On a shared machine the wall
// time includes waiting for a processor; the processor time does not.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace arden::bench {

struct ProgramRun {
    bool ran = false;     // started and exited with status 0
    double wallMs = 0;
    double cpuMs = 0;
    double peakMb = 0;
};

// `args` are the program and its arguments; `env` are variables set for it only. Its standard
// output and error output go to /dev/null. Call this while the calling process is small: the child's peak
// memory counts what it inherited before it started the program.
inline ProgramRun runProgram(const std::vector<std::string>& args,
                             const std::vector<std::pair<std::string, std::string>>& env = {}) {
    ProgramRun run;
    std::fflush(stdout);
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = fork();
    if (pid == 0) {
        for (const auto& [name, value] : env) setenv(name.c_str(), value.c_str(), 1);
        if (!freopen("/dev/null", "w", stdout) || !freopen("/dev/null", "w", stderr)) _exit(127);
        std::vector<char*> argv;
        for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid < 0 || wait4(pid, &status, 0, &usage) != pid) return run;
    run.wallMs = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    run.cpuMs = (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1e3 +
                (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3;
    run.peakMb = usage.ru_maxrss / 1024.0;
    run.ran = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return run;
}

}  // namespace arden::bench
