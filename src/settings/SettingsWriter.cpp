#include "settings/SettingsWriter.h"

#include "encoding/EncodingCatalogue.h"
#include "encoding/Utf8.h"
#include "settings/LanguageCatalogue.h"

#include <locale>
#include <sstream>

namespace tlm {

namespace {

constexpr std::string_view LineEnd = "\r\n";

std::string Quoted(std::u16string_view text)
{
    return '"' + EscapeJsonString(Utf16ToUtf8(text)) + '"';
}

std::string Quoted(std::string_view bytes)
{
    return '"' + EscapeJsonString(bytes) + '"';
}

std::string_view BoolText(bool value)
{
    return value ? "true" : "false";
}

std::string_view ThemeName(Theme theme)
{
    switch (theme) {
    case Theme::Light: return "Light";
    case Theme::CoolSlate: return "CoolSlate";
    case Theme::DarkBlue: return "DarkBlue";
    case Theme::Black: return "Black";
    }
    return "CoolSlate";
}

// Builds the file one line at a time, each with its indent and line end.
class Lines {
public:
    void Add(int indent, std::string_view line)
    {
        text.append(static_cast<std::size_t>(indent), ' ');
        text.append(line);
        text.append(LineEnd);
    }
    std::string Take() { return std::move(text); }

private:
    std::string text;
};

void AddEncoding(Lines& lines, TextEncoding encoding)
{
    if (EncodingGroupOf(encoding) == EncodingGroup::Common) {
        lines.Add(4, R"("kind": "common",)");
        lines.Add(4, R"("common": )" + Quoted(EncodingCommonName(encoding)));
        return;
    }
    lines.Add(4, R"("kind": "charset",)");
    lines.Add(4, R"("charset": {)");
    lines.Add(6, R"("language": )" + Quoted(EncodingLanguage(encoding)) + ",");
    lines.Add(6, R"("code": )" + Quoted(EncodingCode(encoding)));
    lines.Add(4, "}");
}

template <typename T, typename Format>
std::string JoinedArray(const std::vector<T>& items, Format format)
{
    std::string joined = "[";
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0)
            joined += ", ";
        joined += format(items[i]);
    }
    joined += "]";
    return joined;
}

} // namespace

std::string EscapeJsonString(std::string_view bytes)
{
    static constexpr char Hex[] = "0123456789ABCDEF";
    std::string escaped;
    escaped.reserve(bytes.size() + 2);
    for (char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        switch (byte) {
        case '"': escaped += "\\\""; break;
        case '\\': escaped += "\\\\"; break;
        case 8: escaped += "\\b"; break;
        case 9: escaped += "\\t"; break;
        case 10: escaped += "\\n"; break;
        case 12: escaped += "\\f"; break;
        case 13: escaped += "\\r"; break;
        default:
            if (byte < 32) {
                escaped += "\\u00";
                escaped.push_back(Hex[byte >> 4]);
                escaped.push_back(Hex[byte & 0xF]);
            } else {
                escaped.push_back(c);
            }
        }
    }
    return escaped;
}

std::string FormatFontSize(float size)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << size;
    return stream.str();
}

std::string SerializeSettings(const AppSettings& settings)
{
    Lines lines;
    lines.Add(0, "{");
    lines.Add(2, R"("appVersion": )" + Quoted(settings.appVersion) + ",");
    lines.Add(2, R"("encoding": {)");
    AddEncoding(lines, settings.encoding);
    lines.Add(2, "},");
    lines.Add(2, R"("encodingFavorites": )"
            + JoinedArray(settings.encodingFavorites,
                [](TextEncoding encoding) { return Quoted(EncodingWrittenName(encoding)); })
            + ",");
    lines.Add(2, R"("theme": )" + Quoted(ThemeName(settings.theme)) + ",");
    lines.Add(2, R"("language": )" + Quoted(NormalizeLanguage(settings.language)) + ",");
    lines.Add(2, R"("font": {)");
    lines.Add(4, R"("family": )" + Quoted(settings.fontFamily) + ",");
    lines.Add(4, R"("size": )" + FormatFontSize(settings.fontSize) + ",");
    lines.Add(4, R"("bold": )" + std::string(BoolText(settings.fontBold)) + ",");
    lines.Add(4, R"("italic": )" + std::string(BoolText(settings.fontItalic)));
    lines.Add(2, "},");
    lines.Add(2, R"("analysis": {)");
    lines.Add(4, R"("dataInspector": {)");
    lines.Add(6, R"("visible": )" + std::string(BoolText(settings.dataInspectorVisible)));
    lines.Add(4, "},");
    lines.Add(4, R"("structView": {)");
    lines.Add(6, R"("visible": )" + std::string(BoolText(settings.structViewVisible)) + ",");
    lines.Add(6, R"("byteArrayFormat": )"
            + std::string(settings.byteArrayFormat == ByteArrayFormat::Ascii ? R"("ascii")" : R"("hex")") + ",");
    lines.Add(6, R"("endian": )" + std::string(settings.endian == StructEndian::Big ? R"("big")" : R"("little")")
            + ",");
    lines.Add(6, R"("numericBase": )"
            + std::string(settings.numericBase == NumericBase::Dec ? R"("dec")" : R"("hex")"));
    lines.Add(4, "}");
    lines.Add(2, "},");
    lines.Add(2, R"("recentFiles": )"
            + JoinedArray(settings.recentFiles, [](const std::u16string& path) { return Quoted(path); }) + ",");
    lines.Add(2, R"("searchHistory": )"
            + JoinedArray(settings.searchHistory,
                [](const SearchHistoryEntry& entry) {
                    return R"({"kind": )" + Quoted(entry.kind) + R"(, "query": )" + Quoted(entry.query) + "}";
                }));
    lines.Add(0, "}");
    return lines.Take();
}

} // namespace tlm
