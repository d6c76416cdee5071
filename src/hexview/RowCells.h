#pragma once

#include "encoding/TextEncoding.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tlm {

class IReadOnlyDocument;

// The strings of one row: its offset, and one hex and one text cell for each byte actually read.
// A text cell is empty where a character that began to its left covers it.
struct RowCells {
    std::u16string offsetText;
    std::vector<std::u16string> hexCells;
    std::vector<std::u16string> textCells;
};

// Builds the cells of the row that starts at `rowOffset` from its bytes. The offset is wide when the
// document holds 0x100000000 bytes or more; with no document it is eight digits.
RowCells BuildRowCells(const IReadOnlyDocument* document, std::uint64_t rowOffset,
    std::span<const std::uint8_t> rowBytes, TextEncoding encoding);

} // namespace tlm
