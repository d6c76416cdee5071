#include "hexview/HexView.h"

#include "document/IEditableDocument.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tlm {

namespace {

constexpr std::uint32_t DefaultCaretBlinkTime = 530;
constexpr std::uint32_t MinimumBlinkPeriod = 200;
constexpr std::uint64_t WheelRows = 3;

} // namespace

HexView::HexView(HexViewHost host, TextMeasurer measurer)
    : host(std::move(host))
    , measurer(std::move(measurer))
{
}

void HexView::SetHost(HexViewHost newHost)
{
    host = std::move(newHost);
}

void HexView::SetTextMeasurer(TextMeasurer newMeasurer)
{
    measurer = std::move(newMeasurer);
}

DocumentExtent HexView::Extent() const
{
    return ExtentOf(document);
}

ClientSize HexView::Client() const
{
    return host.clientSize ? host.clientSize() : ClientSize{};
}

std::optional<ByteRange> HexView::Selection() const
{
    if (!state.selectionActive) {
        return std::nullopt;
    }
    return ByteRange{std::min(state.selectionAnchor, state.selectionEnd),
        std::max(state.selectionAnchor, state.selectionEnd)};
}

void HexView::RequestRedraw() const
{
    if (host.requestRedraw) {
        host.requestRedraw();
    }
}

void HexView::Post(AppMessage message) const
{
    if (host.postToParent) {
        host.postToParent(message);
    }
}

void HexView::Send(AppMessage message) const
{
    if (host.sendToParent) {
        host.sendToParent(message);
    }
}

void HexView::ReleaseGraphics() const
{
    if (host.releaseGraphics) {
        host.releaseGraphics();
    }
}

void HexView::ApplyScrollBars(const ScrollBarSettings& bars) const
{
    if (host.setScrollBars) {
        host.setScrollBars(bars);
    }
}

bool HexView::IsEditableOpen() const
{
    return editable != nullptr && editable->IsOpen();
}

void HexView::Remeasure()
{
    const DocumentExtent extent = Extent();
    RecomputeMetrics(metrics, font, extent.isOpen && extent.size >= WideOffsetThreshold, measurer);
}

void HexView::ClampAndShow()
{
    ApplyScrollBars(ClampView(metrics, state, Extent(), Client()));
}

void HexView::EnsureCaretVisible()
{
    ApplyScrollBars(tlm::EnsureCaretVisible(metrics, state, Extent(), Client()));
}

void HexView::ClearSelection()
{
    state.selectionActive = false;
    state.selectionAnchor = 0;
    state.selectionEnd = 0;
    state.dragAnchor.reset();
}

void HexView::SetDocument(IReadOnlyDocument* newDocument)
{
    document = newDocument;
    editable = dynamic_cast<IEditableDocument*>(newDocument);

    // The mode and the focus and blink state belong to the window, not to the file.
    ClearSelection();
    state.nibblePending = false;
    state.pendingNibble = 0;
    state.dragging = false;
    state.editingEnabled = false;
    state.firstPaintPending = true;
    state.topRow = 0;
    state.horizontalScroll = 0;
    state.caretOffset = 0;

    const std::uint32_t dpi = host.windowDpi ? host.windowDpi() : 0;
    metrics.dpi = dpi == 0 ? 96 : dpi;
    ReleaseGraphics();
    Remeasure();
    ClampAndShow();
    if (host.takeFocus) {
        host.takeFocus();
    }
    RequestRedraw();
}

void HexView::SetEncoding(TextEncoding newEncoding)
{
    if (newEncoding == encoding) {
        return;
    }
    encoding = newEncoding;
    RequestRedraw();
}

void HexView::SetTheme(Theme newTheme)
{
    if (newTheme == theme) {
        return;
    }
    theme = newTheme;
    RequestRedraw();
}

void HexView::SetFont(const std::u16string& family, float points, bool bold, bool italic)
{
    const std::optional<float> size = FontSizeFromPoints(points);
    if (!size) {
        return;
    }
    const HexViewFont requested{family, bold, italic};
    if (IsSameFont(font, metrics.baseFontSize, requested, *size)) {
        return;
    }
    font = requested;
    metrics.baseFontSize = *size;
    ReleaseGraphics();
    Remeasure();
    ClampAndShow();
    EnsureCaretVisible();
    RequestRedraw();
    Post(AppMessage::ViewChanged);
}

void HexView::ApplyZoom(float zoom)
{
    metrics.zoom = zoom;
    ReleaseGraphics();
    Remeasure();
    ClampAndShow();
    EnsureCaretVisible();
    RequestRedraw();
    Send(AppMessage::ZoomChanged);
}

void HexView::StepZoom(float step)
{
    if (const std::optional<float> zoom = ZoomAfterStep(metrics.zoom, step)) {
        ApplyZoom(*zoom);
    }
}

void HexView::ResetZoom()
{
    if (std::abs(metrics.zoom - 1.0f) >= 0.001f) {
        ApplyZoom(1.0f);
    }
}

