#include "encoding/Utf8.h"
#include "settings/LanguageCatalogue.h"
#include "settings/Localizer.h"
#include "settings/StringKeys.h"
#include "settings/StringTable.h"

#include "ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

// Checks the language files that ship with the program against the program's list of keys.
namespace tlm {
namespace {

namespace fs = std::filesystem;

fs::path ProgramFolder()
{
    return fs::path(TOLMO_SOURCE_DIR);
}

std::string CodeText(std::u16string_view code)
{
    return std::string(code.begin(), code.end());
}

fs::path LanguageFile(std::u16string_view code)
{
    return ProgramFolder() / "resources" / "strings" / (CodeText(code) + ".txt");
}

// The keys of a file in the order of their lines, repeats included.
std::vector<std::string> KeyLines(const std::string& bytes)
{
    std::vector<std::string> keys;
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t end = bytes.find('\n', start);
        if (end == std::string::npos)
            end = bytes.size();
        const std::string line = bytes.substr(start, end - start);
        const std::size_t equals = line.find('=');
        if (!line.empty() && line[0] != '#' && equals != std::string::npos) {
            const std::u16string key = Utf8ToUtf16(line.substr(0, equals)).value_or(u"");
            std::u16string_view trimmed = key;
            while (!trimmed.empty() && (trimmed.front() == u' ' || trimmed.front() == u'\t'))
                trimmed.remove_prefix(1);
            while (!trimmed.empty() && (trimmed.back() == u' ' || trimmed.back() == u'\t'))
                trimmed.remove_suffix(1);
            keys.push_back(NarrowStringKey(trimmed));
        }
        start = end + 1;
    }
    return keys;
}

class StringFilesTest : public ::testing::TestWithParam<std::u16string_view> {
protected:
    std::string Bytes() const { return test::ReadBytes(LanguageFile(GetParam())); }
};

// Every language but English, which the others are compared with.
class TranslatedFilesTest : public StringFilesTest {};

TEST_P(StringFilesTest, FileExistsAndIsValidUtf8WithoutAByteOrderMark)
{
    ASSERT_TRUE(fs::is_regular_file(LanguageFile(GetParam()))) << LanguageFile(GetParam());
    const std::string bytes = Bytes();
    ASSERT_FALSE(bytes.empty());
    EXPECT_FALSE(bytes.starts_with("\xEF\xBB\xBF"));
    EXPECT_TRUE(Utf8ToUtf16(bytes).has_value());
}

TEST_P(StringFilesTest, HoldsEveryKeyOfTheProgramOnceAndNoOther)
{
    const std::vector<std::string> lines = KeyLines(Bytes());
    const std::set<std::string> present(lines.begin(), lines.end());
    EXPECT_EQ(lines.size(), present.size()) << "a key is repeated";
    for (std::string_view key : AllStringKeys())
        EXPECT_TRUE(present.contains(std::string(key))) << "missing " << key;
    for (const std::string& key : present)
        EXPECT_TRUE(IsStringKey(key)) << "unknown " << key;
}

TEST_P(StringFilesTest, NoValueIsEmpty)
{
    const StringTable table = ParseStringTable(Bytes());
    for (const auto& [key, value] : table)
        EXPECT_FALSE(value.empty()) << key;
}

TEST_P(StringFilesTest, TheLocalizerFindsEveryKeyInThisLanguage)
{
    Localizer localizer(ProgramFolder().u16string(), [] { return std::vector<std::u16string>{}; });
    localizer.SetLanguage(GetParam());
    ASSERT_EQ(localizer.EffectiveLanguage(), GetParam());
    const StringTable& table = localizer.LoadStringTable(std::u16string(GetParam()));
    for (std::string_view key : AllStringKeys()) {
        ASSERT_TRUE(table.contains(std::string(key))) << key;
        EXPECT_EQ(localizer.Tr(key), table.at(std::string(key))) << key;
    }
}

TEST_P(TranslatedFilesTest, IsNotACopyOfTheEnglishFile)
{
    const StringTable english = ParseStringTable(test::ReadBytes(LanguageFile(u"en-US")));
    const StringTable table = ParseStringTable(Bytes());
    std::size_t same = 0;
    std::string sameKeys;
    for (std::string_view key : AllStringKeys()) {
        const auto found = table.find(std::string(key));
        const auto reference = english.find(std::string(key));
        if (found != table.end() && reference != english.end() && found->second == reference->second) {
            ++same;
            sameKeys.push_back(' ');
            sameKeys.append(key);
        }
    }
    // Product and encoding names, value types such as "UInt16 LE" and words that several languages
    // share with English ("Zoom", "OK", "Offset") stay as they are; at least two thirds must differ.
    EXPECT_LE(same, AllStringKeys().size() / 3) << same << " values equal the English ones:" << sameKeys;
}

// Letters compare for access keys as Windows matches them, without case: enough of Latin and Cyrillic
// for the languages shipped.
char16_t FoldCase(char16_t c)
{
    if ((c >= u'A' && c <= u'Z') || (c >= 0x00C0 && c <= 0x00DE && c != 0x00D7) || (c >= 0x0410 && c <= 0x042F))
        return static_cast<char16_t>(c + 0x20);
    if (c >= 0x0400 && c <= 0x040F)
        return static_cast<char16_t>(c + 0x50);
    if (c >= 0x0100 && c <= 0x017F) {
        const bool oddUpper = (c >= 0x0139 && c <= 0x0148) || (c >= 0x0179 && c <= 0x017E);
        if (oddUpper ? (c % 2 == 1) : (c % 2 == 0 && c != 0x0138))
            return static_cast<char16_t>(c + 1);
    }
    return c;
}

// The access key of a label: the character behind its single '&'; nothing without one.
std::optional<char16_t> AccessKey(std::u16string_view label)
{
    const std::size_t amp = label.find(u'&');
    if (amp == std::u16string_view::npos || amp + 1 >= label.size())
        return std::nullopt;
    return FoldCase(label[amp + 1]);
}

// The labels that stand together in one menu or dialog, where two equal access keys would make one
// of them unreachable.
const std::vector<std::vector<std::string_view>>& LabelGroups()
{
    static const std::vector<std::vector<std::string_view>> groups{
        {"menu.file", "menu.edit", "menu.view", "menu.settings", "menu.help"},
        {"menu.file.open", "menu.file.save", "menu.file.close", "menu.file.more_recent", "menu.file.exit"},
        {"menu.view.find", "menu.view.goto", "menu.view.zoom"},
        {"menu.view.zoom.out", "menu.view.zoom.in", "menu.view.zoom.reset"},
        {"menu.view.encoding", "menu.view.theme", "menu.view.language", "menu.settings.analysis",
            "menu.settings.font"},
        {"menu.view.encoding.favorite", "menu.view.encoding.japanese", "menu.view.encoding.korean",
            "menu.view.encoding.chinese", "menu.view.encoding.thai", "menu.view.encoding.vietnamese",
            "menu.view.encoding.indic"},
        {"menu.view.encoding.favorite.add_current", "menu.view.encoding.favorite.remove_current",
            "menu.view.encoding.favorite.clear"},
        {"menu.view.theme.light", "menu.view.theme.coolslate", "menu.view.theme.darkblue", "menu.view.theme.black"},
        {"menu.settings.analysis.data_inspector", "menu.settings.analysis.struct_view"},
        {"dialog.font.family", "dialog.font.size", "dialog.font.bold", "dialog.font.italic"},
        {"dialog.search.query", "dialog.search.type", "dialog.search.next", "dialog.search.previous"},
        {"structview.valueformat.bytearray", "structview.valueformat.endian", "structview.valueformat.numericbase"},
        {"structview.valueformat.bytearray.hex", "structview.valueformat.bytearray.ascii"},
        {"structview.valueformat.endian.little", "structview.valueformat.endian.big"},
        {"structview.valueformat.numericbase.hex", "structview.valueformat.numericbase.dec"},
    };
    return groups;
}

TEST_P(StringFilesTest, LabelsHaveOneAccessKeyExactlyWhereTheEnglishOnesHaveOne)
{
    const StringTable english = ParseStringTable(test::ReadBytes(LanguageFile(u"en-US")));
    const StringTable table = ParseStringTable(Bytes());
    for (std::string_view key : AllStringKeys()) {
        const auto found = table.find(std::string(key));
        const auto reference = english.find(std::string(key));
        ASSERT_TRUE(found != table.end() && reference != english.end()) << key;
        const std::u16string& text = found->second;
        const auto amps = std::count(text.begin(), text.end(), u'&');
        if (AccessKey(reference->second)) {
            EXPECT_EQ(amps, 1) << key;
            EXPECT_TRUE(AccessKey(text).has_value()) << key;
        } else {
            // Outside a menu or a dialog label the '&' would be shown as it is.
            EXPECT_EQ(amps, 0) << key;
        }
    }
}

TEST_P(StringFilesTest, AccessKeysWithinOneMenuOrDialogDiffer)
{
    const StringTable table = ParseStringTable(Bytes());
    for (const std::vector<std::string_view>& group : LabelGroups()) {
        std::map<char16_t, std::string_view> taken;
        for (std::string_view key : group) {
            const auto found = table.find(std::string(key));
            ASSERT_NE(found, table.end()) << key;
            const auto accessKey = AccessKey(found->second);
            if (!accessKey)
                continue;
            const auto [place, fresh] = taken.emplace(*accessKey, key);
            EXPECT_TRUE(fresh) << key << " takes the access key of " << place->second;
        }
    }
}

std::vector<std::u16string_view> CatalogueCodes(bool withEnglish)
{
    std::vector<std::u16string_view> codes;
    for (const LanguageEntry& entry : LanguageCatalogue()) {
        if (withEnglish || entry.code != FallbackLanguage)
            codes.push_back(entry.code);
    }
    return codes;
}

std::string TestName(const ::testing::TestParamInfo<std::u16string_view>& info)
{
    std::string name;
    for (char16_t c : info.param)
        name.push_back(c == u'-' ? '_' : static_cast<char>(c));
    return name;
}

INSTANTIATE_TEST_SUITE_P(EveryLanguage, StringFilesTest, ::testing::ValuesIn(CatalogueCodes(true)), TestName);
INSTANTIATE_TEST_SUITE_P(EveryTranslation, TranslatedFilesTest, ::testing::ValuesIn(CatalogueCodes(false)), TestName);

TEST(StringFiles, NoOtherLanguageFileLiesBesideThem)
{
    std::set<std::string> expected;
    for (const LanguageEntry& entry : LanguageCatalogue())
        expected.insert(CodeText(entry.code) + ".txt");
    for (const auto& entry : fs::directory_iterator(ProgramFolder() / "resources" / "strings"))
        EXPECT_TRUE(expected.contains(entry.path().filename().string())) << entry.path();
}

} // namespace
} // namespace tlm
