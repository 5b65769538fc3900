// Random edit sequences through arden-forge-cli, each command a process of its own as a script
// runs them: new machines and the VMware-written files of the corpus get devices added, moved
// and removed (by printed name and by node), SCSI controllers removed with and without their
// devices, clustering and memory changed. After every edit: the exit code is 0 or 1, a refused
// edit left the file as it was, `show` reads the file, `check` passes when it passed before,
// a re-save is byte-identical, no two devices share a node, and the name an edit printed is
// the name `show` lists on the node it printed.
//
// ARDEN_EDIT_SEQUENCES sets the number of sequences (a few in the ordinary run, hundreds in
// the bench run); every sequence is seeded by its number, so a failure names a seed that
// repeats it.
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "CliRunner.h"

using namespace arden::test;
namespace fs = std::filesystem;

namespace {

// One hardware line of `show`: "  NAME<TAB>SUMMARY<TAB>NODE".
struct ShownDevice {
    std::string name;
    std::string node;
};

std::vector<ShownDevice> hardwareOf(const std::string& showOutput) {
    std::vector<ShownDevice> devices;
    std::istringstream in(showOutput);
    std::string line;
    bool inList = false;
    while (std::getline(in, line)) {
        if (line == "Hardware:") {
            inList = true;
            continue;
        }
        if (!inList || line.rfind("  ", 0) != 0) {
            inList = inList && line.rfind("  ", 0) == 0;
            continue;
        }
        std::size_t tab1 = line.find('\t');
        std::size_t tab2 = line.rfind('\t');
        devices.push_back({line.substr(2, tab1 - 2), tab2 == std::string::npos ? "" : line.substr(tab2 + 1)});
    }
    return devices;
}

// The first line where two texts differ, as "written: ...\nresaved: ...".
std::string firstDifference(const std::string& written, const std::string& resaved) {
    std::istringstream a(written), b(resaved);
    std::string la, lb;
    while (true) {
        const bool moreA = static_cast<bool>(std::getline(a, la)), moreB = static_cast<bool>(std::getline(b, lb));
        if (!moreA && !moreB) return "(only the line ends differ)";
        if (!moreA) la = "(end of file)";
        if (!moreB) lb = "(end of file)";
        if (la != lb || !moreA || !moreB) return "written: " + la + "\nresaved: " + lb;
    }
}

struct Figures {
    int sequences = 0;
    int edits = 0;
    int refused = 0;
};

class Sequence {
public:
    Sequence(unsigned seed, const fs::path& folder, Figures& figures) : random_(seed), folder_(folder), figures_(figures) {}

    // Runs `count` edits on `file`; returns the first broken promise, empty when all held.
    std::string run(const fs::path& file, int count) {
        file_ = file.string();
        checkPassed_ = runCli({"check", file_}).exitCode == 0;
        for (int i = 0; i < count; ++i) {
            std::string failure = oneEdit();
            if (!failure.empty()) return "edit " + std::to_string(i + 1) + " " + lastEdit_ + ": " + failure;
        }
        return {};
    }

private:
    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }

    std::string randomNode() {
        static const char* kNodes[] = {"IDE 0:0", "IDE 0:1", "IDE 1:0", "IDE 1:1", "SCSI 0:0", "SCSI 0:1",
                                       "SCSI 0:3", "SCSI 0:6", "SCSI 0:7", "SCSI 1:2", "SCSI 2:0", "N/A"};
        return kNodes[pick(static_cast<int>(std::size(kNodes)))];
    }

    std::vector<std::string> nextEdit(const std::vector<ShownDevice>& devices) {
        std::vector<std::string> diskLike;
        for (const ShownDevice& d : devices)
            if (!d.node.empty()) diskLike.push_back(d.name);
        const std::string someDevice = devices.empty() ? "CPU 1" : devices[static_cast<std::size_t>(pick(static_cast<int>(devices.size())))].name;
        const std::string someDisk = diskLike.empty() ? "Hard Disk 1" : diskLike[static_cast<std::size_t>(pick(static_cast<int>(diskLike.size())))];
        const std::string disk = (folder_ / ("d" + std::to_string(++serial_) + ".vmdk")).string();
        switch (pick(12)) {
            case 0: return {"device", "add", file_, "Hard Disk", "--file", disk};
            case 1: return {"device", "add", file_, "Hard Disk", "--file", disk, "--node", randomNode()};
            case 2: return {"device", "add", file_, "DVD/CD-ROM Drive"};
            case 3: return {"device", "add", file_, "DVD/CD-ROM Drive", "--node", randomNode()};
            case 4: return {"device", "add", file_, "SCSI Controller"};
            case 5: return {"device", "add", file_, "Generic SCSI Device", "--file", "/dev/sg" + std::to_string(pick(4))};
            case 6: return {"device", "remove", file_, someDevice};
            case 7: return {"device", "remove", file_, someDisk};
            case 8: return {"device", "node", file_, someDisk, randomNode()};
            case 9: return {"device", "remove", file_, "SCSI Controller " + std::to_string(pick(2)), "--with-devices"};
            case 10: return {"option", file_, "clustering", pick(2) ? "yes" : "no"};
            default: return {"device", "remove", file_, randomNode()};
        }
    }

