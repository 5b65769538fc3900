#include "gui/config/Builder.h"

#include <QTabWidget>
#include <QUndoStack>
#include <QVBoxLayout>
#include <filesystem>
#include <random>

#include "core/config/NetworkAdapterTypes.h"
#include "core/config/SaveFlow.h"
#include "core/hardware/NetworkAdapter.h"
#include "core/config/VmxLoader.h"
#include "core/hardware/DeviceKeys.h"
#include "gui/config/EditHistory.h"
#include "gui/hardware/DevicePages.h"
#include "gui/hardware/HardwareListPanel.h"
#include "gui/config/ConfigWidgets.h"
#include "gui/config/OptionsPanel.h"
#include "gui/config/TypedText.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kOptionsTabId = 12;     // "Options"
constexpr int kHardwareTabId = 200;   // "Hardware"
constexpr int kNewMachineNameId = 26; // "New VM"
constexpr int kChangedOnDiskTitleId = 386;  // "Changed on Disk"
constexpr int kChangedOnDiskId = 385;       // "The file on disk was changed by another program after it was opened."
constexpr int kSaveOverItId = 387;          // "Save over it anyway?"

std::filesystem::path toPath(const QString& text) { return std::filesystem::path(text.toStdWString()); }

}  // namespace

Builder::Builder(QWidget* parent) : QWidget(parent) {
    setObjectName("Builder");
    sstMain_ = named<QTabWidget>("sstMain", this);
    options_ = new OptionsPanel(config_, sstMain_);
    hardware_ = new HardwareListPanel(config_, sstMain_);
    sstMain_->addTab(options_, QString());
    sstMain_->addTab(hardware_, QString());
    sstMain_->setCurrentIndex(0);

    connect(options_, &OptionsPanel::edited, this, &Builder::pageEdited);
    connect(options_, &OptionsPanel::displayNameChanged, this, &Builder::displayNameChanged);
    connect(options_, &OptionsPanel::machineFitted, this, [this] { hardware_->fill(); });
    connect(hardware_, &HardwareListPanel::edited, this, &Builder::recordEdit);

    history_ = new EditHistory(config_, this);
    connect(history_, &EditHistory::restored, this, &Builder::showRestored);
    connect(history_->stack(), &QUndoStack::cleanChanged, this, [this](bool clean) { setChangesPending(!clean); });
    connect(history_->stack(), &QUndoStack::indexChanged, this, &Builder::stateChanged);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(sstMain_);
}

Builder::~Builder() {
    // The stack clears itself as it goes, and says so: nobody is to hear that from an editor
    // being destroyed.
    history_->stack()->blockSignals(true);
}

bool Builder::start() {
    UpdateUILabels(LanguageOffset);
    if (EditExistingFile) {
        LoadResult loaded = loadVmxFile(toPath(ExistingVmxFileName));
        if (!loaded.ok) {
            showMessage(this, *loaded.error, LanguageOffset);
            return false;
        }
        config_ = std::move(loaded.config);
        for (const LoadNotice& n : loaded.notices)
            loadNotices_ << QStringLiteral("line %1: %2").arg(n.line).arg(QString::fromStdString(n.text));
        // A file that cannot be saved is shown, not edited; there is nothing to back up.
        if (auto notice = readOnlyNotice(config_)) {
            showMessage(this, *notice, LanguageOffset);
            options_->setEnabled(false);
            hardware_->setEnabled(false);
        } else if (CreateBackups) {
            bool copied = false;
            showMessage(this, makeBackup(toPath(ExistingVmxFileName), copied), LanguageOffset);
        }
    } else {
        std::random_device entropy;
        config_ = VmConfiguration::newMachine(DisplayName.toStdString(), NewVmxPath.toStdString(),
                                              GetText(kNewMachineNameId + LanguageOffset), entropy());
    }
    fill();
    history_->reset(EditExistingFile);
    baseline_.take(config_.vmxPath());
    setChangesPending(!EditExistingFile);
    return true;
}

void Builder::fill() {
    hardware_->pages()->setImageFolder(ImagePath);
    options_->fill();
    hardware_->fill();
}

bool Builder::nameValid() const {
    return !config_.identity.vmxFileName.empty() && !config_.identity.vmxFolder.empty();
}

