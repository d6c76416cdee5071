#include "encoding/DoubleByteDecoder.h"

#include "encoding/CharacterRules.h"
#include "encoding/TextServices.h"

#include <algorithm>

namespace tlm {

namespace {

bool InRange(std::uint8_t byte, std::uint8_t first, std::uint8_t last)
{
    return byte >= first && byte <= last;
}

bool IsHighLead(std::uint8_t byte)
{
    return InRange(byte, 0x81, 0xFE);
}

bool IsEucKrByte(std::uint8_t byte)
{
    return InRange(byte, 0xA1, 0xFE);
}

bool IsWindows949Trail(std::uint8_t byte)
{
    return InRange(byte, 0x41, 0x5A) || InRange(byte, 0x61, 0x7A) || InRange(byte, 0x81, 0xFE);
}

bool IsBig5Trail(std::uint8_t byte)
{
    return InRange(byte, 0x40, 0x7E) || InRange(byte, 0xA1, 0xFE);
}

bool IsGbkTrail(std::uint8_t byte)
{
    return InRange(byte, 0x40, 0x7E) || InRange(byte, 0x80, 0xFE);
}

std::size_t CharacterWidth(const DoubleByteScheme& scheme, std::span<const std::uint8_t> bytes)
{
    return scheme.isLead(bytes[0]) && bytes.size() > 1 && scheme.isTrail(bytes[1]) ? 2 : 1;
}

} // namespace

std::optional<DoubleByteScheme> DoubleByteSchemeFor(TextEncoding encoding)
{
    switch (encoding) {
    case TextEncoding::Windows949:
        return DoubleByteScheme{949, IsHighLead, IsWindows949Trail};
    case TextEncoding::EucKr:
        return DoubleByteScheme{51949, IsEucKrByte, IsEucKrByte};
    case TextEncoding::Big5:
        return DoubleByteScheme{950, IsHighLead, IsBig5Trail};
    case TextEncoding::Gbk:
        return DoubleByteScheme{936, IsHighLead, IsGbkTrail};
    default:
        return std::nullopt;
    }
}

std::optional<DecodedCharacter> DecodeDoubleByteCharacter(const DoubleByteScheme& scheme, std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) {
        return std::nullopt;
    }
    const std::size_t width = CharacterWidth(scheme, bytes);
    const bool lead = scheme.isLead(bytes[0]);
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
    const std::size_t rowStart = buffer.rowBegin;
    if (rowStart == 0) {
        return rowStart;
    }
    // The scan may look at the row's first byte as a trail, never further.
    const std::span<const std::uint8_t> scanned = std::span<const std::uint8_t>(buffer.bytes).first(
        std::min(rowStart + 1, buffer.bytes.size()));
    std::size_t position = 0;
    while (position < rowStart && position < scanned.size()) {
        const std::size_t width = CharacterWidth(scheme, scanned.subspan(position));
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
