#include "hexview/RowCells.h"

#include "document/IReadOnlyDocument.h"
#include "encoding/RowTextDecoder.h"
#include "hexview/HexText.h"
#include "hexview/HexViewMetrics.h"

namespace tlm {

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
