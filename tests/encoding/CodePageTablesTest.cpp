// The generated tables against the data they were made from, when that data is at hand, and against
// mappings picked by hand from it, which hold on any machine.
#include "encoding/CodePageTable.h"
#include "encoding/TextServices.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tlm {
namespace {

using Bytes = std::vector<std::uint8_t>;

const std::filesystem::path DataFolder = std::filesystem::path(TOLMO_SOURCE_DIR) / ".." / "shared" / "codepages";

std::optional<std::u16string> Decode(std::uint32_t codePage, const Bytes& bytes, bool strict = true)
{
    return MultiByteToUtf16(codePage, bytes, strict);
}

std::optional<MultiByteText> Encode(std::uint32_t codePage, char16_t unit, bool exactOnly = true)
{
    return Utf16ToMultiByte(codePage, std::u16string(1, unit), exactOnly);
}

Bytes BytesOf(std::uint32_t value)
{
    if (value > 0xFF) {
        return {static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value & 0xFF)};
    }
    return {static_cast<std::uint8_t>(value)};
}

// One published table, read the way its format describes: sections of records, comments after ';'.
struct PublishedTable {
    std::map<std::uint32_t, char16_t> decoding; // a byte, or a lead byte and trail byte as one value
    std::map<char16_t, std::uint32_t> encoding;
};

std::optional<PublishedTable> ReadPublishedTable(std::uint32_t codePage)
{
    std::ifstream file(DataFolder / ("bestfit" + std::to_string(codePage) + ".txt"), std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    PublishedTable table;
    std::string section;
    std::vector<std::uint32_t> leads;
    std::uint32_t lead = 0;
    std::string line;
    while (std::getline(file, line)) {
        std::istringstream fields(line.substr(0, line.find(';')));
        std::string first;
        std::string second;
        if (!(fields >> first)) {
            continue;
        }
        fields >> second;
        if (first == "ENDCODEPAGE") {
            break;
        }
        if (first == "MBTABLE" || first == "WCTABLE" || first == "DBCSRANGE") {
            section = first;
        } else if (first == "DBCSTABLE") {
            section = first;
            lead = leads.front();
            leads.erase(leads.begin());
        } else if (first.rfind("0x", 0) == 0 && !second.empty()) {
            const auto key = static_cast<std::uint32_t>(std::stoul(first, nullptr, 16));
            const auto value = static_cast<std::uint32_t>(std::stoul(second, nullptr, 16));
            if (second.size() == 4 && (section == "DBCSRANGE" || section == "DBCSTABLE")) {
                for (std::uint32_t byte = key; byte <= value; ++byte) {
                    leads.push_back(byte);
                }
            } else if (section == "MBTABLE") {
                table.decoding[key] = static_cast<char16_t>(value);
            } else if (section == "DBCSTABLE") {
                table.decoding[(lead << 8) | key] = static_cast<char16_t>(value);
            } else if (section == "WCTABLE") {
                table.encoding[static_cast<char16_t>(key)] = value;
            }
        }
    }
    return table;
}

class PublishedCodePage : public testing::TestWithParam<std::uint32_t> {};

TEST_P(PublishedCodePage, EveryListedByteSequenceDecodesToItsCharacter)
{
    const std::optional<PublishedTable> table = ReadPublishedTable(GetParam());
    if (!table) {
        GTEST_SKIP() << "the published tables are not beside the source tree";
    }
    ASSERT_GT(table->decoding.size(), 100u);
    for (const auto& [bytes, unit] : table->decoding) {
        EXPECT_EQ(Decode(GetParam(), BytesOf(bytes), false), std::u16string(1, unit)) << std::hex << bytes;
    }
}

TEST_P(PublishedCodePage, EveryRoundTripEncodesBackAndEveryBestFitIsRefusedWhenExact)
{
    const std::optional<PublishedTable> table = ReadPublishedTable(GetParam());
    if (!table) {
        GTEST_SKIP() << "the published tables are not beside the source tree";
    }
    std::size_t roundTrips = 0;
    std::size_t bestFits = 0;
    for (const auto& [unit, bytes] : table->encoding) {
        const auto listed = table->decoding.find(bytes);
        const bool roundTrip = listed != table->decoding.end() && listed->second == unit;
        const std::optional<MultiByteText> exact = Encode(GetParam(), unit, true);
        const std::optional<MultiByteText> bestFit = Encode(GetParam(), unit, false);
        ASSERT_TRUE(exact && bestFit);
        EXPECT_EQ(bestFit->bytes, BytesOf(bytes)) << std::hex << static_cast<unsigned>(unit);
        if (roundTrip) {
            ++roundTrips;
            EXPECT_EQ(exact->bytes, BytesOf(bytes)) << std::hex << static_cast<unsigned>(unit);
            EXPECT_FALSE(exact->usedDefaultChar) << std::hex << static_cast<unsigned>(unit);
        } else {
            ++bestFits;
            EXPECT_EQ(exact->bytes, Bytes{0x3F}) << std::hex << static_cast<unsigned>(unit);
            EXPECT_TRUE(exact->usedDefaultChar) << std::hex << static_cast<unsigned>(unit);
        }
    }
    EXPECT_GT(roundTrips, 100u);
    EXPECT_GT(bestFits, 0u);
}

TEST_P(PublishedCodePage, UnlistedCharactersBecomeTheDefaultByte)
{
    const std::optional<PublishedTable> table = ReadPublishedTable(GetParam());
    if (!table) {
        GTEST_SKIP() << "the published tables are not beside the source tree";
    }
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const auto unit = static_cast<char16_t>(value);
        if (table->encoding.count(unit) != 0) {
            continue;
        }
        const std::optional<MultiByteText> bestFit = Encode(GetParam(), unit, false);
        ASSERT_TRUE(bestFit);
        EXPECT_EQ(bestFit->bytes, Bytes{0x3F}) << std::hex << value;
        EXPECT_TRUE(bestFit->usedDefaultChar) << std::hex << value;
    }
}

