#include "settings/SettingsReader.h"
#include "settings/SettingsWriter.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

using Favorites = std::vector<TextEncoding>;

AppSettings Read(std::string_view text, AppSettings start = {})
{
    EXPECT_TRUE(ParseSettings(text, start));
    return start;
}

std::string WithRecentFiles(std::string_view array)
{
    return "{\r\n  \"recentFiles\": " + std::string(array) + "\r\n}\r\n";
}

TEST(SettingsReader, EmptyTextIsNotASettingsFile)
{
    AppSettings settings;
    EXPECT_FALSE(ParseSettings("", settings));
    EXPECT_FALSE(ParseSettings("\xEF\xBB\xBF", settings));
}

TEST(SettingsReader, AFileReadsBackIntoTheRecordItCameFrom)
{
    AppSettings settings;
    settings.appVersion = u"v2.00";
    settings.encoding = TextEncoding::Windows1258;
    settings.theme = Theme::DarkBlue;
    settings.language = u"uk-UA";
    settings.fontFamily = u"Cascadia Mono";
    settings.fontSize = 14.5f;
    settings.structViewVisible = true;
    settings.recentFiles = {u"C:\\one.bin"};
    settings.searchHistory = {{u"hex", u"DE AD"}};
    EXPECT_EQ(Read(SerializeSettings(settings)), settings);
}

TEST(SettingsReader, FieldsWhoseKeysAreMissingKeepTheirValues)
{
    AppSettings start;
    start.theme = Theme::Black;
    start.fontSize = 30.0f;
    start.recentFiles = {u"/kept"};
    start.encoding = TextEncoding::Big5;
    EXPECT_EQ(Read(R"({"language": "fr-FR"})", start).theme, Theme::Black);
    const AppSettings read = Read(R"({"language": "fr-FR"})", start);
    EXPECT_EQ(read.language, u"fr-FR");
    EXPECT_EQ(read.fontSize, 30.0f);
    EXPECT_EQ(read.recentFiles, std::vector<std::u16string>{u"/kept"});
    EXPECT_EQ(read.encoding, TextEncoding::Big5);
}

TEST(SettingsReader, AFileWithAByteOrderMarkReadsLikeOneWithout)
{
    AppSettings settings;
    settings.appVersion = u"v2.00";
    settings.theme = Theme::Light;
    settings.language = u"pl-PL";
    const std::string text = SerializeSettings(settings);
    EXPECT_EQ(Read("\xEF\xBB\xBF" + text), Read(text));
    EXPECT_EQ(Read("\xEF\xBB\xBF" + text).language, u"pl-PL");
    EXPECT_EQ(Read("\xEF\xBB\xBF{\"language\": \"hu-HU\"}").language, u"hu-HU");
}

TEST(SettingsReader, OnlyTheFirstByteOrderMarkIsDropped)
{
    // A second mark stands before the outermost object's first member, where no member can begin.
    EXPECT_EQ(Read("\xEF\xBB\xBF\xEF\xBB\xBF{\"language\": \"hu-HU\"}").language, u"hu-HU");
    EXPECT_EQ(Read("\xEF\xBB\xBF{\xEF\xBB\xBF\"language\": \"hu-HU\"}").language, u"system");
}

TEST(SettingsReader, AControlCharacterInAPathComesBackAsItsEscapeLetters)
{
    AppSettings settings;
    settings.recentFiles = {u"/tmp/a\u0001b"};
    const AppSettings read = Read(SerializeSettings(settings));
    EXPECT_EQ(read.recentFiles, std::vector<std::u16string>{u"/tmp/au0001b"});
}

TEST(SettingsReader, ANumericThemeTakesTheFollowingStringAndGivesCoolSlate)
{
    AppSettings start;
    start.theme = Theme::Black;
    EXPECT_EQ(Read("{\r\n  \"theme\": 3,\r\n  \"language\": \"system\"\r\n}\r\n", start).theme, Theme::CoolSlate);
}

TEST(SettingsReader, ThemeIsMatchedExactly)
{
    EXPECT_EQ(Read(R"({"theme": "Light"})").theme, Theme::Light);
    EXPECT_EQ(Read(R"({"theme": "DarkBlue"})").theme, Theme::DarkBlue);
    EXPECT_EQ(Read(R"({"theme": "Black"})").theme, Theme::Black);
    AppSettings start;
    start.theme = Theme::Black;
    EXPECT_EQ(Read(R"({"theme": "light"})", start).theme, Theme::CoolSlate);
    EXPECT_EQ(Read(R"({"theme": "Black "})", start).theme, Theme::CoolSlate);
}

