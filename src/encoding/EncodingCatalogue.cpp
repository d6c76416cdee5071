#include "encoding/EncodingCatalogue.h"

#include <array>
#include <utility>

namespace tlm {

namespace {

struct CatalogueEntry {
    TextEncoding encoding;
    std::u16string_view displayName;
    std::string_view menuKey;
    EncodingGroup group;
    std::uint32_t codePage;
    std::string_view commonName; // settings name of a common encoding
    std::string_view language;   // settings language of a charset encoding
    std::string_view code;       // settings code of a charset encoding
};

constexpr std::array<CatalogueEntry, TextEncodingCount> Catalogue{{
    {TextEncoding::Ascii, u"ASCII", "menu.view.encoding.ascii", EncodingGroup::Common, 0, "ascii", "", ""},
    {TextEncoding::Utf8, u"UTF-8", "menu.view.encoding.utf8", EncodingGroup::Common, 65001, "utf8", "", ""},
    {TextEncoding::Utf16Le, u"UTF-16 LE", "menu.view.encoding.utf16le", EncodingGroup::Common, 0, "utf16le", "", ""},
    {TextEncoding::Utf16Be, u"UTF-16 BE", "menu.view.encoding.utf16be", EncodingGroup::Common, 0, "utf16be", "", ""},
    {TextEncoding::ShiftJis, u"Shift_JIS", "menu.view.encoding.shiftjis", EncodingGroup::Japanese, 932, "", "japanese", "cp932"},
    {TextEncoding::Windows949, u"Windows-949", "menu.view.encoding.windows949", EncodingGroup::Korean, 949, "", "korean", "cp949"},
    {TextEncoding::EucKr, u"EUC-KR", "menu.view.encoding.euckr", EncodingGroup::Korean, 51949, "", "korean", "euc-kr"},
    {TextEncoding::Big5, u"Big5", "menu.view.encoding.big5", EncodingGroup::Chinese, 950, "", "chinese", "big5"},
    {TextEncoding::Gbk, u"GBK", "menu.view.encoding.gbk", EncodingGroup::Chinese, 936, "", "chinese", "gbk"},
    {TextEncoding::Tis620, u"TIS-620", "menu.view.encoding.tis620", EncodingGroup::Thai, 874, "", "thai", "tis-620"},
    {TextEncoding::Windows1258, u"Windows-1258", "menu.view.encoding.windows1258", EncodingGroup::Vietnamese, 1258, "", "vietnamese", "windows-1258"},
    {TextEncoding::IsciiDevanagari, u"ISCII (Devanagari)", "menu.view.encoding.iscii_devanagari", EncodingGroup::Indic, 57002, "", "indic", "iscii-devanagari"},
}};

const CatalogueEntry& EntryFor(TextEncoding encoding)
{
    // An unknown value behaves as ASCII wherever it is named.
    return Catalogue[IsKnownEncoding(encoding) ? static_cast<std::uint32_t>(encoding) : 0];
}

struct Alias {
    std::string_view normalizedName;
    TextEncoding encoding;
};

// The accepted spellings after normalisation. "ascii" has no entry: whatever matches nothing is ASCII.
// "windows31k" is the deliberate Korean counterpart of "windows31j".
constexpr std::array<Alias, 23> Aliases{{
    {"utf8", TextEncoding::Utf8},
    {"utf16le", TextEncoding::Utf16Le},
    {"utf16be", TextEncoding::Utf16Be},
    {"cp932", TextEncoding::ShiftJis},
    {"windows31j", TextEncoding::ShiftJis},
    {"shiftjis", TextEncoding::ShiftJis},
    {"sjis", TextEncoding::ShiftJis},
    {"cp949", TextEncoding::Windows949},
    {"windows949", TextEncoding::Windows949},
    {"windows31k", TextEncoding::Windows949},
    {"euckr", TextEncoding::EucKr},
    {"big5", TextEncoding::Big5},
    {"gbk", TextEncoding::Gbk},
    {"cp936", TextEncoding::Gbk},
    {"tis620", TextEncoding::Tis620},
    {"iso885911", TextEncoding::Tis620},
    {"cp874", TextEncoding::Tis620},
    {"windows874", TextEncoding::Tis620},
    {"windows1258", TextEncoding::Windows1258},
    {"cp1258", TextEncoding::Windows1258},
    {"isciidevanagari", TextEncoding::IsciiDevanagari},
    {"iscii91devanagari", TextEncoding::IsciiDevanagari},
    {"iscii", TextEncoding::IsciiDevanagari},
}};

const Alias* FindAlias(std::string_view normalizedName)
{
    for (const Alias& alias : Aliases) {
        if (alias.normalizedName == normalizedName) {
            return &alias;
        }
    }
    return nullptr;
}

std::optional<EncodingGroup> GroupFromLanguage(std::string_view normalizedLanguage)
{
    constexpr std::array<std::pair<std::string_view, EncodingGroup>, 6> Languages{{
        {"japanese", EncodingGroup::Japanese},
        {"korean", EncodingGroup::Korean},
        {"chinese", EncodingGroup::Chinese},
        {"thai", EncodingGroup::Thai},
        {"vietnamese", EncodingGroup::Vietnamese},
        {"indic", EncodingGroup::Indic},
    }};
    for (const auto& [name, group] : Languages) {
        if (name == normalizedLanguage) {
            return group;
        }
    }
    return std::nullopt;
}

} // namespace

std::u16string EncodingDisplayName(TextEncoding encoding)
{
    return std::u16string(EntryFor(encoding).displayName);
}

std::string EncodingCode(TextEncoding encoding)
{
    return std::string(EntryFor(encoding).code);
}

std::string EncodingCommonName(TextEncoding encoding)
{
    return std::string(EntryFor(encoding).commonName);
}

std::string EncodingWrittenName(TextEncoding encoding)
{
    const CatalogueEntry& entry = EntryFor(encoding);
    return std::string(entry.group == EncodingGroup::Common ? entry.commonName : entry.code);
}

std::string EncodingLanguage(TextEncoding encoding)
{
    return std::string(EntryFor(encoding).language);
}

EncodingGroup EncodingGroupOf(TextEncoding encoding)
{
    return EntryFor(encoding).group;
}

std::string_view EncodingMenuKey(TextEncoding encoding)
{
    return EntryFor(encoding).menuKey;
}

std::string_view EncodingGroupMenuKey(EncodingGroup group)
{
    switch (group) {
    case EncodingGroup::Japanese: return "menu.view.encoding.japanese";
    case EncodingGroup::Korean: return "menu.view.encoding.korean";
    case EncodingGroup::Chinese: return "menu.view.encoding.chinese";
    case EncodingGroup::Thai: return "menu.view.encoding.thai";
    case EncodingGroup::Vietnamese: return "menu.view.encoding.vietnamese";
    case EncodingGroup::Indic: return "menu.view.encoding.indic";
    case EncodingGroup::Common: break;
    }
    return {};
}

std::uint32_t EncodingCodePage(TextEncoding encoding)
{
    return EntryFor(encoding).codePage;
}

std::string NormalizeEncodingName(std::string_view name)
{
    std::string normalized;
    normalized.reserve(name.size());
    for (char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 'A' && byte <= 'Z') {
            normalized.push_back(static_cast<char>(byte - 'A' + 'a'));
        } else if ((byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9')) {
            normalized.push_back(static_cast<char>(byte));
        }
    }
    return normalized;
}

TextEncoding EncodingFromName(std::string_view name)
{
    const Alias* alias = FindAlias(NormalizeEncodingName(name));
    return alias ? alias->encoding : TextEncoding::Ascii;
}

std::optional<TextEncoding> EncodingFromCharset(std::string_view language, std::string_view code)
{
    const std::optional<EncodingGroup> group = GroupFromLanguage(NormalizeEncodingName(language));
    if (!group) {
        return std::nullopt;
    }
    const Alias* alias = FindAlias(NormalizeEncodingName(code));
    if (!alias || EncodingGroupOf(alias->encoding) != *group) {
        return std::nullopt;
    }
    return alias->encoding;
}

} // namespace tlm
