#pragma once
// Paths that reach the program from outside (the command line, a drop, a picker) are made
// absolute before use, so that a file opened as "x.vmx" is saved, remembered and found again as
// the same file from any folder; and a file is recognised by its real path whatever way it was
// named (a link, "./", "..").
#include <QString>

namespace arden::gui {

// `path` made absolute against the current folder and cleaned ("a/./b" is "a/b"); empty stays
// empty. A folder keeps no trailing separator.
QString absolutePath(const QString& path);

// The real path of an existing file (absolute, links resolved); for a path that is not there,
// its absolute path.
QString realPath(const QString& path);

}  // namespace arden::gui
