#include "gui/shell/frmOptions.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/shell/ProgramSettings.h"
#include "gui/support/NamedWidget.h"
#include "gui/support/Prompts.h"
#include "gui/support/Mnemonics.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr const char* kLanguageNames[5] = {"optLangEn", "optLangDe", "optLangFr", "optLangEs", "optLangIt"};
constexpr int kFirstLanguageTextId = 62;  // "English" ... "Italian" are 62-66

}  // namespace

frmOptions::frmOptions(const OptionValues& values, QWidget* parent) : QDialog(parent), values_(values) {
    setObjectName("frmOptions");
    setModal(true);

    fraGeneral_ = named<QGroupBox>("fraGeneral", this);
    lblIniPath_ = named<QLabel>("lblIniPath", fraGeneral_);
    txtIniPath_ = named<QLineEdit>("txtIniPath", values.iniLocation, fraGeneral_);
    cmdBrowseForIniPath_ = named<QPushButton>("cmdBrowseForIniPath", "...", fraGeneral_);
    lblIniNote_ = named<QLabel>("lblIniNote", fraGeneral_);
    lblIniNote_->setWordWrap(true);
    lblIniNote_->setForegroundRole(QPalette::PlaceholderText);
    chkBackup_ = named<QCheckBox>("chkBackup", fraGeneral_);
    chkBackup_->setChecked(values.createBackups);
    lblTarget_ = named<QLabel>("lblTarget", fraGeneral_);
    txtTarget_ = named<QLineEdit>("txtTarget", values.launchApplication, fraGeneral_);
    cmdBrowseForTarget_ = named<QPushButton>("cmdBrowseForTarget", "...", fraGeneral_);
    lblImagePath_ = named<QLabel>("lblImagePath", fraGeneral_);
    txtImagePath_ = named<QLineEdit>("txtImagePath", values.imagePath, fraGeneral_);
    cmdBrowseForImagePath_ = named<QPushButton>("cmdBrowseForImagePath", "...", fraGeneral_);
    for (QPushButton* b : {cmdBrowseForIniPath_, cmdBrowseForTarget_, cmdBrowseForImagePath_})
        b->setFixedWidth(b->fontMetrics().horizontalAdvance("....") + 24);

    auto* grid = new QGridLayout(fraGeneral_);
    int row = 0;
    auto addPathRow = [&](QLabel* label, QLineEdit* box, QPushButton* browse) {
        grid->addWidget(label, row++, 0, 1, 2);
        grid->addWidget(box, row, 0);
        grid->addWidget(browse, row++, 1);
    };
    addPathRow(lblIniPath_, txtIniPath_, cmdBrowseForIniPath_);
    grid->addWidget(lblIniNote_, row++, 0, 1, 2);
    grid->addWidget(chkBackup_, row++, 0, 1, 2);
    addPathRow(lblTarget_, txtTarget_, cmdBrowseForTarget_);
    addPathRow(lblImagePath_, txtImagePath_, cmdBrowseForImagePath_);

    fraLanguage_ = named<QGroupBox>("fraLanguage", this);
    auto* langs = new QVBoxLayout(fraLanguage_);
    for (int i = 0; i < 5; ++i) {
        optLang_[i] = named<QRadioButton>(kLanguageNames[i], fraLanguage_);
        langs->addWidget(optLang_[i]);
    }
    const int current = values.languageOffset / 500;
    if (current >= 0 && current < 5) optLang_[current]->setChecked(true);

    auto* buttons = new QDialogButtonBox(this);
    cmdOK_ = named<QPushButton>("cmdOK", this);
    cmdCancel_ = named<QPushButton>("cmdCancel", this);
    cmdOK_->setDefault(true);
    buttons->addButton(cmdOK_, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancel_, QDialogButtonBox::RejectRole);
    connect(cmdOK_, &QPushButton::clicked, this, &frmOptions::acceptValues);
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);

    connect(cmdBrowseForIniPath_, &QPushButton::clicked, this, [this] { browseFolder(txtIniPath_, 54); });
    connect(cmdBrowseForImagePath_, &QPushButton::clicked, this, [this] { browseFolder(txtImagePath_, 60); });
    connect(cmdBrowseForTarget_, &QPushButton::clicked, this, &frmOptions::browseTarget);
    connect(txtIniPath_, &QLineEdit::textChanged, this, &frmOptions::showSettingsPlaces);
    showSettingsPlaces();

    auto* body = new QHBoxLayout;
    body->addWidget(fraGeneral_, 1);
    body->addWidget(fraLanguage_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body);
    layout->addStretch(1);
    layout->addWidget(buttons);
    // Wide enough for a path, and never narrower than the longest caption of the language: the
    // minimum is the path boxes' and the layout's, which holds every caption at its full width.
    for (QLineEdit* box : {txtIniPath_, txtTarget_, txtImagePath_})
        box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QLatin1Char('x')) * 60);
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    UpdateUILabels();
}

void frmOptions::UpdateUILabels() {
    const int o = values_.languageOffset;
    setWindowTitle(uiText(12, o));
    fraGeneral_->setTitle(uiText(52, o));
    lblIniPath_->setText(uiText(53, o));
    chkBackup_->setText(uiText(55, o));
    lblTarget_->setText(uiText(56, o));
    lblImagePath_->setText(uiText(59, o));
    fraLanguage_->setTitle(uiText(61, o));
    for (int i = 0; i < 5; ++i) optLang_[i]->setText(uiText(kFirstLanguageTextId + i, o));
    cmdOK_->setText(uiText(50, o));
    cmdCancel_->setText(uiText(51, o));
    assignMnemonics(this);
}

void frmOptions::showSettingsPlaces() {
    lblIniNote_->setText(
        qs(settingsPlacesNote(txtIniPath_->text().toStdString(), values_.tempFolder.toStdString())));
}

int frmOptions::chosenLanguage() const {
    for (int i = 0; i < 5; ++i) {
        if (optLang_[i]->isChecked()) return i;
    }
    return values_.languageOffset / 500;
}

void frmOptions::acceptValues() {
    values_.iniLocation = txtIniPath_->text();
    values_.createBackups = chkBackup_->isChecked();
    values_.launchApplication = txtTarget_->text();
    values_.imagePath = txtImagePath_->text();
    const int offset = offsetOfLanguage(chosenLanguage());
    const bool changed = offset != values_.languageOffset;
    values_.languageOffset = offset;
    if (changed) {
        UpdateUILabels();
        emit languageChanged(offset);
    }
    accept();
}

void frmOptions::browseFolder(QLineEdit* box, int titleId) {
    QString folder = pickFolder(this, uiText(titleId, values_.languageOffset), box->text());
    if (!folder.isEmpty()) box->setText(folder);
}

void frmOptions::browseTarget() {
    // Any program may launch configurations: there is no executable extension to filter by.
    const QString filter = uiText(58, values_.languageOffset) + " (*)";
    QString file = pickOpenFile(this, uiText(57, values_.languageOffset), filter, txtTarget_->text());
    if (!file.isEmpty()) txtTarget_->setText(file);
}

}  // namespace arden::gui
