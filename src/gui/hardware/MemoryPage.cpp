#include "gui/hardware/MemoryPage.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSlider>

#include "core/config/HardwareFigures.h"
#include "core/hardware/MemoryRules.h"
#include "gui/support/FocusMarker.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kMemoryStepMb = 4;  // memory is a multiple of 4 MB

}  // namespace

MemoryPage::MemoryPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Memory, parent) {
    setObjectName("fraMemoryPage");
    auto* fraMemory = frame("fraMemory", 292);  // "RAM"
    auto* txtMemSize = numberBox(
        fraMemory, "txtMemSize", "memsize",
        [this](std::string_view text) {
            MemoryCheck c = checkMemorySize(text, memoryRange(config_));
            return NumberCheck{c.megabytes ? std::optional<long long>(*c.megabytes) : std::nullopt, c.refusal};
        },
        [](long long mb) { return QString::number(mb); });
    txtMemSize->setMaximumWidth(txtMemSize->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) + 16);
    // The up-down beside the box: a short vertical bar whose upper arrow adds memory. A bar's
    // upper arrow steps towards its minimum, so the bar runs over the negated megabytes.
    auto* updown = named<QScrollBar>("udMemSize", Qt::Vertical, fraMemory);
    updown->setFixedHeight(txtMemSize->sizeHint().height());
    udMemSize_ = updown;
    auto* slider = named<QSlider>("sldMemSize", Qt::Horizontal, fraMemory);
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setTracking(false);  // stored when the user lets go
    sldMemSize_ = slider;
    for (QAbstractSlider* s : {udMemSize_, sldMemSize_}) s->setSingleStep(kMemoryStepMb);
    connect(sldMemSize_, &QAbstractSlider::valueChanged, this, &MemoryPage::storeMegabytes);
    connect(udMemSize_, &QAbstractSlider::valueChanged, this, [this](int negated) { storeMegabytes(-negated); });
    showFocusOf(sldMemSize_);
    auto* lblMemUnit = named<QLabel>("lblMemUnit", fraMemory);
    captions_.add(lblMemUnit, 293);  // "MB"
    lblMemRange_ = named<QLabel>("lblMemoryRange", fraMemory);

    auto* grid = new QGridLayout(fraMemory);
    grid->addWidget(txtMemSize, 0, 0);
    grid->addWidget(udMemSize_, 0, 1);
    grid->addWidget(lblMemUnit, 0, 2);
    grid->addWidget(sldMemSize_, 1, 0, 1, 4);
    grid->addWidget(lblMemRange_, 2, 0, 1, 4);
    grid->setColumnStretch(3, 1);
    stack({fraMemory});
    // Every stored value is shown again by all three controls.
    connect(this, &DevicePage::edited, this, &DevicePage::refill);
}

void MemoryPage::fillPage(const Device& d) {
    const MemoryRange range = memoryRange(config_);
    const int value = d.settings.number("memsize").value_or(range.minMb);
    const int pageStep = std::max(kMemoryStepMb, (range.maxMb - range.minMb) / 16 / kMemoryStepMb * kMemoryStepMb);
    sldMemSize_->setRange(range.minMb, range.maxMb);
    udMemSize_->setRange(-range.maxMb, -range.minMb);
    for (QAbstractSlider* s : {udMemSize_, sldMemSize_}) s->setPageStep(pageStep);
    sldMemSize_->setValue(value);
    udMemSize_->setValue(-value);
    static_cast<QSlider*>(sldMemSize_)->setTickInterval(sldMemSize_->pageStep());
    lblMemRange_->setText(QStringLiteral("%1 - %2 ").arg(range.minMb).arg(range.maxMb) + uiText(293, languageOffset()));
}

void MemoryPage::storeMegabytes(int value) {
    // The controls step by 4 MB, but a drag may stop anywhere: the core rule rounds it.
    const MemoryCheck c = checkMemorySize(std::to_string(value), memoryRange(config_));
    if (!c.megabytes) return;
    store([&](Device& d) {
        if (d.settings.number("memsize") == *c.megabytes) return false;
        d.settings.setNumber("memsize", *c.megabytes);
        return true;
    });
}

}  // namespace arden::gui
