#include "hexview/RowCells.h"

#include "document/IReadOnlyDocument.h"
#include "encoding/RowTextDecoder.h"
#include "hexview/HexText.h"
#include "hexview/HexViewMetrics.h"

namespace tlm {

std::u16string FormatRowOffset(std::uint64_t rowOffset, bool wide)
{
    const int digits = wide ? 16 : 8;
    std::u16string text(static_cast<std::size_t>(digits), u'0');
    for (int i = digits - 1; i >= 0; --i) {
        text[static_cast<std::size_t>(i)] = UpperHexDigit(static_cast<std::uint8_t>(rowOffset & 0xF));
        rowOffset >>= 4;
    }
    text.push_back(u':');
    return text;
}

RowCells BuildRowCells(const IReadOnlyDocument* document, std::uint64_t rowOffset,
    std::span<const std::uint8_t> rowBytes, TextEncoding encoding)
{
    const bool wide = document != nullptr && document->GetSize() >= WideOffsetThreshold;
    RowCells cells;
    cells.offsetText = FormatRowOffset(rowOffset, wide);
    cells.hexCells.reserve(rowBytes.size());
    for (std::uint8_t byte : rowBytes) {
        cells.hexCells.push_back(FormatHexByte(byte));
    }
    cells.textCells = DecodeRowText(document, rowOffset, rowBytes, encoding);
    // The decoder gives one cell a byte; keep that promise even if it ever did not.
    cells.textCells.resize(rowBytes.size());
    return cells;
}

} // namespace tlm
