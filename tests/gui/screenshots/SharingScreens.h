#pragma once
// Screenshots of the network-adapter page in both address modes, the Shared Folders page with
// three shares and the shared-folder dialog, on a machine written to `folder`.
#include <QString>
#include <functional>

class QWidget;

namespace arden::gui {
class Builder;
class frmMain;
}

// Writes `text` to `file` and opens it in an editor tab of `window`; null when that fails.
arden::gui::Builder* openWrittenMachine(arden::gui::frmMain& window, const QString& file, const char* text);

void saveSharingScreens(arden::gui::frmMain& window, const QString& folder, int languageOffset,
                        const std::function<void(QWidget*, const QString&)>& save);
