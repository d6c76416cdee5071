#include "encoding/EncodingCatalogue.h"
#include "settings/StringKeys.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace tlm {
namespace {

TEST(StringKeys, ThereAre136DistinctKeys)
{
    const auto keys = AllStringKeys();
    EXPECT_EQ(keys.size(), 136u);
    EXPECT_EQ(std::set<std::string_view>(keys.begin(), keys.end()).size(), keys.size());
}

TEST(StringKeys, EachGroupHoldsItsNumberOfKeys)
{
    std::map<std::string_view, int> counts;
    for (std::string_view key : AllStringKeys())
        ++counts[key.substr(0, key.find('.'))];
    const std::map<std::string_view, int> expected{{"about", 3}, {"app", 1}, {"confirm", 1}, {"dialog", 20},
        {"error", 9}, {"inspector", 16}, {"menu", 52}, {"status", 12}, {"structview", 22}};
    EXPECT_EQ(counts, expected);
}

TEST(StringKeys, KeysAreDottedLowerCase)
{
    for (std::string_view key : AllStringKeys()) {
        EXPECT_NE(key.find('.'), std::string_view::npos) << key;
        for (char c : key)
            EXPECT_TRUE((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' || c == '_') << key;
    }
}

TEST(StringKeys, EveryEncodingMenuKeyIsInTheList)
{
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        const auto encoding = static_cast<TextEncoding>(value);
        EXPECT_TRUE(IsStringKey(EncodingMenuKey(encoding))) << value;
        const EncodingGroup group = EncodingGroupOf(encoding);
        if (group != EncodingGroup::Common) {
            EXPECT_TRUE(IsStringKey(EncodingGroupMenuKey(group))) << value;
        }
    }
}

TEST(StringKeys, KnowsItsKeysAndNoOthers)
{
    EXPECT_TRUE(IsStringKey("app.title"));
    EXPECT_TRUE(IsStringKey("structview.valueformat.numericbase.hex"));
    EXPECT_FALSE(IsStringKey("app"));
    EXPECT_FALSE(IsStringKey("menu.file.open "));
}

} // namespace
} // namespace tlm
