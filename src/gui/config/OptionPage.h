#pragma once
// The base of the editor's option pages. A page shows one group of the configuration model;
// every control event writes the new value straight into the model and reports the edit, so
// the editor can refresh the summaries and mark its changes. While the page is being filled
// from the model its events change nothing.
#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "core/config/VmConfiguration.h"
#include "gui/config/ConfigWidgets.h"

namespace arden::gui {

class OptionPage : public QWidget {
    Q_OBJECT
public:
    OptionPage(VmConfiguration& config, QWidget* parent);

    // Shows the model's values; emits nothing.
    void fill();
    // Sets every caption of the page in the language of `languageOffset`.
    void relabel(int languageOffset);

signals:
    // A control changed the model.
    void edited();

protected:
    // Page-specific filling beyond the bound controls (lists, dependent lists).
    virtual void fillPage() {}
    virtual void relabelPage() {}

    bool filling() const { return filling_; }
    int languageOffset() const { return languageOffset_; }

    // Writes into the model and reports the edit, unless the page is being filled.
    template <typename F>
    void store(F&& write) {
        if (filling_) return;
        write(config_);
        emit edited();
    }

    // A check box showing a flag of a model group; `inverted` for the boxes that are checked
    // when the feature the field allows is disabled.
    template <typename G>
    void bindFlag(QCheckBox* box, G VmConfiguration::*group, bool G::*field, bool inverted = false) {
        fillers_.push_back([=, this] { box->setChecked((config_.*group.*field) != inverted); });
        connect(box, &QCheckBox::clicked, this,
                [=, this](bool checked) { store([&](VmConfiguration& c) { c.*group.*field = checked != inverted; }); });
    }

    // A list whose position is the field's value.
    template <typename G>
    void bindChoice(QComboBox* list, G VmConfiguration::*group, int G::*field) {
        fillers_.push_back([=, this] { list->setCurrentIndex(config_.*group.*field); });
        connect(list, &QComboBox::currentIndexChanged, this, [=, this](int index) {
            if (index >= 0) store([&](VmConfiguration& c) { c.*group.*field = index; });
        });
    }

    // Option buttons whose ids in `buttons` are the values they store. Clicking the button
    // that is already chosen still counts as an edit.
    template <typename G>
    void bindButtons(QButtonGroup* buttons, G VmConfiguration::*group, int G::*field) {
        fillers_.push_back([=, this] {
            buttons->setExclusive(false);
            for (QAbstractButton* b : buttons->buttons()) b->setChecked(buttons->id(b) == config_.*group.*field);
            buttons->setExclusive(true);
        });
        connect(buttons, &QButtonGroup::idClicked, this,
                [=, this](int id) { store([&](VmConfiguration& c) { c.*group.*field = id; }); });
    }

    // A text box holding a text field.
    template <typename G>
    void bindText(QLineEdit* box, G VmConfiguration::*group, std::string G::*field) {
        fillers_.push_back([=, this] { box->setText(QString::fromStdString(config_.*group.*field)); });
        connect(box, &QLineEdit::textChanged, this, [=, this](const QString& text) {
            store([&](VmConfiguration& c) { c.*group.*field = text.toStdString(); });
        });
    }

    // A frame captioned by `captionId`, inside `parent` (the page when null).
    QGroupBox* captionedFrame(const char* name, int captionId, QWidget* parent = nullptr) {
        auto* frame = named<QGroupBox>(name, parent ? parent : this);
        captions_.add(frame, captionId);
        return frame;
    }

    // A captioned check box bound to a flag (see bindFlag).
    template <typename G>
    QCheckBox* flagBox(QWidget* frame, const char* name, int captionId, G VmConfiguration::*group, bool G::*field,
                       bool inverted = false) {
        auto* box = named<QCheckBox>(name, frame);
        captions_.add(box, captionId);
        bindFlag(box, group, field, inverted);
        return box;
    }

    // A list of localised entries (`entryIds` in list order) bound to a position field.
    template <typename G>
    QComboBox* choiceList(QWidget* frame, const char* name, std::initializer_list<int> entryIds,
                          G VmConfiguration::*group, int G::*field) {
        auto* list = named<QComboBox>(name, frame);
        int index = 0;
        for (int id : entryIds) captions_.addItem(list, index++, id);
        bindChoice(list, group, field);
        return list;
    }

    VmConfiguration& config_;
    Captions captions_;

private:
    std::vector<std::function<void()>> fillers_;
    // Signals raised while the controls are built count as filling too.
    bool filling_ = true;
    int languageOffset_ = 0;
};

}  // namespace arden::gui
