#include "core/shell/ProgramSettings.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <limits>

#include "core/support/AtomicFile.h"
#include "core/support/TempFolder.h"
#include "core/support/cInifile.h"
#include "core/support/cRegistry.h"

namespace arden {

namespace {

constexpr std::string_view kGeneral = "General";
constexpr std::string_view kFavorites = "Favorites";
constexpr std::string_view kFavoriteKey = "Favorite";
constexpr std::array<std::int32_t, 5> kLanguageOffsets = {0, 500, 1000, 1500, 2000};
constexpr int kCaptionId = 1;  // "Arden Forge"

Message notice(MessageKind kind, std::string text) {
    return Message{kind, {TextPart::fromId(kCaptionId)}, {TextPart::fixed(std::move(text))}};
}

std::string readKey(cInifile& ini, std::string_view key, std::string_view defaultValue) {
    ini.setKey(std::string(key));
    ini.setDefault(std::string(defaultValue));
    return ini.Value();
}

std::string notUnderstood(const std::string& file, std::string_view key, const std::string& text,
                          std::string_view allowed, std::string_view used) {
    return file + ": [General] " + std::string(key) + " \"" + text + "\" is not " + std::string(allowed) + "; " +
           std::string(used) + " is used.";
}

std::int16_t toConfigVersion(std::string_view text) {
    std::int32_t value = cInifile::CLngDefault(text, 0);
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) return 0;
    return static_cast<std::int16_t>(value);
}

void readGeneral(ProgramSettings& s, cInifile& ini, const std::string& file, std::vector<Message>& notices) {
    ini.setSection(std::string(kGeneral));
    std::string backups = readKey(ini, "CreateBackups", "-1");
    if (!ini.Success() && !ini.LastError().empty()) {
        notices.push_back(notice(MessageKind::Warning, "The settings could not be read, the defaults are used: " + ini.LastError()));
    }
    s.CreateBackups = cInifile::CBoolDefault(backups, true);
    if (cInifile::CBoolDefault(backups, false) != cInifile::CBoolDefault(backups, true)) {
        notices.push_back(notice(MessageKind::Warning,
                                 notUnderstood(file, "CreateBackups", backups, "\"-1\" (on) or \"0\" (off)", "on")));
    }
    s.LaunchApplication = readKey(ini, "LaunchApplication", "");
    std::string offset = readKey(ini, "LanguageOffset", "0");
    s.LanguageOffset = cInifile::CLngDefault(offset, -1);
    if (std::find(kLanguageOffsets.begin(), kLanguageOffsets.end(), s.LanguageOffset) == kLanguageOffsets.end()) {
        s.LanguageOffset = 0;
        notices.push_back(notice(MessageKind::Warning, notUnderstood(file, "LanguageOffset", offset,
                                                                     "one of 0, 500, 1000, 1500, 2000", "0 (English)")));
    }
    s.ImagePath = readKey(ini, "ImagePath", "");
}

void readFavorites(ProgramSettings& s, cInifile& ini, const std::string& file, std::vector<Message>& notices) {
    ini.setSection(std::string(kFavorites));
    std::vector<FavoriteRecord> records;
    ini.EnumerateCurrentSectionValues([&](std::string_view key, std::string_view value) {
        // DisplayName, tab, VmxPath, tab, ConfigVersion; fields after the third are ignored.
        const std::size_t tab1 = value.find('\t');
        const std::size_t tab2 = tab1 == std::string_view::npos ? tab1 : value.find('\t', tab1 + 1);
        if (tab2 == std::string_view::npos) {
            notices.push_back(notice(MessageKind::Warning,
                                     file + ": [Favorites] " + std::string(key) +
                                         " holds fewer than three tab-separated fields (display name, path, "
                                         "version); it and the favourites after it were not loaded."));
            return false;
        }
        const std::string_view version = value.substr(tab2 + 1, value.find('\t', tab2 + 1) - (tab2 + 1));
        records.push_back(FavoriteRecord{std::string(value.substr(0, tab1)),
                                         std::string(value.substr(tab1 + 1, tab2 - tab1 - 1)),
                                         toConfigVersion(version), 0});
        return true;
    });
    AddFavorites(s.Favorites, std::move(records));
}

void checkNotBinary(const std::string& file, std::vector<Message>& notices) {
    std::string error;
    auto bytes = readWholeFile(filePath(file), error);
    if (bytes && bytes->find('\0') != std::string::npos) {
        notices.push_back(notice(MessageKind::Warning, file + " holds binary data and is not a settings file; "
                                                              "the defaults are used for what it lacks."));
    }
}

}  // namespace

