#pragma once

#include "app/MenuTree.h"

#include <windows.h>

namespace tlm {

// Turns the tree of BuildMenuBar into a menu bar: the root's children become its popups. Null when a
// menu handle cannot be created; whatever was made is destroyed then. A popup that cannot be attached
// is destroyed and left out. The caller owns the bar and swaps it in with SetMenu.
HMENU BuildWin32MenuBar(const MenuItem& bar);

} // namespace tlm
