#pragma once

#include <utility>

namespace tlm {

// Calls an operation of a host or platform table that may have been left empty; an empty one does
// nothing.
template <typename Function, typename... Args>
void CallIfSet(const Function& function, Args&&... args)
{
    if (function) {
        function(std::forward<Args>(args)...);
    }
}

} // namespace tlm
