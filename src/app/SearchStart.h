#pragma once

#include "app/SearchDialog.h"

#include <cstdint>
#include <optional>

namespace tlm {

// Where one request of the find dialog starts. Without a selection both directions start at the
// caret. With one, its lower end is the base: Next starts one past it and Previous one before it,
// so a hit that stays selected is stepped over and overlapping hits are found. Nothing when there is
// no room to move: Next from the last byte, Previous from 0.
std::optional<std::uint64_t> SearchStart(SearchDirection direction, std::uint64_t caret,
    std::optional<std::uint64_t> selectionBase, std::uint64_t fileSize);

} // namespace tlm
