#include "structview/DecimalText.h"

namespace tlm {

namespace {

std::u16string Widen(const std::string& digits)
{
    return std::u16string(digits.begin(), digits.end());
}

} // namespace

std::u16string DecimalText(std::uint64_t value)
{
    return Widen(std::to_string(value));
}

std::u16string SignedDecimalText(std::int64_t value)
{
    return Widen(std::to_string(value));
}

} // namespace tlm
