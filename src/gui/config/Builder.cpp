#include "gui/config/Builder.h"

#include <QTabWidget>
#include <QVBoxLayout>
#include <filesystem>
#include <random>

#include "core/config/NetworkAdapterTypes.h"
#include "core/config/SaveFlow.h"
#include "core/hardware/NetworkAdapter.h"
#include "core/config/VmxLoader.h"
#include "core/hardware/DeviceKeys.h"
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
    connect(hardware_, &HardwareListPanel::edited, this, [this] { setChangesPending(true); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(sstMain_);
}

Builder::~Builder() = default;

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
        if (CreateBackups) {
            bool copied = false;
            showMessage(this, makeBackup(toPath(ExistingVmxFileName), copied), LanguageOffset);
        }
    } else {
        std::random_device entropy;
        config_ = VmConfiguration::newMachine(DisplayName.toStdString(), NewVmxPath.toStdString(),
                                              GetText(kNewMachineNameId + LanguageOffset), entropy());
    }
    fill();
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
    // Writing over a machine that a VMware product has open, over a read-only file, or with two
    // network adapters that carry one static address is the user's call; every question comes
    // before anything is written.
    if (!checkSave(config_)) {
        for (const auto& question :
             {inUseQuestion(config_), readOnlyQuestion(config_), duplicateStaticMacQuestion(config_.devices)}) {
            if (question && showMessage(this, *question, LanguageOffset) != Answer::Yes) return false;
        }
    }
    SaveResult result = arden::CreateVmxFile(config_);
    if (!result.written) {
        showMessage(this, *result.refusal, LanguageOffset);
        return false;
    }
    if (result.notice) showMessage(this, *result.notice, LanguageOffset);
    setChangesPending(false);
    emit written(qs(result.path), qs(result.text));
    return true;
}

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
    setChangesPending(true);
}

void Builder::setChangesPending(bool pending) {
    const bool changed = pending != changesPending_;
    changesPending_ = pending;
    if (changed) emit changesPendingChanged(pending);
    emit stateChanged();
}

}  // namespace arden::gui
