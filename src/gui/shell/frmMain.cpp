#include "gui/shell/frmMain.h"

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

#include "core/support/TempFolder.h"
#include "gui/config/Builder.h"
#include "gui/shell/HomeList.h"
#include "gui/shell/VmLauncher.h"
#include "gui/shell/frmAbout.h"
#include "gui/shell/frmOptions.h"
#include "gui/shell/frmSummary.h"
#include "gui/support/FormPosition.h"
#include "gui/support/Icons.h"
#include "gui/support/NamedWidget.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kLoadDelayMs = 150;          // lets the window appear before a file is read
constexpr int kConfigVersionCurrent = 8;   // versions below are shown as old
const char* const kPlacementSection = "frmMain";

// Each toolbar button: key, tool-tip id.
struct ToolButton { const char* key; int tipId; };
constexpr ToolButton kToolButtons[] = {
    {"New", 4}, {"Open", 5}, {"Save", 19}, {"Close", 20}, {"Run", 21}, {"Favorites", 22},
};

QAction* namedAction(QObject* parent, const char* name, const QKeySequence& shortcut = {}) {
    auto* a = named<QAction>(name, parent);
    a->setShortcut(shortcut);
    return a;
}

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
        if (Builder* b = editorAt(index)) currentVmxPath_ = b->vmxPath();
        else currentVmxPath_ = home_->selectedPath();
    });

    startUp(commandLine);
}

frmMain::~frmMain() = default;

void frmMain::buildActions() {
    mnuFileNew_ = namedAction(this, "mnuFileNew", QKeySequence::New);
    mnuFileEdit_ = namedAction(this, "mnuFileEdit", QKeySequence::Open);
    mnuFileQuit_ = namedAction(this, "mnuFileQuit", QKeySequence(Qt::CTRL | Qt::Key_Q));
    mnuVMSave_ = namedAction(this, "mnuVMSave", QKeySequence::Save);
    mnuVMClose_ = namedAction(this, "mnuVMClose", QKeySequence(Qt::CTRL | Qt::Key_W));
    mnuVMLaunch_ = namedAction(this, "mnuVMLaunch", QKeySequence(Qt::CTRL | Qt::Key_R));
    mnuOptions_ = namedAction(this, "mnuOptions");
    mnuHelpContents_ = namedAction(this, "mnuHelpContents", QKeySequence(Qt::Key_F1));
    mnuHelpAbout_ = namedAction(this, "mnuHelpAbout");
    mnuFileQuit_->setMenuRole(QAction::QuitRole);
    mnuHelpAbout_->setMenuRole(QAction::AboutRole);

    connect(mnuFileNew_, &QAction::triggered, this, &frmMain::newConfiguration);
    connect(mnuFileEdit_, &QAction::triggered, this, &frmMain::openConfiguration);
    connect(mnuFileQuit_, &QAction::triggered, this, &QWidget::close);
    connect(mnuVMSave_, &QAction::triggered, this, &frmMain::saveConfiguration);
    connect(mnuVMClose_, &QAction::triggered, this, &frmMain::CloseEditorTab);
    connect(mnuVMLaunch_, &QAction::triggered, this, &frmMain::launchConfiguration);
    connect(mnuOptions_, &QAction::triggered, this, &frmMain::showOptions);
    connect(mnuHelpContents_, &QAction::triggered, this, &frmMain::showHelp);
    connect(mnuHelpAbout_, &QAction::triggered, this, &frmMain::showAbout);
}

void frmMain::buildMenus() {
    mnuFile_ = menuBar()->addMenu(QString());
    mnuFile_->setObjectName("mnuFile");
    mnuFile_->addActions({mnuFileNew_, mnuFileEdit_});
    mnuFile_->addSeparator();
    mnuFile_->addAction(mnuFileQuit_);
    mnuVM_ = menuBar()->addMenu(QString());
    mnuVM_->setObjectName("mnuVM");
    mnuVM_->addActions({mnuVMSave_, mnuVMClose_});
    mnuVM_->addSeparator();
    mnuVM_->addAction(mnuVMLaunch_);
    menuBar()->addAction(mnuOptions_);
    mnuHelp_ = menuBar()->addMenu(QString());
    mnuHelp_->setObjectName("mnuHelp");
    mnuHelp_->addActions({mnuHelpContents_, mnuHelpAbout_});
}

