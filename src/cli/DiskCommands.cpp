// arden-forge-cli disk: make a new virtual disk or show what an existing one holds.
#include <csignal>
#include <iostream>
#include <string>

#include <unistd.h>

#include "cli/CliCommands.h"
#include "core/disks/DiskCreator.h"
#include "core/disks/DiskInformation.h"
#include "core/disks/DiskValidation.h"
#include "core/support/PathText.h"

namespace arden::cli {

namespace {

using namespace arden::disks;

volatile std::sig_atomic_t gInterrupted = 0;

extern "C" void onInterrupt(int) { gInterrupted = 1; }

struct UnitSuffix {
    char letter;
    SizeUnit unit;
};

// The size units of the command line; upper and lower case are both taken.
constexpr UnitSuffix kUnitSuffixes[] = {
    {'s', SizeUnit::Sectors}, {'k', SizeUnit::Kb}, {'m', SizeUnit::Mb}, {'g', SizeUnit::Gb}};

std::optional<SizeUnit> unitOf(char letter) {
    char lower = static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter);
    for (const UnitSuffix& u : kUnitSuffixes) {
        if (u.letter == lower) return u.unit;
    }
    return std::nullopt;
}

// The usage text of a bad option value: what was given and what is allowed.
int badValue(const std::string& option, const std::string& given, const std::string& allowed) {
    return usageError(option + " '" + given + "' is not allowed; use " + allowed);
}

// Shows progress on a terminal, one line rewritten in place, and turns Ctrl-C into a cancel.
class TerminalProgress {
public:
    TerminalProgress() : show_(::isatty(STDERR_FILENO) == 1) { previous_ = std::signal(SIGINT, onInterrupt); }
    ~TerminalProgress() {
        std::signal(SIGINT, previous_);
        if (shown_) std::cerr << '\n';
    }
    bool operator()(const DiskProgressState& state) {
        if (show_) {
            std::string line = progressStepText(state.step) + " " + state.currentFile + ": " + progressAmountText(state);
            if (line != lastLine_) {
                std::cerr << "\r\033[K" << line << std::flush;
                lastLine_ = std::move(line);
                shown_ = true;
            }
        }
        return gInterrupted == 0;
    }

private:
    bool show_;
    bool shown_ = false;
    std::string lastLine_;
    void (*previous_)(int) = SIG_DFL;
};

int runDiskCreate(Args args) {
    bool missing = false;
    std::optional<std::string> size = takeOption(args, "--size", missing);
    std::optional<std::string> adapterName = takeOption(args, "--adapter", missing);
    std::optional<std::string> typeName = takeOption(args, "--type", missing);
    bool yes = takeFlag(args, "--yes");
    if (missing) return usageError("--size, --adapter and --type each need a value");
    if (std::string unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 1) return usageError("disk create takes one FILE.vmdk");
    if (!size || !adapterName || !typeName) return usageError("disk create needs --size, --adapter and --type");

    const std::string& file = args[0];
    if (file.size() <= 5 || !file.ends_with(".vmdk")) return usageError("the disk file '" + file + "' must be NAME.vmdk");
    std::optional<DiskAdapter> adapter = adapterFromText(*adapterName);
    if (!adapter) return badValue("--adapter", *adapterName, "ide, buslogic or lsilogic");
    std::optional<DiskKind> kind = diskKindFromName(*typeName);
    if (!kind) return badValue("--type", *typeName, "growable, growable-split, growable-descriptor, preallocated or preallocated-split");
    std::optional<SizeUnit> unit = size->empty() ? std::nullopt : unitOf(size->back());
    if (!unit) return badValue("--size", *size, "a number and a unit: s (sectors), K, M or G, e.g. 204800s, 100M, 20G");

    std::string number = size->substr(0, size->size() - 1);
    std::optional<std::int64_t> sectors = sizeTextToSectors(number, *unit);
    if (!sectors) {
        printMessage(notNumericMessage(number));
        return Refused;
    }

    NewDiskRequest request{filePath(file), *adapter, *sectors, *kind, 3};
    DiskRequestCheck check = checkNewDisk(request);
    if (check.refusal) {
        printMessage(*check.refusal);
        return Refused;
    }
    for (const Message& question : check.questions) {
        printMessage(question);
        if (!yes) {
            std::cerr << "Answered No (give --yes to answer Yes): nothing was created.\n";
            return Refused;
        }
        std::cerr << "Answered Yes (--yes).\n";
    }

    DiskCreationResult result;
    {
        TerminalProgress progress;
        result = createDisk(request, std::ref(progress));
    }
    if (result.cancelled) {
        std::cerr << "Cancelled: the files of " << file << " were removed.\n";
        return Refused;
    }
    if (!result.created) {
        printMessage(*result.failure);
        return Refused;
    }
    std::cout << file << '\n';
    return Success;
}

int runDiskInfo(Args args) {
    if (std::string unknown = firstUnknownOption(args); !unknown.empty()) return usageError("unknown option " + unknown);
    if (args.size() != 1) return usageError("disk info takes one FILE.vmdk");
    DiskReadResult read = readDiskInformation(filePath(args[0]));
    if (!read.information) {
        printMessage(read.failure);
        return Refused;
    }
    std::string text = diskSummaryText(*read.information);
    for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at)) text.erase(at, 1);
    std::cout << text << '\n';
    return Success;
}

}  // namespace

int runDisk(Args args) {
    if (args.empty()) return usageError("disk needs 'create' or 'info'");
    std::string action = args[0];
    args.erase(args.begin());
    if (action == "create") return runDiskCreate(std::move(args));
    if (action == "info") return runDiskInfo(std::move(args));
    return usageError("unknown disk action '" + action + "'; use 'create' or 'info'");
}

}  // namespace arden::cli