TEST(SettingsReader, AnEmptyThemeChangesNothing)
{
    AppSettings start;
    start.theme = Theme::Light;
    EXPECT_EQ(Read(R"({"theme": ""})", start).theme, Theme::Light);
}

TEST(SettingsReader, EmptyVersionLanguageAndFamilyAreIgnored)
{
    AppSettings start;
    start.appVersion = u"v1.00";
    start.language = u"de-DE";
    start.fontFamily = u"Lucida Console";
    const AppSettings read = Read(R"({"appVersion": "", "language": "", "font": {"family": ""}})", start);
    EXPECT_EQ(read.appVersion, u"v1.00");
    EXPECT_EQ(read.language, u"de-DE");
    EXPECT_EQ(read.fontFamily, u"Lucida Console");
}

TEST(SettingsReader, LanguageIsTakenOnlyFromTheTopLevel)
{
    const std::string text = R"({"encoding": {"kind": "charset", "charset": {"language": "korean", "code": "cp949"}}})";
    const AppSettings read = Read(text);
    EXPECT_EQ(read.language, u"system");
    EXPECT_EQ(read.encoding, TextEncoding::Windows949);
}

TEST(SettingsReader, LanguageIsStoredAsWritten)
{
    EXPECT_EQ(Read(R"({"language": "de"})").language, u"de");
}

TEST(SettingsReader, ShiftJisFavoriteReadsAsCp932AndIsWrittenBackAsCp932)
{
    const AppSettings read = Read(R"({"encodingFavorites": ["Shift_JIS"]})");
    ASSERT_EQ(read.encodingFavorites, Favorites{TextEncoding::ShiftJis});
    EXPECT_NE(SerializeSettings(read).find(R"("encodingFavorites": ["cp932"],)"), std::string::npos);
}

TEST(SettingsReader, GbkAliasesGiveOneFavorite)
{
    EXPECT_EQ(Read(R"({"encodingFavorites": ["gbk", "cp936", "GBK"]})").encodingFavorites, Favorites{TextEncoding::Gbk});
}

TEST(SettingsReader, TwoUnknownFavoritesGiveOneAscii)
{
    EXPECT_EQ(Read(R"({"encodingFavorites": ["klingon", "vulcan"]})").encodingFavorites,
        Favorites{TextEncoding::Ascii});
}

TEST(SettingsReader, FiveFavoritesKeepTheFirstThree)
{
    EXPECT_EQ(Read(R"({"encodingFavorites": ["utf8", "big5", "euc-kr", "tis-620", "cp932"]})").encodingFavorites,
        (Favorites{TextEncoding::Utf8, TextEncoding::Big5, TextEncoding::EucKr}));
}

TEST(SettingsReader, NonAsciiLettersOfAFavoriteOrCharsetNameAreDroppedByteByByteBeforeComparing)
{
    // "gb\u00E9k" keeps "gbk" and "big5\u00A0" keeps "big5"; "sh\u0131ftjis" keeps "shftjis", which is
    // no name at all and so reads as ASCII.
    const std::string favorites = "{\"encodingFavorites\": [\"gb\xC3\xA9k\", \"big5\xC2\xA0\", \"sh\xC4\xB1" "ftjis\"]}";
    EXPECT_EQ(Read(favorites).encodingFavorites, (Favorites{TextEncoding::Gbk, TextEncoding::Big5, TextEncoding::Ascii}));
    EXPECT_EQ(ReadEncoding("{\"encoding\": {\"kind\": \"charset\", \"charset\": {\"language\": \"\xE2\x80\x8Bthai\", "
                           "\"code\": \"tis\xE2\x80\x91" "620\"}}}"),
        TextEncoding::Tis620);
    EXPECT_FALSE(ReadEncoding("{\"encoding\": {\"kind\": \"charset\", \"charset\": {\"language\": \"jap\xC3\xA1nese\", "
                              "\"code\": \"cp932\"}}}")
                     .has_value());
}

TEST(SettingsReader, FavoritesWithABracketInANameAreReadWhole)
{
    EXPECT_EQ(Read(R"({"encodingFavorites": ["big5]", "gbk"]})").encodingFavorites,
        (Favorites{TextEncoding::Big5, TextEncoding::Gbk}));
}

TEST(SettingsReader, AnEmptyFavoritesArrayEmptiesTheList)
{
    AppSettings start;
    start.encodingFavorites = {TextEncoding::Utf8};
    EXPECT_TRUE(Read(R"({"encodingFavorites": []})", start).encodingFavorites.empty());
}

TEST(SettingsReader, CharsetJapaneseCp932IsShiftJis)
{
    EXPECT_EQ(ReadEncoding(R"({"encoding": {"kind": "charset", "charset": {"language": "Japanese", "code": "CP-932"}}})"),
        TextEncoding::ShiftJis);
}

