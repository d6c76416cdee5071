#include "encoding/EncodingCatalogue.h"
#include "encoding/EncodingFavorites.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using Favorites = std::vector<TextEncoding>;

TEST(EncodingFavorites, ShiftJisNameReadsAsFourAndIsWrittenAsCp932)
{
    const Favorites favorites = FavoritesFromNames({"Shift_JIS"});
    ASSERT_EQ(favorites, Favorites{TextEncoding::ShiftJis});
    EXPECT_EQ(FavoriteNames(favorites), std::vector<std::string>{"cp932"});
}

TEST(EncodingFavorites, AliasesOfOneEncodingCollapse)
{
    EXPECT_EQ(FavoritesFromNames({"gbk", "cp936", "GBK"}), Favorites{TextEncoding::Gbk});
}

TEST(EncodingFavorites, TwoUnknownNamesGiveOneAscii)
{
    EXPECT_EQ(FavoritesFromNames({"foo", "bar"}), Favorites{TextEncoding::Ascii});
}

TEST(EncodingFavorites, FiveDifferentKeepTheFirstThree)
{
    EXPECT_EQ(FavoritesFromNames({"utf8", "big5", "gbk", "tis-620", "cp932"}),
        (Favorites{TextEncoding::Utf8, TextEncoding::Big5, TextEncoding::Gbk}));
}

TEST(EncodingFavorites, WrittenNamesAreCommonNamesOrCodes)
{
    EXPECT_EQ(FavoriteNames({TextEncoding::Ascii, TextEncoding::EucKr, TextEncoding::Tis620}),
        (std::vector<std::string>{"ascii", "euc-kr", "tis-620"}));
}

TEST(EncodingFavorites, AddIsDisabledWithThreeFavoritesAndChoosingOneEnablesRemove)
{
    Favorites favorites{TextEncoding::Utf8, TextEncoding::Big5, TextEncoding::Gbk};
    TextEncoding current = TextEncoding::ShiftJis;
    EXPECT_FALSE(CanAddFavorite(favorites, current, false));
    EXPECT_FALSE(CanRemoveFavorite(favorites, current, false));
    EXPECT_FALSE(AddFavorite(favorites, current));
    current = favorites[1];
    EXPECT_TRUE(CanRemoveFavorite(favorites, current, false));
}

TEST(EncodingFavorites, AddAppendsAndRemoveClosesTheGap)
{
    Favorites favorites;
    EXPECT_TRUE(AddFavorite(favorites, TextEncoding::Utf8));
    EXPECT_TRUE(AddFavorite(favorites, TextEncoding::Big5));
    EXPECT_FALSE(AddFavorite(favorites, TextEncoding::Big5));
    EXPECT_TRUE(AddFavorite(favorites, TextEncoding::Gbk));
    EXPECT_TRUE(RemoveFavorite(favorites, TextEncoding::Big5));
    EXPECT_EQ(favorites, (Favorites{TextEncoding::Utf8, TextEncoding::Gbk}));
    EXPECT_TRUE(ClearFavorites(favorites));
    EXPECT_FALSE(ClearFavorites(favorites));
}

TEST(EncodingFavorites, EveryItemIsDisabledWhileBusy)
{
    const Favorites favorites{TextEncoding::Utf8};
    EXPECT_FALSE(CanAddFavorite(favorites, TextEncoding::Gbk, true));
    EXPECT_FALSE(CanRemoveFavorite(favorites, TextEncoding::Utf8, true));
    EXPECT_FALSE(CanClearFavorites(favorites, true));
    EXPECT_TRUE(CanClearFavorites(favorites, false));
}

TEST(EncodingFavorites, MenuLabelIsAStarAndTheDisplayName)
{
    EXPECT_EQ(FavoriteMenuLabel(TextEncoding::ShiftJis), u"\u2605 Shift_JIS");
}

} // namespace
} // namespace tlm
