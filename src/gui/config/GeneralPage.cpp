#include "gui/config/GeneralPage.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "core/config/ProductLimits.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kFolderPickerTitleId = 227;  // "Folder for the Virtual Machine"
constexpr int kHardwareVersionId = 367;    // ", hardware version "

// Notes are held with CR LF line breaks, as the file stores them; the text box uses LF.
QString notesForDisplay(const std::string& notes) {
    return QString::fromStdString(notes).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

std::string notesForModel(QString text) {
    return text.replace(QLatin1Char('\n'), QLatin1String("\r\n")).toStdString();
}

}  // namespace

GeneralPage::GeneralPage(VmConfiguration& config, QWidget* parent) : OptionPage(config, parent) {
    setObjectName("fraGeneralPage");
    using I = IdentitySettings;
    constexpr auto identity = &VmConfiguration::identity;

    auto* fraIdentity = captionedFrame("fraIdentity", 226);
    auto* identityForm = new QFormLayout(fraIdentity);
    auto* txtDisplayName = named<QLineEdit>("txtDisplayName", fraIdentity);
    auto* txtVmxFileName = named<QLineEdit>("txtVmxFileName", fraIdentity);
    txtVmxFolder_ = named<QLineEdit>("txtVmxFolder", fraIdentity);
    auto* cmdBrowseVmxFolder = named<QPushButton>("cmdBrowseVmxFolder", fraIdentity);
    captions_.add(cmdBrowseVmxFolder, 305, "...");
    auto* folderRow = new QWidget(fraIdentity);
    auto* folderLayout = new QHBoxLayout(folderRow);
    folderLayout->setContentsMargins(0, 0, 0, 0);
    folderLayout->addWidget(txtVmxFolder_, 1);
    folderLayout->addWidget(cmdBrowseVmxFolder);
    auto* txtWorkingDir = named<QLineEdit>("txtWorkingDir", fraIdentity);
    addCaptionedRow(identityForm, captions_, "lblDisplayName", 207, txtDisplayName);
    addCaptionedRow(identityForm, captions_, "lblVmxFileName", 208, txtVmxFileName);
    addCaptionedRow(identityForm, captions_, "lblVmxFolder", 209, folderRow, txtVmxFolder_);
    addCaptionedRow(identityForm, captions_, "lblWorkingDir", 210, txtWorkingDir);
    bindText(txtDisplayName, identity, &I::displayName);
    bindText(txtVmxFileName, identity, &I::vmxFileName);
    bindText(txtVmxFolder_, identity, &I::vmxFolder);
    bindText(txtWorkingDir, identity, &I::workingDir);
    connect(txtDisplayName, &QLineEdit::textChanged, this, [this](const QString& name) {
        if (!filling()) emit displayNameChanged(name);
    });
    connect(cmdBrowseVmxFolder, &QPushButton::clicked, this, &GeneralPage::browseVmxFolder);

    auto* fraGeneral = captionedFrame("fraGeneral", 52);
    auto* productForm = new QFormLayout(fraGeneral);
    cboTargetPlatform_ = named<QComboBox>("cboTargetPlatform", fraGeneral);
    for (int p = 0; p < kPlatformCount; ++p) captions_.addItem(cboTargetPlatform_, p, platformNameId(p));
    cboPlatformVersion_ = named<QComboBox>("cboPlatformVersion", fraGeneral);
    addCaptionedRow(productForm, captions_, "lblTargetPlatform", 212, cboTargetPlatform_);
    addCaptionedRow(productForm, captions_, "lblPlatformVersion", 217, cboPlatformVersion_);
    // The product and the hardware version the file is written with ("Workstation 16.2.x,
    // hardware version 19").
    lblProductHardware_ = named<QLabel>("lblProductHardware", fraGeneral);
    productForm->addRow(lblProductHardware_);
    // One line about an opened file newer than any target: its numbers are kept on saving.
    lblFormatNote_ = named<QLabel>("lblFormatNote", fraGeneral);
    lblFormatNote_->setWordWrap(true);
    productForm->addRow(lblFormatNote_);

    auto* fraGuest = captionedFrame("fraGuest", 218);
    auto* guestForm = new QFormLayout(fraGuest);
    cboGuestFamilies_ = named<QComboBox>("cboGuestFamilies", fraGuest);
    cboGuestVersions_ = named<QComboBox>("cboGuestVersions", fraGuest);
    addCaptionedRow(guestForm, captions_, "lblGuestFamilies", 219, cboGuestFamilies_);
    addCaptionedRow(guestForm, captions_, "lblGuestVersions", 225, cboGuestVersions_);

    connect(cboTargetPlatform_, &QComboBox::currentIndexChanged, this, &GeneralPage::platformChosen);
    connect(cboPlatformVersion_, &QComboBox::currentIndexChanged, this, &GeneralPage::versionChosen);
    connect(cboGuestFamilies_, &QComboBox::currentIndexChanged, this, &GeneralPage::familyChosen);
    connect(cboGuestVersions_, &QComboBox::currentIndexChanged, this, &GeneralPage::guestVersionChosen);

    auto* lblNotes = named<QLabel>("lblNotes", this);
    captions_.add(lblNotes, 211, ":");
    txtNotes_ = named<QPlainTextEdit>("txtNotes", this);
    lblNotes->setBuddy(txtNotes_);
    connect(txtNotes_, &QPlainTextEdit::textChanged, this, [this] {
        store([&](VmConfiguration& c) { c.identity.notes = notesForModel(txtNotes_->toPlainText()); });
    });

    // The lists may be narrower than their longest entry; their pop-ups show every entry in full.
    for (QComboBox* list : {cboTargetPlatform_, cboPlatformVersion_, cboGuestFamilies_, cboGuestVersions_}) {
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(10);
    }

    // One column: the page stays usable however narrow the editor tab is.
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraIdentity);
    layout->addWidget(fraGeneral);
    layout->addWidget(fraGuest);
    layout->addWidget(lblNotes);
    layout->addWidget(txtNotes_, 1);
}