TEST(SettingsReader, CharsetCodeUnderTheWrongLanguageLeavesTheEncodingUnchanged)
{
    const std::string text = R"({"encoding": {"kind": "charset", "charset": {"language": "thai", "code": "cp932"}}})";
    EXPECT_FALSE(ReadEncoding(text).has_value());
    AppSettings start;
    start.encoding = TextEncoding::Utf16Be;
    EXPECT_EQ(Read(text, start).encoding, TextEncoding::Utf16Be);
}

TEST(SettingsReader, EveryCharsetWrittenCodeReadsBack)
{
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        AppSettings settings;
        settings.encoding = static_cast<TextEncoding>(value);
        EXPECT_EQ(ReadEncoding(SerializeSettings(settings)), settings.encoding) << value;
    }
}

TEST(SettingsReader, CommonKindAndNamesAreNormalised)
{
    EXPECT_EQ(ReadEncoding(R"({"encoding": {"kind": "COMMON", "common": "UTF-16 BE"}})"), TextEncoding::Utf16Be);
    EXPECT_EQ(ReadEncoding(R"({"encoding": {"kind": "common", "common": "whatever"}})"), TextEncoding::Ascii);
    EXPECT_EQ(ReadEncoding(R"({"encoding": {"kind": "common", "common": "sjis"}})"), TextEncoding::ShiftJis);
}

TEST(SettingsReader, AnUnknownKindLeavesTheEncodingUnchanged)
{
    EXPECT_FALSE(ReadEncoding(R"({"encoding": {"kind": "other", "common": "utf8"}})").has_value());
    EXPECT_FALSE(ReadEncoding(R"({"encoding": {"common": "utf8"}})").has_value());
    EXPECT_FALSE(ReadEncoding(R"({"encoding": "utf8"})").has_value());
}

TEST(SettingsReader, ABracketInARecentFileCutsTheListShort)
{
    AppSettings settings;
    settings.recentFiles = {u"/a", u"/b[1]", u"/c"};
    EXPECT_EQ(Read(SerializeSettings(settings)).recentFiles, std::vector<std::u16string>{u"/a"});
}

TEST(SettingsReader, RecentFilesReplaceTheListAndKeepSixteen)
{
    std::string array = "[";
    for (int i = 0; i < 20; ++i)
        array += (i ? ", \"/f" : "\"/f") + std::to_string(i) + "\"";
    array += "]";
    const AppSettings read = Read(WithRecentFiles(array));
    ASSERT_EQ(read.recentFiles.size(), 16u);
    EXPECT_EQ(read.recentFiles.front(), u"/f0");
    EXPECT_EQ(read.recentFiles.back(), u"/f15");
}

TEST(SettingsReader, RecentFilesAreDecodedFromUtf8)
{
    EXPECT_EQ(Read(WithRecentFiles("[\"C:\\\\\xE6\x97\xA5\xE6\x9C\xAC.bin\"]")).recentFiles,
        std::vector<std::u16string>{u"C:\\日本.bin"});
}

TEST(SettingsReader, InvalidUtf8BecomesReplacementCharacters)
{
    EXPECT_EQ(Read(WithRecentFiles("[\"a\xFF" "b\"]")).recentFiles, std::vector<std::u16string>{u"a\uFFFDb"});
}

TEST(SettingsReader, SearchHistoryNeedsBothKindAndQuery)
{
    const auto history = ReadSearchHistory(
        R"({"searchHistory": [{"kind": "text", "query": "a"}, {"kind": "hex"}, {"query": "b"}, {"query": "c", "kind": "hex"}]})");
    ASSERT_TRUE(history.has_value());
    EXPECT_EQ(*history, (std::vector<SearchHistoryEntry>{{u"text", u"a"}, {u"hex", u"c"}}));
}

TEST(SettingsReader, SearchHistoryKeepsBracketsAndBracesInQueries)
{
    AppSettings settings;
    settings.searchHistory = {{u"text", u"]}{["}, {u"hex", u"0A"}};
    EXPECT_EQ(Read(SerializeSettings(settings)).searchHistory, settings.searchHistory);
}

TEST(SettingsReader, SearchHistoryKeepsSixteen)
{
    std::string text = R"({"searchHistory": [)";
    for (int i = 0; i < 18; ++i)
        text += (i ? ", " : "") + std::string(R"({"kind": "text", "query": "q)") + std::to_string(i) + "\"}";
    text += "]}";
    const AppSettings read = Read(text);
    ASSERT_EQ(read.searchHistory.size(), 16u);
    EXPECT_EQ(read.searchHistory.back().query, u"q15");
}

