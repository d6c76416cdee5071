#pragma once

#include "settings/Theme.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// The localised texts of the inspector window.
struct InspectorLabels {
    std::u16string title;
    std::u16string nameColumnTitle;
    std::u16string valueColumnTitle;
    std::vector<std::u16string> rowNames; // one per inspector row, in the rows' order

    friend bool operator==(const InspectorLabels&, const InspectorLabels&) = default;
};

// The labels through a key lookup such as the application's.
InspectorLabels MakeInspectorLabels(const std::function<std::u16string(std::string_view key)>& lookUp);

// The fixed layout, in device-independent pixels: the font is fixed and the rows never scroll.
namespace InspectorLayout {
inline constexpr float HeaderHeight = 38.0f;
inline constexpr float RowHeight = 36.0f;
inline constexpr float CellPadding = 12.0f;
inline constexpr std::int32_t MinimumSplitter = 112;
inline constexpr std::int32_t ValueColumnReserve = 160; // kept free right of the splitter
inline constexpr std::int32_t MinimumWidth = 420;
inline constexpr std::int32_t MinimumHeight = 220;
inline constexpr float SplitterGrab = 7.0f; // the splitter is grabbed closer than this on either side
inline constexpr std::int32_t InitialWidth = 520;
inline constexpr std::int32_t CreationHeight = 640;
inline constexpr float FontSize = 14.0f; // at 96 dots per inch
} // namespace InspectorLayout

struct InspectorColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const InspectorColor&, const InspectorColor&) = default;
};

enum class InspectorColorRole : std::uint8_t {
    Background,
    Header,
    Grid,
    Text,
    Selection,
};

inline constexpr int InspectorColorRoleCount = 5;

// The window's own colours; they follow the theme number but not the hex view's palette.
struct InspectorPalette {
    InspectorColor background;
    InspectorColor header;
    InspectorColor grid;
    InspectorColor text;
    InspectorColor selection;

    InspectorColor Of(InspectorColorRole role) const;

    friend bool operator==(const InspectorPalette&, const InspectorPalette&) = default;
};

// A theme outside the four gives Light's colours.
InspectorPalette InspectorPaletteFor(Theme theme);

enum class InspectorPaintKind : std::uint8_t {
    Clear,         // the whole target
    FillRectangle, // the box
    DrawLine,      // from (left, top) to (right, bottom), one unit wide
    DrawTextInBox, // the text in the box: leading, centred vertically, clipped, colour fonts on
};

struct InspectorPaintOperation {
    InspectorPaintKind kind = InspectorPaintKind::Clear;
    InspectorColorRole color = InspectorColorRole::Background;
    float left = 0.0f;
    float top = 0.0f;
    float right = 0.0f;
    float bottom = 0.0f;
    // The text of DrawTextInBox, as a range of InspectorPaint::text.
    std::uint32_t textStart = 0;
    std::uint32_t textLength = 0;
};

// One paint of the window as drawing operations in order, with the palette they use. Reused between
// paints so that its storage is kept.
struct InspectorPaint {
    InspectorPalette palette;
    std::vector<InspectorPaintOperation> operations;
    std::u16string text;

    void Clear();
    std::u16string_view TextOf(const InspectorPaintOperation& operation) const;
};

// A client area in pixels.
struct InspectorClientSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

// What the window asks of the system. An empty function does nothing; a query without one answers
// with the stated default.
struct DataInspectorHost {
    std::function<void(bool erase)> requestRedraw;
    std::function<void(const std::u16string& title)> setTitle;
    std::function<void()> takeFocus;
    std::function<void()> captureMouse;
    std::function<void()> releaseCapture;
    std::function<bool()> holdsCapture; // false without one
    std::function<void()> showSizingCursor; // the west-east arrow
    std::function<void(const std::u16string& text)> copyToClipboard;
    std::function<InspectorClientSize()> clientSize; // 0 by 0 without one
};

// The data inspector's window as decisions: its texts, values, column splitter and picked row, what a
// click, a drag or a key does, and what a paint draws. The platform window only forwards messages and
// draws the paint list. The object outlives its window, so hiding and showing keep the width, the
// splitter and the pick.
class DataInspectorWindow {
public:
    void SetHost(DataInspectorHost host);

    void SetLabels(InspectorLabels labels);
    void SetTheme(Theme theme);
    // New rows keep the pick on its row; a pick past the new end falls to the last row, or to none.
    void SetValues(std::vector<std::u16string> values);
    void SetDpi(std::uint32_t dpi); // 0 counts as 96

    // Mouse positions in client pixels. Each answers whether the message was handled.
    bool OnLeftButtonDown(std::int32_t x, std::int32_t y);
    bool OnMouseMove(std::int32_t x, std::int32_t y); // false: the default handler sets the cursor
    bool OnLeftButtonUp();
    void OnCaptureChanged();
    bool OnKeyDown(std::uint32_t virtualKey, bool control);
    // Puts the picked value on the clipboard; without a pick the clipboard is left alone.
    void Copy();
    // The window was resized to `outerWidth` pixels; a maximised window's width is not kept.
    void OnResized(std::int32_t outerWidth, bool maximised);

    // The splitter as drawn and tested: `splitterX` held at least 112 from the left and, where the
    // area allows, 160 from the right.
    std::int32_t EffectiveSplitter(std::int32_t clientWidth) const;
    // In layout units.
    bool IsOverSplitter(float x, float y, const InspectorClientSize& client) const;
    // The row whose value cell holds the point, among the rows that have a value.
    std::optional<std::int32_t> ValueRowAt(float x, float y, const InspectorClientSize& client) const;
    std::optional<std::u16string> CopyText() const;

    const InspectorLabels& Labels() const { return labels; }
    const std::vector<std::u16string>& Values() const { return values; }
    Theme GetTheme() const { return theme; }
    std::uint32_t Dpi() const { return dpi; }
    std::int32_t WindowWidth() const { return windowWidth; }
    std::int32_t SelectedRow() const { return selectedRow; }
    std::int32_t SplitterX() const { return splitterX; }
    bool DraggingSplitter() const { return draggingSplitter; }

private:
    float ToLayout(std::int32_t pixels) const;
    InspectorClientSize Client() const;
    void Redraw(bool erase) const;
    void DragTo(float x, const InspectorClientSize& client);

    DataInspectorHost host;
    std::uint32_t dpi = 96;
    Theme theme = Theme::Light;
    InspectorLabels labels;
    std::vector<std::u16string> values;
    std::int32_t windowWidth = InspectorLayout::InitialWidth;
    std::int32_t selectedRow = -1;
    std::int32_t splitterX = InspectorLayout::MinimumSplitter;
    bool draggingSplitter = false;
};

// Replaces `paint` with the window as it stands in a client area of `client` pixels, taken as layout
// units as they come.
void BuildInspectorPaint(const DataInspectorWindow& window, const InspectorClientSize& client, InspectorPaint& paint);

} // namespace tlm