INSTANTIATE_TEST_SUITE_P(BestFitTables, PublishedCodePage, testing::Values(874u, 932u, 936u, 949u, 950u, 1258u));

// EUC-KR as dumped from Windows: |0 both ways, |1 encoding only, |3 decoding only.
TEST(EucKrTable, EveryDumpedMappingHoldsInItsDirection)
{
    std::ifstream file(DataFolder / "windows-51949-2000.ucm");
    if (!file) {
        GTEST_SKIP() << "the EUC-KR dump is not beside the source tree";
    }
    std::size_t mappings = 0;
    std::string line;
    while (std::getline(file, line)) {
        if (line.rfind("<U", 0) != 0) {
            continue;
        }
        std::istringstream fields(line);
        std::string unitField;
        std::string bytesField;
        std::string kind;
        fields >> unitField >> bytesField >> kind;
        const auto unit = static_cast<char16_t>(std::stoul(unitField.substr(2, unitField.size() - 3), nullptr, 16));
        Bytes bytes;
        for (std::size_t at = 0; at + 4 <= bytesField.size(); at += 4) {
            bytes.push_back(static_cast<std::uint8_t>(std::stoul(bytesField.substr(at + 2, 2), nullptr, 16)));
        }
        ++mappings;
        if (kind == "|0" || kind == "|3") {
            EXPECT_EQ(Decode(51949, bytes, false), std::u16string(1, unit)) << line;
        }
        const std::optional<MultiByteText> exact = Encode(51949, unit, true);
        const std::optional<MultiByteText> bestFit = Encode(51949, unit, false);
        ASSERT_TRUE(exact && bestFit);
        if (kind == "|0") {
            EXPECT_EQ(exact->bytes, bytes) << line;
            EXPECT_FALSE(exact->usedDefaultChar) << line;
        } else if (kind == "|1") {
            EXPECT_EQ(bestFit->bytes, bytes) << line;
            EXPECT_FALSE(bestFit->usedDefaultChar) << line;
            EXPECT_TRUE(exact->usedDefaultChar) << line;
        }
    }
    EXPECT_GT(mappings, 8000u);
}

// Mappings picked from the published tables, so that the tables are checked on any machine.
struct KnownMapping {
    std::uint32_t codePage;
    Bytes bytes;
    char16_t unit;
};

class KnownRoundTrip : public testing::TestWithParam<KnownMapping> {};

TEST_P(KnownRoundTrip, DecodesAndEncodesBack)
{
    const KnownMapping& mapping = GetParam();
    EXPECT_EQ(Decode(mapping.codePage, mapping.bytes), std::u16string(1, mapping.unit));
    const std::optional<MultiByteText> encoded = Encode(mapping.codePage, mapping.unit);
    ASSERT_TRUE(encoded);
    EXPECT_EQ(encoded->bytes, mapping.bytes);
    EXPECT_FALSE(encoded->usedDefaultChar);
}

INSTANTIATE_TEST_SUITE_P(PickedMappings, KnownRoundTrip, testing::Values(
    KnownMapping{932, {0x82, 0xA0}, 0x3042},  // HIRAGANA LETTER A
    KnownMapping{932, {0x5C}, 0x005C},        // the backslash stays a backslash
    KnownMapping{932, {0xB1}, 0xFF71},        // half-width katakana A
    KnownMapping{932, {0xF0, 0x40}, 0xE000},  // first user-defined character
    KnownMapping{932, {0x81, 0x45}, 0x30FB},  // the default character has bytes of its own
    KnownMapping{936, {0x80}, 0x20AC},        // euro sign
    KnownMapping{936, {0xB0, 0xA1}, 0x554A},
    KnownMapping{949, {0xB0, 0xA1}, 0xAC00},  // HANGUL SYLLABLE GA
    KnownMapping{949, {0x81, 0x41}, 0xAC02},  // Unified Hangul Code extension
    KnownMapping{950, {0xA4, 0x40}, 0x4E00},
    KnownMapping{950, {0xA1, 0x40}, 0x3000},
    KnownMapping{874, {0xA1}, 0x0E01},        // THAI CHARACTER KO KAI
    KnownMapping{874, {0x80}, 0x20AC},
    KnownMapping{1258, {0xCC}, 0x0300},       // combining grave accent
    KnownMapping{1258, {0xD2}, 0x0309},       // combining hook above
    KnownMapping{1258, {0x81}, 0x0081},       // an undefined byte is its C1 control
    KnownMapping{51949, {0xB0, 0xA1}, 0xAC00},
    KnownMapping{51949, {0x41}, 0x0041},
    KnownMapping{51949, {0x85}, 0x0085}));    // bytes below 0xA0 stand for themselves

