#include "gui/shell/frmSummary.h"

#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "gui/support/FormPosition.h"
#include "gui/support/Prompts.h"

namespace arden::gui {

frmSummary::frmSummary(QWidget* parent) : QDialog(parent) {
    setObjectName("frmSummary");
    setWindowTitle("Summary");
    txtOutput_ = new QPlainTextEdit(this);
    txtOutput_->setObjectName("txtOutput");
    txtOutput_->setReadOnly(true);
    txtOutput_->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtOutput_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(txtOutput_);
    resize(720, 520);
}

void frmSummary::AddToOutput(const QString& line) { txtOutput_->appendPlainText(line); }

QString frmSummary::output() const { return txtOutput_->toPlainText(); }

void frmSummary::showOver(const QWidget& owner, bool wait) {
    if (wait || !isVisible()) centreOver(*this, owner);
    if (wait) {
        showAndWait(*this);
    } else {
        show();
        raise();
    }
}

}  // namespace arden::gui
