#include "settings/LanguageCatalogue.h"
#include "settings/SettingsReader.h"
#include "settings/SettingsWriter.h"

#include "ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

namespace tlm {
namespace {

// Random records whose every value survives the file unchanged. What cannot survive is left out here
// and tested on its own: control characters other than \b \t \n \f \r (they come back as escape
// letters), ']' in a recent file (it ends the list), lone surrogates, a font size with more than six
// significant digits, an unknown theme, a language that is not a catalogue code, and a text that
// spells a key of the file between quotes (the reader would take it for that key).
class RecordGenerator {
public:
    explicit RecordGenerator(std::uint32_t seed) : random(seed) {}

    AppSettings Next()
    {
        AppSettings settings;
        settings.dataInspectorVisible = Chance(2);
        settings.structViewVisible = Chance(2);
        settings.byteArrayFormat = static_cast<ByteArrayFormat>(Below(2));
        settings.endian = static_cast<StructEndian>(Below(2));
        settings.numericBase = static_cast<NumericBase>(Below(2));
        settings.appVersion = Text(1, 12, true);
        settings.encoding = static_cast<TextEncoding>(Below(TextEncodingCount));
        for (std::uint32_t count = Below(4); settings.encodingFavorites.size() < count;) {
            const auto encoding = static_cast<TextEncoding>(Below(TextEncodingCount));
            if (std::find(settings.encodingFavorites.begin(), settings.encodingFavorites.end(), encoding)
                == settings.encodingFavorites.end())
                settings.encodingFavorites.push_back(encoding);
        }
        settings.theme = static_cast<Theme>(Below(4));
        const auto catalogue = LanguageCatalogue();
        const std::uint32_t language = Below(static_cast<std::uint32_t>(catalogue.size()) + 1);
        settings.language = language == catalogue.size() ? u"system" : std::u16string(catalogue[language].code);
        settings.fontFamily = Text(1, 20, true);
        settings.fontSize = static_cast<float>(Below(400) + 1) / 4.0f;
        settings.fontBold = Chance(2);
        settings.fontItalic = Chance(2);
        for (std::uint32_t count = Below(17); settings.recentFiles.size() < count;)
            settings.recentFiles.push_back(Text(1, 40, false));
        for (std::uint32_t count = Below(17); settings.searchHistory.size() < count;)
            settings.searchHistory.push_back({Chance(2) ? u"text" : u"hex", Text(0, 16, true)});
        return settings;
    }

private:
    std::uint32_t Below(std::uint32_t limit) { return std::uniform_int_distribution<std::uint32_t>(0, limit - 1)(random); }
    bool Chance(std::uint32_t oneIn) { return Below(oneIn) == 0; }

    std::u16string Text(std::uint32_t shortest, std::uint32_t longest, bool bracketAllowed)
    {
        static constexpr std::array<std::u16string_view, 14> Pieces{u"a", u"Z", u"7", u" ", u"\\", u"\"", u"/",
            u"{}", u":,", u"\t\r\n\b\f", u"é", u"Жж", u"日本", u"😀"};
        for (;;) {
            std::u16string text;
            const std::uint32_t length = shortest + Below(longest - shortest + 1);
            while (text.size() < length) {
                text += Pieces[Below(static_cast<std::uint32_t>(Pieces.size()))];
                if (bracketAllowed && Chance(8))
                    text += u"[]";
            }
            if (!SpellsAKey(text))
                return text;
        }
    }

    static bool SpellsAKey(const std::u16string& text)
    {
        static constexpr std::array<std::u16string_view, 24> Keys{u"appVersion", u"encoding", u"kind", u"common",
            u"charset", u"language", u"code", u"theme", u"font", u"family", u"size", u"bold", u"italic",
            u"analysis", u"dataInspector", u"visible", u"structView", u"byteArrayFormat", u"endian",
            u"numericBase", u"recentFiles", u"searchHistory", u"query", u"encodingFavorites"};
        for (std::u16string_view key : Keys) {
            if (text.find(key) != std::u16string::npos)
                return true;
        }
        return false;
    }

