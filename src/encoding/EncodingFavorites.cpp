#include "encoding/EncodingFavorites.h"

#include "encoding/EncodingCatalogue.h"

#include <algorithm>

namespace tlm {

std::vector<TextEncoding> SanitizeFavorites(const std::vector<TextEncoding>& favorites)
{
    std::vector<TextEncoding> result;
    for (TextEncoding encoding : favorites) {
        if (result.size() == MaxEncodingFavorites) {
            break;
        }
        if (!IsFavorite(result, encoding)) {
            result.push_back(encoding);
        }
    }
    return result;
}

std::vector<TextEncoding> FavoritesFromNames(const std::vector<std::string>& names)
{
    std::vector<TextEncoding> encodings;
    encodings.reserve(names.size());
    for (const std::string& name : names) {
        encodings.push_back(EncodingFromName(name));
    }
    return SanitizeFavorites(encodings);
}

std::vector<std::string> FavoriteNames(const std::vector<TextEncoding>& favorites)
{
    std::vector<std::string> names;
    names.reserve(favorites.size());
    for (TextEncoding encoding : favorites) {
        names.push_back(EncodingWrittenName(encoding));
    }
    return names;
}

bool IsFavorite(const std::vector<TextEncoding>& favorites, TextEncoding encoding)
{
    return std::find(favorites.begin(), favorites.end(), encoding) != favorites.end();
}

bool CanAddFavorite(const std::vector<TextEncoding>& favorites, TextEncoding current, bool busy)
{
    return !busy && !IsFavorite(favorites, current) && favorites.size() < MaxEncodingFavorites;
}

bool CanRemoveFavorite(const std::vector<TextEncoding>& favorites, TextEncoding current, bool busy)
{
    return !busy && IsFavorite(favorites, current);
}

bool CanClearFavorites(const std::vector<TextEncoding>& favorites, bool busy)
{
    return !busy && !favorites.empty();
}

bool AddFavorite(std::vector<TextEncoding>& favorites, TextEncoding current)
{
    if (!CanAddFavorite(favorites, current, false)) {
        return false;
    }
    favorites.push_back(current);
    return true;
}

bool RemoveFavorite(std::vector<TextEncoding>& favorites, TextEncoding current)
{
    const auto found = std::find(favorites.begin(), favorites.end(), current);
    if (found == favorites.end()) {
        return false;
    }
    favorites.erase(found);
    return true;
}

bool ClearFavorites(std::vector<TextEncoding>& favorites)
{
    if (favorites.empty()) {
        return false;
    }
    favorites.clear();
    return true;
}

std::u16string FavoriteMenuLabel(TextEncoding encoding)
{
    return u"\u2605 " + EncodingDisplayName(encoding);
}

} // namespace tlm
