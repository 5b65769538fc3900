#include "gui/config/IsolationPage.h"

#include <QGroupBox>
#include <QVBoxLayout>

namespace arden::gui {

IsolationPage::IsolationPage(VmConfiguration& config, QWidget* parent) : OptionPage(config, parent) {
    setObjectName("fraIsolationPage");
    using I = IsolationOptions;
    constexpr auto isolation = &VmConfiguration::isolation;

    auto* fraIsolation = captionedFrame("fraIsolation", 257);
    auto* fraInteraction = captionedFrame("fraInteraction", 258, fraIsolation);
    // Each box is checked when the model says the interaction is not allowed.
    auto* boxes = new QVBoxLayout(fraInteraction);
    boxes->addWidget(flagBox(fraInteraction, "chkInteractDND", 259, isolation, &I::dragAndDropAllowed, true));
    boxes->addWidget(flagBox(fraInteraction, "chkInteractPaste", 260, isolation, &I::pasteAllowed, true));
    boxes->addWidget(flagBox(fraInteraction, "chkInteractCopy", 261, isolation, &I::copyAllowed, true));

    auto* frame = new QVBoxLayout(fraIsolation);
    frame->addWidget(fraInteraction);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraIsolation);
    layout->addStretch(1);
}

}  // namespace arden::gui
