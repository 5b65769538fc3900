#pragma once
// The summary window: a plain text window to which the program appends blocks of lines, such
// as the text of a configuration just written (after a save it is shown centred over the main
// window and the save waits until the user closes it). The notes on an opened file go to a
// window of their own of the same kind. Each block is shown from its first line, and the
// window has a Close button.
#include <QDialog>

class QPlainTextEdit;
class QPushButton;

namespace arden::gui {

class frmSummary : public QDialog {
    Q_OBJECT
public:
    // `wrapLines` breaks long lines at the window's edge (notes are sentences; a written file is not).
    explicit frmSummary(QWidget* parent = nullptr, bool wrapLines = false);
    void AddToOutput(const QString& line);
    QString output() const;
    // Appends `heading` and `lines` as one block and shows the window scrolled to the block's
    // first line. Centred over `owner` when the window is not yet shown or when `wait`; with
    // `wait`, returns only once it is closed.
    void showBlock(const QWidget& owner, const QString& heading, const QStringList& lines, bool wait);
    // Sets the captions in the language of `languageOffset`.
    void relabel(int languageOffset, int titleId);

private:
    QPlainTextEdit* txtOutput_;
    QPushButton* cmdClose_;
};

}  // namespace arden::gui
