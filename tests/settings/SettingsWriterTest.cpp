#include "settings/SettingsWriter.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

// The file of a default record stamped with the version, line by line.
constexpr std::string_view DefaultFile =
    "{\r\n"
    "  \"appVersion\": \"v2.00\",\r\n"
    "  \"encoding\": {\r\n"
    "    \"kind\": \"common\",\r\n"
    "    \"common\": \"ascii\"\r\n"
    "  },\r\n"
    "  \"encodingFavorites\": [],\r\n"
    "  \"theme\": \"CoolSlate\",\r\n"
    "  \"language\": \"system\",\r\n"
    "  \"font\": {\r\n"
    "    \"family\": \"Consolas\",\r\n"
    "    \"size\": 12,\r\n"
    "    \"bold\": false,\r\n"
    "    \"italic\": false\r\n"
    "  },\r\n"
    "  \"analysis\": {\r\n"
    "    \"dataInspector\": {\r\n"
    "      \"visible\": true\r\n"
    "    },\r\n"
    "    \"structView\": {\r\n"
    "      \"visible\": false,\r\n"
    "      \"byteArrayFormat\": \"hex\",\r\n"
    "      \"endian\": \"little\",\r\n"
    "      \"numericBase\": \"hex\"\r\n"
    "    }\r\n"
    "  },\r\n"
    "  \"recentFiles\": [],\r\n"
    "  \"searchHistory\": []\r\n"
    "}\r\n";

AppSettings Stamped()
{
    AppSettings settings;
    settings.appVersion = u"v2.00";
    return settings;
}

std::string LineOf(const std::string& text, std::string_view start)
{
    const std::size_t begin = text.find(start);
    if (begin == std::string::npos)
        return {};
    return text.substr(begin, text.find("\r\n", begin) - begin);
}

TEST(SettingsWriter, DefaultRecordGivesTheFixedTemplate)
{
    EXPECT_EQ(SerializeSettings(Stamped()), DefaultFile);
}

TEST(SettingsWriter, CharsetEncodingTakesTheNestedForm)
{
    AppSettings settings = Stamped();
    settings.encoding = TextEncoding::EucKr;
    const std::string text = SerializeSettings(settings);
    EXPECT_NE(text.find("  \"encoding\": {\r\n"
                        "    \"kind\": \"charset\",\r\n"
                        "    \"charset\": {\r\n"
                        "      \"language\": \"korean\",\r\n"
                        "      \"code\": \"euc-kr\"\r\n"
                        "    }\r\n"
                        "  },\r\n"),
        std::string::npos)
        << text;
}

TEST(SettingsWriter, EveryEncodingWritesItsNames)
{
    const std::pair<TextEncoding, std::string_view> expected[] = {
        {TextEncoding::Ascii, R"("common": "ascii")"},
        {TextEncoding::Utf8, R"("common": "utf8")"},
        {TextEncoding::Utf16Le, R"("common": "utf16le")"},
        {TextEncoding::Utf16Be, R"("common": "utf16be")"},
        {TextEncoding::ShiftJis, R"("language": "japanese",)"},
        {TextEncoding::ShiftJis, R"("code": "cp932")"},
        {TextEncoding::Windows949, R"("code": "cp949")"},
        {TextEncoding::Big5, R"("language": "chinese",)"},
        {TextEncoding::Gbk, R"("code": "gbk")"},
        {TextEncoding::Tis620, R"("language": "thai",)"},
        {TextEncoding::Tis620, R"("code": "tis-620")"},
        {TextEncoding::Windows1258, R"("language": "vietnamese",)"},
        {TextEncoding::Windows1258, R"("code": "windows-1258")"},
        {TextEncoding::IsciiDevanagari, R"("language": "indic",)"},
        {TextEncoding::IsciiDevanagari, R"("code": "iscii-devanagari")"},
    };
    for (const auto& [encoding, line] : expected) {
        AppSettings settings = Stamped();
        settings.encoding = encoding;
        EXPECT_NE(SerializeSettings(settings).find(line), std::string::npos) << line;
    }
}

TEST(SettingsWriter, AnEncodingOutsideTheSetIsWrittenAsAscii)
{
    AppSettings settings = Stamped();
    settings.encoding = static_cast<TextEncoding>(40);
    EXPECT_EQ(SerializeSettings(settings), DefaultFile);
}

TEST(SettingsWriter, ArraysStandOnOneLineJoinedByCommaAndBlank)
{
    AppSettings settings = Stamped();
    settings.encodingFavorites = {TextEncoding::Utf8, TextEncoding::EucKr, TextEncoding::Tis620};
    settings.recentFiles = {u"C:\\a.bin", u"/b"};
    settings.searchHistory = {{u"text", u"abc"}, {u"hex", u"00 ff"}};
    const std::string text = SerializeSettings(settings);
    EXPECT_EQ(LineOf(text, "  \"encodingFavorites\""), R"(  "encodingFavorites": ["utf8", "euc-kr", "tis-620"],)");
    EXPECT_EQ(LineOf(text, "  \"recentFiles\""), R"(  "recentFiles": ["C:\\a.bin", "/b"],)");
    EXPECT_EQ(LineOf(text, "  \"searchHistory\""),
        R"(  "searchHistory": [{"kind": "text", "query": "abc"}, {"kind": "hex", "query": "00 ff"}])");
}

