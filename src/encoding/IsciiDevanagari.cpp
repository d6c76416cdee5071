#include "encoding/IsciiDevanagari.h"

#include <array>

namespace tlm {

namespace {

constexpr std::uint8_t Virama = 0xE8;
constexpr std::uint8_t Nukta = 0xE9;
constexpr std::uint8_t Extension = 0xF0;   // EXT: the next byte picks a rarely used sign
constexpr std::uint8_t Attribute = 0xEF;   // ATR: the next byte switches the script or the display
constexpr std::uint8_t DefaultByte = 0x3F; // what a character without a form becomes
constexpr char16_t ViramaUnit = 0x094D;
constexpr char16_t ZeroWidthNonJoiner = 0x200C;
constexpr char16_t ZeroWidthJoiner = 0x200D;

// Bytes 0xA0 to 0xFF; 0 where the byte has no character of its own.
constexpr std::array<char16_t, 96> UpperHalf{{
    0x0000, 0x0901, 0x0902, 0x0903, 0x0905, 0x0906, 0x0907, 0x0908, // A0
    0x0909, 0x090A, 0x090B, 0x090E, 0x090F, 0x0910, 0x090D, 0x0912, // A8
    0x0913, 0x0914, 0x0911, 0x0915, 0x0916, 0x0917, 0x0918, 0x0919, // B0
    0x091A, 0x091B, 0x091C, 0x091D, 0x091E, 0x091F, 0x0920, 0x0921, // B8
    0x0922, 0x0923, 0x0924, 0x0925, 0x0926, 0x0927, 0x0928, 0x0929, // C0
    0x092A, 0x092B, 0x092C, 0x092D, 0x092E, 0x092F, 0x095F, 0x0930, // C8
    0x0931, 0x0932, 0x0933, 0x0934, 0x0935, 0x0936, 0x0937, 0x0938, // D0
    0x0939, 0x0000, 0x093E, 0x093F, 0x0940, 0x0941, 0x0942, 0x0943, // D8
    0x0946, 0x0947, 0x0948, 0x0945, 0x094A, 0x094B, 0x094C, 0x0949, // E0
    0x094D, 0x093C, 0x0964, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, // E8
    0x0000, 0x0966, 0x0967, 0x0968, 0x0969, 0x096A, 0x096B, 0x096C, // F0
    0x096D, 0x096E, 0x096F, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, // F8
}};

// A letter followed by the nukta byte that together stand for one character.
struct NuktaForm {
    std::uint8_t byte;
    char16_t unit;
};

constexpr std::array<NuktaForm, 15> NuktaForms{{
    {0xA1, 0x0950}, {0xA6, 0x090C}, {0xA7, 0x0961}, {0xAA, 0x0960}, {0xB3, 0x0958},
    {0xB4, 0x0959}, {0xB5, 0x095A}, {0xBA, 0x095B}, {0xBF, 0x095C}, {0xC0, 0x095D},
    {0xC9, 0x095E}, {0xDB, 0x0962}, {0xDC, 0x0963}, {0xDF, 0x0944}, {0xEA, 0x093D},
}};

// Signs reached through the EXT byte.
constexpr std::array<NuktaForm, 2> ExtensionForms{{{0xB8, 0x0952}, {0xBF, 0x0970}}};

std::optional<char16_t> NuktaFormOf(std::uint8_t byte)
{
    for (const NuktaForm& form : NuktaForms) {
        if (form.byte == byte) {
            return form.unit;
        }
    }
    return std::nullopt;
}

std::optional<char16_t> ExtensionFormOf(std::uint8_t byte)
{
    for (const NuktaForm& form : ExtensionForms) {
        if (form.byte == byte) {
            return form.unit;
        }
    }
    return std::nullopt;
}

bool IsAttributeCode(std::uint8_t byte)
{
    // 0x40 and 0x41 return to the default display; 0x42 to 0x4B name a script.
    return byte >= 0x40 && byte <= 0x4B;
}

// Bytes of one character, when it has a form of its own (two bytes for the nukta and EXT forms).
struct IsciiBytes {
    std::uint8_t first = 0;
    std::uint8_t second = 0; // 0 when the form has one byte
};

std::optional<IsciiBytes> FormOf(char16_t unit)
{
    if (unit < 0xA0) {
        return IsciiBytes{static_cast<std::uint8_t>(unit)};
    }
    for (std::size_t i = 0; i < UpperHalf.size(); ++i) {
        if (UpperHalf[i] == unit) {
            return IsciiBytes{static_cast<std::uint8_t>(0xA0 + i)};
        }
    }
    for (const NuktaForm& form : NuktaForms) {
        if (form.unit == unit) {
            return IsciiBytes{form.byte, Nukta};
        }
    }
    for (const NuktaForm& form : ExtensionForms) {
        if (form.unit == unit) {
            return IsciiBytes{Extension, form.byte};
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::u16string> DecodeIsciiDevanagari(std::span<const std::uint8_t> bytes)
{
    std::u16string text;
    std::size_t i = 0;
    while (i < bytes.size()) {
        const std::uint8_t byte = bytes[i];
        const bool hasNext = i + 1 < bytes.size();
        const std::uint8_t next = hasNext ? bytes[i + 1] : 0;
        if (byte < 0xA0) {
            text.push_back(byte);
            ++i;
        } else if (byte == Virama && hasNext && (next == Virama || next == Nukta)) {
            // Explicit halant (with ZWNJ) and soft halant (with ZWJ).
            text.push_back(ViramaUnit);
            text.push_back(next == Virama ? ZeroWidthNonJoiner : ZeroWidthJoiner);
            i += 2;
        } else if (byte == Extension) {
            const std::optional<char16_t> unit = hasNext ? ExtensionFormOf(next) : std::nullopt;
            if (!unit) {
                return std::nullopt;
            }
            text.push_back(*unit);
            i += 2;
        } else if (byte == Attribute) {
            if (!hasNext || !IsAttributeCode(next)) {
                return std::nullopt;
            }
            i += 2;
        } else if (const std::optional<char16_t> nukta = hasNext && next == Nukta ? NuktaFormOf(byte) : std::nullopt) {
            text.push_back(*nukta);
            i += 2;
        } else {
            const char16_t unit = UpperHalf[byte - 0xA0];
            if (unit == 0) {
                return std::nullopt;
            }
            text.push_back(unit);
            ++i;
        }
    }
    return text;
}

MultiByteText EncodeIsciiDevanagari(std::u16string_view text)
{
    MultiByteText result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        const bool afterVirama = i > 0 && text[i - 1] == ViramaUnit;
        if (afterVirama && (unit == ZeroWidthNonJoiner || unit == ZeroWidthJoiner)) {
            result.bytes.push_back(unit == ZeroWidthNonJoiner ? Virama : Nukta);
            continue;
        }
        const std::optional<IsciiBytes> form = FormOf(unit);
        if (!form) {
            result.bytes.push_back(DefaultByte);
            result.usedDefaultChar = true;
            continue;
        }
        result.bytes.push_back(form->first);
        if (form->second != 0) {
            result.bytes.push_back(form->second);
        }
    }
    return result;
}

} // namespace tlm
