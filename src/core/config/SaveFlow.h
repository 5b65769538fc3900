#pragma once
// Saving a configuration: the checks that refuse a save, the creation of a missing folder,
// the atomic write, and the backup copy made when an existing file is opened for editing.
#include <filesystem>
#include <optional>
#include <string>

#include "core/config/VmConfiguration.h"
#include "core/support/Message.h"

namespace arden {

// Enabled SCSI, SATA and NVMe controllers, network adapters and sound adapters, plus one: the
// tally the save compares with 6 on the products without PCI bridges.
int pciDeviceTally(const VmConfiguration& config);

// The checks run before anything is written: a file opened read-only (encrypted settings, an
// unknown encoding) is never saved; file name and folder present ("Missing Data"), the device
// checks (checkDevicesWritable), clustering (clusteringRefusal), at most five enabled PCI
// devices on a product of hardware version 3 or 4 ("Too many virtual PCI Devices enabled"), the
// product's limits (checkProductLimits), every value held by the file's encoding
// (the refusal names the character and the encoding). Returns the refusal, or nothing when the
// save may go ahead.
std::optional<Message> checkSave(const VmConfiguration& config);

// The warning shown when a file is opened read-only (its settings are encrypted, its encoding
// is unknown), or nothing.
std::optional<Message> readOnlyNotice(const VmConfiguration& config);

// The device checks of checkSave: every hard disk, DVD/CD-ROM drive and generic SCSI device
// sits on a node (the file names it by its node), and every enabled hard disk names its disk
// file. The refusal names the device.
std::optional<Message> checkDevicesWritable(const VmConfiguration& config);

// Clustering shares SCSI 0:0 and 0:1 as cluster disks and overrides the mode and type of what
// stands there, so it may be on only while those nodes are free or hold hard disks (whose own
// mode and type the model keeps, and a save without clustering writes again). The refusal
// names the device that stands there; checkSave runs it too.
std::optional<Message> clusteringRefusal(const VmConfiguration& config);

// Refuses a text the loader would not read back: longer than a configuration file or one of
// its lines may be. The refusal says the size and the limit.
std::optional<Message> checkWrittenSize(const std::string& text);

// A question to ask before writing over a file that the product has open: a lock
// "NAME.vmx.lck" beside it (a folder, a file or a link, even a dangling one, in any letter
// case), or nothing. Asked before anything is written, the backup copy included.
std::optional<Message> inUseQuestion(const VmConfiguration& config);

// A question to ask before saving over a read-only file, or nothing.
std::optional<Message> readOnlyQuestion(const VmConfiguration& config);

// The question asked when a value holds a character that the file's encoding cannot hold:
// whether to write the whole file in UTF-8 instead; nothing when every value fits.
std::optional<Message> encodingQuestion(const VmConfiguration& config);

// The user's Yes to that question: the next save writes ".encoding = "UTF-8"" and every line,
// the kept ones included, in UTF-8. Returns the note that says so.
Message convertToUtf8(VmConfiguration& config);

struct SaveResult {
    bool written = false;
    std::string path;                // the file written (or that would have been)
    std::string text;                // the text written
    std::optional<Message> refusal;  // a check's refusal or the write failure
    std::optional<Message> notice;   // written, but in place: no copy of the old file was kept on disk
};

// Runs the checks, creates a missing folder (one level), writes the file atomically.
// CreateVmxFile of the editor: `written` is its TRUE/FALSE.
SaveResult CreateVmxFile(const VmConfiguration& config);

// Copies `vmxPath` to vmxPath + ".bak", replacing an older copy. Returns the notice to show
// ("Backup Made" / "Backup file created as: " + path) or, when the copy fails, a warning that
// names the file and the reason.
Message makeBackup(const std::filesystem::path& vmxPath, bool& ok);

}  // namespace arden
