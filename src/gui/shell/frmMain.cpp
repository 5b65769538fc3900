#include "gui/shell/frmMain.h"

#include <QSignalBlocker>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QUndoStack>

#include "core/support/TempFolder.h"
#include "gui/config/Builder.h"
#include "gui/shell/HomeList.h"
#include "gui/shell/VmLauncher.h"
#include "gui/shell/frmAbout.h"
#include "gui/shell/frmChanges.h"
#include "gui/shell/frmOptions.h"
#include "gui/shell/frmSummary.h"
#include "gui/support/FilePaths.h"
#include "gui/support/FormPosition.h"
#include "gui/support/Icons.h"
#include "gui/support/NamedWidget.h"
#include "gui/support/Prompts.h"
#include "gui/support/Mnemonics.h"
#include "gui/support/QtLanguage.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kLoadDelayMs = 150;          // lets the window appear before a file is read
constexpr int kConfigVersionCurrent = 8;   // versions below are shown as old
const char* const kPlacementSection = "frmMain";

}  // namespace

frmMain::frmMain(const QString& commandLine, QWidget* parent) : QMainWindow(parent) {
    setObjectName("frmMain");
    setAcceptDrops(true);
    setWindowIcon(machineIcon("VM"));

    sstMain_ = new QTabWidget(this);
    sstMain_->setObjectName("sstMain");
    sstMain_->setDocumentMode(true);
    home_ = new HomeList(sstMain_);
    sstMain_->addTab(home_, QString());
    setCentralWidget(sstMain_);

    lblVersion_ = new QLabel(this);
    lblVersion_->setObjectName("lblVersion");
    statusBar()->addPermanentWidget(lblVersion_);

    tmrLoadDelay_ = new QTimer(this);
    tmrLoadDelay_->setObjectName("tmrLoadDelay");
    tmrLoadDelay_->setSingleShot(true);
    tmrLoadDelay_->setInterval(kLoadDelayMs);
    connect(tmrLoadDelay_, &QTimer::timeout, this, [this] {
        tmrLoadDelay_->stop();
        OpenEditorTab(true, existingVmxFileName_, QString(), kConfigVersionCurrent, QString());
    });

    buildActions();
    buildMenus();
    buildToolbar();

    connect(home_, &HomeList::newRequested, this, &frmMain::newConfiguration);
    connect(home_, &HomeList::openOtherRequested, this, &frmMain::openConfiguration);
    connect(home_, &HomeList::editRequested, this, [this](const QString& path, int version) {
        OpenEditorTab(true, path, QString(), version, QString());
    });
    connect(home_, &HomeList::launchRequested, this, &frmMain::launchPath);
    connect(home_, &HomeList::removeRequested, this, &frmMain::removeFavorite);
    connect(home_, &HomeList::selectionChanged, this, [this](const QString& path) { currentVmxPath_ = path; });
    connect(sstMain_, &QTabWidget::currentChanged, this, [this](int index) {
        // Leaving an editor stores what was typed in it; a box that refused its text keeps
        // the editor in front until the text is corrected.
        Builder* left = editorAt(shownTab_);
        if (left && index != shownTab_ && left->holdsRefusedText()) {
            const QSignalBlocker blocker(sstMain_);
            sstMain_->setCurrentIndex(shownTab_);
            left->holdsRefusedText();  // focus back into the box
            return;
        }
        shownTab_ = index;
        if (Builder* b = editorAt(index)) currentVmxPath_ = b->vmxPath();
        else currentVmxPath_ = home_->selectedPath();
        updateEditActions();
    });

    startUp(commandLine);
}

frmMain::~frmMain() = default;

