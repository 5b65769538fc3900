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
#ifndef _WIN32
#include <unistd.h>
#endif

namespace arden::test {

inline std::filesystem::path corpusDir() { return ARDEN_CORPUS_DIR; }
inline std::filesystem::path dataDir() { return ARDEN_TEST_DATA_DIR; }

// Skips the current test when the corpus of real files is not beside the project.
#define ARDEN_REQUIRE_CORPUS()                                                              \
    do {                                                                                    \
        if (::arden::test::corpusDir().empty() ||                                           \
            !std::filesystem::exists(::arden::test::corpusDir() / "vmx"))                   \
            GTEST_SKIP() << "corpus of real files not found (configure ARDEN_CORPUS_DIR)"; \
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

}  // namespace arden::test