std::string settingsFilePath(std::string_view folder) {
    return std::string(folder) + kPathSeparator + std::string(kSettingsFileName);
}

namespace {

// The settings file of a folder as the user reads it: one separator, however the folder ends.
std::string shownSettingsFile(std::string_view folder) {
    while (folder.size() > 1 && (folder.back() == '/' || folder.back() == kPathSeparator)) folder.remove_suffix(1);
    return settingsFilePath(folder);
}

}  // namespace

std::string settingsPlacesNote(std::string_view iniLocation, std::string_view tempFolder) {
    return "Settings are read from " + shownSettingsFile(iniLocation) + " and written to " +
           shownSettingsFile(tempFolder) + " when Arden Forge closes.";
}

std::optional<Message> carrySettingsFile(std::string_view oldFolder, std::string_view newFolder) {
    namespace fs = std::filesystem;
    if (newFolder.empty()) return std::nullopt;
    const fs::path from = filePath(settingsFilePath(oldFolder)), to = filePath(settingsFilePath(newFolder));
    std::error_code ec;
    // A folder named the same as before holds the old file already: `to` exists then.
    if (fs::exists(to, ec) || !fs::is_regular_file(from, ec)) return std::nullopt;
    std::string error;
    auto bytes = readWholeFile(from, error);
    if (bytes) {
        if (auto failed = writeFileAtomically(to, *bytes)) error = std::move(*failed);
        else return std::nullopt;
    }
    return notice(MessageKind::Warning, "The settings were not copied to the new settings folder, so the next start "
                                        "will not find them there: " + error);
}

std::vector<Message> LoadSettings(ProgramSettings& s, cRegistry& registry) {
    std::vector<Message> notices;
    const ProgramSettings defaults;
    s.CreateBackups = defaults.CreateBackups;
    s.Favorites.clear();

    registry.setClassKey(RegistryRoot::CurrentUser);
    registry.setSectionKey(std::string(kSettingsRegistryKey));
    registry.setValueKey(std::string(kIniLocationValue));
    registry.setValueType(RegType::String);
    registry.setDefault("");
    s.IniLocation = registry.Value();
    if (s.IniLocation.empty()) {
        s.IniLocation = s.TempFolder;
        if (auto failure = registry.setValue(s.IniLocation)) notices.push_back(*failure);
    }

    const std::string file = settingsFilePath(s.IniLocation);
    cInifile ini;
    ini.setPath(file);
    readGeneral(s, ini, file, notices);
    readFavorites(s, ini, file, notices);
    checkNotBinary(file, notices);
    return notices;
}

std::vector<Message> SaveSettings(const ProgramSettings& s, cRegistry& registry) {
    std::vector<Message> failures;
    cInifile ini;
    ini.setPath(settingsFilePath(s.TempFolder));
    ini.setSection(std::string(kGeneral));
    const std::pair<std::string_view, std::string> general[] = {
        {"CreateBackups", s.CreateBackups ? "-1" : "0"},
        {"LaunchApplication", s.LaunchApplication},
        {"LanguageOffset", std::to_string(s.LanguageOffset)},
        {"ImagePath", s.ImagePath},
    };
    bool written = true;
    for (const auto& [key, value] : general) {
        ini.setKey(std::string(key));
        if (!(written = ini.setValue(value))) break;
    }
    if (written) {
        // The section is dropped and written anew, so it holds exactly Favorite0, Favorite1, ...
        ini.setSection(std::string(kFavorites));
        std::string entries;
        for (std::size_t i = 0; i < s.Favorites.size(); ++i) {
            const FavoriteRecord& f = s.Favorites[i];
            entries += std::string(kFavoriteKey) + std::to_string(i) + "=" + f.DisplayName + "\t" + f.VmxPath + "\t" +
                       std::to_string(f.ConfigVersion) + "\n";
        }
        written = entries.empty() ? ini.DeleteSection() : ini.setINISection(entries);
    }
    if (!written) {
        failures.push_back(notice(MessageKind::Warning, "The settings could not be saved: " + ini.LastError()));
    }

    if (auto failure = registry.setValueEx(RegistryRoot::CurrentUser, kSettingsRegistryKey, kIniLocationValue,
                                           RegType::String, s.IniLocation)) {
        failures.push_back(*failure);
    }
    return failures;
}

std::vector<Message> LoadSettings(ProgramSettings& settings) {
    cRegistry registry;
    return LoadSettings(settings, registry);
}

std::vector<Message> SaveSettings(const ProgramSettings& settings) {
    cRegistry registry;
    return SaveSettings(settings, registry);
}

}  // namespace arden
