#pragma once

#include <cstdint>

namespace tlm {

// The colour schemes of every window. Any value outside the four acts as Light.
enum class Theme : std::uint32_t {
    Light = 0,
    CoolSlate = 1,
    DarkBlue = 2,
    Black = 3,
};

} // namespace tlm
