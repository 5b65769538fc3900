#pragma once
// Text typed into a box is stored when the user leaves the box. Actions that do not move the
// focus (Save, Close, Quit, Launch by shortcut or menu, a language change) first store the
// focused box as if the user had left it, so what is typed is what is saved; a box that
// refuses its text keeps it marked until it is corrected, and the action stops there.
class QWidget;

namespace arden::gui {

// Marks `box` as holding text it refused (its message was shown) or clears the mark.
void markRefused(QWidget* box, bool refused);

// The box inside `scope` that holds refused text, or null.
QWidget* refusedBox(const QWidget* scope);

// Stores the text of the focused text box inside `scope` as if the user had left it. False
// when a box inside `scope` refuses its text: its message has been shown, focus is put back
// there, and the caller's action does not go on.
bool commitTypedText(QWidget* scope);

}  // namespace arden::gui
