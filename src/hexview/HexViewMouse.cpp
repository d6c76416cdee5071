#include "hexview/HexView.h"

namespace tlm {

bool HexView::OnLeftButtonDown(std::int32_t x, std::int32_t y)
{
    if (host.takeFocus) {
        host.takeFocus();
    }
    if (!Extent().isOpen) {
        return true;
    }
    // A miss leaves the selection as it was.
    const std::optional<std::uint64_t> hit = HitTest(metrics, state, Extent(), Client(), x, y);
    if (!hit) {
        return true;
    }
    state.dragAnchor = *hit;
    state.dragging = true;
    if (host.captureMouse) {
        host.captureMouse();
    }
    SelectRange(*hit, *hit);
    MoveCaretTo(*hit);
    return true;
}

bool HexView::OnMouseMove(std::int32_t x, std::int32_t y)
{
    if (!state.dragging || !state.dragAnchor) {
        return true;
    }
    // Outside the grid the selection stops growing; there is no scrolling while dragging.
    if (const std::optional<std::uint64_t> hit = HitTest(metrics, state, Extent(), Client(), x, y)) {
        SelectRange(*state.dragAnchor, *hit);
        RequestRedraw();
    }
    return true;
}

bool HexView::OnLeftButtonUp()
{
    if (state.dragging) {
        state.dragging = false;
        // The anchor stays until the capture-changed event that this brings.
        if (host.releaseCapture) {
            host.releaseCapture();
        }
    }
    return true;
}

bool HexView::OnCaptureChanged()
{
    state.dragAnchor.reset();
    state.dragging = false;
    return true;
}

} // namespace tlm
