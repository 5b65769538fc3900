#pragma once
// The program's icons, painted at run time so that they scale with the screen and need no
// image files: machine icons of the favourites list and editor tabs, one icon per device
// type, and the toolbar's.
#include <QIcon>
#include <QString>

namespace arden::gui {

// Keys "VM", "OldVM", "VMMissing", "OldVMMissing", "Running", "VMPaused", "Missing",
// "OldVMRunning", "OldVMPaused"; an unknown key gives the "VM" icon.
QIcon machineIcon(const QString& key);

// Device types 0-14 (the hardware list's image number is type + 1).
QIcon deviceIcon(int type);

// Toolbar keys "New", "Open", "Save", "Close", "Run", "Favorites".
QIcon toolbarIcon(const QString& key);

}  // namespace arden::gui
