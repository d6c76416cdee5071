#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tlm {

// A number on the command line: decimal, or hexadecimal after "0x" or "0X". Nothing for a sign, a
// blank, any other character or a value beyond 64 bits.
std::optional<std::uint64_t> ParseCliNumber(std::string_view text);

} // namespace tlm