bool Builder::CreateVmxFile() {
    // A character the file's encoding cannot hold: Yes writes the whole file in UTF-8 (the notes
    // say so); No leaves it to the save checks, whose refusal names the character.
    if (config_.fileText.readOnlyReason.empty()) {
        if (auto question = encodingQuestion(config_); question && showMessage(this, *question, LanguageOffset) == Answer::Yes) {
            Message note = convertToUtf8(config_);
            loadNotices_ << qs(note.text.front().literal);
            showMessage(this, note, LanguageOffset);
        }
    }
    // Writing over a machine that a VMware product has open, over a read-only file, or with two
    // network adapters that carry one static address is the user's call; every question comes
    // before anything is written.
    if (!checkSave(config_)) {
        std::optional<Message> changed;
        if (changedOnDisk()) {
            changed = Message{MessageKind::Question, {TextPart::fromId(kChangedOnDiskTitleId)},
                              {TextPart::fixed(config_.vmxPath() + "\n\n"), TextPart::fromId(kChangedOnDiskId),
                               TextPart::fixed("  "), TextPart::fromId(kSaveOverItId)}};
        }
        for (const auto& question : {changed, inUseQuestion(config_), readOnlyQuestion(config_),
                                     duplicateStaticMacQuestion(config_.devices)}) {
            if (question && showMessage(this, *question, LanguageOffset) != Answer::Yes) return false;
        }
    }
    SaveResult result = arden::CreateVmxFile(config_);
    if (!result.written) {
        showMessage(this, *result.refusal, LanguageOffset);
        return false;
    }
    if (result.notice) showMessage(this, *result.notice, LanguageOffset);
    baseline_.take(result.path, result.text);
    history_->markSaved();
    setChangesPending(false);
    // The summary shows the text as the file's encoding reads it.
    const TextCodec codec = config_.fileText.convertToUtf8 ? TextCodec::utf8() : codecOf(config_.fileText);
    emit written(qs(result.path), qs(codec.decodeReplacing(result.text)));
    return true;
}

QUndoStack* Builder::history() const { return history_->stack(); }

QString Builder::undoName() const { return uiText(history_->undoName(), LanguageOffset); }

QString Builder::redoName() const { return uiText(history_->redoName(), LanguageOffset); }

bool Builder::changedOnDisk() const { return baseline_.changedOnDisk(config_.vmxPath()); }

bool Builder::commitTypedText() { return arden::gui::commitTypedText(this); }

bool Builder::holdsRefusedText() {
    QWidget* box = refusedBox(this);
    if (box) box->setFocus();
    return box != nullptr;
}

QString Builder::favoriteDisplayName() const { return qs(config_.identity.displayName); }

QString Builder::vmxPath() const { return qs(config_.vmxPath()); }

int Builder::configVersion() const {
    int version = 0;
    return parseInt32(config_.configVersionText(), version) ? version : config_.figures().configVersion;
}

void Builder::UpdateUILabels(int languageOffset) {
    LanguageOffset = languageOffset;
    sstMain_->setTabText(0, uiText(kOptionsTabId, languageOffset));
    sstMain_->setTabText(1, uiText(kHardwareTabId, languageOffset));
    options_->relabel(languageOffset);
    hardware_->relabel(languageOffset);
}

void Builder::pageEdited() {
    // Every edit may change what a summary says: all six are rewritten, and the selected
    // device is shown again because its figures follow the product.
    options_->refreshSummaries();
    // A newly chosen version may lack an adapter type the machine uses.
    if (config_.product.version >= 0) {
        if (auto notice = fitNicTypesToProduct(config_.devices, config_.product.platform, config_.product.version)) {
            showMessage(this, *notice, LanguageOffset);
            hardware_->fill();
        }
    }
    hardware_->showSelected();
    recordEdit();
}

void Builder::recordEdit() {
    history_->record();
    emit stateChanged();
}

void Builder::showRestored(const ConfigurationChange& change, bool devices, bool options) {
    // The pages that show what differs show the machine of the step (only those: a step is
    // taken back at once on a machine of a hundred devices); the page of what the step changed
    // comes to the front, and otherwise the device that was shown stays shown.
    if (options) options_->fill();
    if (devices) {
        const auto* shown = qobject_cast<DevicePage*>(hardware_->pages()->currentWidget());
        const DeviceType shownType = shown ? shown->deviceType() : DeviceType::Cpu;
        const std::string shownIdentifier = shown ? shown->identifier() : std::string();
        hardware_->fill();
        // A device added by the step is gone once it is undone: the device shown before stays.
        if (!change.onHardware || !hardware_->chooseEntry(change.deviceType, change.deviceIdentifier))
            hardware_->chooseEntry(shownType, shownIdentifier);
    }
    if (change.onHardware) {
        sstMain_->setCurrentIndex(1);
    } else if (change.optionPage >= 0) {
        sstMain_->setCurrentIndex(0);
        options_->showPage(change.optionPage);
    }
    emit displayNameChanged(favoriteDisplayName());
}

void Builder::setChangesPending(bool pending) {
    const bool changed = pending != changesPending_;
    changesPending_ = pending;
    if (changed) emit changesPendingChanged(pending);
    emit stateChanged();
}

}  // namespace arden::gui
