#pragma once
// Helpers shared by the test folders: the corpus of real files, a scratch folder per test,
// small file utilities.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <optional>
#ifndef _WIN32
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "core/shell/GetText.h"

namespace arden::test {

// The corpus of real files: the folder named by the environment variable ARDEN_CORPUS_DIR when
// it is set, else the one found when the build was configured (ARDEN_CORPUS_DIR there, or
// ../shared/corpus beside the project).
inline std::filesystem::path corpusDir() {
    if (const char* dir = std::getenv("ARDEN_CORPUS_DIR"); dir && *dir) return dir;
    return ARDEN_CORPUS_DIR;
}

// True in continuous integration (CI=true), where nothing a test needs may be missing.
inline bool inCi() {
    const char* ci = std::getenv("CI");
    return ci && std::string(ci) == "true";
}

// A test that cannot run on this machine: a failure in CI, a skip (with the reason) elsewhere.
#define ARDEN_CANNOT_RUN(why)                                                \
    do {                                                                     \
        if (::arden::test::inCi()) GTEST_FAIL() << "cannot run in CI: " << why; \
        GTEST_SKIP() << why;                                                 \
    } while (0)

// True when the corpus must be there: in CI, and when ARDEN_REQUIRE_CORPUS is set (to anything
// but 0), as the fault lists' commands do, so that a fault check never passes on skipped tests.
inline bool corpusRequired() {
    const char* wanted = std::getenv("ARDEN_REQUIRE_CORPUS");
    return inCi() || (wanted && *wanted && std::string(wanted) != "0");
}

// The corpus tests need the corpus of real files: a failure where it is required, else a skip.
#define ARDEN_REQUIRE_CORPUS()                                                                       \
    do {                                                                                             \
        if (::arden::test::corpusDir().empty() ||                                                    \
            !std::filesystem::exists(::arden::test::corpusDir() / "vmx")) {                          \
            const char* why = "corpus of real files not found (set ARDEN_CORPUS_DIR or put it in "   \
                              "../shared/corpus)";                                                   \
            if (::arden::test::corpusRequired()) GTEST_FAIL() << why;                                \
            GTEST_SKIP() << why;                                                                     \
        }                                                                                            \
    } while (0)

inline std::vector<std::filesystem::path> corpusFiles(const std::string& sub, const std::string& ext) {
    std::vector<std::filesystem::path> files;
    std::error_code ec;
    for (const auto& e : std::filesystem::directory_iterator(corpusDir() / sub, ec)) {
        if (e.path().extension() == ext) files.push_back(e.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

inline std::string readBytes(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

inline void writeBytes(const std::filesystem::path& p, const std::string& bytes) {
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out << bytes;
}

// The names in a folder, sorted.
inline std::vector<std::string> namesIn(const std::filesystem::path& dir) {
    std::vector<std::string> names;
    for (const auto& e : std::filesystem::directory_iterator(dir)) names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// A message as its box shows it: "title: text" (empty when there is none).
inline std::string shown(const Message& m) { return resolveText(m.title, 0) + ": " + resolveText(m.text, 0); }
inline std::string shown(const std::optional<Message>& m) { return m ? shown(*m) : std::string(); }

// A text as one word of a POSIX shell command.
inline std::string shellQuote(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

// A fresh empty folder under the system's temporary folder, removed when the object dies.
class ScratchDir {
public:
    ScratchDir() {
        std::random_device rd;
        path_ = std::filesystem::temp_directory_path() /
                ("arden-test-" + std::to_string(rd()) + "-" + std::to_string(rd()));
        std::filesystem::create_directories(path_);
    }
    ~ScratchDir() {
        std::error_code ec;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ec);
        std::filesystem::remove_all(path_, ec);
    }
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

// True when the tests run with root's privileges (permission tests cannot fail then).
inline bool runningAsRoot() {
#ifdef _WIN32
    return false;
#else
    return ::geteuid() == 0;
#endif
}

#ifndef _WIN32
// Runs `work` in a child process as the unprivileged user nobody (65534), so that permission
// bits stop it even when the tests run as root; returns what `work` returned (false when the
// privileges could not be dropped). Only for root.
inline bool asNobody(const std::function<bool()>& work) {
    pid_t child = ::fork();
    if (child == 0) {
        bool dropped = ::setgroups(0, nullptr) == 0 && ::setgid(65534) == 0 && ::setuid(65534) == 0;
        ::_exit(dropped && work() ? 0 : 1);
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
#endif

}  // namespace arden::test
