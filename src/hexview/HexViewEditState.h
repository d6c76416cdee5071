#pragma once

#include "hexview/HexViewState.h"

#include <cstdint>
#include <optional>

namespace tlm {

// Caret, selection and typing state, on top of the position. Selection ends are both inclusive and may
// stand in either order.
struct HexViewEditState : HexViewState {
    std::uint64_t selectionAnchor = 0;
    std::uint64_t selectionEnd = 0;
    bool selectionActive = false;
    std::optional<std::uint64_t> dragAnchor; // where the left button went down; empty when no drag extends
    std::uint8_t pendingNibble = 0;          // the high digit typed and held
    bool nibblePending = false;
    bool dragging = false; // the mouse is captured by a left-button drag
    bool hasFocus = false;
    bool caretPhase = true; // the insert caret is in the visible half of its blink
    bool editingEnabled = false;
    bool firstPaintPending = false;
};

} // namespace tlm
