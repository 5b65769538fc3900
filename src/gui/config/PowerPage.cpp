#include "gui/config/PowerPage.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace arden::gui {

PowerPage::PowerPage(VmConfiguration& config, QWidget* parent) : OptionPage(config, parent) {
    setObjectName("fraPowerPage");
    using P = PowerOptions;
    constexpr auto power = &VmConfiguration::power;

    auto* fraPowerOptions = named<QGroupBox>("fraPowerOptions", this);
    auto* options = new QVBoxLayout(fraPowerOptions);
    options->addWidget(flagBox(fraPowerOptions, "chkPowerOnAfterOpen", 230, power, &P::powerOnAfterOpen));
    options->addWidget(flagBox(fraPowerOptions, "chkFullScreenAfterPowerOn", 231, power, &P::fullScreenAfterPowerOn));
    options->addWidget(flagBox(fraPowerOptions, "chkCloseAfterPowerOff", 232, power, &P::closeAfterPowerOff));

    auto* fraPowerControls = named<QGroupBox>("fraPowerControls", this);
    auto* controls = new QFormLayout(fraPowerControls);
    auto addRow = [&](const char* labelName, int labelId, QComboBox* list) {
        auto* label = named<QLabel>(labelName, fraPowerControls);
        label->setBuddy(list);
        captions_.add(label, labelId, ":");
        controls->addRow(label, list);
    };
    addRow("lblPowerOff", 236, choiceList(fraPowerControls, "cboPowerOff", {234, 235}, power, &P::powerOff));
    addRow("lblReset", 237, choiceList(fraPowerControls, "cboReset", {238, 239}, power, &P::reset));

    auto* fraRunTools = named<QGroupBox>("fraRunTools", this);
    auto* tools = new QVBoxLayout(fraRunTools);
    tools->addWidget(flagBox(fraRunTools, "chkRunToolsAfterPowerOn", 241, power, &P::runToolsAfterPowerOn));
    tools->addWidget(flagBox(fraRunTools, "chkRunToolsAfterResume", 242, power, &P::runToolsAfterResume));
    tools->addWidget(flagBox(fraRunTools, "chkRunToolsBeforeSuspend", 243, power, &P::runToolsBeforeSuspend));
    tools->addWidget(flagBox(fraRunTools, "chkRunToolsBeforePowerOff", 244, power, &P::runToolsBeforePowerOff));

    captions_.add(fraPowerOptions, 229);
    captions_.add(fraPowerControls, 233);
    captions_.add(fraRunTools, 240);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraPowerOptions);
    layout->addWidget(fraPowerControls);
    layout->addWidget(fraRunTools);
    layout->addStretch(1);
}

}  // namespace arden::gui
