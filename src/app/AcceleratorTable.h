#pragma once

#include "app/CommandId.h"

#include <array>
#include <cstdint>
#include <span>

namespace tlm {

// A key that runs a command while Ctrl is held. These three are the only accelerators: Open and Save
// have none.
struct AcceleratorKey {
    std::uint32_t virtualKey = 0;
    std::uint32_t command = 0;
};

std::span<const AcceleratorKey> AcceleratorKeys();

} // namespace tlm
