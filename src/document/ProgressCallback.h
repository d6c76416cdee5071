#pragma once

#include <cstdint>
#include <functional>

namespace tlm {

// Reports work done out of a total; may be empty.
using ProgressCallback = std::function<void(std::uint64_t done, std::uint64_t total)>;

// Asked between blocks of a search; returning false cancels it. May be empty.
using KeepGoingCallback = std::function<bool()>;

} // namespace tlm
