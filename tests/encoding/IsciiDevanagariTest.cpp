#include "encoding/IsciiDevanagari.h"
#include "encoding/TextServices.h"

#include <gtest/gtest.h>

#include <vector>

namespace tlm {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::optional<std::u16string> Decode(const Bytes& bytes)
{
    return MultiByteToUtf16(57002, bytes, false);
}

MultiByteText Encode(std::u16string_view text)
{
    const std::optional<MultiByteText> encoded = Utf16ToMultiByte(57002, text, false);
    return encoded ? *encoded : MultiByteText{};
}

std::u16string Unit(char16_t unit)
{
    return std::u16string(1, unit);
}

TEST(IsciiDevanagari, BytesBelowA0StandForThemselves)
{
    for (int byte = 0; byte < 0xA0; ++byte) {
        EXPECT_EQ(Decode({static_cast<std::uint8_t>(byte)}), Unit(static_cast<char16_t>(byte))) << byte;
    }
}

TEST(IsciiDevanagari, VowelSignsAndLettersFollowTheTable)
{
    struct Mapping {
        std::uint8_t byte;
        char16_t unit;
    };
    const Mapping mappings[] = {
        {0xA1, 0x0901}, {0xA3, 0x0903}, {0xA4, 0x0905}, {0xAA, 0x090B}, {0xAB, 0x090E}, {0xAC, 0x090F},
        {0xAD, 0x0910}, {0xAE, 0x090D}, {0xAF, 0x0912}, {0xB0, 0x0913}, {0xB1, 0x0914}, {0xB2, 0x0911},
        {0xB3, 0x0915}, {0xCD, 0x092F}, {0xCE, 0x095F}, {0xCF, 0x0930}, {0xD8, 0x0939}, {0xDA, 0x093E},
        {0xDF, 0x0943}, {0xE0, 0x0946}, {0xE1, 0x0947}, {0xE2, 0x0948}, {0xE3, 0x0945}, {0xE4, 0x094A},
        {0xE5, 0x094B}, {0xE6, 0x094C}, {0xE7, 0x0949}, {0xE8, 0x094D}, {0xE9, 0x093C}, {0xEA, 0x0964},
        {0xF1, 0x0966}, {0xFA, 0x096F},
    };
    for (const Mapping& mapping : mappings) {
        EXPECT_EQ(Decode({mapping.byte}), Unit(mapping.unit)) << int(mapping.byte);
        const MultiByteText encoded = Encode(Unit(mapping.unit));
        EXPECT_EQ(encoded.bytes, Bytes{mapping.byte}) << int(mapping.byte);
        EXPECT_FALSE(encoded.usedDefaultChar);
    }
}

TEST(IsciiDevanagari, UnmappedBytesFail)
{
    for (const std::uint8_t byte : {0xA0, 0xD9, 0xEB, 0xEC, 0xED, 0xEE, 0xFB, 0xFC, 0xFD, 0xFE, 0xFF}) {
        EXPECT_FALSE(Decode({byte})) << int(byte);
        EXPECT_FALSE(Decode({0x41, byte, 0x42})) << int(byte);
        EXPECT_FALSE(MultiByteToUtf16(57002, Bytes{byte}, true)) << int(byte);
    }
}

TEST(IsciiDevanagari, NuktaAfterCertainLettersFormsOneCharacter)
{
    struct Form {
        std::uint8_t byte;
        char16_t unit;
    };
    const Form forms[] = {
        {0xA1, 0x0950}, {0xA6, 0x090C}, {0xA7, 0x0961}, {0xAA, 0x0960}, {0xB3, 0x0958},
        {0xB4, 0x0959}, {0xB5, 0x095A}, {0xBA, 0x095B}, {0xBF, 0x095C}, {0xC0, 0x095D},
        {0xC9, 0x095E}, {0xDB, 0x0962}, {0xDC, 0x0963}, {0xDF, 0x0944}, {0xEA, 0x093D},
    };
    for (const Form& form : forms) {
        EXPECT_EQ(Decode({form.byte, 0xE9}), Unit(form.unit)) << int(form.byte);
        const MultiByteText encoded = Encode(Unit(form.unit));
        EXPECT_EQ(encoded.bytes, (Bytes{form.byte, 0xE9})) << int(form.byte);
        EXPECT_FALSE(encoded.usedDefaultChar);
    }
}

TEST(IsciiDevanagari, NuktaAfterOtherLettersStaysASign)
{
    EXPECT_EQ(Decode({0xB6, 0xE9}), std::u16string(u"\u0918\u093C"));
    EXPECT_EQ(Decode({0xE9}), std::u16string(u"\u093C"));
    EXPECT_EQ(Decode({0xE9, 0xE9}), std::u16string(u"\u093C\u093C"));
}

TEST(IsciiDevanagari, TwoViramasAreViramaAndZeroWidthNonJoiner)
{
    EXPECT_EQ(Decode({0xB3, 0xE8, 0xE8, 0xD6}), std::u16string(u"\u0915\u094D\u200C\u0937"));
    EXPECT_EQ(Encode(u"\u0915\u094D\u200C\u0937").bytes, (Bytes{0xB3, 0xE8, 0xE8, 0xD6}));
}

TEST(IsciiDevanagari, ViramaAndNuktaAreViramaAndZeroWidthJoiner)
{
    EXPECT_EQ(Decode({0xB3, 0xE8, 0xE9, 0xD6}), std::u16string(u"\u0915\u094D\u200D\u0937"));
    EXPECT_EQ(Encode(u"\u0915\u094D\u200D\u0937").bytes, (Bytes{0xB3, 0xE8, 0xE9, 0xD6}));
}

TEST(IsciiDevanagari, ViramaAtTheEndIsAVirama)
{
    EXPECT_EQ(Decode({0xB3, 0xE8}), std::u16string(u"\u0915\u094D"));
}

TEST(IsciiDevanagari, ThreeViramasPairTheFirstTwo)
{
    EXPECT_EQ(Decode({0xE8, 0xE8, 0xE8}), std::u16string(u"\u094D\u200C\u094D"));
}

TEST(IsciiDevanagari, ExtensionByteFormsItsTwoSigns)
{
    EXPECT_EQ(Decode({0xF0, 0xB8}), Unit(0x0952));
    EXPECT_EQ(Decode({0xF0, 0xBF}), Unit(0x0970));
    EXPECT_EQ(Encode(Unit(0x0952)).bytes, (Bytes{0xF0, 0xB8}));
    EXPECT_EQ(Encode(Unit(0x0970)).bytes, (Bytes{0xF0, 0xBF}));
}

TEST(IsciiDevanagari, ExtensionByteBeforeAnythingElseFails)
{
    EXPECT_FALSE(Decode({0xF0}));
    EXPECT_FALSE(Decode({0xF0, 0xB3}));
    EXPECT_FALSE(Decode({0xF0, 0x41}));
}

TEST(IsciiDevanagari, AttributeWithAScriptCodeIsConsumedSilently)
{
    EXPECT_EQ(Decode({0xEF, 0x42, 0xB3}), Unit(0x0915));
    EXPECT_EQ(Decode({0xEF, 0x42}), std::u16string());
    for (std::uint8_t code = 0x40; code <= 0x4B; ++code) {
        EXPECT_EQ(Decode({0x41, 0xEF, code, 0x42}), std::u16string(u"AB")) << int(code);
    }
}

TEST(IsciiDevanagari, AttributeWithAnyOtherByteFails)
{
    EXPECT_FALSE(Decode({0xEF}));
    EXPECT_FALSE(Decode({0xEF, 0x3F}));
    EXPECT_FALSE(Decode({0xEF, 0x4C}));
    EXPECT_FALSE(Decode({0xEF, 0xB3}));
}

TEST(IsciiDevanagari, SyllablesDecodeAsARun)
{
    // KSSA: KA, virama, SSA; then the vowel sign I and the visarga.
    EXPECT_EQ(Decode({0xB3, 0xE8, 0xD6, 0xDB, 0xA3}), std::u16string(u"\u0915\u094D\u0937\u093F\u0903"));
}

TEST(IsciiDevanagari, CharactersWithoutAFormBecomeTheDefaultByte)
{
    for (const char16_t unit : {0x0951, 0x0953, 0x0954, 0x0965, 0x0900, 0x3042, 0x00A0}) {
        const MultiByteText encoded = Encode(Unit(unit));
        EXPECT_EQ(encoded.bytes, Bytes{0x3F}) << std::hex << unsigned(unit);
        EXPECT_TRUE(encoded.usedDefaultChar) << std::hex << unsigned(unit);
    }
}

TEST(IsciiDevanagari, JoinersWithoutAViramaHaveNoForm)
{
    const MultiByteText encoded = Encode(u"\u0915\u200C");
    EXPECT_EQ(encoded.bytes, (Bytes{0xB3, 0x3F}));
    EXPECT_TRUE(encoded.usedDefaultChar);
}

TEST(IsciiDevanagari, StrictFlagMakesNoDifference)
{
    const Bytes bytes{0xB3, 0xE8, 0xE8, 0xD6, 0xF0, 0xB8};
    EXPECT_EQ(MultiByteToUtf16(57002, bytes, true), MultiByteToUtf16(57002, bytes, false));
}

TEST(IsciiDevanagari, EveryMappedByteSequenceRoundTrips)
{
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const Bytes bytes{static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(second)};
            const std::optional<std::u16string> text = DecodeIsciiDevanagari(bytes);
            if (!text || text->empty()) {
                continue;
            }
            const MultiByteText encoded = EncodeIsciiDevanagari(*text);
            EXPECT_FALSE(encoded.usedDefaultChar) << first << " " << second;
            EXPECT_EQ(DecodeIsciiDevanagari(encoded.bytes), text) << first << " " << second;
        }
    }
}

} // namespace
} // namespace tlm
