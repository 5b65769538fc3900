#include "core/support/ProcessRunner.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#ifndef _WIN32
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
extern char** environ;
#endif

namespace arden {

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32
constexpr char kPathListSeparator = ';';
constexpr std::string_view kExecutableSuffix = ".exe";
#else
constexpr char kPathListSeparator = ':';
constexpr std::string_view kExecutableSuffix = "";
#endif

bool isRunnableFile(const fs::path& file) {
    std::error_code ec;
    if (!fs::is_regular_file(file, ec)) return false;
#ifdef _WIN32
    return true;
#else
    return ::access(file.c_str(), X_OK) == 0;
#endif
}

#ifndef _WIN32
// Reads what is available on `fd` into `out`; returns false once the pipe is closed.
bool drainPipe(int fd, std::string& out) {
    char buffer[4096];
    for (;;) {
        ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n > 0) {
            out.append(buffer, static_cast<std::size_t>(n));
            continue;
        }
        if (n < 0 && errno == EINTR) continue;
        if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return true;
        return false;
    }
}

void recordExit(int status, ProcessResult& result) {
    if (WIFEXITED(status)) {
        result.exitCode = WEXITSTATUS(status);
    } else if (WIFSIGNALED(status)) {
        result.killedBySignal = true;
        result.exitCode = 128 + WTERMSIG(status);
    }
}
#endif

}  // namespace

std::vector<fs::path> splitSearchPath(std::string_view value) {
    std::vector<fs::path> folders;
    while (!value.empty()) {
        std::size_t end = value.find(kPathListSeparator);
        std::string_view part = value.substr(0, end);
        if (!part.empty()) folders.emplace_back(std::string(part));
        if (end == std::string_view::npos) break;
        value.remove_prefix(end + 1);
    }
    return folders;
}

std::optional<fs::path> findProgramIn(std::string_view name, const std::vector<fs::path>& folders) {
    std::string fileName(name);
    fileName += kExecutableSuffix;
    for (const fs::path& folder : folders) {
        if (folder.empty()) continue;
        fs::path candidate = folder / fileName;
        if (isRunnableFile(candidate)) return candidate;
    }
    return std::nullopt;
}

std::optional<fs::path> findProgram(std::string_view name) {
    std::vector<fs::path> folders;
    if (fs::path own = ownExecutableFolder(); !own.empty()) folders.push_back(own);
    if (const char* path = std::getenv("PATH")) {
        for (fs::path& folder : splitSearchPath(path)) folders.push_back(std::move(folder));
    }
    return findProgramIn(name, folders);
}

#ifndef _WIN32

fs::path ownExecutableFolder() {
    std::error_code ec;
    fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (ec) return {};
    return self.parent_path();
}

ProcessResult runProcess(const fs::path& program, const std::vector<std::string>& arguments,
                         const ProcessIdle& idle, const ProcessStop& stop) {
    ProcessResult result;
    int errPipe[2];
    if (::pipe(errPipe) != 0) {
        result.startError = "Cannot start " + program.string() + ": " + std::strerror(errno);
        return result;
    }
    ::fcntl(errPipe[0], F_SETFD, FD_CLOEXEC);
    ::fcntl(errPipe[0], F_SETFL, O_NONBLOCK);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, errPipe[1], 2);
    posix_spawn_file_actions_addclose(&actions, errPipe[1]);

    std::string programText = program.string();
    std::vector<char*> argv;
    argv.push_back(programText.data());
    std::vector<std::string> args = arguments;
    for (std::string& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);

    // A program that may be stopped gets a process group of its own, so that a stop reaches
    // whatever it started too (a killed shell's children would otherwise hold the pipe open).
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    if (stop) {
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
        posix_spawnattr_setpgroup(&attributes, 0);
    }
    pid_t pid = 0;
    int spawnError = ::posix_spawn(&pid, programText.c_str(), &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    ::close(errPipe[1]);
    if (spawnError != 0) {
        ::close(errPipe[0]);
        result.startError = "Cannot start " + programText + ": " + std::strerror(spawnError);
        return result;
    }
    result.started = true;

    // Between polls: let the caller run, and end the program when asked to. A program that
    // ignores SIGTERM for a second gets SIGKILL.
    int waitedAfterStop = 0;
    auto between = [&] {
        if (idle) idle();
        if (!result.stopped && stop && stop()) {
            result.stopped = true;
            ::kill(-pid, SIGTERM);
        } else if (result.stopped && ++waitedAfterStop == 20) {
            ::kill(-pid, SIGKILL);
        }
    };
    const bool polling = idle || stop;

    bool pipeOpen = true;
    while (pipeOpen) {
        pollfd p{errPipe[0], POLLIN, 0};
        int ready = ::poll(&p, 1, 50);
        if (ready > 0) pipeOpen = drainPipe(errPipe[0], result.standardError);
        between();
    }
    ::close(errPipe[0]);

    int status = 0;
    for (;;) {
        pid_t done = ::waitpid(pid, &status, polling ? WNOHANG : 0);
        if (done == pid) break;
        if (done < 0 && errno != EINTR) return result;
        if (done == 0) {
            between();
            ::usleep(20000);
        }
    }
    recordExit(status, result);
    return result;
}

#endif

}  // namespace arden
