#include "encoding/BaseAndMarkDecoder.h"

#include "encoding/CharacterRules.h"
#include "encoding/TextServices.h"

namespace tlm {

namespace {

std::uint32_t CodePageOf(TextEncoding encoding)
{
    return encoding == TextEncoding::Tis620 ? 874 : 1258;
}

bool IsMark(std::u16string_view text)
{
    return IsCombining(text.front());
}

// The marks that follow a base while the walk goes over the buffer.
struct BaseState {
    bool haveBase = false;
    bool baseBeforeRow = false; // the last base stands in front of the row, in the row above
    std::size_t baseCell = 0;
};

} // namespace

bool IsTis620Byte(std::uint8_t byte)
{
    return byte <= 0x7F || (byte >= 0xA1 && byte <= 0xDA) || (byte >= 0xDF && byte <= 0xFB);
}

std::optional<std::u16string> DecodeBaseAndMarkByte(TextEncoding encoding, std::uint8_t byte)
{
    if (encoding == TextEncoding::Tis620 && !IsTis620Byte(byte)) {
        return std::nullopt;
    }
    std::optional<std::u16string> text = MultiByteToUtf16(CodePageOf(encoding), std::span(&byte, 1), true);
    if (!text || text->empty() || !HasNonControlUnit(*text)) {
        return std::nullopt;
    }
    return text;
}

std::optional<DecodedCharacter> DecodeBaseWithMarks(TextEncoding encoding, std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) {
        return std::nullopt;
    }
    std::optional<std::u16string> base = DecodeBaseAndMarkByte(encoding, bytes[0]);
    if (!base || IsMark(*base)) {
        return std::nullopt;
    }
    DecodedCharacter character{std::move(*base), 1};
    while (character.consumed < bytes.size()) {
        const std::optional<std::u16string> mark = DecodeBaseAndMarkByte(encoding, bytes[character.consumed]);
        if (!mark || !IsMark(*mark)) {
            break;
        }
        character.text += *mark;
        character.consumed += 1;
    }
    return character;
}

std::vector<std::u16string> DecodeBaseAndMarkRow(TextEncoding encoding, const RowDecodeBuffer& buffer)
{
    std::vector<std::u16string> cells(buffer.RowSize());
    BaseState state;
    for (std::size_t position = 0; position < buffer.bytes.size(); ++position) {
        const bool inRow = buffer.InRow(position);
        const std::optional<std::u16string> text = DecodeBaseAndMarkByte(encoding, buffer.bytes[position]);
        if (!text) {
            if (inRow) {
                cells[buffer.CellOf(position)] = std::u16string(FillerText);
            }
            state.haveBase = false;
            state.baseBeforeRow = false;
        } else if (IsMark(*text)) {
            // A mark behind the row still stacks on the row's last base.
            if (state.haveBase) {
                cells[state.baseCell] += *text;
            } else if (inRow && !state.baseBeforeRow) {
                cells[buffer.CellOf(position)] = std::u16string(FillerText);
            }
        } else if (inRow) {
            cells[buffer.CellOf(position)] = *text;
            state.baseCell = buffer.CellOf(position);
            state.haveBase = true;
            state.baseBeforeRow = false;
        } else if (position < buffer.rowBegin) {
            state.haveBase = false;
            state.baseBeforeRow = true;
        } else {
            state.haveBase = false;
            state.baseBeforeRow = false;
        }
    }
    return cells;
}

} // namespace tlm
