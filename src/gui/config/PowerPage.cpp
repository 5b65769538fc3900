#include "gui/config/PowerPage.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace arden::gui {

PowerPage::PowerPage(VmConfiguration& config, QWidget* parent) : OptionPage(config, parent) {
    setObjectName("fraPowerPage");
    using P = PowerOptions;
    constexpr auto power = &VmConfiguration::power;

    auto* fraPowerOptions = captionedFrame("fraPowerOptions", 229);
    auto* options = new QVBoxLayout(fraPowerOptions);
    options->addWidget(flagBox(fraPowerOptions, "chkPowerOnAfterOpen", 230, power, &P::powerOnAfterOpen));
    options->addWidget(flagBox(fraPowerOptions, "chkFullScreenAfterPowerOn", 231, power, &P::fullScreenAfterPowerOn));
    options->addWidget(flagBox(fraPowerOptions, "chkCloseAfterPowerOff", 232, power, &P::closeAfterPowerOff));

    auto* fraPowerControls = captionedFrame("fraPowerControls", 233);
    auto* controls = new QFormLayout(fraPowerControls);
    addCaptionedRow(controls, captions_, "lblPowerOff", 236,
                    choiceList(fraPowerControls, "cboPowerOff", {234, 235}, power, &P::powerOff));
    addCaptionedRow(controls, captions_, "lblReset", 237,
                    choiceList(fraPowerControls, "cboReset", {238, 239}, power, &P::reset));

    auto* fraRunTools = captionedFrame("fraRunTools", 240);
    auto* tools = new QVBoxLayout(fraRunTools);
    tools->addWidget(flagBox(fraRunTools, "chkRunToolsAfterPowerOn", 241, power, &P::runToolsAfterPowerOn));
    tools->addWidget(flagBox(fraRunTools, "chkRunToolsAfterResume", 242, power, &P::runToolsAfterResume));
    tools->addWidget(flagBox(fraRunTools, "chkRunToolsBeforeSuspend", 243, power, &P::runToolsBeforeSuspend));
    tools->addWidget(flagBox(fraRunTools, "chkRunToolsBeforePowerOff", 244, power, &P::runToolsBeforePowerOff));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraPowerOptions);
    layout->addWidget(fraPowerControls);
    layout->addWidget(fraRunTools);
    layout->addStretch(1);
}

}  // namespace arden::gui
