#pragma once
// A tour of every window of the program in one language: the Home tab, each option page of an
// editor tab, the hardware list and every device page, the network page in both address modes,
// the Shared Folders page, the add-hardware, shared-folder, create-disk, options and about
// dialogs, and the disk-information box. Each window is shown, filled and handed to `visit`
// with a file-like name ("editor-power", "device-hard-disk"); the screenshot program saves it,
// the layout test measures its captions.
//
// The tour shows a user's machines under /home/user/vms, never the scratch folder the samples
// really lie in: the places where a path shows are given that neutral folder.
#include <QString>
#include <functional>

class QWidget;

namespace arden::gui {
class frmMain;
}

using TourVisit = std::function<void(QWidget*, const QString&)>;

struct TourOptions {
    int languageOffset = 0;
    QString scratchFolder;      // where the sample machines and disks are written
    bool diskProgress = true;   // also run (and cancel) a disk creation to show its progress
};

// Runs the tour on `window`, which the caller created and sized; switches it to the language first.
void tourWindows(arden::gui::frmMain& window, const TourOptions& options, const TourVisit& visit);
