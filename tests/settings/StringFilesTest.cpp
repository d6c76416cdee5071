#include "encoding/Utf8.h"
#include "settings/LanguageCatalogue.h"
#include "settings/Localizer.h"
#include "settings/StringKeys.h"
#include "settings/StringTable.h"

#include "ScratchFolder.h"

#include <gtest/gtest.h>

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
