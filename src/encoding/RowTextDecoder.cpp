#include "encoding/RowTextDecoder.h"

#include "encoding/BaseAndMarkDecoder.h"
#include "encoding/CharacterRules.h"
#include "encoding/DoubleByteDecoder.h"
#include "encoding/IsciiDecoder.h"
#include "encoding/RowDecodeBuffer.h"
#include "encoding/ShiftJisDecoder.h"
#include "encoding/Utf16RowDecoder.h"
#include "encoding/Utf8RowDecoder.h"

namespace tlm {

namespace {

// ASCII needs no platform: the printable range is itself and everything else is the filler.
std::vector<std::u16string> DecodeAsciiRow(std::span<const std::uint8_t> rowBytes)
{
    std::vector<std::u16string> cells;
    cells.reserve(rowBytes.size());
    for (std::uint8_t byte : rowBytes) {
        cells.push_back(byte >= 0x20 && byte <= 0x7E ? std::u16string(1, static_cast<char16_t>(byte))
                                                     : std::u16string(FillerText));
    }
    return cells;
}

std::optional<DecodedCharacter> DecodeAsciiCharacter(std::uint8_t byte)
{
    const std::u16string text(1, static_cast<char16_t>(byte));
    if (byte >= 0x80 || !HasNonControlUnit(text)) {
        return std::nullopt;
    }
    return DecodedCharacter{text, 1};
}

} // namespace

std::vector<std::u16string> DecodeRowText(const IReadOnlyDocument* document, std::uint64_t rowOffset,
    std::span<const std::uint8_t> rowBytes, TextEncoding encoding)
{
    if (rowBytes.empty()) {
        return {};
    }
    const auto read = [&](std::uint64_t lookBack, std::uint64_t lookAhead) {
        return ReadRowDecodeBuffer(document, rowOffset, rowBytes, lookBack, lookAhead);
    };
    switch (encoding) {
    case TextEncoding::Utf8:
        return DecodeUtf8Row(read(Utf8LookBack, Utf8LookAhead));
    case TextEncoding::Utf16Le:
        return DecodeUtf16Row(rowBytes, false);
    case TextEncoding::Utf16Be:
        return DecodeUtf16Row(rowBytes, true);
    case TextEncoding::ShiftJis:
        return DecodeShiftJisRow(read(ShiftJisLookBack, ShiftJisLookAhead));
    case TextEncoding::Windows949:
    case TextEncoding::EucKr:
    case TextEncoding::Big5:
    case TextEncoding::Gbk:
        return DecodeDoubleByteRow(*DoubleByteSchemeFor(encoding), read(DoubleByteLookBack, DoubleByteLookAhead));
    case TextEncoding::Tis620:
    case TextEncoding::Windows1258:
        return DecodeBaseAndMarkRow(encoding, read(BaseAndMarkLookBack, BaseAndMarkLookAhead));
    case TextEncoding::IsciiDevanagari:
        return DecodeIsciiRow(read(IsciiLookBack, IsciiLookAhead));
    case TextEncoding::Ascii:
    default:
        return DecodeAsciiRow(rowBytes);
    }
}

std::vector<std::u16string> DecodeRowTextDetached(std::span<const std::uint8_t> rowBytes, TextEncoding encoding)
{
    switch (encoding) {
    case TextEncoding::Utf16Le:
        return DecodeUtf16Row(rowBytes, false);
    case TextEncoding::Utf16Be:
        return DecodeUtf16Row(rowBytes, true);
    case TextEncoding::Tis620:
    case TextEncoding::Windows1258:
        return DecodeBaseAndMarkRow(encoding, DetachedRowDecodeBuffer(rowBytes));
    case TextEncoding::IsciiDevanagari:
        return DecodeIsciiRow(DetachedRowDecodeBuffer(rowBytes));
    default:
        return DecodeAsciiRow(rowBytes);
    }
}

std::optional<DecodedCharacter> DecodeCharacterAt(TextEncoding encoding, std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) {
        return std::nullopt;
    }
    switch (encoding) {
    case TextEncoding::Utf8:
    case TextEncoding::Utf16Le:
    case TextEncoding::Utf16Be:
        return std::nullopt;
    case TextEncoding::ShiftJis:
        return DecodeShiftJisCharacter(bytes);
    case TextEncoding::Windows949:
    case TextEncoding::EucKr:
    case TextEncoding::Big5:
    case TextEncoding::Gbk:
        return DecodeDoubleByteCharacter(*DoubleByteSchemeFor(encoding), bytes);
    case TextEncoding::Tis620:
    case TextEncoding::Windows1258:
        return DecodeBaseWithMarks(encoding, bytes);
    case TextEncoding::IsciiDevanagari:
        return DecodeIsciiSyllable(bytes);
    case TextEncoding::Ascii:
    default:
        return DecodeAsciiCharacter(bytes[0]);
    }
}

} // namespace tlm
