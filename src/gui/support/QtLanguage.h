#pragma once
// Qt's own texts in the program's language: the Yes and No of a question, the buttons and
// columns of the file and folder pickers. They come from Qt's translations (qtbase_de.qm ...
// in Qt's translations folder; Debian package qt6-translations-l10n); without them Qt's texts
// stay English and the program's own texts are still translated.
namespace arden::gui {

// Installs Qt's translation for the language of `languageOffset` (English: none). Returns
// whether Qt's texts are now in that language.
bool applyQtLanguage(int languageOffset);

}  // namespace arden::gui
