#pragma once
// The favourites: the configurations saved or opened through the program and not removed,
// shown on the Home list. The list itself is a widget of the desktop program; what it shows
// (rows, order, icons) is decided here.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace arden {

// The configuration version the program writes; lower versions are shown as old.
inline constexpr std::int16_t kCurrentConfigVersion = 8;

struct FavoriteRecord {
    std::string DisplayName;  // unique key of the list, compared exactly
    std::string VmxPath;
    std::int16_t ConfigVersion = kCurrentConfigVersion;
    std::int16_t Status = 0;  // always 0 when loaded
    bool operator==(const FavoriteRecord&) const = default;
};

// Overwrites the entry with the same DisplayName (the last one found when several match), or
// appends the record.
void AddFavorite(std::vector<FavoriteRecord>& favorites, const FavoriteRecord& record);

// AddFavorite for each record in order, in one pass over the list however long both are.
void AddFavorites(std::vector<FavoriteRecord>& favorites, std::vector<FavoriteRecord> records);

// Removes the entry (every entry) with that DisplayName; false when there was none.
bool RemoveFavorite(std::vector<FavoriteRecord>& favorites, std::string_view displayName);

// Keys of the Home list's image list. The list assigns only the first four; the others are
// carried for running and paused states that are never detected.
inline constexpr std::array<std::string_view, 9> kFavoriteImageKeys = {
    "VM", "VMMissing", "OldVM", "OldVMMissing", "Running", "VMPaused", "Missing", "OldVMRunning", "OldVMPaused"};

// "VM", "VMMissing", "OldVM" or "OldVMMissing" by the version (8 or more is current) and
// whether the configuration file exists.
std::string_view favoriteIconKey(std::int16_t configVersion, bool fileExists);

// Whether a favourite's file is there: a file (not a folder) found at the path as given.
bool favoriteFileExists(std::string_view vmxPath);

// One row of the Home list: the display name as its text, the path and version as its
// sub-items, and its icon key.
struct FavoriteRow {
    std::string DisplayName;
    std::string VmxPath;
    std::string ConfigVersion;
    std::string_view IconKey;
};

// The rows of the Home list, one per favourite in array order, icons by the rule above.
std::vector<FavoriteRow> favoriteListRows(const std::vector<FavoriteRecord>& favorites);

}  // namespace arden
