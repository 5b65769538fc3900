#pragma once
// Keyboard mnemonics for texts that come from the string table: every menu and menu entry is
// reachable with Alt and a letter whatever the language.
#include <QStringList>

namespace arden::gui {

// The texts of one menu (or of the menu bar) with "&" put before the first letter or digit of
// each that no earlier text of the group has taken (compared without regard to case). A "&"
// already in a text is doubled so it shows as itself; a text without a free letter gets none.
QStringList withMnemonics(const QStringList& texts);

}  // namespace arden::gui
