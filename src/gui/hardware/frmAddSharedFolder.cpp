#include "gui/hardware/frmAddSharedFolder.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/hardware/SharedFolderRules.h"
#include "gui/config/ConfigWidgets.h"
#include "gui/support/Prompts.h"
#include "gui/support/Mnemonics.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kTitleId = 115;          // "Shared Folder"
constexpr int kBrowseId = 305;         // "Browse"

}  // namespace

frmAddSharedFolder::frmAddSharedFolder(const SharedFolder& share, std::vector<std::string> otherNames,
                                       int languageOffset, QWidget* parent)
    : QDialog(parent), share_(share), otherNames_(std::move(otherNames)), languageOffset_(languageOffset) {
    setObjectName("frmAddSharedFolder");
    setModal(true);
    Captions captions;

    auto* fraLocation = named<QGroupBox>("fraShareLocation", this);
    captions.add(fraLocation, 116);  // "Name/Location"
    txtShareName_ = named<QLineEdit>("txtShareName", qs(share.name), fraLocation);
    txtHostFolder_ = named<QLineEdit>("txtHostFolder", qs(share.hostPath), fraLocation);
    auto* cmdBrowse = named<QPushButton>("cmdBrowseForHostFolder", fraLocation);
    captions.add(cmdBrowse, kBrowseId, "...");
    auto* hostRow = new QHBoxLayout;
    hostRow->addWidget(txtHostFolder_, 1);
    hostRow->addWidget(cmdBrowse);
    auto* hostField = new QWidget(fraLocation);
    hostField->setLayout(hostRow);
    hostRow->setContentsMargins(0, 0, 0, 0);
    auto* form = new QFormLayout(fraLocation);
    addCaptionedRow(form, captions, "lblShareName", 117, txtShareName_);                  // "Name"
    addCaptionedRow(form, captions, "lblHostFolder", 118, hostField, txtHostFolder_);    // "Host Folder"

    auto* fraAttributes = named<QGroupBox>("fraShareAttributes", this);
    captions.add(fraAttributes, 119);  // "Attributes"
    chkShareEnabled_ = named<QCheckBox>("chkShareEnabled", fraAttributes);
    chkShareReadOnly_ = named<QCheckBox>("chkShareReadOnly", fraAttributes);
    chkShareDisableAfterSession_ = named<QCheckBox>("chkShareDisableAfterSession", fraAttributes);
    captions.add(chkShareEnabled_, 120);              // "Enable this share"
    captions.add(chkShareReadOnly_, 80);              // "Read-Only"
    captions.add(chkShareDisableAfterSession_, 121);  // "Disable after this session"
    chkShareEnabled_->setChecked(share.enabled);
    chkShareReadOnly_->setChecked(share.readOnly);
    chkShareDisableAfterSession_->setChecked(share.disableAfterSession);
    auto* attributes = new QVBoxLayout(fraAttributes);
    for (QCheckBox* box : {chkShareEnabled_, chkShareReadOnly_, chkShareDisableAfterSession_}) attributes->addWidget(box);

    auto* cmdOK = named<QPushButton>("cmdOK", this);
    auto* cmdCancel = named<QPushButton>("cmdCancel", this);
    captions.add(cmdOK, 50);
    captions.add(cmdCancel, 51);
    cmdOK->setDefault(true);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdOK, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);

    connect(txtShareName_, &QLineEdit::editingFinished, this, [this] { takeText(txtShareName_, share_.name); });
    connect(txtHostFolder_, &QLineEdit::editingFinished, this, [this] { takeText(txtHostFolder_, share_.hostPath); });
    connect(chkShareEnabled_, &QCheckBox::clicked, this, [this](bool on) { share_.enabled = on; });
    connect(chkShareReadOnly_, &QCheckBox::clicked, this, [this](bool on) { share_.readOnly = on; });
    connect(chkShareDisableAfterSession_, &QCheckBox::clicked, this, [this](bool on) { share_.disableAfterSession = on; });
    connect(cmdBrowse, &QPushButton::clicked, this, &frmAddSharedFolder::browseForHostFolder);
    connect(cmdOK, &QPushButton::clicked, this, &frmAddSharedFolder::confirm);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraLocation);
    layout->addWidget(fraAttributes);
    layout->addStretch(1);
    layout->addWidget(buttons);
    setWindowTitle(uiText(kTitleId, languageOffset));
    captions.apply(languageOffset);
    assignMnemonics(this);
    txtHostFolder_->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('x')) * 48);
}

void frmAddSharedFolder::takeText(QLineEdit* box, std::string& field) {
    if (box->text().isEmpty()) box->setText(qs(field));
    else field = box->text().toStdString();
}

void frmAddSharedFolder::browseForHostFolder() {
    const QString folder = pickFolder(this, uiText(118, languageOffset_), txtHostFolder_->text());
    if (folder.isEmpty()) return;
    txtHostFolder_->setText(folder);
    takeText(txtHostFolder_, share_.hostPath);
}

void frmAddSharedFolder::confirm() {
    // A box the user typed in and never left still counts.
    takeText(txtShareName_, share_.name);
    takeText(txtHostFolder_, share_.hostPath);
    ShareCheck check = checkShare(share_.name, share_.hostPath, otherNames_);
    if (check.refusal) {
        showMessage(this, *check.refusal, languageOffset_);
        return;
    }
    if (check.question && showMessage(this, *check.question, languageOffset_) != Answer::Yes) return;
    cancelled_ = false;
    accept();
}

}  // namespace arden::gui
