#pragma once
// The configuration model of one editor: identity, product and guest, the six option
// groups, the device store, and the lines kept from an opened file. The editor's controls
// show these fields; each field names the control that shows it.
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/config/ProductTables.h"
#include "core/config/FileText.h"
#include "core/config/KeptLines.h"
#include "core/hardware/DeviceStore.h"

namespace arden {

struct IdentitySettings {
    std::string displayName;   // txtDisplayName, "displayName"
    std::string vmxFileName;   // txtVmxFileName
    std::string vmxFolder;     // txtVmxFolder (may end with a separator)
    std::string workingDir = ".";  // txtWorkingDir, "workingDir"
    std::string notes;         // txtNotes, "annotation"; line breaks held as CR LF
    bool operator==(const IdentitySettings&) const = default;
};

struct ProductSettings {
    int platform = kWorkstation;   // cboTargetPlatform position
    int version = 4;               // cboPlatformVersion position ("5.5x"); -1 when none is chosen
    int guestFamily = kFamilyWindows;  // family number (not the list position: the list may skip Solaris)
    int guestVersion = 9;          // cboGuestVersions position within the family; -1 when unknown
    std::string guestId = "winXPPro";  // written as "guestOS"
    // "config.version" and "virtualHW.version" as the opened file held them, written back until
    // the user picks another platform or version; empty for a new machine, which gets the
    // figures of its target.
    std::string configVersionAsRead;
    std::string hwVersionAsRead;
    bool operator==(const ProductSettings&) const = default;
};

struct PowerOptions {
    bool powerOnAfterOpen = false;        // chkPowerOnAfterOpen, "gui.powerOnAtStartup"
    bool fullScreenAfterPowerOn = false;  // chkFullScreenAfterPowerOn
    bool closeAfterPowerOff = false;      // chkCloseAfterPowerOff
    int powerOff = 0;                     // cboPowerOff: 0 "hard", 1 "soft"
    int reset = 0;                        // cboReset: 0 "hard", 1 "soft"
    bool runToolsAfterPowerOn = false;    // chkRunToolsAfterPowerOn
    bool runToolsAfterResume = false;     // chkRunToolsAfterResume
    bool runToolsBeforeSuspend = false;   // chkRunToolsBeforeSuspend
    bool runToolsBeforePowerOff = false;  // chkRunToolsBeforePowerOff
    bool operator==(const PowerOptions&) const = default;
};

// The keys of a shared folder, as bits of SharedFolder::keysRead.
enum ShareKey : unsigned {
    kSharePresent = 1u << 0,
    kShareEnabled = 1u << 1,
    kShareReadAccess = 1u << 2,
    kShareWriteAccess = 1u << 3,
    kShareHostPath = 1u << 4,
    kShareGuestName = 1u << 5,
    kShareExpiration = 1u << 6,
    kAllShareKeys = (1u << 7) - 1,
};

// One shared folder of the host.
struct SharedFolder {
    std::string name;        // txtShareName, "guestName"
    std::string hostPath;    // txtHostFolder, "hostPath"
    bool enabled = true;     // chkShareEnabled, "Enabled"
    bool readOnly = false;   // chkShareReadOnly: "writeAccess" is its inverse
    bool disableAfterSession = false;  // chkShareDisableAfterSession: "expiration" "session"/"never"
    bool present = true;     // "present"
    bool readAccess = true;  // "readAccess", kept as read
    // The keys the opened file held for this share (a new share has them all). A key the file
    // did not hold is written only once its value differs from what its absence stands for, so
    // a share the file declares only partly is written back with the keys it had.
    unsigned keysRead = kAllShareKeys;
    std::vector<KeptKeyLine> keptLines = {};  // other "sharedFolderN." lines of the opened file
    bool operator==(const SharedFolder&) const = default;
};

struct SharedFolderOptions {
    bool allowed = true;     // shown inverted by chkSharedDisable, "isolation.tools.hgfs.disable"
    std::vector<SharedFolder> folders;  // lvwSharedFolders
    bool operator==(const SharedFolderOptions&) const = default;
};

struct SnapshotOptions {
    bool allowed = true;     // shown inverted by chkSnapshotsEnabled, "snapshot.disabled"
    int action = 0;          // 0 optSnapPowerOff "keep", 1 optSnapRevert "autoRevert",
                             // 2 optSnapTakeNew "autoCommit", 3 optSnapAsk "prompt"
    bool operator==(const SnapshotOptions&) const = default;
};

struct IsolationOptions {
    bool dragAndDropAllowed = true;  // shown inverted by chkInteractDND
    bool pasteAllowed = true;        // shown inverted by chkInteractPaste
    bool copyAllowed = true;         // shown inverted by chkInteractCopy
    bool operator==(const IsolationOptions&) const = default;
};

struct AdvancedOptions {
    int grabbedPriority = 0;     // cboInputGrabPri: 0 "normal", 1 "high"
    int ungrabbedPriority = 1;   // cboInputUngrabPri: 0 "idle" (shown "low"), 1 "normal"
    bool debug = false;          // chkDebug
    bool disableAcceleration = false;  // chkAcceleration
    bool memPageTrim = false;    // chkMemPageTrim: checked writes MemTrimRate "0", else "30"
    bool logging = true;         // chkLogging
    bool logPeriodic = false;    // chkLogPeriodic, "monitor_control.log_vmsample"
    std::string logFolder;       // txtLogFolder, "log.filename"
    bool templateVm = false;     // chkTemplate
    bool clusterEnabled = false; // chkClusterEnabled: writes the fixed clustering keys
    bool operator==(const AdvancedOptions&) const = default;
};

class VmConfiguration {
public:
    IdentitySettings identity;
    ProductSettings product;
    PowerOptions power;
    SharedFolderOptions sharedFolders;
    SnapshotOptions snapshots;
    IsolationOptions isolation;
    AdvancedOptions advanced;
    DeviceStore devices;
    KeptLines keptLines;  // lines of the opened file the editor does not manage
    // Keys the editor manages whose line of the opened file it could not use (or that the file
    // did not hold, for "displayName" and "guestOS"), lower case, with the value the editor would
    // have written right after opening. While the editor's value is still that one, its key is
    // not written and the file's own line (among the kept lines) stays as it was.
    std::map<std::string, std::string> heldKeys;
    FileText fileText;    // the opened file's encoding, first line and whether it may be saved

