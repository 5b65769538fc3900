#include "gui/config/AdvancedPage.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/config/SaveFlow.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui {

AdvancedPage::AdvancedPage(VmConfiguration& config, QWidget* parent) : OptionPage(config, parent) {
    setObjectName("fraAdvancedPage");
    using A = AdvancedOptions;
    constexpr auto advanced = &VmConfiguration::advanced;

    auto* fraPriorities = captionedFrame("fraPriorities", 263);
    auto* priorities = new QFormLayout(fraPriorities);
    addCaptionedRow(priorities, captions_, "lblInputGrabPri", 264,
                    choiceList(fraPriorities, "cboInputGrabPri", {265, 266}, advanced, &A::grabbedPriority));
    // "low" is the first entry of the ungrabbed list; the file calls it "idle".
    addCaptionedRow(priorities, captions_, "lblInputUngrabPri", 267,
                    choiceList(fraPriorities, "cboInputUngrabPri", {268, 265}, advanced, &A::ungrabbedPriority));
    auto* lblPriorityNote = named<QLabel>("lblPriorityNote", fraPriorities);
    lblPriorityNote->setWordWrap(true);
    captions_.add(lblPriorityNote, 269);
    priorities->addRow(lblPriorityNote);

    auto* fraAdvanced = captionedFrame("fraAdvanced", 262);
    auto* grid = new QGridLayout(fraAdvanced);
    int row = 0;
    auto* chkClusterEnabled = flagBox(fraAdvanced, "chkClusterEnabled", 270, advanced, &A::clusterEnabled);
    // Clustering never takes over another device: while SCSI 0:0 or 0:1 holds something other
    // than a hard disk, it is turned off again with the message that names it.
    connect(chkClusterEnabled, &QCheckBox::clicked, this, [this, chkClusterEnabled](bool on) {
        if (!on) return;
        if (auto refusal = clusteringRefusal(config_)) {
            showMessage(this, *refusal, languageOffset());
            store([](VmConfiguration& c) { c.advanced.clusterEnabled = false; });
            chkClusterEnabled->setChecked(false);
        }
    });
    for (QCheckBox* box : {flagBox(fraAdvanced, "chkDebug", 271, advanced, &A::debug),
                           flagBox(fraAdvanced, "chkAcceleration", 272, advanced, &A::disableAcceleration),
                           flagBox(fraAdvanced, "chkMemPageTrim", 273, advanced, &A::memPageTrim),
                           flagBox(fraAdvanced, "chkTemplate", 277, advanced, &A::templateVm), chkClusterEnabled}) {
        grid->addWidget(box, row++, 0, 1, 3);
    }
    auto* chkLogging = flagBox(fraAdvanced, "chkLogging", 274, advanced, &A::logging);
    auto* chkLogPeriodic = flagBox(fraAdvanced, "chkLogPeriodic", 276, advanced, &A::logPeriodic);
    auto* lblLogFolder = named<QLabel>("lblLogFolder", fraAdvanced);
    captions_.add(lblLogFolder, 275, ":");
    txtLogFolder_ = named<QLineEdit>("txtLogFolder", fraAdvanced);
    lblLogFolder->setBuddy(txtLogFolder_);
    bindText(txtLogFolder_, advanced, &A::logFolder);
    auto* cmdBrowseLogFolder = named<QPushButton>("cmdBrowseLogFolder", fraAdvanced);
    captions_.add(cmdBrowseLogFolder, 305, "...");
    connect(cmdBrowseLogFolder, &QPushButton::clicked, this, &AdvancedPage::browseLogFolder);
    grid->addWidget(chkLogging, row++, 0, 1, 3);
    grid->addWidget(chkLogPeriodic, row++, 0, 1, 3);
    grid->addWidget(lblLogFolder, row, 0);
    grid->addWidget(txtLogFolder_, row, 1);
    grid->addWidget(cmdBrowseLogFolder, row, 2);
    grid->setColumnStretch(1, 1);
    // The log settings only matter while logging is on.
    for (QWidget* w : std::initializer_list<QWidget*>{chkLogPeriodic, lblLogFolder, txtLogFolder_, cmdBrowseLogFolder})
        connect(chkLogging, &QCheckBox::toggled, w, &QWidget::setEnabled);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraPriorities);
    layout->addWidget(fraAdvanced);
    layout->addStretch(1);
}

void AdvancedPage::browseLogFolder() {
    // The text box's own change event stores the chosen folder.
    const QString folder = pickFolder(this, uiText(275, languageOffset()), txtLogFolder_->text());
    if (!folder.isEmpty()) txtLogFolder_->setText(folder);
}

}  // namespace arden::gui
