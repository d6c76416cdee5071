#pragma once

#include <string>

namespace tlm {

// One line of the struct view. Every cell is text so that the window, the copy text and the worker
// that builds the rows need no knowledge of the pattern.
struct StructRow {
    std::u16string name;   // member name, indented under a struct field's header
    std::u16string offset; // document offset, "0x" and upper-case hexadecimal
    std::u16string type;   // reserved slot, always empty
    std::u16string value;
    std::u16string size;   // decimal byte count; a flexible array ends in "+"

    friend bool operator==(const StructRow&, const StructRow&) = default;
};

} // namespace tlm
