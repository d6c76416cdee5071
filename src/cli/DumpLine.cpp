#include "cli/DumpLine.h"

#include "cli/CliCommon.h"

namespace tlm {

namespace {

bool IsControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F);
}

} // namespace

void AppendDumpCellText(std::string& out, const std::u16string& cell)
{
    for (const char16_t unit : cell) {
        if (IsControl(unit)) {
            std::u16string shown;
            for (const char16_t kept : cell) {
                if (!IsControl(kept)) {
                    shown.push_back(kept);
                }
            }
            AppendUtf8(out, shown);
            return;
        }
    }
    AppendUtf8(out, cell);
}

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
    AppendDumpLineText(out, cells.textCells);
}

void AppendDumpLineText(std::string& out, const std::vector<std::u16string>& textCells)
{
    for (const std::u16string& cell : textCells) {
        AppendDumpCellText(out, cell);
    }
    out.push_back('\n');
}

} // namespace tlm
