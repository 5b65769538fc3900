#include "gui/config/OptionPage.h"

namespace arden::gui {

OptionPage::OptionPage(VmConfiguration& config, QWidget* parent) : QWidget(parent), config_(config) {}

void OptionPage::fill() {
    filling_ = true;
    for (const auto& show : fillers_) show();
    fillPage();
    filling_ = false;
}

void OptionPage::relabel(int languageOffset) {
    languageOffset_ = languageOffset;
    const bool wasFilling = filling_;
    filling_ = true;  // relabelling list entries must not count as an edit
    captions_.apply(languageOffset);
    relabelPage();
    filling_ = wasFilling;
}

}  // namespace arden::gui
