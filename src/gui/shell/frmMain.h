#pragma once
// frmMain: the program's one top-level window. A tab strip whose first tab, Home, shows the
// favourites and whose further tabs each hold one editor (Builder); the toolbar and menus;
// start-up with the command line; launching; and shut-down with the unsaved-changes questions.
#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <memory>

#include "core/shell/ProgramSettings.h"

class QAction;
class QLabel;
class QMenu;
class QTabWidget;
class QTimer;
class QToolBar;

namespace arden::gui {

class Builder;
class HomeList;
class frmChanges;
class frmSummary;

class frmMain : public QMainWindow {
    Q_OBJECT
public:
    // `commandLine`: the program's arguments joined by blanks, as the system hands them over.
    explicit frmMain(const QString& commandLine = {}, QWidget* parent = nullptr);
    ~frmMain() override;

    void UpdateUILabels();
    void UpdateTab(int index, const QString& key, const QString& caption);
    void UpdateFavoritesList();

    // Creates one editor tab; returns the editor, or nullptr when the file could not be read.
    // Paths are made absolute first; a file that a tab already holds (by its real path) is not
    // opened again: that tab is shown and its editor returned.
    Builder* OpenEditorTab(bool editExisting, const QString& existingVmxFileName, const QString& displayName,
                           int configVersion, const QString& newVmxPath);
    bool CloseEditorTab();

    // Commands of the toolbar, menus and Home tab.
    void newConfiguration();
    void openConfiguration();
    void saveConfiguration();
    // Edit menu: takes back (does again) the active editor's last (next) step.
    void undoEdit();
    void redoEdit();
    // Shows what saving the active editor's machine would change in the file on disk.
    void showChanges();
    void launchConfiguration();
    void showOptions();
    void showHelp();
    void showAbout();

    Builder* activeEditor() const;
    Builder* editorAt(int tabIndex) const;
    ProgramSettings& settings() { return settings_; }
    frmSummary* summaryWindow();
    frmSummary* notesWindow();  // what the loader noticed in the files opened
    QString ExistingVmxFileName() const { return existingVmxFileName_; }
    QTimer* loadDelayTimer() const { return tmrLoadDelay_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildActions();
    void buildMenus();
    void buildToolbar();
    void labelMenus(int languageOffset);
    // Undo and Redo name the active editor's steps, and are available when there is one.
    void updateEditActions();
    void startUp(const QString& commandLine);
    Builder* editorHolding(const QString& vmxPath) const;
    QString tabCaption(const Builder& editor) const;
    void refreshTab(Builder* editor);
    QString currentMachineFolder() const;
    void AddVMToFavorites(const Builder& editor);
    void removeFavorite(const QString& displayName);
    void launchPath(const QString& path);
    QString placementFile(bool forWriting) const;
    int languageOffset() const { return settings_.LanguageOffset; }

    ProgramSettings settings_;
    QString existingVmxFileName_;
    QString currentVmxPath_;
    int tabCounter_ = 0;
    int shownTab_ = 0;  // the tab in front, until a switch away from it is allowed

    QTabWidget* sstMain_;
    HomeList* home_;
    QToolBar* tlbMain_;
    QLabel* lblVersion_;
    QTimer* tmrLoadDelay_;
    QPointer<frmSummary> summary_;
    QPointer<frmSummary> notes_;
    QPointer<frmChanges> changes_;

    QMenu* mnuFile_;
    QMenu* mnuEdit_;
    QMenu* mnuVM_;
    QMenu* mnuHelp_;
    QAction* menuKey_;  // F10: opens the first menu
    QAction* mnuFileNew_;
    QAction* mnuFileEdit_;
    QAction* mnuFileQuit_;
    QAction* mnuEditUndo_;
    QAction* mnuEditRedo_;
    QAction* mnuVMSave_;
    QAction* mnuVMChanges_;
    QAction* mnuVMClose_;
    QAction* mnuVMLaunch_;
    QAction* mnuOptions_;
    QAction* mnuHelpContents_;
    QAction* mnuHelpAbout_;
    QHash<QString, QAction*> toolButtons_;  // by key: New, Open, Save, Changes, Close, Run, Favorites
};

}  // namespace arden::gui
