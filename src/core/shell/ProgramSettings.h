#pragma once
// The program's settings: read once at start-up, written once at shut-down. The settings file
// "ArdenForge.ini" lives in the folder that the per-user registry value "IniLocation" names;
// it is read from there but always written to the temporary folder's file, so a settings
// folder chosen elsewhere is not where the next save goes.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/shell/Favorites.h"
#include "core/support/Message.h"

namespace arden {

class cRegistry;

inline constexpr std::string_view kSettingsFileName = "ArdenForge.ini";
inline constexpr std::string_view kSettingsRegistryKey = "Software\\Brackenware\\Arden Forge";
inline constexpr std::string_view kIniLocationValue = "IniLocation";

struct ProgramSettings {
    std::string IniLocation;        // folder of the settings file (registry "IniLocation")
    bool CreateBackups = true;      // General/CreateBackups, "-1" or "0"
    std::string LaunchApplication;  // General/LaunchApplication; empty: the desktop's opener
    std::int32_t LanguageOffset = 0;  // General/LanguageOffset: 0, 500, 1000, 1500 or 2000
    std::string ImagePath;          // General/ImagePath
    std::string TempFolder;         // the temporary folder with its separator; set before loading
    std::vector<FavoriteRecord> Favorites;  // Favorites/Favorite0, Favorite1, ...
};

// `folder`, a separator and "ArdenForge.ini", as a text: a folder that already ends in a
// separator gives a doubled one, which is kept.
std::string settingsFilePath(std::string_view folder);

// One line for the options dialog: where the settings are read from at start and where they are
// written when the program closes ("Settings are read from /a/ArdenForge.ini and written to
// /tmp/ArdenForge.ini when Arden Forge closes.").
std::string settingsPlacesNote(std::string_view iniLocation, std::string_view tempFolder);

// When the settings folder is changed from `oldFolder` to `newFolder`: copies the settings file
// of the old folder into the new one when the new one holds none, so that the next start, which
// reads from the new folder, still finds the favourites. Nothing happens when the folders are the
// same, the new folder has its own file or the old one has none. The result tells what could not
// be copied (which file, why).
std::optional<Message> carrySettingsFile(std::string_view oldFolder, std::string_view newFolder);

// Reads the settings into `settings`, whose TempFolder the caller has set (see TempFolder()).
// A missing registry value makes IniLocation the temporary folder and stores it at once.
// Missing files and keys give the defaults silently. The result holds notices for what could
// not be used (an unreadable or binary settings file, a value not understood, a favourite with
// fewer than three fields, where loading of favourites stops, a registry value that could not
// be stored); loading always completes.
std::vector<Message> LoadSettings(ProgramSettings& settings, cRegistry& registry);
std::vector<Message> LoadSettings(ProgramSettings& settings);  // the platform's registry

// Writes the settings to TempFolder's settings file and IniLocation to the registry. The result
// is empty when everything was written, else it tells what was not (file and reason).
std::vector<Message> SaveSettings(const ProgramSettings& settings, cRegistry& registry);
std::vector<Message> SaveSettings(const ProgramSettings& settings);

}  // namespace arden