void GeneralPage::fillPage() {
    txtNotes_->setPlainText(notesForDisplay(config_.identity.notes));
    cboTargetPlatform_->setCurrentIndex(config_.product.platform);
    fillVersions(true);
    fillFamilies();
    fillGuestVersions(config_.product.guestFamily, config_.product.guestVersion);
    showFormatNote();
}

void GeneralPage::showFormatNote() {
    lblProductHardware_->setText(QString::fromStdString(productText(config_.product.platform, config_.product.version)) +
                                 uiText(kHardwareVersionId, languageOffset()) +
                                 QString::fromStdString(config_.hwVersionText()));
    const QString note = QString::fromStdString(formatNote(config_));
    lblFormatNote_->setText(note);
    lblFormatNote_->setVisible(!note.isEmpty());
}

void GeneralPage::relabelPage() {
    showFormatNote();
    for (int i = 0; i < cboGuestFamilies_->count(); ++i)
        cboGuestFamilies_->setItemText(i, uiText(guestFamilyNameId(cboGuestFamilies_->itemData(i).toInt()), languageOffset()));
}

void GeneralPage::fillVersions(bool selectStored) {
    const QSignalBlocker quiet(cboPlatformVersion_);
    cboPlatformVersion_->clear();
    auto versions = platformVersions(config_.product.platform);
    for (std::string_view v : versions) cboPlatformVersion_->addItem(QString::fromUtf8(v.data(), static_cast<int>(v.size())));
    const int stored = config_.product.version;
    const bool valid = stored >= 0 && static_cast<std::size_t>(stored) < versions.size();
    cboPlatformVersion_->setCurrentIndex(selectStored && valid ? stored : -1);
}

void GeneralPage::fillFamilies() {
    const QSignalBlocker quiet(cboGuestFamilies_);
    cboGuestFamilies_->clear();
    // A stored version the platform does not have counts as its last one, as the file figures do.
    const int platform = config_.product.platform;
    int version = config_.product.version;
    if (version < 0 || static_cast<std::size_t>(version) >= platformVersions(platform).size())
        version = lastVersion(platform);
    for (int family : offeredGuestFamilies(platform, version))
        cboGuestFamilies_->addItem(uiText(guestFamilyNameId(family), languageOffset()), family);
    // A stored family that the product does not offer stays in the model, unselected here,
    // until the user picks another one.
    cboGuestFamilies_->setCurrentIndex(cboGuestFamilies_->findData(config_.product.guestFamily));
}

