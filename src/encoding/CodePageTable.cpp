#include "encoding/CodePageTable.h"

#include <array>

namespace tlm {

extern const CodePageTable CodePage874Table;
extern const CodePageTable CodePage932Table;
extern const CodePageTable CodePage936Table;
extern const CodePageTable CodePage949Table;
extern const CodePageTable CodePage950Table;
extern const CodePageTable CodePage1258Table;
extern const CodePageTable CodePage51949Table;

const CodePageTable* FindCodePageTable(std::uint32_t codePage)
{
    static const std::array<const CodePageTable*, 7> Tables{
        &CodePage874Table, &CodePage932Table, &CodePage936Table, &CodePage949Table,
        &CodePage950Table, &CodePage1258Table, &CodePage51949Table,
    };
    for (const CodePageTable* table : Tables) {
        if (table->codePage == codePage) {
            return table;
        }
    }
    return nullptr;
}

} // namespace tlm
