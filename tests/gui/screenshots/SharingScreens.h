#pragma once
// Screenshots of the network-adapter page in both address modes, the Shared Folders page with
// three shares and the shared-folder dialog, on a machine written to `folder`.
#include <QString>
#include <functional>

class QWidget;

namespace arden::gui {
class frmMain;
}

void saveSharingScreens(arden::gui::frmMain& window, const QString& folder,
                        const std::function<void(QWidget*, const QString&)>& save);
