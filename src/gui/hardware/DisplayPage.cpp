#include "gui/hardware/DisplayPage.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "core/config/DeviceFeatures.h"
#include "core/hardware/MemoryRules.h"

namespace arden::gui {
DisplayPage::DisplayPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Display, parent) {
    setObjectName("fraDisplayPage");
    auto* fraDisplay = frame("fraDisplay", 357);  // "Resolution"
    auto fromDisplayCheck = [](const DisplayValueCheck& c) {
        return NumberCheck{c.value ? std::optional<long long>(*c.value) : std::nullopt, c.refusal};
    };
    auto pixels = [=](std::string_view text) { return fromDisplayCheck(checkDisplayPixels(text)); };
    auto asIs = [](long long v) { return QString::number(v); };
    auto* txtMaxWidth = numberBox(fraDisplay, "txtMaxWidth", "svga.maxWidth", pixels, asIs);
    auto* txtMaxHeight = numberBox(fraDisplay, "txtMaxHeight", "svga.maxHeight", pixels, asIs);
    auto* txtVRamSize = numberBox(
        fraDisplay, "txtVRamSize", "svga.vramSize",
        [=](std::string_view text) { return fromDisplayCheck(checkVideoMemoryMb(text)); },
        [](long long bytes) { return QString::number(videoMemoryMb(bytes)); });
    // Where the product has them: several monitors, and the hosted products' 3D memory (KB).
    auto* txtNumDisplays = numberBox(
        fraDisplay, "txtNumDisplays", "svga.numDisplays",
        [=](std::string_view text) { return fromDisplayCheck(checkMonitors(text)); }, asIs);
    auto* txtGraphicsMemory = numberBox(
        fraDisplay, "txtGraphicsMemory", "svga.graphicsMemoryKB",
        [=](std::string_view text) { return fromDisplayCheck(checkGraphicsMemoryMb(text)); },
        [](long long kb) { return QString::number(kb / kKilobytesPerMegabyte); });
    auto* form = new QFormLayout;
    addCaptionedRow(form, captions_, "lblMaxWidth", 339, txtMaxWidth);
    addCaptionedRow(form, captions_, "lblMaxHeight", 340, txtMaxHeight);
    addCaptionedRow(form, captions_, "lblVRamSize", 341, txtVRamSize);
    addCaptionedRow(form, captions_, "lblNumDisplays", 453, txtNumDisplays);       // "Number of monitors"
    addCaptionedRow(form, captions_, "lblGraphicsMemory", 454, txtGraphicsMemory);  // "3D graphics memory (MB)"
    onFill([=, this](const Device&) {
        const ProductFigures f = config_.figures();
        form->setRowVisible(txtNumDisplays, hasFeature(f, DeviceFeature::DisplayMonitors));
        form->setRowVisible(txtGraphicsMemory, f.line == ProductLine::Hosted && hasFeature(f, DeviceFeature::Display3d));
    });
    auto* layout = new QVBoxLayout(fraDisplay);
    layout->addLayout(form);
    layout->addWidget(flagBox(fraDisplay, "chkDisplay3D", 342, "mks.enable3d", false));
    stack({fraDisplay});
}

}  // namespace arden::gui
