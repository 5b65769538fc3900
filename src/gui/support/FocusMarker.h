#pragma once
// A visible mark of keyboard focus for controls whose style draws none (the hardware list, the
// memory slider): a frame in the highlight colour around the control while it has focus.
class QWidget;

namespace arden::gui {

void showFocusOf(QWidget* control);

}  // namespace arden::gui
