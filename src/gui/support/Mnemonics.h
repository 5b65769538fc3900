#pragma once
// Keyboard mnemonics for texts that come from the string table: every menu and menu entry, and
// every captioned control of a window, is reachable with Alt and a letter whatever the language.
#include <QStringList>

class QWidget;

namespace arden::gui {

// The texts of one menu (or of the menu bar) with "&" put before the first letter or digit of
// each that no earlier text of the group has taken (compared without regard to case). A "&"
// already in a text is doubled so it shows as itself; a text without a free letter gets none.
QStringList withMnemonics(const QStringList& texts);

// Gives the captioned controls of `window` (tabs, buttons, check boxes, option buttons, and
// labels that lead to a control) mnemonics that are unique among the controls shown together:
// the letters of the window's menu bar are taken first, then the controls outside any page
// stack, tab titles before the rest; each page of a stack (a tab's page, a device page) gets
// the letters left over, so that the pages may share letters among themselves. Marks left
// from an earlier call are replaced: call it again after the captions change.
void assignMnemonics(QWidget* window);

}  // namespace arden::gui
