#pragma once
// Making a disk off the GUI thread. A worker thread runs the creation; a modal progress
// dialog ("dlgDiskProgress") shows what is being done, the current file and the bytes written
// so far, read from the shared progress state on a short timer, so the window keeps painting
// and Cancel answers at once. Cancel stops the worker, which removes every file it made.
#include "core/disks/DiskCreator.h"

class QWidget;

namespace arden::gui {

// How often the progress dialog reads the worker's state.
inline constexpr int kProgressPollMs = 40;

// Makes the disk and waits for it while the GUI keeps running; returns when the worker ends.
disks::DiskCreationResult runDiskCreation(QWidget* parent, const disks::NewDiskRequest& request,
                                          const disks::DiskCreationOptions& options = {},
                                          int languageOffset = 0);

}  // namespace arden::gui
