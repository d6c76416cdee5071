#include "cli/DumpLine.h"

#include "cli/CliCommon.h"

namespace tlm {

void AppendDumpLine(std::string& out, const RowCells& cells)
{
    AppendUtf8(out, cells.offsetText);
    out.push_back(' ');
    for (std::size_t index = 0; index < DumpRowBytes; ++index) {
        if (index > 0) {
            out.push_back(' ');
        }
        if (index < cells.hexCells.size()) {
            AppendUtf8(out, cells.hexCells[index]);
        } else {
            out += "  ";
        }
    }
    out += "  ";
    for (const std::u16string& cell : cells.textCells) {
        AppendUtf8(out, cell);
    }
    out.push_back('\n');
}

} // namespace tlm
