// Starting a program and waiting for it on Windows: CreateProcessW with a command line quoted
// so that the program's own argument parser (the C runtime's, CommandLineToArgvW's) gets the
// argument vector back exactly; no "cmd /c", so no shell quoting rules apply. The program runs
// in a job object, so a stop ends whatever it started too.
#ifdef _WIN32

#include <windows.h>

#include "core/support/PathText.h"
#include "core/support/ProcessRunner.h"
#include "core/support/WindowsText.h"

namespace arden {

namespace fs = std::filesystem;

namespace {

// One argument quoted by the rules the C runtime parses: backslashes are literal except
// before a double quote, where they are doubled; the quote itself is escaped.
std::wstring quoteArgument(const std::wstring& argument) {
    if (!argument.empty() && argument.find_first_of(L" \t\n\v\"") == std::wstring::npos) return argument;
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (wchar_t c : argument) {
        if (c == L'\\') {
            ++backslashes;
            continue;
        }
        quoted.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
        backslashes = 0;
        quoted += c;
    }
    quoted.append(backslashes * 2, L'\\');
    return quoted + L"\"";
}

std::string startFailure(const fs::path& program, DWORD code) {
    return "Cannot start " + pathText(program) + ": " + windowsErrorText(code);
}

struct OwnedHandle {
    HANDLE h = nullptr;
    OwnedHandle() = default;
    OwnedHandle(const OwnedHandle&) = delete;
    OwnedHandle& operator=(const OwnedHandle&) = delete;
    ~OwnedHandle() { reset(); }
    void reset() {
        if (h && h != INVALID_HANDLE_VALUE) CloseHandle(h);
        h = nullptr;
    }
};

void drainPipe(HANDLE pipe, std::string& out) {
    DWORD available = 0;
    while (PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr) && available > 0) {
        char buffer[4096];
        DWORD n = 0;
        if (!ReadFile(pipe, buffer, std::min<DWORD>(available, sizeof buffer), &n, nullptr) || n == 0) return;
        out.append(buffer, n);
    }
}

}  // namespace

fs::path ownExecutableFolder() {
    std::wstring buffer(MAX_PATH, L'\0');
    for (;;) {
        DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0) return {};
        if (length < buffer.size()) return fs::path(buffer.substr(0, length)).parent_path();
        buffer.resize(buffer.size() * 2);
    }
}

ProcessResult runProcess(const fs::path& program, const std::vector<std::string>& arguments, const ProcessIdle& idle,
                         const ProcessStop& stop) {
    ProcessResult result;
    SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    OwnedHandle readEnd, writeEnd, nul, job;
    if (!CreatePipe(&readEnd.h, &writeEnd.h, &inherit, 0)) {
        result.startError = startFailure(program, GetLastError());
        return result;
    }
    SetHandleInformation(readEnd.h, HANDLE_FLAG_INHERIT, 0);
    nul.h = CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                        OPEN_EXISTING, 0, nullptr);

    std::wstring commandLine = quoteArgument(program.native());
    for (const std::string& a : arguments) commandLine += L" " + quoteArgument(utf8ToWide(a));

    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    startup.hStdInput = nul.h;
    startup.hStdOutput = nul.h;
    startup.hStdError = writeEnd.h;
    PROCESS_INFORMATION info{};
    job.h = CreateJobObjectW(nullptr, nullptr);
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                        CREATE_NO_WINDOW | CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT, nullptr, nullptr, &startup,
                        &info)) {
        result.startError = startFailure(program, GetLastError());
        return result;
    }
    OwnedHandle process, thread;
    process.h = info.hProcess;
    thread.h = info.hThread;
    if (job.h) AssignProcessToJobObject(job.h, process.h);
    ResumeThread(thread.h);
    writeEnd.reset();  // only the child writes to the pipe now
    result.started = true;

    for (;;) {
        DWORD waited = WaitForSingleObject(process.h, 50);
        drainPipe(readEnd.h, result.standardError);
        if (waited != WAIT_TIMEOUT) break;
        if (idle) idle();
        if (!result.stopped && stop && stop()) {
            result.stopped = true;
            if (!job.h || !TerminateJobObject(job.h, 1)) TerminateProcess(process.h, 1);
        }
    }
    DWORD code = 0;
    GetExitCodeProcess(process.h, &code);
    result.exitCode = static_cast<int>(code);
    return result;
}

}  // namespace arden

#endif
