#pragma once
// frmAddSharedFolder: the modal dialog that edits one shared folder (name, host folder,
// enabled, read-only, disable after this session). The editor fills it before showing it
// (Add: a new share; Properties: the selected one) and reads the share back when it was not
// cancelled. OK stores nothing the core checks refuse.
#include <QDialog>
#include <string>
#include <vector>

#include "core/config/VmConfiguration.h"

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace arden::gui {

class frmAddSharedFolder : public QDialog {
    Q_OBJECT
public:
    // `otherNames`: the names of the machine's other shares, which this one may not take.
    frmAddSharedFolder(const SharedFolder& share, std::vector<std::string> otherNames, int languageOffset,
                       QWidget* parent);

    bool cancelled() const { return cancelled_; }
    const SharedFolder& share() const { return share_; }

private:
    // Leaving a box with text takes the text; an emptied box keeps (and shows again) the
    // value it had.
    void takeText(QLineEdit* box, std::string& field);
    void browseForHostFolder();
    void confirm();

    SharedFolder share_;
    std::vector<std::string> otherNames_;
    int languageOffset_;
    bool cancelled_ = true;
    QLineEdit* txtShareName_;
    QLineEdit* txtHostFolder_;
    QCheckBox* chkShareEnabled_;
    QCheckBox* chkShareReadOnly_;
    QCheckBox* chkShareDisableAfterSession_;
};

}  // namespace arden::gui