void frmMain::startUp(const QString& commandLine) {
    lblVersion_->setText(versionLabelText());
    settings_.TempFolder = arden::TempFolder();
    for (const Message& notice : LoadSettings(settings_)) showMessage(this, notice, languageOffset());
    UpdateFavoritesList();
    sstMain_->setCurrentIndex(0);
    UpdateTab(0, "Home", "Home");
    UpdateUILabels();

    resize(1100, 720);
    const QRect area = screen() ? screen()->availableGeometry() : QRect(0, 0, 1280, 800);
    resize(size().boundedTo(area.size()));
    move(area.center() - rect().center());
    loadFormPosition(*this, placementFile(false), kPlacementSection);

    QString path = commandLine;
    if (path.isEmpty()) return;
    if (path.startsWith('"')) path = path.mid(1, path.size() - 2);
    path = absolutePath(path);
    if (!path.isEmpty() && QFileInfo::exists(path)) {
        existingVmxFileName_ = path;
        tmrLoadDelay_->start();
    } else {
        showMessage(this, MessageKind::Warning, "Invalid Command Arguments passed", "Unable to locate file " + path);
    }
}

QString frmMain::placementFile(bool forWriting) const {
    // Read from the settings folder, written to the temporary folder, as the settings are.
    return qs(arden::settingsFilePath(forWriting ? settings_.TempFolder : settings_.IniLocation));
}

void frmMain::UpdateUILabels() {
    const int o = languageOffset();
    applyQtLanguage(o);  // the Yes and No of the questions in the same language
    setWindowTitle(uiText(1, o));
    labelMenus(o);
    home_->UpdateUILabels(o);
    sstMain_->setTabText(0, uiText(3, o));
    // Every editor, not only the active one: a tab shown later must not keep the old language.
    for (int i = 1; i < sstMain_->count(); ++i) {
        if (Builder* b = editorAt(i)) {
            b->UpdateUILabels(o);
            refreshTab(b);
        }
    }
    assignMnemonics(this);
}

void frmMain::UpdateTab(int index, const QString& key, const QString& caption) {
    if (index < 0 || index >= sstMain_->count()) return;
    sstMain_->tabBar()->setTabData(index, key);
    sstMain_->setTabText(index, caption);
}

void frmMain::UpdateFavoritesList() { home_->UpdateFavoritesList(settings_.Favorites); }

Builder* frmMain::editorAt(int tabIndex) const {
    if (tabIndex <= 0 || tabIndex >= sstMain_->count()) return nullptr;
    const QString name = sstMain_->tabBar()->tabData(tabIndex).toString();
    return sstMain_->findChild<Builder*>(name);
}

Builder* frmMain::activeEditor() const { return editorAt(sstMain_->currentIndex()); }

Builder* frmMain::editorHolding(const QString& vmxPath) const {
    const QString wanted = realPath(vmxPath);
    for (int i = 1; i < sstMain_->count(); ++i) {
        Builder* b = editorAt(i);
        if (b && realPath(b->vmxPath()) == wanted) return b;
    }
    return nullptr;
}

QString frmMain::tabCaption(const Builder& editor) const {
    const QString name = editor.favoriteDisplayName();
    return name.isEmpty() ? uiText(26, languageOffset()) : name;
}

void frmMain::refreshTab(Builder* editor) {
    const int at = sstMain_->indexOf(editor);
    if (at <= 0) return;
    UpdateTab(at, editor->objectName(), tabCaption(*editor) + (editor->ChangesPending() ? " *" : ""));
    sstMain_->setTabToolTip(at, editor->vmxPath());
}

QString frmMain::currentMachineFolder() const {
    return currentVmxPath_.isEmpty() ? QString() : QFileInfo(currentVmxPath_).absolutePath();
}

