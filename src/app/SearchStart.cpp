#include "app/SearchStart.h"

namespace tlm {

std::optional<std::uint64_t> SearchStart(SearchDirection direction, std::uint64_t caret,
    std::optional<std::uint64_t> selectionBase, std::uint64_t fileSize)
{
    if (!selectionBase) {
        return caret;
    }
    const std::uint64_t base = *selectionBase;
    if (direction == SearchDirection::Next) {
        if (fileSize == 0 || base >= fileSize - 1) {
            return std::nullopt;
        }
        return base + 1;
    }
    if (base == 0) {
        return std::nullopt;
    }
    return base - 1;
}

} // namespace tlm
