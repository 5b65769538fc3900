#pragma once
// The About box: product title, version, and a button that starts the system-information
// tool when one is installed.
#include <QDialog>

class QLabel;
class QPushButton;

namespace arden::gui {

class frmAbout : public QDialog {
    Q_OBJECT
public:
    frmAbout(int languageOffset, QWidget* parent = nullptr);

    // The system-information program found on this machine, or empty.
    static QString systemInfoProgram();

private:
    QPushButton* cmdSysInfo_;
};

// "v1.0.0 by BRK/WN": the version label of the main window and the About box.
QString versionLabelText();

}  // namespace arden::gui