TEST(SettingsWriter, ThemesAreWrittenByNameAndAnUnknownOneAsCoolSlate)
{
    const std::pair<Theme, std::string_view> expected[] = {
        {Theme::Light, "Light"},
        {Theme::CoolSlate, "CoolSlate"},
        {Theme::DarkBlue, "DarkBlue"},
        {Theme::Black, "Black"},
        {static_cast<Theme>(7), "CoolSlate"},
    };
    for (const auto& [theme, name] : expected) {
        AppSettings settings = Stamped();
        settings.theme = theme;
        EXPECT_EQ(LineOf(SerializeSettings(settings), "  \"theme\""), "  \"theme\": \"" + std::string(name) + "\",");
    }
}

TEST(SettingsWriter, LanguageIsWrittenNormalised)
{
    AppSettings settings = Stamped();
    settings.language = u"ru";
    EXPECT_EQ(LineOf(SerializeSettings(settings), "  \"language\""), R"(  "language": "ru-RU",)");
    settings.language = u"Japanese";
    EXPECT_EQ(LineOf(SerializeSettings(settings), "  \"language\""), R"(  "language": "ja-JP",)");
    settings.language = u"xx-YY";
    EXPECT_EQ(LineOf(SerializeSettings(settings), "  \"language\""), R"(  "language": "system",)");
}

TEST(SettingsWriter, StructViewChoicesAreWrittenByName)
{
    AppSettings settings = Stamped();
    settings.dataInspectorVisible = false;
    settings.structViewVisible = true;
    settings.byteArrayFormat = ByteArrayFormat::Ascii;
    settings.endian = StructEndian::Big;
    settings.numericBase = NumericBase::Dec;
    settings.fontBold = true;
    settings.fontItalic = true;
    const std::string text = SerializeSettings(settings);
    EXPECT_NE(text.find("      \"visible\": false\r\n"), std::string::npos);
    EXPECT_NE(text.find("      \"visible\": true,\r\n"), std::string::npos);
    EXPECT_NE(text.find("      \"byteArrayFormat\": \"ascii\",\r\n"), std::string::npos);
    EXPECT_NE(text.find("      \"endian\": \"big\",\r\n"), std::string::npos);
    EXPECT_NE(text.find("      \"numericBase\": \"dec\"\r\n"), std::string::npos);
    EXPECT_NE(text.find("    \"bold\": true,\r\n"), std::string::npos);
    EXPECT_NE(text.find("    \"italic\": true\r\n"), std::string::npos);
}

TEST(SettingsWriter, FontSizePrintsSixSignificantDigits)
{
    EXPECT_EQ(FormatFontSize(12.0f), "12");
    EXPECT_EQ(FormatFontSize(10.5f), "10.5");
    EXPECT_EQ(FormatFontSize(11.333333f), "11.3333");
    EXPECT_EQ(FormatFontSize(0.1f), "0.1");
    EXPECT_EQ(FormatFontSize(1234567.0f), "1.23457e+06");
    EXPECT_EQ(FormatFontSize(-2.0f), "-2");
}

TEST(SettingsWriter, EscapesQuotesBackslashesAndControlBytes)
{
    EXPECT_EQ(EscapeJsonString("a\"b\\c"), "a\\\"b\\\\c");
    EXPECT_EQ(EscapeJsonString("\b\t\n\f\r"), "\\b\\t\\n\\f\\r");
    EXPECT_EQ(EscapeJsonString(std::string_view("\x00\x01\x0B\x1F", 4)), "\\u0000\\u0001\\u000B\\u001F");
    EXPECT_EQ(EscapeJsonString("\x7F/\xC3\xA9"), "\x7F/\xC3\xA9");
}

TEST(SettingsWriter, ControlCharacterInAPathIsWrittenAsAUnicodeEscape)
{
    AppSettings settings = Stamped();
    settings.recentFiles = {u"/tmp/a\u0001b"};
    EXPECT_EQ(LineOf(SerializeSettings(settings), "  \"recentFiles\""), R"(  "recentFiles": ["/tmp/a\u0001b"],)");
}

TEST(SettingsWriter, TextIsWrittenAsUtf8WithoutAByteOrderMark)
{
    AppSettings settings = Stamped();
    settings.fontFamily = u"ＭＳ ゴシック";
    const std::string text = SerializeSettings(settings);
    EXPECT_EQ(text.front(), '{');
    EXPECT_EQ(LineOf(text, "    \"family\""), "    \"family\": \"\xEF\xBC\xAD\xEF\xBC\xB3 \xE3\x82\xB4\xE3\x82\xB7\xE3\x83\x83\xE3\x82\xAF\",");
}

} // namespace
} // namespace tlm
