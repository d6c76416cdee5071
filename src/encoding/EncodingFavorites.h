#pragma once

#include "encoding/TextEncoding.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

inline constexpr std::size_t MaxEncodingFavorites = 3;

// Drops repeats as they arrive, then keeps the first three distinct values.
std::vector<TextEncoding> SanitizeFavorites(const std::vector<TextEncoding>& favorites);

// Reads the names of a favourites list: each through EncodingFromName, so an unknown name is Ascii.
std::vector<TextEncoding> FavoritesFromNames(const std::vector<std::string>& names);

// The names written for a favourites list: common names for 0 to 3, codes for the rest.
std::vector<std::string> FavoriteNames(const std::vector<TextEncoding>& favorites);

bool IsFavorite(const std::vector<TextEncoding>& favorites, TextEncoding encoding);

// Enable rules of the favourites menu items; `busy` is true while a long operation runs.
bool CanAddFavorite(const std::vector<TextEncoding>& favorites, TextEncoding current, bool busy);
bool CanRemoveFavorite(const std::vector<TextEncoding>& favorites, TextEncoding current, bool busy);
bool CanClearFavorites(const std::vector<TextEncoding>& favorites, bool busy);

// Each answers whether the list changed, so the caller knows to save the settings.
bool AddFavorite(std::vector<TextEncoding>& favorites, TextEncoding current);
bool RemoveFavorite(std::vector<TextEncoding>& favorites, TextEncoding current);
bool ClearFavorites(std::vector<TextEncoding>& favorites);

// Label of a favourite's menu item: a star, a blank and the display name.
std::u16string FavoriteMenuLabel(TextEncoding encoding);

} // namespace tlm
