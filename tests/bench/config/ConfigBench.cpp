// Load and re-save speed of configurations: a generated 10,000-line file and the corpus of
// real files. Prints figures; fails only when a file cannot be read or written.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "core/config/SaveFlow.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

// A configuration of `lines` lines as a long-lived machine collects them: devices on every
// node, shared folders, and many keys the editor keeps as they stand.
std::string bigConfiguration(int lines) {
    std::ostringstream s;
    s << ".encoding = \"UTF-8\"\r\ndisplayName = \"Benchmark\"\r\nconfig.version = \"8\"\r\nvirtualHW.version = \"4\"\r\n"
         "guestOS = \"winxppro\"\r\nmemsize = \"512\"\r\nnumvcpus = \"2\"\r\n";
    int written = 7;
    for (int c = 0; c < 4; ++c) {
        s << "scsi" << c << ".present = \"TRUE\"\r\nscsi" << c << ".virtualDev = \"lsilogic\"\r\n";
        written += 2;
        for (int n = 0; n < 7; ++n) {
            s << "scsi" << c << ":" << n << ".present = \"TRUE\"\r\nscsi" << c << ":" << n << ".fileName = \"disk" << c << n
              << ".vmdk\"\r\nscsi" << c << ":" << n << ".mode = \"persistent\"\r\n";
            written += 3;
        }
    }
    for (int i = 0; i < 3; ++i) {
        s << "ethernet" << i << ".present = \"TRUE\"\r\nethernet" << i << ".connectionType = \"nat\"\r\nethernet" << i
          << ".generatedAddress = \"00:0c:29:00:00:0" << i << "\"\r\n";
        written += 3;
    }
    for (int i = 0; written < lines; ++i, ++written) {
        if (i % 10 == 0) s << "# note " << i << "\r\n";
        else s << "guestinfo.key" << i << " = \"value number " << i << " with some text\"\r\n";
    }
    return s.str();
}

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
    const std::string text = bigConfiguration(10000);
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
