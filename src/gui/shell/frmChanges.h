#pragma once
// The Changes window: what a save of the active editor's machine would change in the file on
// disk, line by line (a unified diff of the file's text against what the writer would write,
// in the file's own encoding), with nothing written. A file that another program wrote since
// the editor opened it is said first.
#include <QDialog>

#include "core/config/SavePreview.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace arden::gui {

class frmChanges : public QDialog {
    Q_OBJECT
public:
    explicit frmChanges(QWidget* parent = nullptr);

    // Shows `preview` of the machine captioned `caption`; `changedOnDisk`: another program
    // wrote the file since it was opened or saved.
    void showChanges(const QString& caption, const SavePreview& preview, bool changedOnDisk, int languageOffset);

    // The notes above the changes, and the changes as shown.
    QString notes() const;
    QString changes() const;

private:
    QLabel* lblChangesNote_;
    QPlainTextEdit* txtChanges_;
    QPushButton* cmdClose_;
};

// The bytes of a file's text as characters: read in `encoding` (a ".encoding" name) when this
// system knows it, otherwise as UTF-8.
QString decodedText(const std::string& bytes, const std::string& encoding);

}  // namespace arden::gui
