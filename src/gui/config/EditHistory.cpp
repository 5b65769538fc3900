#include "gui/config/EditHistory.h"

#include <QApplication>
#include <QUndoCommand>
#include <QUndoStack>
#include <QWidget>

namespace arden::gui {

// One user action: the machine before and after it, and what it changed.
class EditStep : public QUndoCommand {
public:
    EditStep(EditHistory& history, std::shared_ptr<const VmConfiguration> before,
             std::shared_ptr<const VmConfiguration> after, ConfigurationChange change, int focusMoves)
        : history_(history), before_(std::move(before)), after_(std::move(after)), change_(std::move(change)),
          focusMoves_(focusMoves) {}

    const ConfigurationChange& change() const { return change_; }

    // Steps of typing share one id; mergeWith decides whether it is the same box and session.
    int id() const override { return change_.typedField.empty() ? -1 : 1; }

    bool mergeWith(const QUndoCommand* other) override {
        const auto* next = static_cast<const EditStep*>(other);
        if (next->change_.typedField != change_.typedField || next->focusMoves_ != focusMoves_) return false;
        after_ = next->after_;
        change_ = next->change_;
        // Typed back to what the box held before: the step changes nothing and goes.
        setObsolete(*after_ == *before_);
        return true;
    }

    void undo() override { history_.restore(before_, change_); }

    // Pushing the step finds its change already made.
    void redo() override {
        if (pushed_) history_.restore(after_, change_);
        pushed_ = true;
    }

private:
    EditHistory& history_;
    std::shared_ptr<const VmConfiguration> before_;
    std::shared_ptr<const VmConfiguration> after_;
    ConfigurationChange change_;
    int focusMoves_;
    bool pushed_ = false;
};

EditHistory::EditHistory(VmConfiguration& config, QObject* parent)
    : QObject(parent), config_(config), stack_(new QUndoStack(this)) {
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance()))
        connect(app, &QApplication::focusChanged, this, [this] { ++focusMoves_; });
}

void EditHistory::reset(bool saved) {
    stack_->clear();
    recorded_ = std::make_shared<const VmConfiguration>(config_);
    if (saved) stack_->setClean();
    else stack_->resetClean();
}

bool EditHistory::record() {
    auto change = describeChange(*recorded_, config_);
    if (!change) return false;
    auto now = std::make_shared<const VmConfiguration>(config_);
    auto* step = new EditStep(*this, recorded_, now, std::move(*change), focusMoves_);
    recorded_ = now;
    stack_->push(step);
    return true;
}

void EditHistory::markSaved() { stack_->setClean(); }

bool EditHistory::atSavedState() const { return stack_->isClean(); }

TextParts EditHistory::undoName() const {
    const QUndoCommand* step = stack_->index() > 0 ? stack_->command(stack_->index() - 1) : nullptr;
    return step ? static_cast<const EditStep*>(step)->change().name : TextParts{};
}

TextParts EditHistory::redoName() const {
    const QUndoCommand* step = stack_->index() < stack_->count() ? stack_->command(stack_->index()) : nullptr;
    return step ? static_cast<const EditStep*>(step)->change().name : TextParts{};
}

void EditHistory::restore(const std::shared_ptr<const VmConfiguration>& state, const ConfigurationChange& change) {
    const VmConfiguration& s = *state;
    const bool product = !(config_.product == s.product);
    const bool devices = product || !(config_.devices == s.devices);
    const bool options = product || !(config_.identity == s.identity) || !(config_.power == s.power) ||
                         !(config_.sharedFolders == s.sharedFolders) || !(config_.snapshots == s.snapshots) ||
                         !(config_.isolation == s.isolation) || !(config_.advanced == s.advanced);
    config_ = s;
    recorded_ = state;
    emit restored(change, devices, options);
}

}  // namespace arden::gui
