#include "settings/SettingsReader.h"

#include "encoding/EncodingCatalogue.h"
#include "encoding/EncodingFavorites.h"
#include "settings/LenientUtf8.h"
#include "settings/SettingsScan.h"
#include "document/WholeFile.h"

namespace tlm {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

std::optional<Theme> ThemeFromName(std::string_view name)
{
    if (name.empty())
        return std::nullopt;
    if (name == "Light")
        return Theme::Light;
    if (name == "CoolSlate")
        return Theme::CoolSlate;
    if (name == "DarkBlue")
        return Theme::DarkBlue;
    if (name == "Black")
        return Theme::Black;
    return Theme::CoolSlate;
}

void ReadNonEmptyText(std::string_view text, std::string_view key, std::u16string& field)
{
    const auto value = FindStringValue(text, key, 0);
    if (value && !value->empty())
        field = Utf8ToUtf16Lenient(*value);
}

void ReadFont(std::string_view text, AppSettings& settings)
{
    const auto font = FindObjectStart(text, "font", 0);
    if (!font)
        return;
    if (const auto family = FindStringValue(text, "family", *font); family && !family->empty())
        settings.fontFamily = Utf8ToUtf16Lenient(*family);
    if (const auto size = FindNumberValue(text, "size", *font); size && *size > 0.0f)
        settings.fontSize = *size;
    if (const auto bold = FindBoolValue(text, "bold", *font))
        settings.fontBold = *bold;
    if (const auto italic = FindBoolValue(text, "italic", *font))
        settings.fontItalic = *italic;
}

void ReadAnalysis(std::string_view text, AppSettings& settings)
{
    const auto analysis = FindObjectStart(text, "analysis", 0);
    if (!analysis)
        return;
    if (const auto inspector = FindObjectStart(text, "dataInspector", *analysis)) {
        if (const auto visible = FindBoolValue(text, "visible", *inspector))
            settings.dataInspectorVisible = *visible;
    }
    const auto structView = FindObjectStart(text, "structView", *analysis);
    if (!structView)
        return;
    if (const auto visible = FindBoolValue(text, "visible", *structView))
        settings.structViewVisible = *visible;
    if (const auto format = FindStringValue(text, "byteArrayFormat", *structView))
        settings.byteArrayFormat = *format == "ascii" ? ByteArrayFormat::Ascii : ByteArrayFormat::Hex;
    if (const auto endian = FindStringValue(text, "endian", *structView))
        settings.endian = *endian == "big" ? StructEndian::Big : StructEndian::Little;
    if (const auto base = FindStringValue(text, "numericBase", *structView))
        settings.numericBase = *base == "dec" ? NumericBase::Dec : NumericBase::Hex;
}

} // namespace

std::optional<TextEncoding> ReadEncoding(std::string_view text)
{
    const auto object = FindObjectStart(text, "encoding", 0);
    if (!object)
        return std::nullopt;
    const auto kind = FindStringValue(text, "kind", *object);
    if (!kind)
        return std::nullopt;
    const std::string normalKind = NormalizeEncodingName(*kind);
    if (normalKind == "common") {
        const auto name = FindStringValue(text, "common", *object);
        if (!name)
            return std::nullopt;
        return EncodingFromName(NormalizeEncodingName(*name));
    }
    if (normalKind == "charset") {
        const auto charset = FindObjectStart(text, "charset", *object);
        if (!charset)
            return std::nullopt;
        const auto language = FindStringValue(text, "language", *charset);
        const auto code = FindStringValue(text, "code", *charset);
        if (!language || !code)
            return std::nullopt;
        return EncodingFromCharset(NormalizeEncodingName(*language), NormalizeEncodingName(*code));
    }
    return std::nullopt;
}

std::optional<std::vector<TextEncoding>> ReadEncodingFavorites(std::string_view text)
{
    const auto array = FindBalancedArray(text, "encodingFavorites", 0);
    if (!array)
        return std::nullopt;
    return FavoritesFromNames(StringsIn(*array));
}

std::optional<std::vector<SearchHistoryEntry>> ReadSearchHistory(std::string_view text)
{
    const auto array = FindBalancedArray(text, "searchHistory", 0);
    if (!array)
        return std::nullopt;
    std::vector<SearchHistoryEntry> history;
    for (std::string_view object : ObjectsIn(*array)) {
        const auto kind = FindStringValue(object, "kind", 0);
        const auto query = FindStringValue(object, "query", 0);
        if (kind && query)
            history.push_back({Utf8ToUtf16Lenient(*kind), Utf8ToUtf16Lenient(*query)});
    }
    return history;
}

bool ParseSettings(std::string_view text, AppSettings& settings)
{
    if (text.starts_with(ByteOrderMark))
        text.remove_prefix(ByteOrderMark.size());
    if (text.empty())
        return false;

    if (const auto encoding = ReadEncoding(text))
        settings.encoding = *encoding;
    ReadNonEmptyText(text, "appVersion", settings.appVersion);
    if (const auto themeName = FindStringValue(text, "theme", 0)) {
        if (const auto theme = ThemeFromName(*themeName))
            settings.theme = *theme;
    }
    if (const auto language = FindTopLevelStringValue(text, "language"); language && !language->empty())
        settings.language = Utf8ToUtf16Lenient(*language);
    if (const auto recent = ReadStringArray(text, "recentFiles", 0)) {
        settings.recentFiles.clear();
        for (const std::string& path : *recent) {
            if (settings.recentFiles.size() == MaxRecentFiles)
                break;
            settings.recentFiles.push_back(Utf8ToUtf16Lenient(path));
        }
    }
    if (auto history = ReadSearchHistory(text)) {
        if (history->size() > MaxSearchHistory)
            history->resize(MaxSearchHistory);
        settings.searchHistory = std::move(*history);
    }
    if (const auto favorites = ReadEncodingFavorites(text))
        settings.encodingFavorites = *favorites;
    ReadFont(text, settings);
    ReadAnalysis(text, settings);
    return true;
}

bool LoadSettings(const std::u16string& path, AppSettings& settings)
{
    const std::optional<std::string> bytes = ReadWholeFile(path);
    if (!bytes || bytes->empty())
        return false;
    return ParseSettings(*bytes, settings);
}

} // namespace tlm
