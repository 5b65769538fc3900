#pragma once
// The shared-folder page: whether the guest may use shared folders at all, and the list of
// folders the host shares with it.
#include "gui/config/OptionPage.h"

class QPushButton;
class QTreeWidget;

namespace arden::gui {

class SharedFoldersPage : public OptionPage {
    Q_OBJECT
public:
    SharedFoldersPage(VmConfiguration& config, QWidget* parent);

protected:
    void fillPage() override;

private:
    void removeSelectedFolder();

    QTreeWidget* lvwSharedFolders_;
    QPushButton* cmdSharedRemove_;
};

}  // namespace arden::gui