void GeneralPage::fillGuestVersions(int family, int select) {
    // Only the guests the product offers are listed; each entry holds its place in the guest
    // table. A stored guest the product does not offer stays in the model, unselected here.
    const QSignalBlocker quiet(cboGuestVersions_);
    cboGuestVersions_->clear();
    const ProductFigures figures = config_.figures();
    const auto rows = guestVersions(family);
    for (std::size_t v = 0; v < rows.size(); ++v) {
        const GuestEntry& g = rows[v];
        if (guestOffered(figures, family, g))
            cboGuestVersions_->addItem(QString::fromUtf8(g.name.data(), static_cast<int>(g.name.size())), static_cast<int>(v));
    }
    cboGuestVersions_->setCurrentIndex(cboGuestVersions_->findData(select));
}

int GeneralPage::firstOfferedGuest(int family) const {
    const ProductFigures figures = config_.figures();
    const auto rows = guestVersions(family);
    for (std::size_t v = 0; v < rows.size(); ++v) {
        if (guestOffered(figures, family, rows[v])) return static_cast<int>(v);
    }
    return 0;
}

void GeneralPage::chooseProduct(int platform, int version) {
    // Everything the new product cannot hold is listed before anything changes: devices over
    // its limits refuse the change, the rest is fitted when the user agrees. Refused or
    // declined, the lists show the machine's product again.
    if (filling()) return;
    const RetargetPlan plan = planRetarget(config_, platform, version);
    bool declined = false;
    if (plan.refusal) {
        showMessage(this, *plan.refusal, languageOffset());
        declined = true;
    } else if (plan.question) {
        declined = showMessage(this, *plan.question, languageOffset()) != Answer::Yes;
    }
    if (declined) {
        const QSignalBlocker quiet(cboTargetPlatform_);
        cboTargetPlatform_->setCurrentIndex(config_.product.platform);
        fillVersions(true);
        return;
    }
    // The file's own format numbers give way to the new target's.
    store([&](VmConfiguration& c) {
        retargetAndFit(c, platform, version);
        fillVersions(true);
        fillFamilies();
        fillGuestVersions(c.product.guestFamily, c.product.guestVersion);
        showFormatNote();
        // The hardware list shows the fitted devices before the edit is reported.
        if (plan.question) emit machineFitted();
    });
}

void GeneralPage::platformChosen(int index) {
    // The refilled version list starts on the platform's latest version, as a new machine for
    // that platform would, and the families follow it.
    if (index >= 0) chooseProduct(index, lastVersion(index));
}

void GeneralPage::versionChosen(int index) {
    if (index >= 0) chooseProduct(config_.product.platform, index);
}

void GeneralPage::familyChosen(int index) {
    if (index < 0) return;
    // The new family's first offered version is chosen, so the model's guest identifier always
    // belongs to the family shown.
    const int family = cboGuestFamilies_->itemData(index).toInt();
    const int first = firstOfferedGuest(family);
    store([&](VmConfiguration& c) {
        c.selectGuest(family, first);
        fillGuestVersions(family, first);
    });
}

void GeneralPage::guestVersionChosen(int index) {
    if (index < 0) return;
    // The list always holds offered versions of the model's family, each with its table place.
    const int version = cboGuestVersions_->itemData(index).toInt();
    store([&](VmConfiguration& c) { c.selectGuest(c.product.guestFamily, version); });
}

void GeneralPage::browseVmxFolder() {
    // The text box's own change event stores the chosen folder.
    const QString folder =
        pickFolder(this, uiText(kFolderPickerTitleId, languageOffset()), pickerStartFolder(txtVmxFolder_->text()));
    if (!folder.isEmpty()) txtVmxFolder_->setText(folder);
}

}  // namespace arden::gui
