#pragma once
// Undo and redo in an editor on a machine with 100 devices: each step taken back and done
// again, with the events that show its page.
#include <QString>

namespace arden::bench {

// Prints the figures; false when the machine could not be opened.
bool benchUndo(const QString& scratchFolder);

}  // namespace arden::bench
