#include "encoding/DoubleByteDecoder.h"

#include "encoding/CharacterRules.h"
#include "encoding/TextServices.h"

#include <algorithm>

namespace tlm {

namespace {

constexpr bool InRange(std::uint8_t byte, std::uint8_t first, std::uint8_t last)
{
    return byte >= first && byte <= last;
}

constexpr bool IsHighLead(std::uint8_t byte)
{
    return InRange(byte, 0x81, 0xFE);
}

constexpr bool IsEucKrByte(std::uint8_t byte)
{
    return InRange(byte, 0xA1, 0xFE);
}

constexpr bool IsWindows949Trail(std::uint8_t byte)
{
    return InRange(byte, 0x41, 0x5A) || InRange(byte, 0x61, 0x7A) || InRange(byte, 0x81, 0xFE);
}

constexpr bool IsBig5Trail(std::uint8_t byte)
{
    return InRange(byte, 0x40, 0x7E) || InRange(byte, 0xA1, 0xFE);
}

constexpr bool IsGbkTrail(std::uint8_t byte)
{
    return InRange(byte, 0x40, 0x7E) || InRange(byte, 0x80, 0xFE);
}

std::size_t CharacterWidth(const DoubleByteScheme& scheme, std::span<const std::uint8_t> bytes)
{
    return scheme.IsLead(bytes[0]) && bytes.size() > 1 && scheme.IsTrail(bytes[1]) ? 2 : 1;
}

constexpr DoubleByteScheme Windows949Scheme = MakeDoubleByteScheme(949, IsHighLead, IsWindows949Trail);
constexpr DoubleByteScheme EucKrScheme = MakeDoubleByteScheme(51949, IsEucKrByte, IsEucKrByte);
constexpr DoubleByteScheme Big5Scheme = MakeDoubleByteScheme(950, IsHighLead, IsBig5Trail);
constexpr DoubleByteScheme GbkScheme = MakeDoubleByteScheme(936, IsHighLead, IsGbkTrail);

} // namespace

const DoubleByteScheme* DoubleByteSchemeFor(TextEncoding encoding)
{
    switch (encoding) {
    case TextEncoding::Windows949:
        return &Windows949Scheme;
    case TextEncoding::EucKr:
        return &EucKrScheme;
    case TextEncoding::Big5:
        return &Big5Scheme;
    case TextEncoding::Gbk:
        return &GbkScheme;
    default:
        return nullptr;
    }
}

std::optional<DecodedCharacter> DecodeDoubleByteCharacter(const DoubleByteScheme& scheme, std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) {
        return std::nullopt;
    }
    const std::size_t width = CharacterWidth(scheme, bytes);
    const bool lead = scheme.IsLead(bytes[0]);
    if ((lead && width != 2) || (!lead && bytes[0] >= 0x80)) {
        return std::nullopt;
    }
    std::optional<std::u16string> text = MultiByteToUtf16(scheme.codePage, bytes.first(width), true);
    if (!text || text->empty() || !HasNonControlUnit(*text)) {
        return std::nullopt;
    }
    return DecodedCharacter{std::move(*text), width};
}

std::size_t FindDoubleByteRowStart(const DoubleByteScheme& scheme, const RowDecodeBuffer& buffer)
{
    return FindDoubleByteRowStart(scheme, buffer.bytes, buffer.rowBegin);
}

std::size_t FindDoubleByteRowStart(const DoubleByteScheme& scheme, std::span<const std::uint8_t> bytes, std::size_t rowStart)
{
    if (rowStart == 0) {
        return rowStart;
    }
    // The scan may look at the row's first byte as a trail, never further.
    const std::size_t scanEnd = std::min(rowStart + 1, bytes.size());
    const auto pairAt = [&](std::size_t position) {
        return scheme.IsLead(bytes[position]) && position + 1 < scanEnd && scheme.IsTrail(bytes[position + 1]);
    };
    // Steps are one or two bytes, so a walk from the start lands on every position whose byte in front
    // does not begin a pair. Starting at the last such position before the row gives the same answer
    // as walking from the start, usually after a step or two instead of thousands.
    std::size_t position = std::min(rowStart, scanEnd);
    while (position > 0 && pairAt(position - 1)) {
        --position;
    }
    while (position < rowStart && position < scanEnd) {
        const std::size_t width = pairAt(position) ? 2 : 1;
        if (position + width > rowStart) {
            return position;
        }
        position += width;
    }
    return rowStart;
}

std::vector<std::u16string> DecodeDoubleByteRow(const DoubleByteScheme& scheme, const RowDecodeBuffer& buffer)
{
    std::vector<std::u16string> cells(buffer.RowSize());
    std::size_t position = FindDoubleByteRowStart(scheme, buffer);
    while (position < buffer.rowEnd) {
        std::optional<DecodedCharacter> decoded = DecodeDoubleByteCharacter(scheme, buffer.From(position));
        if (buffer.InRow(position)) {
            cells[buffer.CellOf(position)] = decoded ? std::move(decoded->text) : std::u16string(FillerText);
        }
        position += decoded ? decoded->consumed : 1;
    }
    return cells;
}

} // namespace tlm
