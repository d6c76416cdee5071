#pragma once

#include "hexview/RowCells.h"

#include <string>

namespace tlm {

// Bytes a dump line always makes room for, so the text column of a short last row stands where the
// others' does.
inline constexpr std::size_t DumpRowBytes = 16;

// One row as a line of text: the offset cell, a blank, the hex cells with one blank between them
// (padded to sixteen cells), two blanks, then the text cells side by side, and "\n". A text cell that a
// wider character covers is empty in the view, and adds nothing here. Control characters that a
// decoder joined into a cell with a mark are drawn as nothing by the view and are left out here too:
// a line feed would split the row and an escape would reach the terminal.
void AppendDumpLine(std::string& out, const RowCells& cells);

// One text cell as a line shows it: its characters less the control characters.
void AppendDumpCellText(std::string& out, const std::u16string& cell);

// The text column and the line end alone, for a line whose front was written by other means.
void AppendDumpLineText(std::string& out, const std::vector<std::u16string>& textCells);

} // namespace tlm
