#include "encoding/EncodingCatalogue.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(EncodingCatalogue, DisplayNamesAreFixed)
{
    EXPECT_EQ(EncodingDisplayName(TextEncoding::Ascii), u"ASCII");
    EXPECT_EQ(EncodingDisplayName(TextEncoding::Utf16Le), u"UTF-16 LE");
    EXPECT_EQ(EncodingDisplayName(TextEncoding::ShiftJis), u"Shift_JIS");
    EXPECT_EQ(EncodingDisplayName(TextEncoding::IsciiDevanagari), u"ISCII (Devanagari)");
}

TEST(EncodingCatalogue, UnknownValueDisplaysAsAscii)
{
    EXPECT_EQ(EncodingDisplayName(static_cast<TextEncoding>(12)), u"ASCII");
    EXPECT_EQ(EncodingCodePage(static_cast<TextEncoding>(99)), 0u);
}

TEST(EncodingCatalogue, CodesAreWrittenOnlyForCharsets)
{
    EXPECT_EQ(EncodingCode(TextEncoding::Utf8), "");
    EXPECT_EQ(EncodingCode(TextEncoding::ShiftJis), "cp932");
    EXPECT_EQ(EncodingCode(TextEncoding::EucKr), "euc-kr");
    EXPECT_EQ(EncodingCode(TextEncoding::Tis620), "tis-620");
    EXPECT_EQ(EncodingCode(TextEncoding::IsciiDevanagari), "iscii-devanagari");
    EXPECT_EQ(EncodingCommonName(TextEncoding::Utf16Be), "utf16be");
    EXPECT_EQ(EncodingLanguage(TextEncoding::Windows1258), "vietnamese");
}

TEST(EncodingCatalogue, CodePagesFollowTheTable)
{
    EXPECT_EQ(EncodingCodePage(TextEncoding::Ascii), 0u);
    EXPECT_EQ(EncodingCodePage(TextEncoding::Utf8), 65001u);
    EXPECT_EQ(EncodingCodePage(TextEncoding::Windows949), 949u);
    EXPECT_EQ(EncodingCodePage(TextEncoding::EucKr), 51949u);
    EXPECT_EQ(EncodingCodePage(TextEncoding::Big5), 950u);
    EXPECT_EQ(EncodingCodePage(TextEncoding::Gbk), 936u);
    EXPECT_EQ(EncodingCodePage(TextEncoding::Tis620), 874u);
    EXPECT_EQ(EncodingCodePage(TextEncoding::Windows1258), 1258u);
    EXPECT_EQ(EncodingCodePage(TextEncoding::IsciiDevanagari), 57002u);
}

TEST(EncodingCatalogue, MenuKeysAndGroups)
{
    EXPECT_EQ(EncodingMenuKey(TextEncoding::IsciiDevanagari), "menu.view.encoding.iscii_devanagari");
    EXPECT_EQ(EncodingGroupOf(TextEncoding::Utf16Be), EncodingGroup::Common);
    EXPECT_EQ(EncodingGroupOf(TextEncoding::EucKr), EncodingGroup::Korean);
    EXPECT_EQ(EncodingGroupMenuKey(EncodingGroup::Indic), "menu.view.encoding.indic");
    EXPECT_EQ(EncodingGroupMenuKey(EncodingGroup::Common), "");
}

TEST(EncodingCatalogue, NormalizationKeepsLowerCaseLettersAndDigits)
{
    EXPECT_EQ(NormalizeEncodingName("Shift_JIS"), "shiftjis");
    EXPECT_EQ(NormalizeEncodingName("shift-jis"), "shiftjis");
    EXPECT_EQ(NormalizeEncodingName("SHIFTJIS"), "shiftjis");
    EXPECT_EQ(NormalizeEncodingName("ISO-8859-11"), "iso885911");
}

TEST(EncodingCatalogue, NonAsciiLettersAreDroppedByteByByte)
{
    // "Ü" is C3 9C in UTF-8: both bytes go, and what remains is compared.
    EXPECT_EQ(NormalizeEncodingName("\xC3\x9Ctf-8"), "tf8");
    EXPECT_EQ(EncodingFromName("\xC3\x9Ctf-8"), TextEncoding::Ascii);
    EXPECT_EQ(EncodingFromName("utf\xE2\x80\x93" "8"), TextEncoding::Utf8);
}

TEST(EncodingCatalogue, EveryAliasIsFound)
{
    const std::pair<const char*, TextEncoding> cases[] = {
        {"utf8", TextEncoding::Utf8}, {"UTF-16LE", TextEncoding::Utf16Le}, {"utf_16_be", TextEncoding::Utf16Be},
        {"cp932", TextEncoding::ShiftJis}, {"Windows-31J", TextEncoding::ShiftJis}, {"Shift_JIS", TextEncoding::ShiftJis},
        {"SJIS", TextEncoding::ShiftJis}, {"cp949", TextEncoding::Windows949}, {"windows-949", TextEncoding::Windows949},
        {"windows-31k", TextEncoding::Windows949}, {"EUC-KR", TextEncoding::EucKr}, {"big5", TextEncoding::Big5},
        {"GBK", TextEncoding::Gbk}, {"CP936", TextEncoding::Gbk}, {"TIS-620", TextEncoding::Tis620},
        {"ISO-8859-11", TextEncoding::Tis620}, {"cp874", TextEncoding::Tis620}, {"windows-874", TextEncoding::Tis620},
        {"windows-1258", TextEncoding::Windows1258}, {"CP1258", TextEncoding::Windows1258},
        {"iscii-devanagari", TextEncoding::IsciiDevanagari}, {"ISCII-91 Devanagari", TextEncoding::IsciiDevanagari},
        {"iscii", TextEncoding::IsciiDevanagari}, {"ascii", TextEncoding::Ascii}, {"nonsense", TextEncoding::Ascii},
    };
    for (const auto& [name, expected] : cases) {
        EXPECT_EQ(EncodingFromName(name), expected) << name;
    }
}

TEST(EncodingCatalogue, WrittenCodesReadBackToTheSameValue)
{
    for (std::uint32_t value = 0; value < TextEncodingCount; ++value) {
        const auto encoding = static_cast<TextEncoding>(value);
        EXPECT_EQ(EncodingFromName(EncodingWrittenName(encoding)), encoding) << value;
        if (value >= 4) {
            EXPECT_EQ(EncodingFromCharset(EncodingLanguage(encoding), EncodingCode(encoding)), encoding) << value;
        }
    }
}

TEST(EncodingCatalogue, CharsetCodeCountsUnderItsOwnLanguage)
{
    EXPECT_EQ(EncodingFromCharset("Japanese", "CP-932"), TextEncoding::ShiftJis);
    EXPECT_EQ(EncodingFromCharset("thai", "cp932"), std::nullopt);
    EXPECT_EQ(EncodingFromCharset("japanese", "big5"), std::nullopt);
    EXPECT_EQ(EncodingFromCharset("korean", "euc-kr"), TextEncoding::EucKr);
    EXPECT_EQ(EncodingFromCharset("korean", "windows31k"), TextEncoding::Windows949);
    EXPECT_EQ(EncodingFromCharset("klingon", "cp932"), std::nullopt);
    EXPECT_EQ(EncodingFromCharset("japanese", "utf8"), std::nullopt);
}

} // namespace
} // namespace tlm
