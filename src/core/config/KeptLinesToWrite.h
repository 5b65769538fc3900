#pragma once
// The opened file's kept lines as the writer puts them back. Of several lines with one key only
// the last goes back (it is the one that took effect). A line under the prefix of a device or a
// shared folder that writes keys of its own ("scsi0:0.redo" once a disk sits on SCSI 0:0) goes
// with that device: a reopened file reads it as that device's line, so the next save writes it
// there too. The rest go to the kept lines' own section, in file order.
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/config/KeptLines.h"
#include "core/config/VmxLines.h"

namespace arden::vmx {

class KeptLinesToWrite {
public:
    explicit KeptLinesToWrite(const KeptLines& kept);

    // Writes the lines whose key begins with `prefix` and a dot in any case ("ethernet1",
    // "sharedFolder2"), in file order and under `prefix` as given, and leaves them out of what
    // forEachLeft gives.
    void writeUnder(VmxLines& out, std::string_view prefix);

    // Every line not written under a device, in file order: `write(line, key)`, the key
    // lower-cased and empty for comments and lines without "=".
    template <typename Write>
    void forEachLeft(Write&& write) const {
        for (const Entry& e : entries_) {
            if (!e.written) write(e.line, e.key);
        }
    }

private:
    struct Entry {
        std::string_view line;
        std::string key;
        bool written = false;
    };
    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::vector<std::size_t>> byPrefix_;  // lower-case prefix -> entries
};

// A kept "key = value" line, as read, unless its key is written already; with `prefix`, the
// key's prefix (as long as `prefix`) is written as `prefix` spells it.
void writeKeptWholeLine(VmxLines& out, std::string_view line, std::string_view prefix = {});

}  // namespace arden::vmx
