// Load and re-save speed of configurations: a generated 10,000-line file and the corpus of
// real files. Prints figures; fails only when a file cannot be read or written.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "BigConfiguration.h"
#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {


template <class F>
double medianMs(int runs, F&& f) {
    std::vector<double> t;
    for (int i = 0; i < runs; ++i) {
        auto start = Clock::now();
        f();
        t.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    std::sort(t.begin(), t.end());
    return t[t.size() / 2];
}

}  // namespace

int main() {
    fs::path dir = fs::temp_directory_path() / "arden-bench-config";
    fs::create_directories(dir);
    const std::string text = arden::bench::bigConfiguration(10000);
    { std::ofstream(dir / "big.vmx", std::ios::binary) << text; }

    std::size_t sink = 0;
    double parseWrite = medianMs(50, [&] {
        arden::LoadResult r = arden::parseVmxText(text, dir.string() + "/", "big.vmx", "big.vmx");
        sink += arden::writeVmxText(r.config).size();
    });
    double fileRoundTrip = medianMs(50, [&] {
        arden::LoadResult r = arden::loadVmxFile(dir / "big.vmx");
        r.config.identity.vmxFileName = "big-out.vmx";
        sink += arden::CreateVmxFile(r.config).text.size();
    });
    std::printf("10,000-line configuration (%zu bytes):\n", text.size());
    std::printf("  parse + write in memory         %8.3f ms (median of 50)\n", parseWrite);
    std::printf("  load file + save file (atomic)  %8.3f ms (median of 50)\n", fileRoundTrip);

    fs::path corpus = fs::path(ARDEN_CORPUS_DIR) / "vmx";
    std::vector<fs::path> files;
    std::error_code ec;
    for (const auto& e : fs::directory_iterator(corpus, ec)) {
        if (e.path().extension() == ".vmx") files.push_back(e.path());
    }
    if (!files.empty()) {
        double all = medianMs(20, [&] {
            for (const auto& f : files) {
                arden::LoadResult r = arden::loadVmxFile(f);
                if (r.ok) sink += arden::writeVmxText(r.config).size();
            }
        });
        std::printf("corpus: %zu files loaded and written  %8.3f ms (median of 20), %.3f ms a file\n", files.size(), all,
                    all / static_cast<double>(files.size()));
    } else {
        std::printf("corpus not found at %s\n", corpus.string().c_str());
    }
    fs::remove_all(dir, ec);
    return sink > 0 ? 0 : 1;
}
