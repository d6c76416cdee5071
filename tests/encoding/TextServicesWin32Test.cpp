// Compares the program's own code page tables with the system's conversion services, byte for byte:
// every single byte and every byte pair decoded with and without the invalid-character check, and
// every UTF-16 unit encoded with and without best fits. 51949 and 57002 are left out: Wine has neither.
#include "encoding/TextServices.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace tlm {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::array<std::uint32_t, 6> CheckedCodePages{874, 932, 936, 949, 950, 1258};

std::string Hex(const Bytes& bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes) {
        char part[4];
        std::snprintf(part, sizeof part, "%02X", byte);
        text += part;
    }
    return text;
}

std::string Hex(const std::u16string& text)
{
    std::string result;
    for (const char16_t unit : text) {
        char part[8];
        std::snprintf(part, sizeof part, "U+%04X ", static_cast<unsigned>(unit));
        result += part;
    }
    return result;
}

std::optional<std::u16string> SystemDecode(std::uint32_t codePage, const Bytes& bytes, bool strict)
{
    const DWORD flags = strict ? MB_ERR_INVALID_CHARS : 0;
    const char* input = reinterpret_cast<const char*>(bytes.data());
    const int count = static_cast<int>(bytes.size());
    wchar_t units[32];
    const int length = MultiByteToWideChar(codePage, flags, input, count, units, 32);
    if (length <= 0) {
        return std::nullopt;
    }
    return std::u16string(reinterpret_cast<const char16_t*>(units), static_cast<std::size_t>(length));
}

std::optional<MultiByteText> SystemEncode(std::uint32_t codePage, char16_t unit, bool exactOnly)
{
    const DWORD flags = exactOnly ? WC_NO_BEST_FIT_CHARS : 0;
    const wchar_t input = static_cast<wchar_t>(unit);
    char bytes[8];
    BOOL usedDefault = FALSE;
    const int length = WideCharToMultiByte(codePage, flags, &input, 1, bytes, 8, nullptr, &usedDefault);
    if (length <= 0) {
        return std::nullopt;
    }
    MultiByteText text;
    text.bytes.assign(bytes, bytes + length);
    text.usedDefaultChar = usedDefault != FALSE;
    return text;
}

std::string DescribeDecode(const std::optional<std::u16string>& text)
{
    return text ? Hex(*text) : std::string("failure");
}

std::string DescribeEncode(const std::optional<MultiByteText>& text)
{
    if (!text) {
        return "failure";
    }
    return Hex(text->bytes) + (text->usedDefaultChar ? " (default)" : "");
}

// Differences, described for the failure message.
class DifferenceLog {
public:
    void Add(std::uint32_t codePage, const std::string& what, const std::string& ours, const std::string& system)
    {
        ++count;
        if (count <= 100) {
            shown += "cp" + std::to_string(codePage) + " " + what + ": ours " + ours + ", system " + system + "\n";
        }
    }
    std::size_t count = 0;
    std::string shown;
};

void CompareDecoding(std::uint32_t codePage, const Bytes& bytes, DifferenceLog& log)
{
    for (const bool strict : {false, true}) {
        const std::optional<std::u16string> ours = MultiByteToUtf16(codePage, bytes, strict);
        const std::optional<std::u16string> system = SystemDecode(codePage, bytes, strict);
        if (ours != system) {
            const std::string what = std::string(strict ? "strict decode " : "decode ") + Hex(bytes);
            log.Add(codePage, what, DescribeDecode(ours), DescribeDecode(system));
        }
    }
}

bool SameEncoding(const std::optional<MultiByteText>& a, const std::optional<MultiByteText>& b)
{
    if (!a || !b) {
        return !a && !b;
    }
    return a->bytes == b->bytes && a->usedDefaultChar == b->usedDefaultChar;
}

TEST(TextServicesAgainstSystem, EverySingleByteDecodesAsTheSystemDecodesIt)
{
    DifferenceLog log;
    for (const std::uint32_t codePage : CheckedCodePages) {
        for (int byte = 0; byte < 256; ++byte) {
            CompareDecoding(codePage, Bytes{static_cast<std::uint8_t>(byte)}, log);
        }
    }
    EXPECT_EQ(log.count, 0u) << log.shown;
}

TEST(TextServicesAgainstSystem, EveryBytePairDecodesAsTheSystemDecodesIt)
{
    DifferenceLog log;
    for (const std::uint32_t codePage : CheckedCodePages) {
        for (int value = 0; value < 0x10000; ++value) {
            CompareDecoding(codePage, Bytes{static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value & 0xFF)}, log);
        }
    }
    EXPECT_EQ(log.count, 0u) << log.shown;
}

TEST(TextServicesAgainstSystem, EveryUnitEncodesAsTheSystemEncodesIt)
{
    DifferenceLog log;
    for (const std::uint32_t codePage : CheckedCodePages) {
        for (int value = 0; value < 0x10000; ++value) {
            const auto unit = static_cast<char16_t>(value);
            for (const bool exactOnly : {true, false}) {
                const std::optional<MultiByteText> ours = Utf16ToMultiByte(codePage, std::u16string(1, unit), exactOnly);
                const std::optional<MultiByteText> system = SystemEncode(codePage, unit, exactOnly);
                if (!SameEncoding(ours, system)) {
                    char what[32];
                    std::snprintf(what, sizeof what, "%s U+%04X", exactOnly ? "exact encode" : "encode", value);
                    log.Add(codePage, what, DescribeEncode(ours), DescribeEncode(system));
                }
            }
        }
    }
    EXPECT_EQ(log.count, 0u) << log.shown;
}

