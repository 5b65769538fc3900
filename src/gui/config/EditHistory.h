#pragma once
// The undo history of one editor: Qt's undo stack over copies of the editor's machine. Each
// user action is one step holding the machine before and after it (neighbouring steps share
// their copies), named after what it changed ("Remove Hard Disk 2", "Memory 512 MB"). Undoing
// or redoing a step puts its copy back into the editor's machine; the step at which the
// machine was last opened or saved is the clean state of the stack.
#include <QObject>
#include <memory>

#include "core/config/ChangeNames.h"
#include "core/config/VmConfiguration.h"

class QUndoStack;

namespace arden::gui {

class EditHistory : public QObject {
    Q_OBJECT
public:
    EditHistory(VmConfiguration& config, QObject* parent);

    // Starts over from the machine as it is now, with no steps. `saved`: the machine is what
    // the file on disk holds (opened); otherwise it exists only in the editor (new).
    void reset(bool saved);

    // Makes what the last action changed one step; typing on in the same text box, with the
    // focus still there, goes into the step before instead. False when nothing changed.
    bool record();

    // The machine as it is now is the one on disk.
    void markSaved();
    // The machine is the one last opened or saved (undone or redone back to it, or never changed).
    bool atSavedState() const;

    // The name of the step Undo (Redo) would take back (do again); empty when there is none.
    TextParts undoName() const;
    TextParts redoName() const;

    QUndoStack* stack() const { return stack_; }

signals:
    // The machine was set back or forward to a step's state; `change` says what the step changed,
    // `devices` whether the devices (or the product their pages follow) differ from before,
    // `options` whether anything the option pages show does.
    void restored(const arden::ConfigurationChange& change, bool devices, bool options);

private:
    friend class EditStep;
    void restore(const std::shared_ptr<const VmConfiguration>& state, const ConfigurationChange& change);

    VmConfiguration& config_;
    std::shared_ptr<const VmConfiguration> recorded_;  // the machine as the top step left it
    QUndoStack* stack_;
    int focusMoves_ = 0;  // counts focus changes: typing after one starts a new step
};

}  // namespace arden::gui
