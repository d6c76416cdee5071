#include "app/StartupPath.h"

namespace tlm {

std::optional<std::u16string> TakeStartupPath(std::span<const std::u16string> arguments)
{
    if (arguments.size() < 2 || arguments[1].empty())
        return std::nullopt;
    return arguments[1];
}

} // namespace tlm
