#include "app/DialogPlacement.h"

#include <algorithm>

namespace tlm {

DialogRect CentreOnOwner(const ScreenRect& owner, std::int32_t width, std::int32_t height)
{
    const std::int32_t marginX = std::max<std::int32_t>(0, (owner.right - owner.left - width) / 2);
    const std::int32_t marginY = std::max<std::int32_t>(0, (owner.bottom - owner.top - height) / 2);
    return DialogRect{owner.left + marginX, owner.top + marginY, width, height};
}

} // namespace tlm
