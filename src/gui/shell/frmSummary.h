#pragma once
// The summary window: a plain text window to which the program appends lines, such as the
// text of a configuration just written.
#include <QWidget>

class QPlainTextEdit;

namespace arden::gui {

class frmSummary : public QWidget {
    Q_OBJECT
public:
    explicit frmSummary(QWidget* parent = nullptr);
    void AddToOutput(const QString& line);
    QString output() const;

private:
    QPlainTextEdit* txtOutput_;
};

}  // namespace arden::gui