TEST(SettingsReader, FontValuesAreReadFromTheFontObject)
{
    const AppSettings read =
        Read(R"({"family": "Wrong", "font": {"family": "Source Code Pro", "size": 9.5, "bold": true, "italic": true}})");
    EXPECT_EQ(read.fontFamily, u"Source Code Pro");
    EXPECT_EQ(read.fontSize, 9.5f);
    EXPECT_TRUE(read.fontBold);
    EXPECT_TRUE(read.fontItalic);
}

TEST(SettingsReader, FontValuesAreNotLimitedToTheFontObject)
{
    const AppSettings read = Read(R"({"font": {}, "analysis": {"family": "Beyond", "size": 20}})");
    EXPECT_EQ(read.fontFamily, u"Beyond");
    EXPECT_EQ(read.fontSize, 20.0f);
}

TEST(SettingsReader, SizeNotAboveZeroIsNotTaken)
{
    EXPECT_EQ(Read(R"({"font": {"size": 0}})").fontSize, 12.0f);
    EXPECT_EQ(Read(R"({"font": {"size": -4}})").fontSize, 12.0f);
}

TEST(SettingsReader, SizeThatDoesNotConvertLeavesTheFieldUnchanged)
{
    AppSettings start;
    start.fontSize = 15.0f;
    EXPECT_EQ(Read(R"({"font": {"size": +-., "bold": true}})", start).fontSize, 15.0f);
    EXPECT_EQ(Read(R"({"font": {"size": .-5}})", start).fontSize, 15.0f);
    EXPECT_EQ(Read(R"({"font": {"size": "14"}})", start).fontSize, 15.0f);
    EXPECT_TRUE(Read(R"({"font": {"size": +-., "bold": true}})", start).fontBold);
}

TEST(SettingsReader, SizeWithASecondPointKeepsTheNumberBeforeIt)
{
    EXPECT_EQ(Read(R"({"font": {"size": 10.5.1}})").fontSize, 10.5f);
}

TEST(SettingsReader, SizeWithAnExponentKeepsOnlyItsMantissa)
{
    EXPECT_EQ(Read(R"({"font": {"size": 1.5e+01}})").fontSize, 1.5f);
}

TEST(SettingsReader, ObjectsWhoseBracesDoNotBalanceAreNotRead)
{
    const AppSettings read = Read(R"({"font": {"family": "Unclosed", "size": 20)");
    EXPECT_EQ(read.fontFamily, u"Consolas");
    EXPECT_EQ(read.fontSize, 12.0f);
}

TEST(SettingsReader, AnalysisValuesAreReadFromTheirObjects)
{
    const AppSettings read = Read(R"({"analysis": {"dataInspector": {"visible": false}, "structView": {"visible": true,
        "byteArrayFormat": "ascii", "endian": "big", "numericBase": "dec"}}})");
    EXPECT_FALSE(read.dataInspectorVisible);
    EXPECT_TRUE(read.structViewVisible);
    EXPECT_EQ(read.byteArrayFormat, ByteArrayFormat::Ascii);
    EXPECT_EQ(read.endian, StructEndian::Big);
    EXPECT_EQ(read.numericBase, NumericBase::Dec);
}

TEST(SettingsReader, UnknownStructViewChoicesResetToTheFirstEnumerator)
{
    AppSettings start;
    start.byteArrayFormat = ByteArrayFormat::Ascii;
    start.endian = StructEndian::Big;
    start.numericBase = NumericBase::Dec;
    const AppSettings read = Read(
        R"({"analysis": {"structView": {"byteArrayFormat": "ASCII", "endian": "Big", "numericBase": "decimal"}}})", start);
    EXPECT_EQ(read.byteArrayFormat, ByteArrayFormat::Hex);
    EXPECT_EQ(read.endian, StructEndian::Little);
    EXPECT_EQ(read.numericBase, NumericBase::Hex);
}

TEST(SettingsReader, AnalysisWithoutItsObjectIsNotRead)
{
    const AppSettings read = Read(R"({"structView": {"visible": true}, "dataInspector": {"visible": false}})");
    EXPECT_FALSE(read.structViewVisible);
    EXPECT_TRUE(read.dataInspectorVisible);
}

TEST(SettingsReader, AVisibleThatIsNotABooleanChangesNothing)
{
    EXPECT_TRUE(Read(R"({"analysis": {"dataInspector": {"visible": "no"}}})").dataInspectorVisible);
}

TEST(SettingsReader, GarbageLeavesTheRecordAsItWas)
{
    const AppSettings start;
    EXPECT_EQ(Read("not a settings file at all", start), start);
    EXPECT_EQ(Read("{{{{[[[[\"\\", start), start);
    EXPECT_EQ(Read(std::string_view("\0\0\0", 3), start), start);
}

} // namespace
} // namespace tlm
