// arden-forge-cli favorites: the Home list's favourites, read and changed the way the desktop
// program does it: the settings are loaded as at start-up, changed, and saved as at shut-down.
#include <filesystem>
#include <iostream>
#include <limits>

#include "cli/CliCommands.h"
#include "core/shell/ProgramSettings.h"
#include "core/support/IniDocument.h"
#include "core/support/TempFolder.h"
#include "core/support/cInifile.h"
#include "core/support/PathText.h"

namespace arden::cli {

namespace {

ProgramSettings loadedSettings() {
    ProgramSettings settings;
    settings.TempFolder = TempFolder();
    for (const Message& m : LoadSettings(settings)) printMessage(m);
    return settings;
}

int saved(const ProgramSettings& settings) {
    std::vector<Message> failures = SaveSettings(settings);
    for (const Message& m : failures) printMessage(m);
    return failures.empty() ? Success : Refused;
}

// A field of a favourite is one part of a tab-separated line.
bool fitsInField(const std::string& text) { return fitsOnOneLine(text) && text.find('\t') == std::string::npos; }

int list(const Args& args) {
    if (!args.empty()) return usageError("favorites list takes no arguments");
    for (const FavoriteRecord& f : loadedSettings().Favorites) {
        std::cout << f.DisplayName << '\t' << f.VmxPath << '\t' << f.ConfigVersion << '\n';
    }
    return Success;
}

int add(const Args& args) {
    if (args.size() < 2 || args.size() > 3) return usageError("favorites add NAME PATH [VERSION]");
    const std::string& name = args[0];
    if (name.empty() || !fitsInField(name) || !fitsInField(args[1])) {
        return usageError("favorites add: NAME must not be empty, and NAME and PATH hold no tab or line break");
    }
    std::int32_t version = kCurrentConfigVersion;
    if (args.size() == 3) {
        constexpr std::int32_t kInvalid = std::numeric_limits<std::int32_t>::min();
        version = cInifile::CLngDefault(args[2], kInvalid);
        if (args[2].find('.') != std::string::npos || version < 1 || version > std::numeric_limits<std::int16_t>::max()) {
            return usageError("favorites add: VERSION '" + args[2] + "' is not a whole number from 1 to 32767");
        }
    }
    std::error_code ec;
    std::filesystem::path path = filePath(args[1]);
    if (path.is_relative()) path = std::filesystem::absolute(path, ec);

    ProgramSettings settings = loadedSettings();
    AddFavorite(settings.Favorites, FavoriteRecord{name, pathText(path), static_cast<std::int16_t>(version), 0});
    return saved(settings);
}

int remove(const Args& args) {
    if (args.size() != 1) return usageError("favorites remove NAME");
    ProgramSettings settings = loadedSettings();
    if (!RemoveFavorite(settings.Favorites, args[0])) {
        printMessage(Message{MessageKind::Warning, {TextPart::fromId(1)},
                             {TextPart::fixed("No favourite is named '" + args[0] + "' in " +
                                              settingsFilePath(settings.IniLocation) + "; nothing was changed.")}});
        return Refused;
    }
    return saved(settings);
}

}  // namespace

int runFavorites(Args args) {
    if (!firstUnknownOption(args).empty()) return usageError("unknown option '" + firstUnknownOption(args) + "'");
    std::string verb = args.empty() ? "list" : args.front();
    if (!args.empty()) args.erase(args.begin());
    if (verb == "list") return list(args);
    if (verb == "add") return add(args);
    if (verb == "remove") return remove(args);
    return usageError("favorites: unknown action '" + verb + "' (list, add or remove)");
}

}  // namespace arden::cli