Builder* frmMain::OpenEditorTab(bool editExisting, const QString& existingVmxFileName, const QString& displayName,
                                int configVersion, const QString& newVmxPath) {
    const QString existing = absolutePath(existingVmxFileName);
    if (editExisting) {
        if (Builder* open = editorHolding(existing)) {
            sstMain_->setCurrentWidget(open);
            return open;
        }
    }
    const QString name = QStringLiteral("Builder") + QString::number(++tabCounter_);
    auto* editor = new Builder(sstMain_);
    editor->setObjectName(name);
    editor->EditExistingFile = editExisting;
    if (editExisting) {
        editor->ExistingVmxFileName = existing;
    } else {
        editor->DisplayName = displayName;
        QString folder = absolutePath(newVmxPath);
        if (!folder.isEmpty() && !folder.endsWith('/')) folder += '/';
        editor->NewVmxPath = folder;
    }
    editor->LanguageOffset = languageOffset();
    editor->CreateBackups = settings_.CreateBackups;
    editor->ImagePath = qs(settings_.ImagePath);
    if (!editor->start()) {
        delete editor;
        return nullptr;
    }
    const QString icon = configVersion < kConfigVersionCurrent ? "OldVM" : "VM";
    const int index = sstMain_->addTab(editor, machineIcon(icon), QString());
    refreshTab(editor);
    assignMnemonics(this);  // the new editor's controls among the window's
    connect(editor, &Builder::displayNameChanged, this, [this, editor] { refreshTab(editor); });
    connect(editor, &Builder::stateChanged, this, [this, editor] {
        refreshTab(editor);
        updateEditActions();
    });
    // The save waits until the user has read what was written and closed the window.
    connect(editor, &Builder::written, this,
            [this](const QString& path, const QString& text) { summaryWindow()->showBlock(*this, path, {text}, true); });
    sstMain_->setCurrentIndex(index);
    if (!editor->loadNotices().isEmpty()) notesWindow()->showBlock(*this, existing, editor->loadNotices(), false);
    return editor;
}

bool frmMain::CloseEditorTab() {
    const int index = sstMain_->currentIndex();
    if (index == 0) return false;
    Builder* editor = editorAt(index);
    if (!editor) return false;
    if (!editor->commitTypedText()) return false;
    if (editor->ChangesPending()) {
        const int o = languageOffset();
        const Answer a = showMessage(this, MessageKind::Question, uiText(29, o) + " - " + tabCaption(*editor),
                                     uiText(30, o));
        if (a != Answer::Yes) return false;
    }
    shownTab_ = -1;  // the editor in front goes: no box of it holds the switch back
    sstMain_->removeTab(index);
    editor->deleteLater();
    editor->setParent(nullptr);
    return true;
}

void frmMain::newConfiguration() {
    const int o = languageOffset();
    const QString folder = pickFolder(this, uiText(23, o), pickerStartFolder(currentMachineFolder()));
    const QString proposal = uiText(26, o);
    const QString name = askText(this, uiText(25, o), uiText(24, o), proposal).value_or(proposal);
    OpenEditorTab(false, QString(), name, kConfigVersionCurrent, folder);
}

void frmMain::openConfiguration() {
    const int o = languageOffset();
    const QString filter = uiText(28, o) + " (*.vmx)";
    QString file = pickOpenFile(this, uiText(27, o), filter, pickerStartFolder(currentMachineFolder()));
    if (!file.isEmpty()) OpenEditorTab(true, file, QString(), kConfigVersionCurrent, QString());
}

void frmMain::saveConfiguration() {
    Builder* editor = activeEditor();
    if (!editor || !editor->commitTypedText()) return;
    if (editor->CreateVmxFile()) {
        AddVMToFavorites(*editor);
        currentVmxPath_ = editor->vmxPath();
    }
}

void frmMain::undoEdit() {
    if (Builder* editor = activeEditor()) editor->history()->undo();
}

void frmMain::redoEdit() {
    if (Builder* editor = activeEditor()) editor->history()->redo();
}

void frmMain::showChanges() {
    Builder* editor = activeEditor();
    if (!editor) return;
    if (!changes_) changes_ = new frmChanges(this);
    changes_->showChanges(tabCaption(*editor), editor->previewSave(), editor->changedOnDisk(), languageOffset());
}

void frmMain::AddVMToFavorites(const Builder& editor) {
    // A favourite is one line of the settings file, its fields split at tabs: a name or path
    // holding a tab or line break cannot be stored there.
    const QString fields = editor.favoriteDisplayName() + editor.vmxPath();
    if (fields.contains('\t') || fields.contains('\n') || fields.contains('\r')) {
        showMessage(this, MessageKind::Warning, uiText(2, languageOffset()),
                    "Not added to the favourites: the display name or path holds a tab or line break.");
        return;
    }
    FavoriteRecord record;
    record.DisplayName = editor.favoriteDisplayName().toStdString();
    record.VmxPath = editor.vmxPath().toStdString();
    record.ConfigVersion = static_cast<std::int16_t>(editor.configVersion());
    AddFavorite(settings_.Favorites, record);
    UpdateFavoritesList();
}

