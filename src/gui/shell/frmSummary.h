#pragma once
// The summary window: a plain text window to which the program appends lines, such as the
// text of a configuration just written. After a save it is shown centred over the main window
// and the save waits until the user closes it.
#include <QDialog>

class QPlainTextEdit;

namespace arden::gui {

class frmSummary : public QDialog {
    Q_OBJECT
public:
    explicit frmSummary(QWidget* parent = nullptr);
    void AddToOutput(const QString& line);
    QString output() const;
    // Shows the window centred over `owner`; with `wait`, returns only once it is closed.
    void showOver(const QWidget& owner, bool wait);

private:
    QPlainTextEdit* txtOutput_;
};

}  // namespace arden::gui
