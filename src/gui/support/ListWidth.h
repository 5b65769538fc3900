#pragma once
// Lists (combo boxes) that keep to about the width of their entries instead of stretching
// across a wide window: an editable one leaves room for a longer path typed into it.
class QWidget;

namespace arden::gui {

// Caps the width of every list on `page`; call it once the page's lists are filled.
void keepListsNarrow(QWidget* page);

}  // namespace arden::gui
