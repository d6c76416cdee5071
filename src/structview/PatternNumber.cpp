#include "structview/PatternNumber.h"

#include <limits>

namespace tlm {

bool ParseUnsigned(std::u16string_view text, std::uint64_t& value)
{
    if (text.empty())
        return false;
    constexpr auto Max = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t result = 0;
    for (const char16_t c : text) {
        if (c < u'0' || c > u'9')
            return false;
        const auto digit = static_cast<std::uint64_t>(c - u'0');
        if (result > (Max - digit) / 10)
            return false;
        result = result * 10 + digit;
    }
    value = result;
    return true;
}

} // namespace tlm
