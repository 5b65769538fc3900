#include "gui/config/SnapshotsPage.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace arden::gui {

SnapshotsPage::SnapshotsPage(VmConfiguration& config, QWidget* parent) : OptionPage(config, parent) {
    setObjectName("fraSnapshotsPage");
    using S = SnapshotOptions;
    constexpr auto snapshots = &VmConfiguration::snapshots;

    auto* fraSnapshots = captionedFrame("fraSnapshots", 249);
    // Captioned "Disable Snapshots": checked when the model says snapshots are not allowed.
    auto* chkSnapshotsEnabled = flagBox(fraSnapshots, "chkSnapshotsEnabled", 250, snapshots, &S::allowed, true);
    auto* lblSnapshotNote = named<QLabel>("lblSnapshotNote", fraSnapshots);
    lblSnapshotNote->setWordWrap(true);
    captions_.add(lblSnapshotNote, 251);
    auto* top = new QVBoxLayout(fraSnapshots);
    top->addWidget(chkSnapshotsEnabled);
    top->addWidget(lblSnapshotNote);

    // The four actions store 0 "keep", 1 "autoRevert", 2 "autoCommit", 3 "prompt".
    auto* fraPowerOffAction = captionedFrame("fraPowerOffAction", 252);
    auto* actions = new QButtonGroup(this);
    auto* actionLayout = new QVBoxLayout(fraPowerOffAction);
    const struct { const char* name; int id; } kActions[] = {
        {"optSnapPowerOff", 253}, {"optSnapRevert", 254}, {"optSnapTakeNew", 255}, {"optSnapAsk", 256}};
    int action = 0;
    for (const auto& a : kActions) {
        auto* button = named<QRadioButton>(a.name, fraPowerOffAction);
        captions_.add(button, a.id);
        actions->addButton(button, action++);
        actionLayout->addWidget(button);
    }
    bindButtons(actions, snapshots, &S::action);
    // The action only matters while snapshots are allowed.
    connect(chkSnapshotsEnabled, &QCheckBox::toggled, fraPowerOffAction, &QWidget::setDisabled);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraSnapshots);
    layout->addWidget(fraPowerOffAction);
    layout->addStretch(1);
}

}  // namespace arden::gui
