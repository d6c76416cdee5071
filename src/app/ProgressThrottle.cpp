#include "app/ProgressThrottle.h"

#include <limits>

namespace tlm {

namespace {

// A percent repeated within this time is not drawn again.
constexpr std::uint64_t SamePercentIntervalMs = 100;
// A percent between the ends within this time of the last one shown is not drawn: 20 a second.
constexpr std::uint64_t UpdateIntervalMs = 50;

// processed * 100 / total, at most 100, without overflowing for sizes near 2^64.
std::int64_t Percent(std::uint64_t processed, std::uint64_t total)
{
    if (total == 0 || processed >= total)
        return 100;
    if (processed <= std::numeric_limits<std::uint64_t>::max() / 100)
        return static_cast<std::int64_t>(processed * 100 / total);
    // Here processed < total, so 100 * processed is taken modulo total one step at a time; each
    // wrap past total is one percent.
    std::int64_t percent = 0;
    std::uint64_t remainder = 0;
    const std::uint64_t gap = total - processed;
    for (int step = 0; step < 100; ++step) {
        if (remainder >= gap) {
            remainder -= gap;
            ++percent;
        } else {
            remainder += processed;
        }
    }
    return percent;
}

std::u16string Decimal(std::int64_t value)
{
    std::u16string digits;
    do {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
        value /= 10;
    } while (value != 0);
    return digits;
}

} // namespace

bool ProgressThrottle::Report(std::uint64_t processed, std::uint64_t total, std::uint64_t nowTick,
                              std::u16string_view word)
{
    active = true;
    const std::int64_t percent = Percent(processed, total);
    const std::uint64_t elapsed = nowTick >= lastTick ? nowTick - lastTick : 0;
    if (percent == lastPercent && elapsed < SamePercentIntervalMs)
        return false;
    if (percent >= 1 && percent <= 99 && elapsed < UpdateIntervalMs)
        return false;
    lastPercent = percent;
    lastTick = nowTick;
    text = std::u16string(word) + u" " + Decimal(percent) + u"%";
    return true;
}

void ProgressThrottle::Reset()
{
    active = false;
    text.clear();
    lastPercent = -1;
    lastTick = 0;
}

} // namespace tlm
