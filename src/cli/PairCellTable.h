#pragma once

#include "encoding/TextEncoding.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tlm {

// In the double-byte encodings the character at a byte depends on that byte and the next alone. This
// table holds, for every two bytes, the dump text of the first byte's cell and whether its character
// takes the second byte too, so that a dump of gigabytes decodes by lookup. It is filled from the
// core's row decoder, two bytes at a time, so it says what the view says.
class PairCellTable {
public:
    struct Cell {
        std::array<char, 12> text {}; // UTF-8 as a dump line shows the cell
        std::uint8_t length = 0;
        bool takesNext = false;
    };

    // For Shift_JIS, Windows-949, EUC-KR, Big5 or GBK.
    explicit PairCellTable(TextEncoding encoding);

    // False when some cell does not fit the table's form; the caller then decodes row by row.
    bool Usable() const { return usable; }
    const Cell& At(std::uint8_t first, std::uint8_t second) const { return pairs[first * 256u + second]; }
    // The cell of the file's last byte, with nothing behind it.
    const Cell& Last(std::uint8_t byte) const { return lasts[byte]; }

private:
    std::vector<Cell> pairs;
    std::array<Cell, 256> lasts {};
    bool usable = true;
};

} // namespace tlm