    // A new machine: display name (or `defaultName`, the localised "New VM", when empty),
    // file name = name + ".vmx", folder, Workstation 5.5x, Windows XP Professional, and the
    // default devices with a network address generated from `macSeed`.
    static VmConfiguration newMachine(const std::string& displayName, const std::string& folder,
                                      const std::string& defaultName, std::uint32_t macSeed);

    // Figures of the chosen platform and version (Workstation 5.5x's when none is chosen).
    ProductFigures figures() const;

    // The "config.version" and "virtualHW.version" values to write: the opened file's own, or
    // the figures of the target.
    std::string configVersionText() const;
    std::string hwVersionText() const;

    // Forgets the opened file's format numbers: called when the user picks a platform or version.
    void retarget(int platform, int version);

    // Full path of the configuration file: folder joined with the file name.
    std::string vmxPath() const;

    // Selects a guest by family and version position; sets the identifier from the table.
    bool selectGuest(int family, int version);

    bool operator==(const VmConfiguration&) const = default;
};

// One line about the opened file's format when it is newer than any target of the editor
// ("written for virtual hardware version 19; saving keeps it"), else empty.
std::string formatNote(const VmConfiguration& config);

// The one-line summaries of the six option groups (positions 0-5: General, Power, Shared
// Folders, Snapshots, Guest Isolation, Advanced), as the options list shows them.
std::string optionSummary(const VmConfiguration& config, int position);

}  // namespace arden
