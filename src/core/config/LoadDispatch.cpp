// The loader's main line: splitting a data line into key and value, choosing the family of
// keys by the key's prefix, and what happens to a line the editor cannot use (it is kept as
// written, with a note) or will not write (it is kept too).
#include <algorithm>

#include "core/config/DeviceFeatures.h"
#include "core/config/VmxLoaderState.h"
#include "core/config/VmxText.h"
#include "core/config/VmxWriter.h"
#include "core/hardware/DeviceKeys.h"
#include "core/support/TextUtil.h"

namespace arden::load {
namespace {

// The first prefix test that matches decides how a key is read. A pattern ends in "*" and
// matches the start of the prefix.
enum class Family { FormatNumber, Disk, Device, Other };

struct PrefixRule {
    std::string_view test;
    Family family;
};

const PrefixRule kPrefixRules[] = {
    {"config", Family::FormatNumber}, {"virtualhw", Family::FormatNumber}, {"gui", Family::Other},
    {"powertype", Family::Other},     {"toolscripts", Family::Other},      {"isolation", Family::Other},
    {"sharedfolder*", Family::Device}, {"snapshot", Family::Other},        {"priority", Family::Other},
    {"monitor_control", Family::Other}, {"log", Family::Other},            {"disk", Family::Disk},
    {"floppy*", Family::Device},      {"parallel*", Family::Device},       {"serial*", Family::Device},
    {"sound", Family::Device},        {"ethernet*", Family::Device},       {"usb", Family::Device},
    {"ide*", Family::Device},         {"scsi*", Family::Device},           {"svga", Family::Device},
    {"mks", Family::Device},          {"vmmouse", Family::Device},         {"sata*", Family::Device},
    {"nvme*", Family::Device},
};

// Managed keys that a file without them does not gain when it is saved again.
constexpr std::string_view kManagedKeys[] = {"displayname", "guestos", "numvcpus", "memsize"};

Family familyOf(std::string_view prefix) {
    for (const PrefixRule& r : kPrefixRules) {
        if (r.test.back() == '*') {
            if (prefix.substr(0, r.test.size() - 1) == r.test.substr(0, r.test.size() - 1)) return r.family;
        } else if (prefix == r.test) {
            return r.family;
        }
    }
    return Family::Other;
}

// Whether the editor writes the value the file held: flags by their meaning, words without
// regard to case.
bool sameValue(std::string_view a, std::string_view b) {
    bool fa = false, fb = false;
    if (parseFlag(a, fa) && parseFlag(b, fb)) return fa == fb;
    return equalsIgnoreCase(a, b);
}

}  // namespace

std::string valueOf(std::string_view rawValue) {
    std::string value;
    value.reserve(rawValue.size());
    for (char ch : rawValue) {
        if (ch != '"') value += ch;
    }
    return vmx::unescapeValue(value);
}

std::string Loader::valueText(std::string_view lineText, bool* readable) const {
    std::string bytes = valueOf(trimBlanks(lineText.substr(lineText.find('=') + 1)));
    if (auto text = codec_.decode(bytes)) {
        if (readable) *readable = true;
        return std::move(*text);
    }
    if (readable) *readable = false;
    return codec_.decodeReplacing(bytes);
}

void Loader::notice(const Line& line, std::string_view text) {
    if (notices_.size() >= kMaxLoadNotices) {
        if (omittedNotices_++ == 0) firstOmittedLine_ = static_cast<int>(line.index + 1);
        return;
    }
    notices_.push_back({static_cast<int>(line.index + 1), std::string(text)});
}

void Loader::countOmittedNotices() {
    if (omittedNotices_ == 0) return;
    notices_.push_back({firstOmittedLine_, std::to_string(omittedNotices_) + " more notices from this line on are not listed"});
}

void Loader::unusable(const Line& line, const std::string& key, std::string_view value, std::string_view allowed) {
    notice(line, "\"" + std::string(value) + "\" is not a value the editor can show for " + key + " (" +
                     std::string(allowed) + "); the line is kept as written");
}

bool Loader::isClusterLine(const std::string& key, std::string_view value) {
    if (key == "disk.locking") return false;  // the line that turns clustering on
    for (const vmx::FixedKey& k : vmx::clusterKeys()) {
        if (equalsIgnoreCase(k.key, key) && equalsIgnoreCase(k.value, value)) return true;
    }
    return false;
}

void Loader::dataLine(const Line& line) {
    std::size_t eq = line.text.find('=');
    if (eq == std::string_view::npos) {
        notice(line, "no \"=\" on this line; it is kept as it stands");
        keep(line);
        return;
    }
    std::string key = toLowerAscii(trimBlanks(line.text.substr(0, eq)));
    if (key.empty()) {
        notice(line, "no key before \"=\"; the line is kept as it stands");
        keep(line);
        return;
    }
    std::string_view rawValue = trimBlanks(line.text.substr(eq + 1));
    bool readable = true;
    std::string value = valueText(line.text, &readable);
    if (!readable) {
        notice(line, "the value of " + key + " is not valid " + std::string(codec_.name()) +
                         " text (shown as \"" + value + "\"); the line is kept as written");
    }
    if (std::count(rawValue.begin(), rawValue.end(), '"') % 2 != 0)
        notice(line, "unbalanced quotes in the value of " + key + "; read as \"" + value + "\"");
    if (isClusterLine(key, value)) {
        clusterLines_.emplace_back(line, std::move(key));
        return;
    }
    dispatch(line, key, value, readable);
}

void Loader::dispatch(const Line& line, const std::string& key, std::string_view value, bool readable) {
    if (std::find(std::begin(kManagedKeys), std::end(kManagedKeys), key) != std::end(kManagedKeys)) seenManaged_.insert(key);
    noteProductHint(key, value);
    std::string_view prefix = std::string_view(key).substr(0, key.find('.'));
    std::optional<Owner> owner;
    std::string allowed;
    Outcome outcome = Outcome::Unknown;
    switch (familyOf(prefix)) {
        case Family::FormatNumber:
            // The two format numbers are kept as read; other keys of the family are the product's own.
            if (key == "config.version" || key == "virtualhw.version") {
                takeFormatNumber(key, value);
                outcome = Outcome::Taken;
            }
            break;
        case Family::Disk:
            if (key == "disk.locking" && equalsIgnoreCase(value, "false")) {
                c_.advanced.clusterEnabled = true;
                clusterKeyLine_ = line.index;
                outcome = Outcome::Taken;
            }
            break;
        case Family::Device: outcome = deviceKey(line, key, prefix, value, owner, allowed); break;
        case Family::Other: outcome = optionKey(line, key, value, allowed); break;
    }
    // A value that is not text in the file's encoding is shown but its line stays as written.
    if (!readable && outcome == Outcome::Taken) outcome = Outcome::Undecodable;
    // Of a key written several times the last line counts: each outcome undoes what an
    // earlier line of the same key left.
    const std::size_t start = suffixStart(owner, key);
    switch (outcome) {
        case Outcome::Taken:
            held_.erase(key);
            heldShareKeys_.erase(key);
            consumed_.insert_or_assign(key, std::make_pair(line, owner));
            if (owner) disown(*owner, std::string_view(key).substr(start));
            break;
        case Outcome::Unusable:
        case Outcome::Undecodable:
            if (outcome == Outcome::Unusable) unusable(line, key, value, allowed);
            consumed_.erase(key);
            // A shared folder always writes its name and folder: an unreadable one is held back
            // (its line goes with the folder, under the number the folder is written with) while
            // the editor shows it as read.
            if (owner && outcome == Outcome::Undecodable && owner->kind == Owner::Share) {
                heldShareKeys_.insert(key);
                ownLine(*owner, line, start);
            } else if (owner) {
                unsetDeviceValue(*owner, std::string_view(key).substr(start));
                ownLine(*owner, line, start);
            } else {
                held_.insert(key);
                keep(line);
            }
            break;
        case Outcome::Unknown:
            if (owner) ownLine(*owner, line, start);
            else keep(line);
            break;
    }
}

void Loader::commentLine(const Line& line) {
    std::string_view t = trimBlanks(line.text);
    if (vmx::isOwnBannerLine(t)) return;
    // A "#!" first line makes the file a script that starts the product: it stays first.
    if (line.index == 0 && line.text.substr(0, 2) == "#!") {
        c_.fileText.firstLine = std::string(line.text);
        return;
    }
    // A clustered disk's own mode or type: read while clustering stands in for it, and written
    // anew by the writer (never kept as a comment, so it does not pile up).
    if (std::string key, value; vmx::parseOwnValueComment(t, key, value)) {
        if (c_.advanced.clusterEnabled) dispatch(line, key, value);
        return;
    }
    if (productComment(line, t)) return;
    keep(line);
}

void Loader::keepLinesTheWriterDrops() {
    // A line the loader read whose key the writer would not write (a "paevm" of FALSE, the
    // ".vnet" of an adapter that is not on a custom network) stays in the file as it was.
    std::unordered_map<std::string, std::string> written = editorValues(c_);
    // In file order, so that notices and a device's kept lines come out in the order the file
    // has them, whatever the hash table's order.
    std::vector<const decltype(consumed_)::value_type*> inFileOrder;
    inFileOrder.reserve(consumed_.size());
    for (const auto& entry : consumed_) inFileOrder.push_back(&entry);
    std::sort(inFileOrder.begin(), inFileOrder.end(),
              [](const auto* a, const auto* b) { return a->second.first.index < b->second.first.index; });
    for (const auto* entry : inFileOrder) {
        const std::string& key = entry->first;
        const auto& [line, owner] = entry->second;
        if (isReplacedKey(key)) continue;
        auto it = written.find(key);
        if (it != written.end()) {
            // A value the editor would write differently ("sharedFolder.maxNum" of 0 beside a
            // described folder) stays as the file has it.
            std::string value = valueText(line.text);
            if (owner || sameValue(value, it->second)) continue;
            notice(line, "the editor would write \"" + it->second + "\" for " + key + "; the line is kept as written");
            held_.insert(key);
            keep(line);
            continue;
        }
        if (!owner) {
            keep(line);
            continue;
        }
        ownLine(*owner, line, suffixStart(owner, key));
    }
    // Managed keys kept as written, and the keys a file without them does not gain, are held
    // back by the writer while the editor's value stays the one it has now.
    for (std::string_view key : kManagedKeys) {
        if (!seenManaged_.count(std::string(key))) held_.insert(std::string(key));
    }
    for (const std::string& key : held_) {
        if (auto it = written.find(key); it != written.end()) c_.heldKeys[key] = it->second;
    }
    // Shared folders are written numbered from 0 in the order of their numbers in the file.
    for (const std::string& key : heldShareKeys_) {
        std::size_t dot = key.find('.');
        int number = std::stoi(key.substr(12, dot - 12));
        auto index = std::distance(shares_.begin(), shares_.find(number));
        std::string writtenKey = "sharedfolder" + std::to_string(index) + key.substr(dot);
        if (auto it = written.find(writtenKey); it != written.end()) c_.heldKeys[writtenKey] = it->second;
    }
}

void Loader::finish() {
    // Clustering lines: the writer puts its fixed clustering block right after "disk.locking",
    // so when clustering is on, a fixed line that follows that key is the block's own and is
    // consumed (it is written again); any other is read like every line, e.g. a disk's own mode.
    for (auto& [line, key] : clusterLines_) {
        if (c_.advanced.clusterEnabled && line.index > clusterKeyLine_) continue;
        dispatch(line, key, valueText(line.text));
    }
    resolveProduct();
    checkProcessors();
    addProcessorsAndMemory();
    c_.devices.busOptions = busOptions(c_.figures());
    buildDevices();
    keepLinesTheWriterDrops();
    attachOwnedLines();
}

}  // namespace arden::load