void frmMain::buildToolbar() {
    tlbMain_ = addToolBar(QString());
    tlbMain_->setObjectName("tlbMain");
    tlbMain_->setMovable(false);
    tlbMain_->setIconSize(QSize(24, 24));
    tlbMain_->setToolButtonStyle(Qt::ToolButtonIconOnly);
    for (const ToolButton& b : kToolButtons) {
        QAction* a = tlbMain_->addAction(toolbarIcon(QString::fromLatin1(b.key)), QString());
        a->setObjectName(QStringLiteral("tlb") + QString::fromLatin1(b.key));
        toolButtons_.insert(QString::fromLatin1(b.key), a);
        if (QString::fromLatin1(b.key) == "Run") tlbMain_->addSeparator();
    }
    connect(toolButtons_["New"], &QAction::triggered, this, &frmMain::newConfiguration);
    connect(toolButtons_["Open"], &QAction::triggered, this, &frmMain::openConfiguration);
    connect(toolButtons_["Save"], &QAction::triggered, this, &frmMain::saveConfiguration);
    connect(toolButtons_["Close"], &QAction::triggered, this, &frmMain::CloseEditorTab);
    connect(toolButtons_["Run"], &QAction::triggered, this, &frmMain::launchConfiguration);
    QAction* favorites = toolButtons_["Favorites"];
    favorites->setCheckable(true);
    favorites->setChecked(true);
    connect(favorites, &QAction::toggled, this, [this](bool shown) {
        home_->findChild<QWidget*>("fraFavorites")->setVisible(shown);
    });
}

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
    setWindowTitle(uiText(1, o));
    for (const ToolButton& b : kToolButtons) {
        QAction* a = toolButtons_.value(QString::fromLatin1(b.key));
        a->setToolTip(uiText(b.tipId, o));
        a->setText(a->toolTip());
    }
    mnuFile_->setTitle(uiText(6, o));
    mnuFileNew_->setText(uiText(4, o));
    mnuFileEdit_->setText(uiText(5, o));
    mnuFileQuit_->setText(uiText(7, o));
    mnuVM_->setTitle(uiText(8, o));
    mnuVMSave_->setText(uiText(9, o));
    mnuVMClose_->setText(uiText(10, o));
    mnuVMLaunch_->setText(uiText(11, o));
    mnuOptions_->setText(uiText(12, o));
    mnuHelp_->setTitle(uiText(13, o));
    mnuHelpContents_->setText(uiText(14, o));
    mnuHelpAbout_->setText(uiText(15, o));
    home_->UpdateUILabels(o);
    sstMain_->setTabText(0, uiText(3, o));
    if (Builder* b = activeEditor()) b->UpdateUILabels(o);
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

