#include "cli/PairCellTable.h"

#include "cli/DumpLine.h"
#include "cli/DoubleByteRowText.h"

#include <cstring>
#include <span>
#include <string>

namespace tlm {

PairCellTable::PairCellTable(TextEncoding encoding)
    : pairs(256 * 256)
{
    const auto fill = [this](Cell& cell, const std::u16string& text) {
        std::string line;
        AppendDumpCellText(line, text);
        // A decoded cell is never empty: an empty one is covered by the character in front of it.
        usable = usable && !text.empty() && line.size() <= cell.text.size();
        cell.length = static_cast<std::uint8_t>(std::min(line.size(), cell.text.size()));
        std::memcpy(cell.text.data(), line.data(), cell.length);
    };
    for (unsigned first = 0; first < 256; ++first) {
        const std::uint8_t last = static_cast<std::uint8_t>(first);
        fill(lasts[first], DecodeDoubleByteBuffer(encoding, DetachedRowDecodeBuffer(std::span(&last, 1))).at(0));
        for (unsigned second = 0; second < 256; ++second) {
            const std::uint8_t bytes[2] = {static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(second)};
            const std::vector<std::u16string> cells = DecodeDoubleByteBuffer(encoding, DetachedRowDecodeBuffer(bytes));
            Cell& cell = pairs[first * 256u + second];
            fill(cell, cells.at(0));
            cell.takesNext = cells.at(1).empty();
        }
    }
}

} // namespace tlm
