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

namespace arden::load {

struct Line {
    std::size_t index;      // 0-based line number
    std::string_view text;  // as read, without its line end
};

// Older keys the editor reads and writes in their newer form ("isolation.tools.paste.enabled"
// becomes "isolation.tools.paste.disable"): their lines are not kept beside the new key.
bool isReplacedKey(std::string_view key);

// What became of a key: read into the model, not one the editor manages, or one it manages
// with a value it cannot use.
enum class Outcome { Taken, Unknown, Unusable };

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
    Loader(VmConfiguration& c, std::vector<LoadNotice>& notices) : c_(c), notices_(notices) {}

    void dataLine(const Line& line);
    void commentLine(const Line& line);
    void finish();
    // Whether the line goes back into the file as it stands (known after finish()).
    bool isKept(std::size_t index) const { return index < kept_.size() && kept_[index]; }
    // Adds the notice that counts the notices left out beyond the first hundred.
    void countOmittedNotices();

private:
    // LoadDispatch.cpp
    void dispatch(const Line& line, const std::string& key, std::string_view value);
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

    VmConfiguration& c_;
    std::size_t omittedNotices_ = 0;
    int firstOmittedLine_ = 0;
    std::vector<LoadNotice>& notices_;
    std::vector<bool> kept_;  // by line number: the lines kept as they stand
    std::vector<std::pair<Line, std::string>> clusterLines_;  // set aside until clustering is known
    std::size_t clusterKeyLine_ = 0;                          // line of "disk.locking" = "FALSE"

    std::set<std::string> held_;                               // managed keys whose line is kept
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
};

}  // namespace arden::load
