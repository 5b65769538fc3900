// frmMain's menus and toolbar: the actions with their shortcuts, the menu bar (reachable with
// Alt and a letter, and with F10), the toolbar buttons with their tool tips, and their texts
// in the current language.
#include <QAction>
#include <QMenuBar>
#include <QToolBar>

#include "gui/config/Builder.h"
#include "gui/shell/frmMain.h"
#include "gui/shell/HomeList.h"
#include "gui/support/Icons.h"
#include "gui/support/Mnemonics.h"
#include "gui/support/NamedWidget.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

// Each toolbar button: key, tool-tip id.
struct ToolButton { const char* key; int tipId; };
constexpr ToolButton kToolButtons[] = {
    {"New", 4}, {"Open", 5}, {"Save", 19}, {"Changes", 384}, {"Close", 20}, {"Run", 21}, {"Favorites", 22},
};

constexpr int kEditId = 380;     // "Edit"
constexpr int kUndoId = 381;     // "Undo"
constexpr int kRedoId = 382;     // "Redo"
constexpr int kChangesId = 383;  // "Changes", shown with "..." (it opens a window)

// One entry of a group of menu texts: its action, string id and an ending ("..." for an
// entry that opens a window).
struct MenuText {
    QAction* action;
    int id;
    const char* ending = "";
};

QAction* namedAction(QObject* parent, const char* name, const QKeySequence& shortcut = {}) {
    auto* a = named<QAction>(name, parent);
    a->setShortcut(shortcut);
    return a;
}

// Sets the texts of one group of actions (a menu, or the menu bar) by string id, with mnemonics
// given in the group's order (an entry added later comes last, so the others keep their letters).
void label(const std::vector<MenuText>& group, int languageOffset) {
    QStringList texts;
    for (const MenuText& entry : group) texts << uiText(entry.id, languageOffset) + QString::fromLatin1(entry.ending);
    texts = withMnemonics(texts);
    for (std::size_t i = 0; i < group.size(); ++i) group[i].action->setText(texts[qsizetype(i)]);
}

// "&Undo Remove Hard Disk 2": the menu word with its mnemonic and the step's name after it.
QString stepText(const QString& word, const QString& step) {
    if (step.isEmpty()) return word;
    QString name = step;
    return word + ' ' + name.replace('&', QStringLiteral("&&"));
}

}  // namespace

void frmMain::buildActions() {
    mnuFileNew_ = namedAction(this, "mnuFileNew", QKeySequence::New);
    mnuFileEdit_ = namedAction(this, "mnuFileEdit", QKeySequence::Open);
    mnuFileQuit_ = namedAction(this, "mnuFileQuit", QKeySequence(Qt::CTRL | Qt::Key_Q));
    mnuEditUndo_ = namedAction(this, "mnuEditUndo", QKeySequence(Qt::CTRL | Qt::Key_Z));
    mnuEditRedo_ = namedAction(this, "mnuEditRedo");
    mnuEditRedo_->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    mnuVMSave_ = namedAction(this, "mnuVMSave", QKeySequence::Save);
    mnuVMChanges_ = namedAction(this, "mnuVMChanges");
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
    connect(mnuEditUndo_, &QAction::triggered, this, &frmMain::undoEdit);
    connect(mnuEditRedo_, &QAction::triggered, this, &frmMain::redoEdit);
    connect(mnuVMSave_, &QAction::triggered, this, &frmMain::saveConfiguration);
    connect(mnuVMChanges_, &QAction::triggered, this, &frmMain::showChanges);
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
    mnuEdit_ = menuBar()->addMenu(QString());
    mnuEdit_->setObjectName("mnuEdit");
    mnuEdit_->addActions({mnuEditUndo_, mnuEditRedo_});
    mnuVM_ = menuBar()->addMenu(QString());
    mnuVM_->setObjectName("mnuVM");
    mnuVM_->addActions({mnuVMSave_, mnuVMChanges_, mnuVMClose_});
    mnuVM_->addSeparator();
    mnuVM_->addAction(mnuVMLaunch_);
    menuBar()->addAction(mnuOptions_);
    mnuHelp_ = menuBar()->addMenu(QString());
    mnuHelp_->setObjectName("mnuHelp");
    mnuHelp_->addActions({mnuHelpContents_, mnuHelpAbout_});

    // F10 opens the first menu, as on most desktops; the arrow keys go on from there.
    menuKey_ = namedAction(this, "mnuMenuKey", QKeySequence(Qt::Key_F10));
    addAction(menuKey_);
    connect(menuKey_, &QAction::triggered, this, [this] { menuBar()->setActiveAction(mnuFile_->menuAction()); });
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
    connect(toolButtons_["Changes"], &QAction::triggered, this, &frmMain::showChanges);
    connect(toolButtons_["Close"], &QAction::triggered, this, &frmMain::CloseEditorTab);
    connect(toolButtons_["Run"], &QAction::triggered, this, &frmMain::launchConfiguration);
    QAction* favorites = toolButtons_["Favorites"];
    favorites->setCheckable(true);
    favorites->setChecked(true);
    connect(favorites, &QAction::toggled, this, [this](bool shown) {
        home_->findChild<QWidget*>("fraFavorites")->setVisible(shown);
    });
}

void frmMain::labelMenus(int o) {
    for (const ToolButton& b : kToolButtons) {
        QAction* a = toolButtons_.value(QString::fromLatin1(b.key));
        a->setToolTip(uiText(b.tipId, o));
        a->setText(a->toolTip());
    }
    label({{mnuFile_->menuAction(), 6}, {mnuVM_->menuAction(), 8}, {mnuOptions_, 12}, {mnuHelp_->menuAction(), 13},
           {mnuEdit_->menuAction(), kEditId}},
          o);
    label({{mnuFileNew_, 4}, {mnuFileEdit_, 5}, {mnuFileQuit_, 7}}, o);
    label({{mnuVMSave_, 9}, {mnuVMClose_, 10}, {mnuVMLaunch_, 11}, {mnuVMChanges_, kChangesId, "..."}}, o);
    label({{mnuHelpContents_, 14}, {mnuHelpAbout_, 15}}, o);
    updateEditActions();
}

void frmMain::updateEditActions() {
    const int o = languageOffset();
    const QStringList words = withMnemonics({uiText(kUndoId, o), uiText(kRedoId, o)});
    Builder* editor = activeEditor();
    const QString undo = editor ? editor->undoName() : QString();
    const QString redo = editor ? editor->redoName() : QString();
    mnuEditUndo_->setText(stepText(words[0], undo));
    mnuEditRedo_->setText(stepText(words[1], redo));
    mnuEditUndo_->setEnabled(!undo.isEmpty());
    mnuEditRedo_->setEnabled(!redo.isEmpty());
}

}  // namespace arden::gui
