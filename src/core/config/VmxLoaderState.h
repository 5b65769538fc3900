#pragma once
// The loader's working state, shared by the files that read each family of keys:
// LoadDispatch.cpp (line splitting, the prefix table, holding and keeping lines),
// LoadOptionKeys.cpp (identity, processors, memory and the option groups),
// LoadDeviceKeys.cpp (devices and shared folders), LoadProductComments.cpp (platform, version
// and format numbers). Only the loader includes this header.
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/config/VmConfiguration.h"
#include "core/config/VmxLoader.h"
#include "core/support/TextEncoding.h"

namespace arden::load {

struct Line {
    std::size_t index;      // 0-based line number
    std::string_view text;  // as read, without its line end
};

// Calls `read(index, text, endsWithLoneCr)` for each line of `bytes`. A line ends at LF,
// CR LF, or a CR alone (the old Macintosh form); `text` is without its line end.
template <typename Read>
void forEachLine(std::string_view bytes, Read&& read) {
    std::size_t index = 0;
    for (std::size_t pos = 0; pos < bytes.size(); ++index) {
        std::size_t eol = pos;
        while (eol < bytes.size() && bytes[eol] != '\n' && bytes[eol] != '\r') ++eol;
        std::size_t next = eol + 1;
        bool loneCr = false;
        if (eol < bytes.size() && bytes[eol] == '\r') {
            if (eol + 1 < bytes.size() && bytes[eol + 1] == '\n') ++next;
            else loneCr = true;
        }
        read(index, bytes.substr(pos, eol - pos), loneCr);
        pos = next;
    }
}

// The value of a "key = value" text: blanks trimmed, every double quote removed (not only the
// outer pair), VMware's escapes decoded; still in the file's encoding.
std::string valueOf(std::string_view rawValue);

// LoadFileText.cpp: what the file says about its own text, read before any value: the
// encoding of its values (".encoding", or UTF-8 or the old code page for a file without one)
// and whether its settings are encrypted. Problems become notices.
struct FileTextScan {
    FileText text;
    TextCodec codec = TextCodec::utf8();
};
FileTextScan scanFileText(std::string_view bytes, std::vector<LoadNotice>& notices);

// Older keys the editor reads and writes in their newer form ("isolation.tools.paste.enabled"
// becomes "isolation.tools.paste.disable"): their lines are not kept beside the new key.
bool isReplacedKey(std::string_view key);

// What became of a key: read into the model, not one the editor manages, one it manages
// with a value it cannot use, or one whose value is not text in the file's encoding.
enum class Outcome { Taken, Unknown, Unusable, Undecodable };

// The device (or shared folder) a key belongs to, by its place in the file.
struct Owner {
    enum Kind { Numbered, Node, Single, Share } kind = Single;
    int type = 0;        // device type number (Numbered, Single)
    std::string bus;     // "IDE" or "SCSI" (Node)
    int controller = 0;  // Node
    int number = 0;      // key number (Numbered, Share) or node number (Node)
    auto operator<=>(const Owner&) const = default;
};

// A line under a device's prefix that goes back under that device: the suffix as written and
// the rest of the line, plus the line itself for when the device turns out not to exist.
struct OwnedLine {
    Line line;
    KeptKeyLine kept;
};

class Loader {
public:
    Loader(VmConfiguration& c, std::vector<LoadNotice>& notices, const TextCodec& codec)
        : c_(c), notices_(notices), codec_(codec) {}

