#pragma once
// Builder: the editor of one virtual-machine configuration, one per editor tab of the main
// window. The main window sets the properties, then calls start(); from then on the editor
// owns its configuration model and answers ChangesPending, CreateVmxFile, AddVMToFavorites
// and UpdateUILabels.
#include <QString>
#include <QStringList>
#include <QWidget>
#include <memory>

#include "core/config/ChangeNames.h"
#include "core/config/SavePreview.h"
#include "core/config/VmConfiguration.h"

class QTabWidget;
class QUndoStack;

namespace arden::gui {

class EditHistory;
class HardwareListPanel;
class OptionsPanel;

class Builder : public QWidget {
    Q_OBJECT
public:
    explicit Builder(QWidget* parent = nullptr);
    ~Builder() override;

    // Properties, set before start().
    bool EditExistingFile = false;
    QString ExistingVmxFileName;
    QString DisplayName;
    QString NewVmxPath;
    int LanguageOffset = 0;
    bool CreateBackups = true;
    // The program's image folder: where floppy and ISO images are browsed for first.
    QString ImagePath;

    // Loads the existing file (making the backup copy when CreateBackups is on and telling the
    // user) or sets up a new machine, then fills the pages. False when the file could not be
    // read: the user has been told why and the editor should be closed.
    bool start();

    // True when the model differs from what was last loaded or saved: the history is not at
    // the step of the last opening or save (undoing back to it clears the flag, redoing sets
    // it again). A new machine starts with changes pending: it exists nowhere but in the
    // editor until it is saved.
    bool ChangesPending() const { return changesPending_; }

    // The undo history: one step per user action.
    QUndoStack* history() const;
    // The names of the steps Undo and Redo would take ("Remove Hard Disk 2"), in the
    // editor's language; empty when there is none.
    QString undoName() const;
    QString redoName() const;

    // What a save would change in the file on disk, with nothing written.
    SavePreview previewSave() const { return arden::previewSave(config_); }
    // Another program wrote the file since this editor opened or last saved it.
    bool changedOnDisk() const;

    // File name and folder are both given (a save would not be refused for a missing name).
    bool nameValid() const;

    // Runs the save checks and writes the file; true when it was written. A file on disk that
    // another program wrote since it was opened is asked about first. Refusals and write
    // failures are shown to the user. On success ChangesPending becomes false and `written`
    // fires with the file's text for the summary window.
    bool CreateVmxFile();

    // The favourite this editor stands for: display name, .vmx path, config.version number.
    QString favoriteDisplayName() const;
    QString vmxPath() const;
    int configVersion() const;

    // Stores the text typed into the focused box as if the user had left it; false when the
    // box refused it (its message was shown and focus stays there). Called before Save,
    // Close, Quit, Launch and a language change.
    bool commitTypedText();
    // Whether a box of this editor holds text it refused (focus is then put back there).
    bool holdsRefusedText();

    // Relabels every caption from the string table with `languageOffset`.
    void UpdateUILabels(int languageOffset);

    const VmConfiguration& configuration() const { return config_; }
    HardwareListPanel* hardware() const { return hardware_; }

    // What the loader noticed in the opened file ("line 12: ..."), for the summary window.
    const QStringList& loadNotices() const { return loadNotices_; }

signals:
    void changesPendingChanged(bool pending);
    // After every edit, load or save: the display name, path or pending flag may differ.
    void stateChanged();
    void displayNameChanged(const QString& name);
    void written(const QString& path, const QString& text);

private:
    void setChangesPending(bool pending);
    void pageEdited();
    void recordEdit();
    void showRestored(const ConfigurationChange& change, bool devices, bool options);
    void fill();

    VmConfiguration config_;
    EditHistory* history_;
    FileBaseline baseline_;
    QStringList loadNotices_;
    bool changesPending_ = false;
    QTabWidget* sstMain_;
    OptionsPanel* options_;
    HardwareListPanel* hardware_;
};

}  // namespace arden::gui
