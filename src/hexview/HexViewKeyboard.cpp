#include "hexview/HexView.h"

#include "hexview/VirtualKey.h"

#include <algorithm>

namespace tlm {

namespace {

bool IsHexDigit(char16_t character)
{
    return (character >= u'0' && character <= u'9') || (character >= u'a' && character <= u'f')
        || (character >= u'A' && character <= u'F');
}

std::uint64_t RowStartOf(std::uint64_t offset)
{
    return offset & ~std::uint64_t{15};
}

} // namespace

void HexView::ToggleInsertMode()
{
    if (!state.editingEnabled) {
        Post(AppMessage::ReadOnlyBlocked);
        return;
    }
    state.insertMode = state.insertMode == HexEditMode::Insert ? HexEditMode::Overwrite : HexEditMode::Insert;
    state.nibblePending = false;
    if (state.insertMode == HexEditMode::Overwrite) {
        // The place past the end exists in insert mode only.
        state.caretOffset = std::min(state.caretOffset, LastByte(Extent()));
    }
    state.caretPhase = true;
    RestartBlinkTimer();
    RequestRedraw();
    Post(AppMessage::ViewChanged);
}

bool HexView::OnKeyDown(std::uint32_t virtualKey, bool ctrlDown)
{
    // Keys do nothing without a file, and do not reach the default handler either.
    if (!Extent().isOpen) {
        return true;
    }
    const auto page = static_cast<std::int64_t>(BytesPerRow) * VisibleRowCount(metrics, Client());
    switch (virtualKey) {
    case VirtualKey::Left:
        MoveCaretBy(-1);
        return true;
    case VirtualKey::Right:
        MoveCaretBy(1);
        return true;
    case VirtualKey::Up:
        MoveCaretBy(-static_cast<std::int64_t>(BytesPerRow));
        return true;
    case VirtualKey::Down:
        MoveCaretBy(static_cast<std::int64_t>(BytesPerRow));
        return true;
    case VirtualKey::PageUp:
        MoveCaretBy(-page);
        return true;
    case VirtualKey::PageDown:
        MoveCaretBy(page);
        return true;
    case VirtualKey::Home:
        MoveCaretTo(ctrlDown ? 0 : RowStartOf(state.caretOffset));
        return true;
    case VirtualKey::End: {
        const std::uint64_t maximum = MaxCaretOffset(state, Extent());
        MoveCaretTo(ctrlDown ? maximum : std::min(maximum, RowStartOf(state.caretOffset) + 15));
        return true;
    }
    case VirtualKey::Escape:
        if (state.selectionActive) {
            ClearSelection();
            RequestRedraw();
        }
        return true;
    case VirtualKey::Insert:
        ToggleInsertMode();
        return true;
    case VirtualKey::Delete:
    case VirtualKey::Back:
        if (!state.editingEnabled) {
            Post(AppMessage::ReadOnlyBlocked);
            return true;
        }
        return DeleteAtCaret(virtualKey == VirtualKey::Back);
    case VirtualKey::C:
        if (!ctrlDown) {
            return false;
        }
        if (state.selectionActive) {
            CopySelectionAsHex();
        }
        return true;
    default:
        return false;
    }
}

bool HexView::OnChar(char16_t character)
{
    if (!state.editingEnabled) {
        if (IsHexDigit(character)) {
            Post(AppMessage::ReadOnlyBlocked);
            return true;
        }
        return false;
    }
    if (!Extent().isOpen) {
        return false;
    }
    return HandleHexDigit(character);
}

} // namespace tlm