    std::string oneEdit() {
        const CliResult before = runCli({"show", file_});
        if (before.exitCode != 0) return "show refused the file: " + before.err;
        const std::vector<ShownDevice> devices = hardwareOf(before.out);
        const std::string bytesBefore = readBytes(file_);
        const std::vector<std::string> edit = nextEdit(devices);
        lastEdit_.clear();
        for (std::size_t i = 1; i < edit.size(); ++i) lastEdit_ += (i == 1 ? "" : " ") + (edit[i] == file_ ? "FILE" : "\"" + edit[i] + "\"");
        const CliResult result = runCli(edit);
        ++figures_.edits;
        if (result.exitCode != 0 && result.exitCode != 1) return "exit code " + std::to_string(result.exitCode) + ": " + result.err;
        if (result.exitCode == 1) {
            ++figures_.refused;
            if (readBytes(file_) != bytesBefore) return "refused, but the file changed: " + result.err;
            return {};
        }
        const CliResult after = runCli({"show", file_});
        if (after.exitCode != 0) return "the file written cannot be read: " + after.err;
        const std::vector<ShownDevice> now = hardwareOf(after.out);
        std::set<std::string> nodes;
        for (const ShownDevice& d : now) {
            if (!d.node.empty() && !nodes.insert(d.node).second) return "two devices on " + d.node + ":\n" + after.out;
        }
        // The entry an add or a node move printed ("Hard Disk 2<TAB>IDE 0:0") is what the next run shows.
        if (edit[0] == "device" && edit[1] != "remove") {
            std::istringstream printed(result.out);
            std::string line;
            while (std::getline(printed, line)) {
                std::size_t tab = line.find('\t');
                if (tab == std::string::npos) continue;
                const std::string name = line.substr(0, tab), node = line.substr(tab + 1);
                auto found = std::find_if(now.begin(), now.end(), [&](const ShownDevice& d) { return d.name == name; });
                if (found == now.end() || found->node != node)
                    return "printed \"" + line + "\", but the next run shows " +
                           (found == now.end() ? std::string("no such entry") : name + " on " + found->node);
            }
        }
        // A device removed by name or node: the node it had is free, every other disk-like device stays.
        if (edit[1] == "remove" && edit.size() == 4) {
            auto removed = std::find_if(devices.begin(), devices.end(), [&](const ShownDevice& d) {
                return d.name == edit[3] || (!d.node.empty() && d.node == edit[3]);
            });
            if (removed != devices.end() && !removed->node.empty()) {
                std::multiset<std::string> expected, actual;
                for (const ShownDevice& d : devices)
                    if (!d.node.empty() && d.node != removed->node) expected.insert(d.node);
                for (const ShownDevice& d : now)
                    if (!d.node.empty()) actual.insert(d.node);
                if (expected != actual) return "removing " + removed->name + " changed other devices:\n" + after.out;
            }
        }
        if (readBytes(file_) == bytesBefore) return {};  // nothing was written (a node it already held)
        const bool checkPasses = runCli({"check", file_}).exitCode == 0;
        if (checkPassed_ && !checkPasses) return "check passed before the edit and fails after it";
        checkPassed_ = checkPasses;
        const fs::path again = folder_ / "resaved.vmx";
        const CliResult resave = runCli({"resave", file_, "--output", again.string(), "--yes"});
        if (resave.exitCode != 0) return "resave refused: " + resave.err;
        if (readBytes(again) != readBytes(file_)) return "a re-save is not byte-identical:\n" + firstDifference(readBytes(file_), readBytes(again));
        return {};
    }

    std::mt19937 random_;
    fs::path folder_;
    Figures& figures_;
    std::string file_;
    std::string lastEdit_;
    bool checkPassed_ = false;
    int serial_ = 0;
};

int sequencesWanted() {
    const char* text = std::getenv("ARDEN_EDIT_SEQUENCES");
    return text ? std::max(1, std::atoi(text)) : 4;
}

}  // namespace

TEST(EditSequences, EveryEditKeepsNamesNodesAndTheFile) {
    static const char* kTargets[][2] = {{"Workstation", "5.5x"}, {"Workstation", "4.0x"}, {"GSX Server", "3.x"},
                                        {"Workstation", "5.0x"}, {"Server", "1.x"}};
    std::vector<fs::path> corpus = corpusFiles("vmx", ".vmx");
    Figures figures;
    const int wanted = sequencesWanted();
    const int editsEach = wanted > 20 ? 30 : 12;
    for (int n = 0; n < wanted; ++n) {
        ScratchDir dir;
        fs::path file = dir / "M.vmx";
        const bool fromCorpus = !corpus.empty() && n % 2 == 1;
        if (fromCorpus) {
            const fs::path& source = corpus[static_cast<std::size_t>(n / 2) % corpus.size()];
            fs::copy_file(source, file);
            fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
        } else {
            const auto& target = kTargets[n / 2 % std::size(kTargets)];
            ASSERT_EQ(runCli({"new", dir.path().string(), "M", "--platform", target[0], "--version", target[1]}).exitCode, 0);
        }
        ++figures.sequences;
        Sequence sequence(static_cast<unsigned>(n), dir.path(), figures);
        const std::string failure = sequence.run(file, editsEach);
        EXPECT_EQ(failure, "") << "sequence " << n << (fromCorpus ? " (corpus file)" : " (new machine)");
        if (!failure.empty()) break;
    }
    std::cout << "edit sequences: " << figures.sequences << ", edits: " << figures.edits << ", refused: " << figures.refused
              << '\n';
}
