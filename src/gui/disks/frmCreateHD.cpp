#include "gui/disks/frmCreateHD.h"

#include <QButtonGroup>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/disks/DiskLibrary.h"
#include "gui/disks/DiskCreationProgress.h"
#include "gui/support/NamedWidget.h"
#include "gui/support/Prompts.h"
#include "gui/support/Mnemonics.h"
#include "gui/support/UiText.h"

namespace arden::gui {

using namespace arden::disks;

namespace {

struct Choice {
    const char* name;
    int textId;           // string-table caption; 0: `fixedText`
    const char* fixedText;
    int value;            // the adapter, unit or kind it stands for
};

constexpr Choice kAdapterChoices[] = {{"optAdaptIde", 130, "", static_cast<int>(DiskAdapter::Ide)},
                                      {"optAdaptBus", 131, "", static_cast<int>(DiskAdapter::BusLogic)},
                                      {"optAdaptLsi", 132, "", static_cast<int>(DiskAdapter::LsiLogic)}};
constexpr Choice kUnitChoices[] = {{"optSizeSectors", 134, "", static_cast<int>(SizeUnit::Sectors)},
                                   {"optSizeKb", 135, "", static_cast<int>(SizeUnit::Kb)},
                                   {"optSizeMb", 136, "", static_cast<int>(SizeUnit::Mb)},
                                   {"optSizeGb", 137, "", static_cast<int>(SizeUnit::Gb)}};
constexpr Choice kTypeChoices[] = {
    {"optTypeGrow", 139, "", static_cast<int>(DiskKind::Growable)},
    {"optTypeGrowSplit", 140, "", static_cast<int>(DiskKind::GrowableSplit)},
    {"optTypeFixed", 141, "", static_cast<int>(DiskKind::Preallocated)},
    {"optTypeFixedSplit", 142, "", static_cast<int>(DiskKind::PreallocatedSplit)},
    {"optTypeSpecial", 0, "Growable virtual disk w/Descriptor file", static_cast<int>(DiskKind::GrowableDescriptor)}};

constexpr std::int64_t kDefaultSizeGb = 8;

// A size in the shortest form that gives the same number back ("0.09765625", "204800").
QString sizeText(double value) { return QString::number(value, 'g', 15); }

}  // namespace

QRadioButton* frmCreateHD::addOption(QButtonGroup* group, QWidget* box, const char* name, const QString& caption, int id) {
    auto* option = named<QRadioButton>(name, caption, box);
    group->addButton(option, id);
    box->layout()->addWidget(option);
    return option;
}

frmCreateHD::frmCreateHD(const CreateDiskRequest& preset, QWidget* parent)
    : QDialog(parent), preset_(preset), maxima_{preset.scsiMaximumSectors, preset.ideMaximumSectors} {
    if (preset_.hardwareVersion == 0) preset_.hardwareVersion = 3;
    const int lang = preset_.languageOffset;
    auto text = [lang](int id) { return uiText(id, lang); };
    setObjectName("frmCreateHD");
    setWindowTitle(text(125));
    auto* layout = new QVBoxLayout(this);

    auto* location = named<QGroupBox>("fraLocation", text(126), this);
    auto* grid = new QGridLayout(location);
    txtFolder_ = named<QLineEdit>("txtFolder", preset_.folder, location);
    auto* browse = named<QPushButton>("cmdBrowseFolder", "...", location);
    txtNewDisk_ = named<QLineEdit>("txtNewDisk", location);
    grid->addWidget(named<QLabel>("lblFolder", text(127), location), 0, 0);
    grid->addWidget(txtFolder_, 0, 1);
    grid->addWidget(browse, 0, 2);
    grid->addWidget(named<QLabel>("lblDiskName", text(128), location), 1, 0);
    grid->addWidget(txtNewDisk_, 1, 1, 1, 2);
    layout->addWidget(location);
    connect(browse, &QPushButton::clicked, this, &frmCreateHD::browseFolder);

    auto* row = new QHBoxLayout;
    auto* adapterBox = named<QGroupBox>("fraAdapter", text(129), this);
    new QVBoxLayout(adapterBox);
    adapters_ = new QButtonGroup(this);
    for (const Choice& c : kAdapterChoices) addOption(adapters_, adapterBox, c.name, text(c.textId), c.value);
    adapters_->button(static_cast<int>(preset_.adapter))->setChecked(true);
    row->addWidget(adapterBox);

    auto* sizeBox = named<QGroupBox>("fraDiskSize", text(133), this);
    auto* sizeLayout = new QVBoxLayout(sizeBox);
    txtDiskSize_ = named<QLineEdit>("txtDiskSize", QString::number(kDefaultSizeGb), sizeBox);
    sizeLayout->addWidget(txtDiskSize_);
    auto* unitRow = new QWidget(sizeBox);
    new QHBoxLayout(unitRow);
    unitRow->layout()->setContentsMargins(0, 0, 0, 0);
    units_ = new QButtonGroup(this);
    for (const Choice& c : kUnitChoices) addOption(units_, unitRow, c.name, text(c.textId), c.value);
    units_->button(static_cast<int>(unit_))->setChecked(true);
    sizeLayout->addWidget(unitRow);
    lblSizeRange_ = named<QLabel>("lblSizeRange", sizeBox);
    sizeLayout->addWidget(lblSizeRange_);
    row->addWidget(sizeBox, 1);
    layout->addLayout(row);

    auto* typeBox = named<QGroupBox>("fraDiskType", text(138), this);
    new QVBoxLayout(typeBox);
    types_ = new QButtonGroup(this);
    for (const Choice& c : kTypeChoices) {
        addOption(types_, typeBox, c.name, c.textId ? text(c.textId) : QString::fromLatin1(c.fixedText), c.value);
    }
    types_->button(static_cast<int>(DiskKind::GrowableSplit))->setChecked(true);
    layout->addWidget(typeBox);

    auto* methodBox = named<QGroupBox>("fraMethod", text(144), this);
    new QVBoxLayout(methodBox);
    auto* methods = new QButtonGroup(this);
    QRadioButton* library = addOption(methods, methodBox, "optMethodVMware", text(145), 0);
    QRadioButton* external = addOption(methods, methodBox, "optMethodExternal", text(148), 1);
    const bool libraryUsable = defaultCreationMethod() == CreationMethod::VMwareLibrary;
    library->setEnabled(libraryUsable);
    (libraryUsable ? library : external)->setChecked(true);
    // Only the external method can make disks on this system; the library stays shown, disabled.
    library->setToolTip(QString("VMware disk library: %1").arg(qs(diskLibraryVersion())));
    layout->addWidget(methodBox);

    auto* versionRow = new QHBoxLayout;
    versionRow->addWidget(named<QLabel>("lblHwVersion", text(143), this));
    auto* version = named<QLineEdit>("txtHwVersion", QString::number(preset_.hardwareVersion), this);
    version->setReadOnly(true);
    version->setMaximumWidth(60);
    versionRow->addWidget(version);
    versionRow->addStretch();
    layout->addLayout(versionRow);
    lblAdapterWarning_ = named<QLabel>("lblAdapterWarning", this);
    lblAdapterWarning_->setWordWrap(true);
    layout->addWidget(lblAdapterWarning_);
    auto* caution = named<QLabel>("lblCaution", text(146), this);
    caution->setWordWrap(true);
    layout->addWidget(caution);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* ok = named<QPushButton>("cmdOK", text(50), this);          // "OK"
    auto* cancel = named<QPushButton>("cmdCancel", text(51), this);  // "Cancel"
    ok->setDefault(true);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
    connect(ok, &QPushButton::clicked, this, &frmCreateHD::createDisk);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(adapters_, &QButtonGroup::idToggled, this, [this](int, bool on) { if (on) adapterChanged(); });
    connect(units_, &QButtonGroup::idToggled, this, [this](int id, bool on) { if (on) unitChanged(id); });
    adapterChanged();
    assignMnemonics(this);
}

DiskAdapter frmCreateHD::adapter() const { return static_cast<DiskAdapter>(adapters_->checkedId()); }

void frmCreateHD::adapterChanged() {
    lblSizeRange_->setText(qs(sizeRangeText(adapter(), maxima_)));
    const auto warning = preset_.nodeBus ? adapterMismatchWarning(adapter(), *preset_.nodeBus) : std::nullopt;
    lblAdapterWarning_->setText(warning ? uiText(*warning, preset_.languageOffset) : QString());
    lblAdapterWarning_->setVisible(warning.has_value());
}

void frmCreateHD::unitChanged(int newUnit) {
    const SizeUnit unit = static_cast<SizeUnit>(newUnit);
    if (std::optional<std::int64_t> sectors = sizeTextToSectors(txtDiskSize_->text().toStdString(), unit_)) {
        txtDiskSize_->setText(sizeText(sectorsInUnit(*sectors, unit)));
    }
    unit_ = unit;
}

void frmCreateHD::browseFolder() {
    QString folder = pickFolder(this, uiText(147, preset_.languageOffset), txtFolder_->text());
    if (!folder.isEmpty()) txtFolder_->setText(QDir::toNativeSeparators(folder));
}

void frmCreateHD::createDisk() {
    const int lang = preset_.languageOffset;
    const std::string folder = txtFolder_->text().trimmed().toStdString();
    std::string name = txtNewDisk_->text().toStdString();
    if (!name.ends_with(".vmdk")) name += ".vmdk";
    std::optional<Message> refusal = checkDiskFolder(folder);
    if (!refusal) refusal = checkDiskName(name);
    std::optional<std::int64_t> sectors = sizeTextToSectors(txtDiskSize_->text().toStdString(), unit_);
    if (!refusal && !sectors) refusal = notNumericMessage(txtDiskSize_->text().toStdString());
    if (refusal) {
        showMessage(this, *refusal, lang);
        return;
    }
    NewDiskRequest request{std::filesystem::path(folder) / name, adapter(), *sectors,
                           static_cast<DiskKind>(types_->checkedId()), preset_.hardwareVersion};
    DiskRequestCheck check = checkNewDisk(request, maxima_);
    if (check.refusal) {
        showMessage(this, *check.refusal, lang);
        return;
    }
    for (const Message& question : check.questions) {
        if (showMessage(this, question, lang) != Answer::Yes) return;
    }
    DiskCreationResult result = runDiskCreation(this, request, options_, lang);
    if (result.failure) showMessage(this, *result.failure, lang);
    if (!result.created) return;  // the dialog stays open: the entries can be changed and tried again
    descriptorPath_ = qs(std::filesystem::absolute(request.descriptorPath).string());
    accept();
}

bool createDiskFor(QWidget* parent, const CreateDiskRequest& preset, QString& descriptorPath) {
    frmCreateHD dialog(preset, parent);
    if (dialog.exec() != QDialog::Accepted) return false;
    descriptorPath = dialog.descriptorPath();
    return true;
}

}  // namespace arden::gui