std::optional<MultiByteText> SystemEncode(std::uint32_t codePage, std::u16string_view text, bool exactOnly)
{
    const DWORD flags = exactOnly ? WC_NO_BEST_FIT_CHARS : 0;
    const wchar_t* input = reinterpret_cast<const wchar_t*>(text.data());
    const int count = static_cast<int>(text.size());
    char bytes[64];
    BOOL usedDefault = FALSE;
    const int length = WideCharToMultiByte(codePage, flags, input, count, bytes, 64, nullptr, &usedDefault);
    if (length <= 0) {
        return std::nullopt;
    }
    MultiByteText result;
    result.bytes.assign(bytes, bytes + length);
    result.usedDefaultChar = usedDefault != FALSE;
    return result;
}

// Runs of bytes where lead bytes, trail bytes, NULs and the end of the input meet in every order.
TEST(TextServicesAgainstSystem, RandomByteRunsDecodeAsTheSystemDecodesThem)
{
    std::mt19937 random(20261123);
    const std::uint8_t interesting[] = {0x00, 0x0A, 0x3F, 0x40, 0x41, 0x7F, 0x80, 0x81, 0x9F, 0xA0, 0xA1, 0xB0, 0xDF, 0xE0, 0xF0, 0xFC, 0xFD, 0xFE, 0xFF};
    DifferenceLog log;
    for (const std::uint32_t codePage : CheckedCodePages) {
        for (int run = 0; run < 5000; ++run) {
            Bytes bytes(1 + random() % 12);
            for (std::uint8_t& byte : bytes) {
                byte = random() % 2 ? interesting[random() % std::size(interesting)] : static_cast<std::uint8_t>(random());
            }
            CompareDecoding(codePage, bytes, log);
        }
    }
    EXPECT_EQ(log.count, 0u) << log.shown;
}

TEST(TextServicesAgainstSystem, RandomTextEncodesAsTheSystemEncodesIt)
{
    std::mt19937 random(1123);
    const char16_t interesting[] = {0x0000, 0x003F, 0x00A5, 0x00C0, 0x20AC, 0x30FB, 0x3042, 0x4E00, 0xAC00, 0xD83D, 0xDE00, 0xE000, 0xFF71, 0xFFFD};
    DifferenceLog log;
    for (const std::uint32_t codePage : CheckedCodePages) {
        for (int run = 0; run < 3000; ++run) {
            std::u16string text(1 + random() % 10, u'\0');
            for (char16_t& unit : text) {
                unit = random() % 2 ? interesting[random() % std::size(interesting)] : static_cast<char16_t>(random());
            }
            for (const bool exactOnly : {true, false}) {
                const std::optional<MultiByteText> ours = Utf16ToMultiByte(codePage, text, exactOnly);
                const std::optional<MultiByteText> system = SystemEncode(codePage, text, exactOnly);
                if (!SameEncoding(ours, system)) {
                    log.Add(codePage, std::string(exactOnly ? "exact encode " : "encode ") + Hex(text), DescribeEncode(ours), DescribeEncode(system));
                }
            }
        }
    }
    EXPECT_EQ(log.count, 0u) << log.shown;
}

TEST(TextServicesAgainstSystem, ControlsAreTheSystemsControls)
{
    std::size_t differences = 0;
    for (int value = 0; value < 0x10000; ++value) {
        const wchar_t unit = static_cast<wchar_t>(value);
        WORD type = 0;
        const bool control = !GetStringTypeW(CT_CTYPE1, &unit, 1, &type) || (type & C1_CNTRL) != 0;
        if (IsControl(static_cast<char16_t>(value)) != control) {
            ADD_FAILURE() << std::hex << value << (control ? " is a control for the system" : " is no control for the system");
            if (++differences == 20) {
                break;
            }
        }
    }
}

// The system also marks precomposed letters by their accents, which the program's table deliberately
// leaves to the first component; but whatever the program calls combining, the system does too.
TEST(TextServicesAgainstSystem, EveryCombiningUnitIsCombiningForTheSystem)
{
    std::size_t differences = 0;
    for (int value = 0; value < 0x10000; ++value) {
        const wchar_t unit = static_cast<wchar_t>(value);
        WORD type = 0;
        const bool combining = GetStringTypeW(CT_CTYPE3, &unit, 1, &type) && (type & (C3_NONSPACING | C3_DIACRITIC)) != 0;
        if (IsCombining(static_cast<char16_t>(value)) && !combining) {
            ADD_FAILURE() << std::hex << value << " is not combining for the system";
            if (++differences == 20) {
                break;
            }
        }
    }
}

TEST(TextServicesAgainstSystem, ShiftJisLeadBytesAreTheSystemsLeadBytes)
{
    for (int byte = 0; byte < 256; ++byte) {
        const auto value = static_cast<std::uint8_t>(byte);
        EXPECT_EQ(IsShiftJisLeadByte(value), IsDBCSLeadByteEx(932, value) != FALSE) << byte;
    }
}

} // namespace
} // namespace tlm
