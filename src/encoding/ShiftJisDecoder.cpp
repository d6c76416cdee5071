#include "encoding/ShiftJisDecoder.h"

#include "encoding/CharacterRules.h"
#include "encoding/TextServices.h"

namespace tlm {

namespace {

constexpr std::uint32_t ShiftJisCodePage = 932;

// 2 for a lead byte followed by a valid trail byte, else 1.
std::size_t CharacterWidth(std::span<const std::uint8_t> bytes)
{
    return IsShiftJisLeadByte(bytes[0]) && bytes.size() > 1 && IsShiftJisTrailByte(bytes[1]) ? 2 : 1;
}

} // namespace

bool IsShiftJisTrailByte(std::uint8_t byte)
{
    return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC);
}

const DoubleByteScheme& ShiftJisScheme()
{
    static const DoubleByteScheme scheme = MakeDoubleByteScheme(ShiftJisCodePage, IsShiftJisLeadByte, IsShiftJisTrailByte);
    return scheme;
}

std::optional<DecodedCharacter> DecodeShiftJisCharacter(std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) {
        return std::nullopt;
    }
    const std::size_t width = CharacterWidth(bytes);
    if (IsShiftJisLeadByte(bytes[0]) && width != 2) {
        return std::nullopt;
    }
    std::optional<std::u16string> text = MultiByteToUtf16(ShiftJisCodePage, bytes.first(width), true);
    if (!text || text->empty() || !HasNonControlUnit(*text)) {
        return std::nullopt;
    }
    return DecodedCharacter{std::move(*text), width};
}

std::vector<std::u16string> DecodeShiftJisRow(const RowDecodeBuffer& buffer)
{
    std::vector<std::u16string> cells(buffer.RowSize());
    std::size_t position = FindDoubleByteRowStart(ShiftJisScheme(), buffer);
    while (position < buffer.rowEnd) {
        const std::span<const std::uint8_t> rest = buffer.From(position);
        std::optional<DecodedCharacter> decoded = DecodeShiftJisCharacter(rest);
        if (buffer.InRow(position)) {
            cells[buffer.CellOf(position)] = decoded ? std::move(decoded->text) : std::u16string(FillerText);
        }
        // A well-formed pair that does not decode is still stepped over as a pair.
        position += decoded ? decoded->consumed : CharacterWidth(rest);
    }
    return cells;
}

} // namespace tlm
