#include "cli/CliOffset.h"

namespace tlm {

namespace {

int DigitValue(char character, unsigned base)
{
    int value = -1;
    if (character >= '0' && character <= '9') {
        value = character - '0';
    } else if (character >= 'a' && character <= 'f') {
        value = character - 'a' + 10;
    } else if (character >= 'A' && character <= 'F') {
        value = character - 'A' + 10;
    }
    return value >= 0 && static_cast<unsigned>(value) < base ? value : -1;
}

} // namespace

std::optional<std::uint64_t> ParseCliNumber(std::string_view text)
{
    unsigned base = 10;
    if (text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        text.remove_prefix(2);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    std::uint64_t value = 0;
    for (const char character : text) {
        const int digit = DigitValue(character, base);
        if (digit < 0 || value > (UINT64_MAX - static_cast<std::uint64_t>(digit)) / base) {
            return std::nullopt;
        }
        value = value * base + static_cast<std::uint64_t>(digit);
    }
    return value;
}

} // namespace tlm
