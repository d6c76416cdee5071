// The row start of the double-byte encodings, found from the last sure boundary before the row, must
// be the one a walk from the buffer's very start finds.
#include "encoding/DoubleByteDecoder.h"
#include "encoding/ShiftJisDecoder.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace tlm {
namespace {

// The plain rule: step over pairs and single bytes from the start until a step would cross the row.
std::size_t WalkFromTheStart(const DoubleByteScheme& scheme, const std::vector<std::uint8_t>& bytes, std::size_t rowStart)
{
    const std::size_t scanEnd = std::min(rowStart + 1, bytes.size());
    std::size_t position = 0;
    while (position < rowStart && position < scanEnd) {
        const bool pair = scheme.IsLead(bytes[position]) && position + 1 < scanEnd && scheme.IsTrail(bytes[position + 1]);
        const std::size_t width = pair ? 2 : 1;
        if (position + width > rowStart) {
            return position;
        }
        position += width;
    }
    return rowStart;
}

std::vector<const DoubleByteScheme*> Schemes()
{
    std::vector<const DoubleByteScheme*> schemes {&ShiftJisScheme()};
    for (const TextEncoding encoding : {TextEncoding::Windows949, TextEncoding::EucKr, TextEncoding::Big5, TextEncoding::Gbk})
        schemes.push_back(DoubleByteSchemeFor(encoding));
    return schemes;
}

// Mostly bytes that are lead and trail at once, so long runs of possible pairs meet the row.
std::vector<std::uint8_t> PairHeavyBytes(std::mt19937& random, const DoubleByteScheme& scheme, std::size_t size)
{
    std::vector<std::uint8_t> both;
    for (int byte = 0; byte < 256; ++byte) {
        if (scheme.IsLead(static_cast<std::uint8_t>(byte)) && scheme.IsTrail(static_cast<std::uint8_t>(byte)))
            both.push_back(static_cast<std::uint8_t>(byte));
    }
    std::uniform_int_distribution<int> kind(0, 9);
    std::uniform_int_distribution<int> anyByte(0, 255);
    std::uniform_int_distribution<std::size_t> pick(0, both.size() - 1);
    std::vector<std::uint8_t> bytes(size);
    for (auto& byte : bytes)
        byte = kind(random) < 8 && !both.empty() ? both[pick(random)] : static_cast<std::uint8_t>(anyByte(random));
    return bytes;
}

TEST(DoubleByteRowStart, MatchesAWalkFromTheStartOnPairHeavyBytes)
{
    std::mt19937 random(20261125);
    for (const DoubleByteScheme* scheme : Schemes()) {
        ASSERT_NE(scheme, nullptr);
        for (int trial = 0; trial < 400; ++trial) {
            const std::vector<std::uint8_t> bytes = PairHeavyBytes(random, *scheme, 1 + random() % 300);
            for (std::size_t rowStart = 0; rowStart < bytes.size(); ++rowStart) {
                ASSERT_EQ(FindDoubleByteRowStart(*scheme, bytes, rowStart), WalkFromTheStart(*scheme, bytes, rowStart))
                    << "code page " << scheme->codePage << ", row at " << rowStart << " of " << bytes.size();
            }
        }
    }
}

TEST(DoubleByteRowStart, MatchesAWalkFromTheStartOnAnyBytes)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> anyByte(0, 255);
    for (const DoubleByteScheme* scheme : Schemes()) {
        for (int trial = 0; trial < 200; ++trial) {
            std::vector<std::uint8_t> bytes(1 + random() % 200);
            for (auto& byte : bytes)
                byte = static_cast<std::uint8_t>(anyByte(random));
            for (std::size_t rowStart = 0; rowStart < bytes.size(); ++rowStart)
                ASSERT_EQ(FindDoubleByteRowStart(*scheme, bytes, rowStart), WalkFromTheStart(*scheme, bytes, rowStart));
        }
    }
}

// A pair that reaches over the row's first byte starts the row one byte early; a run of possible
// pairs decides by its length where the walk from the start stands.
TEST(DoubleByteRowStart, APairAcrossTheRowStartBeginsTheRowOneByteEarly)
{
    const DoubleByteScheme& scheme = ShiftJisScheme();
    const std::vector<std::uint8_t> even {0x41, 0x88, 0x9F, 0x88, 0x9F};
    EXPECT_EQ(FindDoubleByteRowStart(scheme, even, 3), 3u);
    EXPECT_EQ(FindDoubleByteRowStart(scheme, even, 4), 3u);
    const std::vector<std::uint8_t> odd {0x88, 0x88, 0x9F, 0x88, 0x9F};
    EXPECT_EQ(FindDoubleByteRowStart(scheme, odd, 4), 4u);
    EXPECT_EQ(FindDoubleByteRowStart(scheme, odd, 3), 2u);
}

} // namespace
} // namespace tlm
