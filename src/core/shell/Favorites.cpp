#include "core/shell/Favorites.h"
#include "core/support/PathText.h"

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

void AddFavorites(std::vector<FavoriteRecord>& favorites, std::vector<FavoriteRecord> records) {
    // Each name's last index in the list: the entry AddFavorite would overwrite. The keys view
    // the names held in the list, which neither moves (room is reserved first) nor has a name
    // rewritten (an overwritten entry keeps its equal name).
    favorites.reserve(favorites.size() + records.size());
    std::unordered_map<std::string_view, std::size_t> last;
    last.reserve(favorites.size() + records.size());
    for (std::size_t i = 0; i < favorites.size(); ++i) last[favorites[i].DisplayName] = i;
    for (FavoriteRecord& record : records) {
        auto found = last.find(record.DisplayName);
        if (found == last.end()) {
            favorites.push_back(std::move(record));
            last.emplace(favorites.back().DisplayName, favorites.size() - 1);
        } else {
            FavoriteRecord& entry = favorites[found->second];
            entry.VmxPath = std::move(record.VmxPath);
            entry.ConfigVersion = record.ConfigVersion;
            entry.Status = record.Status;
        }
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
    auto status = std::filesystem::status(filePath(vmxPath), ec);
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
