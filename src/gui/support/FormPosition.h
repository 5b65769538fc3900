#pragma once
// Remembers where a window was: its placement goes into a section of the settings file
// through cInifile and is applied again at the next start, kept on a visible screen.
#include <QString>

class QWidget;

namespace arden::gui {

// Writes the window's placement; false (with `error` set) when the file cannot be written.
bool saveFormPosition(const QWidget& window, const QString& iniPath, const QString& section, QString* error);

// Places `window` centred over `owner`'s window, kept inside the screen's work area.
void centreOver(QWidget& window, const QWidget& owner);

// Applies a stored placement; false when the file holds none (the window stays as it is).
bool loadFormPosition(QWidget& window, const QString& iniPath, const QString& section);

}  // namespace arden::gui
