#pragma once

#include <cstdint>
#include <string>

namespace tlm {

// Decimal digits of a number as pattern texts show it: sizes, counts, offsets and error positions.
std::u16string DecimalText(std::uint64_t value);
std::u16string SignedDecimalText(std::int64_t value);

} // namespace tlm
