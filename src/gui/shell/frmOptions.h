#pragma once
// The options dialog: settings folder, backups, launch program, image folder and language.
// It edits a copy of the settings; OK hands the new values back, Cancel drops them.
#include <QDialog>
#include <QString>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace arden::gui {

struct OptionValues {
    QString iniLocation;
    bool createBackups = true;
    QString launchApplication;
    QString imagePath;
    int languageOffset = 0;
    QString tempFolder;  // where the settings are written (shown, not edited)
};

class frmOptions : public QDialog {
    Q_OBJECT
public:
    explicit frmOptions(const OptionValues& values, QWidget* parent = nullptr);

    OptionValues values() const { return values_; }
    // The language offset of a language position (English 0 ... Italian 4).
    static int offsetOfLanguage(int index) { return index * 500; }

signals:
    // After OK when the language changed: the windows relabel themselves at once.
    void languageChanged(int languageOffset);

private:
    void UpdateUILabels();
    void showSettingsPlaces();
    void acceptValues();
    void browseFolder(QLineEdit* box, int titleId);
    void browseTarget();
    int chosenLanguage() const;

    OptionValues values_;
    QGroupBox* fraGeneral_;
    QLabel* lblIniPath_;
    QLineEdit* txtIniPath_;
    QLabel* lblIniNote_;
    QPushButton* cmdBrowseForIniPath_;
    QCheckBox* chkBackup_;
    QLabel* lblTarget_;
    QLineEdit* txtTarget_;
    QPushButton* cmdBrowseForTarget_;
    QLabel* lblImagePath_;
    QLineEdit* txtImagePath_;
    QPushButton* cmdBrowseForImagePath_;
    QGroupBox* fraLanguage_;
    QRadioButton* optLang_[5];
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;
};

}  // namespace arden::gui
