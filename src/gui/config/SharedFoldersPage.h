#pragma once
// The shared-folder page: whether the guest may use shared folders at all, and the list of
// folders the host shares with it (name, host folder, attributes), with Add, Properties and
// Remove. Add and Properties edit one share in frmAddSharedFolder.
#include "gui/config/OptionPage.h"

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace arden::gui {

class SharedFoldersPage : public OptionPage {
    Q_OBJECT
public:
    SharedFoldersPage(VmConfiguration& config, QWidget* parent);

protected:
    void fillPage() override;
    void relabelPage() override;

private:
    void addFolder();
    void editSelectedFolder();
    void removeSelectedFolder();
    // Shows `share` in its list entry.
    void showShare(QTreeWidgetItem* item, const SharedFolder& share) const;
    // The position of the selected share in the model, or -1.
    int selectedRow() const;
    // Opens the dialog on `share`; true when it was confirmed (the result is in `share`).
    bool editShare(SharedFolder& share, int row);
    void updateButtons();

    QTreeWidget* lvwSharedFolders_;
    QPushButton* cmdSharedAdd_;
    QPushButton* cmdSharedProps_;
    QPushButton* cmdSharedRemove_;
};

}  // namespace arden::gui
