#include "gui/support/QtLanguage.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <memory>

namespace arden::gui {
namespace {

// Qt's name of each language block, by offset / 500; English needs no translation.
constexpr const char* kQtLanguages[] = {nullptr, "de", "fr", "es", "it"};

}  // namespace

bool applyQtLanguage(int languageOffset) {
    static std::unique_ptr<QTranslator> installed;
    if (installed) {
        QCoreApplication::removeTranslator(installed.get());
        installed.reset();
    }
    const int index = languageOffset / 500;
    if (languageOffset % 500 != 0 || index < 0 || index >= static_cast<int>(std::size(kQtLanguages)))
        return false;
    if (!kQtLanguages[index]) return true;
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QStringLiteral("qtbase_") + kQtLanguages[index],
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        return false;
    QCoreApplication::installTranslator(translator.get());
    installed = std::move(translator);
    return true;
}

}  // namespace arden::gui