    std::mt19937 random;
};

TEST(SettingsRoundTrip, RandomRecordsReadBackEqual)
{
    RecordGenerator generator(20240611);
    for (int round = 0; round < 3000; ++round) {
        const AppSettings written = generator.Next();
        const std::string text = SerializeSettings(written);
        AppSettings read;
        ASSERT_TRUE(ParseSettings(text, read));
        ASSERT_EQ(read, written) << "round " << round << "\n" << text;
        ASSERT_EQ(SerializeSettings(read), text) << "round " << round;
    }
}

TEST(SettingsRoundTrip, RandomRecordsReadBackEqualOverAnyStartingRecord)
{
    RecordGenerator generator(7);
    for (int round = 0; round < 300; ++round) {
        const AppSettings start = generator.Next();
        const AppSettings written = generator.Next();
        AppSettings read = start;
        ASSERT_TRUE(ParseSettings(SerializeSettings(written), read));
        ASSERT_EQ(read, written) << "round " << round;
    }
}

std::filesystem::path GoldenFile(const char* name)
{
    return std::filesystem::path(TOLMO_SOURCE_DIR) / "tests" / "settings" / "golden" / name;
}

// A Korean user with a few files behind them.
AppSettings TypicalRecord()
{
    AppSettings settings;
    settings.appVersion = u"v2.00";
    settings.encoding = TextEncoding::EucKr;
    settings.encodingFavorites = {TextEncoding::EucKr, TextEncoding::Utf8};
    settings.theme = Theme::DarkBlue;
    settings.language = u"ko-KR";
    settings.fontFamily = u"D2Coding";
    settings.fontSize = 13.5f;
    settings.fontBold = true;
    settings.structViewVisible = true;
    settings.numericBase = NumericBase::Dec;
    settings.recentFiles = {u"C:\\Users\\민수\\Documents\\firmware.bin", u"D:\\dumps\\memory.dmp"};
    settings.searchHistory = {{u"text", u"안녕하세요"}, {u"hex", u"7F 45 4C 46"}};
    return settings;
}

// Every list at its limit, a control character in a path, and text that needs escaping everywhere.
AppSettings FullRecord()
{
    AppSettings settings;
    settings.appVersion = u"v2.00";
    settings.dataInspectorVisible = false;
    settings.structViewVisible = true;
    settings.byteArrayFormat = ByteArrayFormat::Ascii;
    settings.endian = StructEndian::Big;
    settings.numericBase = NumericBase::Dec;
    settings.encoding = TextEncoding::IsciiDevanagari;
    settings.encodingFavorites = {TextEncoding::ShiftJis, TextEncoding::Tis620, TextEncoding::Utf16Be};
    settings.theme = Theme::Black;
    settings.language = u"zh-TW";
    settings.fontFamily = u"Family \"Quoted\" \\ Back";
    settings.fontSize = 10.3333f;
    settings.fontBold = true;
    settings.fontItalic = true;
    for (int i = 0; i < 16; ++i) {
        std::u16string path = u"C:\\files\\";
        path.push_back(static_cast<char16_t>(u'a' + i));
        settings.recentFiles.push_back(path + u".bin");
    }
    settings.recentFiles[3] = u"C:\\odd\u0001name\u001F\ttab.bin";
    for (int i = 0; i < 16; ++i) {
        std::u16string query = u"query ";
        query.push_back(static_cast<char16_t>(u'A' + i));
        settings.searchHistory.push_back({i % 2 ? u"hex" : u"text", query});
    }
    settings.searchHistory[0].query = u"line\r\nbreak";
    return settings;
}

TEST(SettingsRoundTrip, TypicalRecordMatchesItsGoldenFileByteForByte)
{
    const std::string golden = test::ReadBytes(GoldenFile("typical.settings.json"));
    ASSERT_FALSE(golden.empty());
    EXPECT_EQ(SerializeSettings(TypicalRecord()), golden);
    AppSettings read;
    ASSERT_TRUE(ParseSettings(golden, read));
    EXPECT_EQ(read, TypicalRecord());
}

TEST(SettingsRoundTrip, FullRecordMatchesItsGoldenFileByteForByte)
{
    const std::string golden = test::ReadBytes(GoldenFile("full.settings.json"));
    ASSERT_FALSE(golden.empty());
    EXPECT_EQ(SerializeSettings(FullRecord()), golden);

    AppSettings expected = FullRecord();
    expected.recentFiles[3] = u"C:\\oddu0001nameu001F\ttab.bin";
    expected.fontSize = 10.3333f;
    AppSettings read;
    ASSERT_TRUE(ParseSettings(golden, read));
    EXPECT_EQ(read, expected);
}

} // namespace
} // namespace tlm
