#include "hexview/HexView.h"

#include "document/IEditableDocument.h"
#include "hexview/HexText.h"

#include <algorithm>
#include <optional>

namespace tlm {

bool HexView::HandleHexDigit(char16_t character)
{
    if (!IsEditableOpen()) {
        return false;
    }
    const std::optional<std::uint8_t> nibble = HexDigitValue(character);
    if (!nibble) {
        return false;
    }
    return state.insertMode == HexEditMode::Insert ? HandleHexDigitInsert(*nibble) : HandleHexDigitOverwrite(*nibble);
}

// Each digit lands at once: the first replaces the high half and keeps the low one, the second
// completes the byte from the held digit.
bool HexView::HandleHexDigitOverwrite(std::uint8_t nibble)
{
    const std::uint64_t offset = state.caretOffset;
    const ByteBlock block = editable->Read(offset, 1);
    if (block.bytes.empty()) {
        return false;
    }
    const std::uint8_t old = block.bytes.front();
    const bool second = state.nibblePending;
    const auto value = static_cast<std::uint8_t>(second ? (state.pendingNibble << 4) | nibble : (old & 0x0F) | (nibble << 4));
    if (!editable->OverwriteByte(offset, value)) {
        return false;
    }
    if (!second) {
        state.pendingNibble = nibble;
        state.nibblePending = true;
    } else {
        state.nibblePending = false;
        const std::uint64_t size = editable->GetSize();
        if (size != 0 && offset < size - 1) {
            MoveCaretTo(offset + 1);
            return true;
        }
        // On the last byte the caret stays, and a third digit starts the same byte over.
    }
    RequestRedraw();
    Post(AppMessage::ViewChanged);
    return true;
}

// Nothing is written until both digits are in; the held digit is shown nowhere.
bool HexView::HandleHexDigitInsert(std::uint8_t nibble)
{
    if (!state.nibblePending) {
        state.pendingNibble = nibble;
        state.nibblePending = true;
        RequestRedraw();
        Post(AppMessage::ViewChanged);
        return true;
    }
    const std::uint64_t offset = state.caretOffset;
    const auto value = static_cast<std::uint8_t>((state.pendingNibble << 4) | nibble);
    if (!editable->InsertByte(offset, value)) {
        return false;
    }
    state.nibblePending = false;
    // The size may just have reached the width where the offsets need sixteen digits.
    Remeasure();
    ClampAndShow();
    MoveCaretTo(offset + 1);
    return true;
}

void HexView::FinishDelete(std::uint64_t target)
{
    state.nibblePending = false;
    Remeasure();
    ClampAndShow();
    state.caretOffset = std::min(MaxCaretOffset(state, Extent()), target);
    ClearSelection();
    EnsureCaretVisible();
    RequestRedraw();
    Post(AppMessage::ViewChanged);
}

bool HexView::DeleteAtCaret(bool backwards)
{
    if (!IsEditableOpen() || editable->GetSize() == 0) {
        return false;
    }
    if (state.selectionActive) {
        return DeleteSelection();
    }
    const std::uint64_t caret = state.caretOffset;
    if (backwards ? caret == 0 : caret >= editable->GetSize()) {
        return true;
    }
    const std::uint64_t victim = backwards ? caret - 1 : caret;
    if (!editable->DeleteByte(victim)) {
        return false;
    }
    FinishDelete(backwards ? victim : caret);
    return true;
}

bool HexView::DeleteSelection()
{
    const std::optional<ByteRange> range = Selection();
    if (!range || !IsEditableOpen()) {
        return false;
    }
    // From the top down, so that no offset still to go moves under the loop. What is gone stays gone
    // when a byte fails.
    for (std::uint64_t offset = range->last;; --offset) {
        if (!editable->DeleteByte(offset)) {
            return false;
        }
        if (offset == range->first) {
            break;
        }
    }
    FinishDelete(range->first);
    return true;
}

void HexView::CopySelectionAsHex()
{
    const std::optional<ByteRange> range = Selection();
    if (!range || document == nullptr) {
        return;
    }
    const ByteBlock block = document->Read(range->first, range->last - range->first + 1);
    const std::u16string text = FormatBytesAsHex(block.bytes);
    if (text.empty() || !host.copyToClipboard) {
        return;
    }
    host.copyToClipboard(text);
}

} // namespace tlm
