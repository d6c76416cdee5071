#pragma once

#include "encoding/TextEncoding.h"
#include "hexview/HexViewEditState.h"
#include "hexview/HexViewHost.h"
#include "hexview/HexViewLayout.h"
#include "hexview/HexViewMetrics.h"
#include "hexview/ScrollCommand.h"
#include "hexview/TextMeasurer.h"
#include "settings/Theme.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tlm {

class IEditableDocument;
class IReadOnlyDocument;

// The ordered ends of a selection, both inclusive.
struct ByteRange {
    std::uint64_t first = 0;
    std::uint64_t last = 0;
};

// The logic of the hex view window: the grid, the caret and selection, typing and deleting, scrolling
// and zoom. Platform events come in through the On... handlers, each of which answers whether it handled
// the event (false sends it on to the default handler); effects go out through the host.
//
// On Windows the window procedure only translates: WM_KEYDOWN to OnKeyDown(wParam, Ctrl down by
// GetKeyState), WM_CHAR to OnChar, the left button, WM_MOUSEMOVE and WM_CAPTURECHANGED to the mouse
// handlers with the client coordinates, WM_MOUSEWHEEL to OnMouseWheel(wheel delta, MK_CONTROL),
// WM_VSCROLL and WM_HSCROLL to the scroll handlers with the 32-bit track position of GetScrollInfo,
// WM_SETFOCUS, WM_KILLFOCUS, WM_TIMER, WM_SIZE and WM_DPICHANGED to theirs. Painting turns Metrics,
// State, Document, Encoding, the theme and the client size into a HexViewPaint list.
class HexView {
public:
    static constexpr std::uint32_t BlinkTimerId = 1;

    HexView() = default;
    HexView(HexViewHost host, TextMeasurer measurer);

    void SetHost(HexViewHost host);
    void SetTextMeasurer(TextMeasurer measurer);

    // The document to show; null or a closed one shows nothing. Starts over at offset 0, read-only.
    void SetDocument(IReadOnlyDocument* document);
    void SetEncoding(TextEncoding encoding);
    // Any value is kept as given; one outside the four draws as Light.
    void SetTheme(Theme theme);
    void SetFont(const std::u16string& family, float points, bool bold, bool italic);
    void StepZoom(float step);
    void ResetZoom();
    // The "EditReadOnly" command.
    void ToggleEditing();

    // Caret and selection, also for go-to and search.
    void MoveCaretTo(std::uint64_t offset);
    void MoveCaretBy(std::int64_t delta);
    void SelectRange(std::uint64_t from, std::uint64_t to);
    void EnsureCaretVisible();
    // A search hit: drops any half-typed byte, selects the range, puts the caret on its first byte and
    // scrolls to it, then tells the parent.
    void ShowFoundRange(std::uint64_t offset, std::uint64_t length);

    // Editing; each answers whether it took the request.
    bool HandleHexDigit(char16_t character);
    bool DeleteAtCaret(bool backwards);
    bool DeleteSelection();
    void CopySelectionAsHex();

    // Platform events.
    bool OnKeyDown(std::uint32_t virtualKey, bool ctrlDown);
    bool OnChar(char16_t character);
    bool OnLeftButtonDown(std::int32_t x, std::int32_t y);
    bool OnMouseMove(std::int32_t x, std::int32_t y);
    bool OnLeftButtonUp();
    bool OnCaptureChanged();
    bool OnMouseWheel(std::int32_t delta, bool ctrlDown);
    bool OnVerticalScroll(ScrollCommand command, std::int32_t trackPosition);
    bool OnHorizontalScroll(ScrollCommand command, std::int32_t trackPosition);
    bool OnSetFocus();
    bool OnKillFocus();
    bool OnTimer(std::uint32_t timerId);
    bool OnResize();
    bool OnDpiChanged(std::uint32_t dpi);

    // What the window draws and the application shows.
    const HexViewMetrics& Metrics() const { return metrics; }
    const HexViewEditState& State() const { return state; }
    const HexViewFont& Font() const { return font; }
    TextEncoding Encoding() const { return encoding; }
    Theme GetTheme() const { return theme; }
    bool IsEditingEnabled() const { return state.editingEnabled; }
    const IReadOnlyDocument* Document() const { return document; }
    DocumentExtent Extent() const;
    ClientSize Client() const;
    std::optional<ByteRange> Selection() const;
    // The first paint of a new document asks for a second one; the window clears the mark then.
    void ClearFirstPaintPending() { state.firstPaintPending = false; }

private:
    void RequestRedraw() const;
    void Post(AppMessage message) const;
    void Send(AppMessage message) const;
    void ReleaseGraphics() const;
    void ApplyScrollBars(const ScrollBarSettings& bars) const;

    bool IsEditableOpen() const;
    void Remeasure();
    void ClampAndShow();
    void RestartBlinkTimer();
    void ClearSelection();
    void ApplyZoom(float zoom);
    void SetTopRow(std::uint64_t row);
    void ToggleInsertMode();
    void FinishDelete(std::uint64_t target);
    bool HandleHexDigitOverwrite(std::uint8_t nibble);
    bool HandleHexDigitInsert(std::uint8_t nibble);

    HexViewHost host;
    TextMeasurer measurer;
    HexViewMetrics metrics;
    HexViewEditState state;
    HexViewFont font;
    TextEncoding encoding = TextEncoding::Ascii;
    Theme theme = Theme::CoolSlate;
    IReadOnlyDocument* document = nullptr;
    IEditableDocument* editable = nullptr;
};

} // namespace tlm
