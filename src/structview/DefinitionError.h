#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tlm {

// "Line N, Col M: message", and where source line N is not empty, that line and a caret under
// column M on two more lines, separated by CR LF.
std::u16string FormatDefinitionError(std::u16string_view sourceText, std::int64_t line, std::int64_t column,
    std::u16string_view message);

} // namespace tlm
