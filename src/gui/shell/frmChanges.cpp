#include "gui/shell/frmChanges.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStringDecoder>
#include <QSyntaxHighlighter>
#include <QVBoxLayout>

#include "gui/support/NamedWidget.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kChangesId = 383;        // "Changes"
constexpr int kChangedOnDiskId = 385;  // "The file on disk was changed by another program ..."
constexpr int kNothingId = 388;        // "A save would change nothing ..."
constexpr int kNewFileId = 389;        // "The file does not exist yet: a save creates it."
constexpr int kCloseId = 10;           // "Close"

// Removed lines red, added lines green, hunk lines blue, as diff viewers show them.
class DiffHighlighter : public QSyntaxHighlighter {
public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

protected:
    void highlightBlock(const QString& line) override {
        QTextCharFormat format;
        if (line.startsWith("+++") || line.startsWith("---")) format.setFontWeight(QFont::Bold);
        else if (line.startsWith('+')) format.setForeground(QColor(0, 120, 40));
        else if (line.startsWith('-')) format.setForeground(QColor(180, 30, 30));
        else if (line.startsWith("@@")) format.setForeground(QColor(40, 80, 170));
        else return;
        setFormat(0, int(line.size()), format);
    }
};

}  // namespace

QString decodedText(const std::string& bytes, const std::string& encoding) {
    const QByteArray raw = QByteArray::fromStdString(bytes);
    if (!encoding.empty()) {
        QStringDecoder decoder(encoding.c_str());
        if (decoder.isValid()) return decoder.decode(raw);
    }
    return QString::fromUtf8(raw);
}

frmChanges::frmChanges(QWidget* parent) : QDialog(parent) {
    setObjectName("frmChanges");
    lblChangesNote_ = named<QLabel>("lblChangesNote", this);
    lblChangesNote_->setWordWrap(true);
    txtChanges_ = named<QPlainTextEdit>("txtChanges", this);
    txtChanges_->setReadOnly(true);
    txtChanges_->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtChanges_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    new DiffHighlighter(txtChanges_->document());
    cmdClose_ = named<QPushButton>("cmdClose", this);
    connect(cmdClose_, &QPushButton::clicked, this, &QDialog::close);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdClose_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblChangesNote_);
    layout->addWidget(txtChanges_, 1);
    layout->addLayout(buttons);
    resize(760, 540);
}

void frmChanges::showChanges(const QString& caption, const SavePreview& preview, bool changedOnDisk, int o) {
    setWindowTitle(uiText(kChangesId, o) + " - " + caption);
    cmdClose_->setText(uiText(kCloseId, o));
    QStringList notes;
    if (changedOnDisk) notes << uiText(kChangedOnDiskId, o);
    if (preview.readError) notes << qs(*preview.readError);
    else if (!preview.fileExists) notes << uiText(kNewFileId, o);
    else if (preview.diff.empty()) notes << uiText(kNothingId, o);
    lblChangesNote_->setText(notes.join('\n'));
    lblChangesNote_->setVisible(!notes.isEmpty());
    // The lines keep their own endings in the diff; the window shows them as lines.
    QString text = decodedText(preview.diff, preview.encoding);
    text.remove('\r');
    if (text.endsWith('\n')) text.chop(1);
    txtChanges_->setPlainText(text);
    show();
    raise();
    activateWindow();
}

QString frmChanges::notes() const { return lblChangesNote_->isHidden() ? QString() : lblChangesNote_->text(); }

QString frmChanges::changes() const { return txtChanges_->toPlainText(); }

}  // namespace arden::gui
