#pragma once

#include <cstdint>
#include <string_view>

namespace tlm {

// Reads a decimal Number token. Answers false when the text is not all digits or the value does not
// fit in 64 bits.
bool ParseUnsigned(std::u16string_view text, std::uint64_t& value);

} // namespace tlm