void frmMain::removeFavorite(const QString& displayName) {
    RemoveFavorite(settings_.Favorites, displayName.toStdString());
    UpdateFavoritesList();
}

void frmMain::launchConfiguration() {
    if (Builder* editor = activeEditor(); editor && !editor->commitTypedText()) return;
    launchPath(currentVmxPath_);
}

void frmMain::launchPath(const QString& path) {
    if (path.trimmed().isEmpty()) return;
    const QString failure = LaunchVmx(planLaunch(path, qs(settings_.LaunchApplication)));
    if (!failure.isEmpty()) showMessage(this, MessageKind::Warning, uiText(21, languageOffset()), failure);
}

void frmMain::showOptions() {
    // The language may change: what was typed is stored before the captions are replaced.
    if (Builder* editor = activeEditor(); editor && !editor->commitTypedText()) return;
    OptionValues values{qs(settings_.IniLocation), settings_.CreateBackups, qs(settings_.LaunchApplication),
                        qs(settings_.ImagePath), settings_.LanguageOffset, qs(settings_.TempFolder)};
    frmOptions dialog(values, this);
    connect(&dialog, &frmOptions::languageChanged, this, [this](int offset) {
        settings_.LanguageOffset = offset;
        UpdateUILabels();
    });
    if (dialog.exec() != QDialog::Accepted) return;
    const OptionValues v = dialog.values();
    if (auto failed = carrySettingsFile(settings_.IniLocation, v.iniLocation.toStdString()))
        showMessage(this, *failed, languageOffset());
    settings_.IniLocation = v.iniLocation.toStdString();
    settings_.CreateBackups = v.createBackups;
    settings_.LaunchApplication = v.launchApplication.toStdString();
    settings_.ImagePath = v.imagePath.toStdString();
}

void frmMain::showHelp() {
    showMessage(this, MessageKind::Information, "No Help Yet",
                "Coming soon.  For good information, read the VMware documentation.");
}

void frmMain::showAbout() {
    frmAbout about(languageOffset(), this);
    about.exec();
}

frmSummary* frmMain::summaryWindow() {
    if (!summary_) summary_ = new frmSummary(this);
    summary_->relabel(languageOffset(), 203);  // "Summary"
    return summary_;
}

frmSummary* frmMain::notesWindow() {
    if (!notes_) {
        notes_ = new frmSummary(this, true);
        notes_->setObjectName("frmNotes");
    }
    notes_->relabel(languageOffset(), 370);  // "Notes on the Opened Files"
    return notes_;
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (Builder* editor = activeEditor(); editor && !editor->commitTypedText()) {
        event->ignore();
        return;
    }
    for (int i = sstMain_->count() - 1; i > 0; --i) {
        Builder* editor = editorAt(i);
        if (!editor || !editor->ChangesPending()) continue;
        sstMain_->setCurrentIndex(i);
        if (!CloseEditorTab()) {
            event->ignore();
            return;
        }
    }
    QString error;
    std::vector<Message> problems = SaveSettings(settings_);
    if (problems.empty() && !saveFormPosition(*this, placementFile(true), kPlacementSection, &error))
        problems.push_back({MessageKind::Warning, {TextPart::fixed("Settings not saved")}, {TextPart::fixed(error.toStdString())}});
    for (const Message& problem : problems) showMessage(this, problem, languageOffset());
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w->objectName() != "frmMain") w->close();
    }
    event->accept();
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile() && url.toLocalFile().endsWith(".vmx", Qt::CaseInsensitive)) {
            event->acceptProposedAction();
            return;
        }
    }
}

void frmMain::dropEvent(QDropEvent* event) {
    for (const QUrl& url : event->mimeData()->urls()) {
        const QString file = absolutePath(url.toLocalFile());
        if (url.isLocalFile() && file.endsWith(".vmx", Qt::CaseInsensitive))
            OpenEditorTab(true, file, QString(), kConfigVersionCurrent, QString());
    }
    event->acceptProposedAction();
}

}  // namespace arden::gui