    void dataLine(const Line& line);
    void commentLine(const Line& line);
    void finish();
    // Whether the line goes back into the file as it stands (known after finish()).
    bool isKept(std::size_t index) const { return index < kept_.size() && kept_[index]; }
    // Adds the notice that counts the notices left out beyond the first hundred.
    void countOmittedNotices();

private:
    // LoadDispatch.cpp
    void dispatch(const Line& line, const std::string& key, std::string_view value, bool readable = true);
    // The value of a data line as text: decoded from the file's encoding; `readable` false (and
    // the bytes that cannot be decoded shown as U+FFFD) when it is not valid in that encoding.
    std::string valueText(std::string_view lineText, bool* readable = nullptr) const;
    void keep(const Line& line) {
        if (kept_.size() <= line.index) kept_.resize(line.index + 1);
        kept_[line.index] = true;
    }
    void notice(const Line& line, std::string_view text);
    static std::size_t suffixStart(const std::optional<Owner>& owner, const std::string& key);
    void unusable(const Line& line, const std::string& key, std::string_view value, std::string_view allowed);
    void consumed(const Line& line, const std::string& key, const std::optional<Owner>& owner);
    void keepLinesTheWriterDrops();
    static bool isClusterLine(const std::string& key, std::string_view value);

    // LoadOptionKeys.cpp
    Outcome optionKey(const Line& line, const std::string& key, std::string_view value, std::string& allowed);
    void checkProcessors();
    void addProcessorsAndMemory();

    // LoadDeviceKeys.cpp
    Outcome deviceKey(const Line& line, const std::string& key, std::string_view prefix, std::string_view value,
                      std::optional<Owner>& owner, std::string& allowed);
    Outcome sharedFolder(const std::string& key, std::string_view prefix, std::string_view value, const Owner& owner,
                         std::string& allowed);
    Outcome setDeviceValue(DeviceSettings& settings, DeviceType table, std::string_view suffix,
                           std::string_view value, std::string& allowed);
    std::pair<std::map<Owner, DeviceSettings>::iterator, bool> settingsOf(const Owner& owner);
    void ownLine(const Owner& owner, const Line& line, std::size_t suffixStart);
    void disown(const Owner& owner, std::string_view suffix);
    void unsetDeviceValue(const Owner& owner, std::string_view suffix);
    void buildDevices();
    void noteUndeclaredControllers();
    void attachOwnedLines();

    // LoadProductComments.cpp
    bool productComment(const Line& line, std::string_view text);
    void resolveProduct();
    void takeFormatNumber(const std::string& key, std::string_view value);
    void noteProductHint(const std::string& key, std::string_view value);
    bool esxFile() const;

    VmConfiguration& c_;
    std::size_t omittedNotices_ = 0;
    int firstOmittedLine_ = 0;
    std::vector<LoadNotice>& notices_;
    TextCodec codec_;
    std::vector<bool> kept_;  // by line number: the lines kept as they stand
    std::vector<std::pair<Line, std::string>> clusterLines_;  // set aside until clustering is known
    std::size_t clusterKeyLine_ = 0;                          // line of "disk.locking" = "FALSE"

    std::set<std::string> held_;                               // managed keys whose line is kept
    std::set<std::string> heldShareKeys_;  // shared-folder keys ("sharedfolder4.hostpath") whose line is kept
    std::set<std::string> seenManaged_;                        // of kManagedKeys, those the file holds
    std::unordered_map<std::string, std::pair<Line, std::optional<Owner>>> consumed_;  // last line of each read key

    std::map<Owner, DeviceSettings> devices_;
    std::map<Owner, std::vector<OwnedLine>> owned_;
    std::map<int, SharedFolder> shares_;
    std::map<Owner, Device*> built_;  // each device as the store holds it (the store never moves a device)

    std::optional<std::pair<Line, std::string>> numvcpus_;  // the last "numvcpus" line and its value
    int processors_ = 1;
    std::optional<int> memsize_;
    bool pae_ = false;

    std::optional<int> platform_;
    std::vector<std::pair<Line, std::string>> versionComments_;  // "# Version = ..." lines and their text
    // What tells an ESXi file from a hosted one: datastore paths, adapters on port groups
    // ("networkName") rather than host networks ("connectionType"), the hosted marker.
    bool datastorePath_ = false;
    bool networkName_ = false;
    bool connectionType_ = false;
    bool hostedMarker_ = false;
};

}  // namespace arden::load
