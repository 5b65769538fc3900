#include "gui/shell/frmSummary.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTimer>
#include <QVBoxLayout>

#include "gui/support/FormPosition.h"
#include "gui/support/Prompts.h"
#include "gui/support/Mnemonics.h"
#include "gui/support/UiText.h"

namespace arden::gui {

frmSummary::frmSummary(QWidget* parent, bool wrapLines) : QDialog(parent) {
    setObjectName("frmSummary");
    txtOutput_ = new QPlainTextEdit(this);
    txtOutput_->setObjectName("txtOutput");
    txtOutput_->setReadOnly(true);
    txtOutput_->setLineWrapMode(wrapLines ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    txtOutput_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    cmdClose_ = new QPushButton(this);
    cmdClose_->setObjectName("cmdClose");
    cmdClose_->setDefault(true);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdClose_, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(txtOutput_);
    layout->addWidget(buttons);
    relabel(0, 203);  // "Summary"
    resize(720, 520);
}

void frmSummary::relabel(int languageOffset, int titleId) {
    setWindowTitle(uiText(titleId, languageOffset));
    cmdClose_->setText(uiText(10, languageOffset));  // "Close"
    assignMnemonics(this);
}

void frmSummary::AddToOutput(const QString& line) { txtOutput_->appendPlainText(line); }

QString frmSummary::output() const { return txtOutput_->toPlainText(); }

void frmSummary::showBlock(const QWidget& owner, const QString& heading, const QStringList& lines, bool wait) {
    const int first = txtOutput_->document()->isEmpty() ? 0 : txtOutput_->document()->blockCount();
    AddToOutput(QStringLiteral("---- ") + heading);
    for (const QString& line : lines) AddToOutput(line);
    if (wait || !isVisible()) centreOver(*this, owner);
    // Scrolled once the window is laid out, so that the range is the real one: from the end
    // back up to the block's heading, which then stands at the top, every line from its
    // first character.
    auto scrollToBlock = [this, first] {
        txtOutput_->verticalScrollBar()->setValue(txtOutput_->verticalScrollBar()->maximum());
        txtOutput_->setTextCursor(QTextCursor(txtOutput_->document()->findBlockByNumber(first)));
        txtOutput_->horizontalScrollBar()->setValue(0);
    };
    if (wait) {
        QTimer::singleShot(0, this, scrollToBlock);
        showAndWait(*this);
        return;
    }
    show();
    raise();
    scrollToBlock();
}

}  // namespace arden::gui
