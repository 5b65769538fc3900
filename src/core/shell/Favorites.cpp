#include "core/shell/Favorites.h"

#include <algorithm>
#include <filesystem>
#include <unordered_map>

namespace arden {

void AddFavorite(std::vector<FavoriteRecord>& favorites, const FavoriteRecord& record) {
    auto match = std::find_if(favorites.rbegin(), favorites.rend(),
                              [&](const FavoriteRecord& f) { return f.DisplayName == record.DisplayName; });
    if (match != favorites.rend()) {
        *match = record;
    } else {
        favorites.push_back(record);
    }
}

void AddFavorites(std::vector<FavoriteRecord>& favorites, const std::vector<FavoriteRecord>& records) {
    // Each name's last index in the list: the entry AddFavorite would overwrite.
    std::unordered_map<std::string, std::size_t> last;
    last.reserve(favorites.size() + records.size());
    for (std::size_t i = 0; i < favorites.size(); ++i) last[favorites[i].DisplayName] = i;
    for (const FavoriteRecord& record : records) {
        auto [it, added] = last.try_emplace(record.DisplayName, favorites.size());
        if (added) favorites.push_back(record);
        else favorites[it->second] = record;
    }
}

bool RemoveFavorite(std::vector<FavoriteRecord>& favorites, std::string_view displayName) {
    return std::erase_if(favorites, [&](const FavoriteRecord& f) { return f.DisplayName == displayName; }) > 0;
}

std::string_view favoriteIconKey(std::int16_t configVersion, bool fileExists) {
    // [old][missing]
    static constexpr std::string_view kKeys[2][2] = {{"VM", "VMMissing"}, {"OldVM", "OldVMMissing"}};
    return kKeys[configVersion < kCurrentConfigVersion ? 1 : 0][fileExists ? 0 : 1];
}

bool favoriteFileExists(std::string_view vmxPath) {
    if (vmxPath.empty()) return false;
    std::error_code ec;
    auto status = std::filesystem::status(std::filesystem::path(vmxPath), ec);
    return !ec && std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

std::vector<FavoriteRow> favoriteListRows(const std::vector<FavoriteRecord>& favorites) {
    std::vector<FavoriteRow> rows;
    rows.reserve(favorites.size());
    for (const FavoriteRecord& f : favorites) {
        rows.push_back({f.DisplayName, f.VmxPath, std::to_string(f.ConfigVersion),
                        favoriteIconKey(f.ConfigVersion, favoriteFileExists(f.VmxPath))});
    }
    return rows;
}

}  // namespace arden