void HexView::ToggleEditing()
{
    state.editingEnabled = !state.editingEnabled;
    state.nibblePending = false;
    RequestRedraw();
    Post(AppMessage::ViewChanged);
}

void HexView::MoveCaretTo(std::uint64_t offset)
{
    state.caretOffset = std::min(offset, MaxCaretOffset(state, Extent()));
    // A drag keeps its selection while the caret follows the anchor; any other move drops it.
    if (!state.dragging) {
        ClearSelection();
    }
    state.nibblePending = false;
    EnsureCaretVisible();
    RequestRedraw();
    Post(AppMessage::ViewChanged);
}

void HexView::MoveCaretBy(std::int64_t delta)
{
    const std::uint64_t caret = state.caretOffset;
    const std::uint64_t maximum = MaxCaretOffset(state, Extent());
    std::uint64_t target = 0;
    if (delta < 0) {
        const std::uint64_t distance = static_cast<std::uint64_t>(-(delta + 1)) + 1;
        target = caret > distance ? caret - distance : 0;
    } else {
        const auto distance = static_cast<std::uint64_t>(delta);
        target = maximum - std::min(maximum, caret) < distance ? maximum : caret + distance;
    }
    MoveCaretTo(std::min(target, maximum));
}

void HexView::SelectRange(std::uint64_t from, std::uint64_t to)
{
    const std::uint64_t lastByte = LastByte(Extent());
    state.selectionAnchor = std::min(from, lastByte);
    state.selectionEnd = std::min(to, lastByte);
    state.selectionActive = true;
    RequestRedraw();
}

void HexView::ShowFoundRange(std::uint64_t offset, std::uint64_t length)
{
    state.nibblePending = false;
    state.dragAnchor.reset();
    const std::uint64_t last = length == 0 ? offset : offset + (length - 1);
    SelectRange(offset, last < offset ? UINT64_MAX : last);
    state.caretOffset = std::min(offset, LastByte(Extent()));
    EnsureCaretVisible();
    RequestRedraw();
    Post(AppMessage::ViewChanged);
}

void HexView::SetTopRow(std::uint64_t row)
{
    state.topRow = row;
    ClampAndShow();
    RequestRedraw();
    Post(AppMessage::ViewChanged);
}

bool HexView::OnVerticalScroll(ScrollCommand command, std::int32_t trackPosition)
{
    if (const std::optional<std::uint64_t> row = ScrolledTopRow(metrics, state, Extent(), Client(), command, trackPosition)) {
        SetTopRow(*row);
    }
    return true;
}

bool HexView::OnHorizontalScroll(ScrollCommand command, std::int32_t trackPosition)
{
    if (const std::optional<std::int32_t> position = ScrolledHorizontal(metrics, state, Client(), command, trackPosition)) {
        state.horizontalScroll = *position;
        ClampAndShow();
        RequestRedraw();
    }
    return true;
}

bool HexView::OnMouseWheel(std::int32_t delta, bool ctrlDown)
{
    if (ctrlDown) {
        StepZoom(delta > 0 ? ZoomStep : -ZoomStep);
        return true;
    }
    // One message is three rows, however far the wheel turned; a delta of 0 counts as down.
    if (delta > 0) {
        SetTopRow(state.topRow > WheelRows ? state.topRow - WheelRows : 0);
    } else {
        SetTopRow(state.topRow + WheelRows);
    }
    return true;
}

void HexView::RestartBlinkTimer()
{
    if (host.killTimer) {
        host.killTimer(BlinkTimerId);
    }
    if (state.insertMode == HexEditMode::Insert && state.hasFocus && host.setTimer) {
        const std::uint32_t blink = host.caretBlinkTime ? host.caretBlinkTime() : DefaultCaretBlinkTime;
        host.setTimer(BlinkTimerId, std::max(blink, MinimumBlinkPeriod));
    }
}

bool HexView::OnSetFocus()
{
    state.hasFocus = true;
    state.caretPhase = true;
    RestartBlinkTimer();
    RequestRedraw();
    return true;
}

bool HexView::OnKillFocus()
{
    state.hasFocus = false;
    state.caretPhase = false;
    RestartBlinkTimer();
    RequestRedraw();
    return true;
}

bool HexView::OnTimer(std::uint32_t timerId)
{
    if (timerId != BlinkTimerId) {
        return false;
    }
    state.caretPhase = !state.caretPhase;
    RequestRedraw();
    return true;
}

bool HexView::OnResize()
{
    ReleaseGraphics();
    ClampAndShow();
    RequestRedraw();
    return true;
}

bool HexView::OnDpiChanged(std::uint32_t dpi)
{
    metrics.dpi = dpi == 0 ? 96 : dpi;
    ReleaseGraphics();
    Remeasure();
    ClampAndShow();
    RequestRedraw();
    return true;
}

} // namespace tlm