Builder* frmMain::OpenEditorTab(bool editExisting, const QString& existingVmxFileName, const QString& displayName,
                                int configVersion, const QString& newVmxPath) {
    const QString name = QStringLiteral("Builder") + QString::number(++tabCounter_);
    auto* editor = new Builder(sstMain_);
    editor->setObjectName(name);
    editor->EditExistingFile = editExisting;
    if (editExisting) {
        editor->ExistingVmxFileName = existingVmxFileName;
    } else {
        editor->DisplayName = displayName;
        editor->NewVmxPath = newVmxPath;
    }
    editor->LanguageOffset = languageOffset();
    editor->CreateBackups = settings_.CreateBackups;
    editor->ImagePath = qs(settings_.ImagePath);
    if (!editor->start()) {
        delete editor;
        return nullptr;
    }
    const QString icon = configVersion < kConfigVersionCurrent ? "OldVM" : "VM";
    QString caption = editor->favoriteDisplayName();
    if (caption.isEmpty()) caption = uiText(26, languageOffset());
    const int index = sstMain_->addTab(editor, machineIcon(icon), caption);
    sstMain_->tabBar()->setTabData(index, name);
    connect(editor, &Builder::displayNameChanged, this, [this, editor](const QString& text) {
        const int at = sstMain_->indexOf(editor);
        UpdateTab(at, editor->objectName(), text.isEmpty() ? uiText(26, languageOffset()) : text);
    });
    connect(editor, &Builder::written, this, [this](const QString& path, const QString& text) {
        frmSummary* s = summaryWindow();
        s->AddToOutput(QStringLiteral("---- ") + path);
        s->AddToOutput(text);
        s->show();
    });
    sstMain_->setCurrentIndex(index);
    if (!editor->loadNotices().isEmpty()) {
        frmSummary* s = summaryWindow();
        s->AddToOutput(QStringLiteral("---- ") + existingVmxFileName);
        for (const QString& notice : editor->loadNotices()) s->AddToOutput(notice);
        s->show();
    }
    return editor;
}

bool frmMain::CloseEditorTab() {
    const int index = sstMain_->currentIndex();
    if (index == 0) return false;
    Builder* editor = editorAt(index);
    if (!editor) return false;
    if (editor->ChangesPending()) {
        const int o = languageOffset();
        const Answer a = showMessage(this, MessageKind::Question, uiText(29, o) + " - " + sstMain_->tabText(index),
                                     uiText(30, o));
        if (a != Answer::Yes) return false;
    }
    sstMain_->removeTab(index);
    editor->deleteLater();
    editor->setParent(nullptr);
    return true;
}

void frmMain::newConfiguration() {
    const int o = languageOffset();
    QString folder = pickFolder(this, uiText(23, o), QDir::homePath());
    if (!folder.isEmpty() && !folder.endsWith('/') && !folder.endsWith(QDir::separator())) folder += '/';
    const QString proposal = uiText(26, o);
    const QString name = askText(this, uiText(25, o), uiText(24, o), proposal).value_or(proposal);
    OpenEditorTab(false, QString(), name, kConfigVersionCurrent, folder);
}

void frmMain::openConfiguration() {
    const int o = languageOffset();
    const QString filter = uiText(28, o) + " (*.vmx)";
    QString file = pickOpenFile(this, uiText(27, o), filter, QDir::homePath());
    if (!file.isEmpty()) OpenEditorTab(true, file, QString(), kConfigVersionCurrent, QString());
}

void frmMain::saveConfiguration() {
    Builder* editor = activeEditor();
    if (!editor) return;
    if (editor->CreateVmxFile()) {
        AddVMToFavorites(*editor);
        currentVmxPath_ = editor->vmxPath();
    }
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

void frmMain::launchConfiguration() { launchPath(currentVmxPath_); }

void frmMain::launchPath(const QString& path) {
    if (path.trimmed().isEmpty()) return;
    LaunchVmx(planLaunch(path, qs(settings_.LaunchApplication)));
}

void frmMain::showOptions() {
    OptionValues values{qs(settings_.IniLocation), settings_.CreateBackups, qs(settings_.LaunchApplication),
                        qs(settings_.ImagePath), settings_.LanguageOffset};
    frmOptions dialog(values, this);
    connect(&dialog, &frmOptions::languageChanged, this, [this](int offset) {
        settings_.LanguageOffset = offset;
        UpdateUILabels();
    });
    if (dialog.exec() != QDialog::Accepted) return;
    const OptionValues v = dialog.values();
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
    return summary_;
}

void frmMain::closeEvent(QCloseEvent* event) {
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
        const QString file = url.toLocalFile();
        if (url.isLocalFile() && file.endsWith(".vmx", Qt::CaseInsensitive))
            OpenEditorTab(true, file, QString(), kConfigVersionCurrent, QString());
    }
    event->acceptProposedAction();
}

}  // namespace arden::gui