TEST(CodePageTables, OnlyTheTabledPagesHaveTables)
{
    for (const std::uint32_t codePage : {874u, 932u, 936u, 949u, 950u, 1258u, 51949u}) {
        const CodePageTable* table = FindCodePageTable(codePage);
        ASSERT_NE(table, nullptr) << codePage;
        EXPECT_EQ(table->codePage, codePage);
        EXPECT_EQ(table->defaultByte, 0x3F);
    }
    EXPECT_EQ(FindCodePageTable(57002), nullptr);
    EXPECT_EQ(FindCodePageTable(65001), nullptr);
    EXPECT_EQ(FindCodePageTable(1252), nullptr);
}

TEST(CodePageTables, DefaultCharactersAreThePublishedOnes)
{
    EXPECT_EQ(FindCodePageTable(932)->defaultUnicode, 0x30FB);
    for (const std::uint32_t codePage : {874u, 936u, 949u, 950u, 1258u, 51949u}) {
        EXPECT_EQ(FindCodePageTable(codePage)->defaultUnicode, 0x003F) << codePage;
    }
}

TEST(CodePageTables, LeadBytesFollowThePublishedRanges)
{
    const CodePageTable& shiftJis = *FindCodePageTable(932);
    const CodePageTable& eucKr = *FindCodePageTable(51949);
    for (int byte = 0; byte < 256; ++byte) {
        const auto value = static_cast<std::uint8_t>(byte);
        EXPECT_EQ(shiftJis.IsLeadByte(value), IsShiftJisLeadByte(value)) << byte;
        EXPECT_EQ(eucKr.IsLeadByte(value), byte >= 0xA1 && byte <= 0xFE) << byte;
        for (const std::uint32_t codePage : {936u, 949u, 950u}) {
            EXPECT_EQ(FindCodePageTable(codePage)->IsLeadByte(value), byte >= 0x81 && byte <= 0xFE) << byte;
        }
        EXPECT_FALSE(FindCodePageTable(874)->IsLeadByte(value));
        EXPECT_FALSE(FindCodePageTable(1258)->IsLeadByte(value));
    }
}

class TabledCodePage : public testing::TestWithParam<std::uint32_t> {};

TEST_P(TabledCodePage, EveryExactlyEncodedUnitDecodesBack)
{
    std::size_t exact = 0;
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const auto unit = static_cast<char16_t>(value);
        const std::optional<MultiByteText> encoded = Encode(GetParam(), unit, true);
        ASSERT_TRUE(encoded);
        if (encoded->usedDefaultChar) {
            EXPECT_EQ(encoded->bytes, Bytes{0x3F}) << std::hex << value;
            continue;
        }
        ++exact;
        const std::optional<std::u16string> decoded = Decode(GetParam(), encoded->bytes, false);
        EXPECT_EQ(decoded, std::u16string(1, unit)) << std::hex << value;
    }
    EXPECT_GT(exact, 200u);
}

TEST_P(TabledCodePage, StrictDecodingEitherFailsOrAgreesWithLenientDecoding)
{
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const Bytes bytes{static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value & 0xFF)};
        const std::optional<std::u16string> strict = Decode(GetParam(), bytes, true);
        const std::optional<std::u16string> lenient = Decode(GetParam(), bytes, false);
        ASSERT_TRUE(lenient);
        EXPECT_FALSE(lenient->empty());
        if (strict) {
            EXPECT_EQ(strict, lenient) << std::hex << value;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllTables, TabledCodePage, testing::Values(874u, 932u, 936u, 949u, 950u, 1258u, 51949u));

TEST(ShiftJisTable, EveryUserDefinedPairDecodesStrictlyIntoThePrivateUseArea)
{
    char16_t expected = 0xE000;
    for (std::uint8_t lead = 0xF0; lead <= 0xF9; ++lead) {
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            if (trail == 0x7F) {
                continue;
            }
            EXPECT_EQ(Decode(932, {lead, static_cast<std::uint8_t>(trail)}), std::u16string(1, expected)) << int(lead) << " " << trail;
            ++expected;
        }
    }
    EXPECT_EQ(expected, 0xE758);
}

} // namespace
} // namespace tlm
