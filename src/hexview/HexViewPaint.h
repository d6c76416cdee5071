#pragma once

#include "hexview/ThemePalette.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

class HexView;

// What one drawing operation does. The drawing layer executes them in order.
enum class PaintKind : std::uint8_t {
    Clear,          // the whole target in the colour
    FillRectangle,  // `rect` filled
    DrawRectangle,  // the outline of `rect`, `strokeWidth` wide
    PushClip,       // clip to `rect`, aliased, until the matching PopClip
    PopClip,
    DrawTextInBox,  // the text in the box `rect`, natural measuring mode, colour fonts on
    DrawTextLayout, // the text laid out at (rect.left, rect.top) in maxWidth by maxHeight, colour fonts on
};

// Which colour of the palette an operation uses; one brush each when drawn.
enum class PaletteRole : std::uint8_t {
    Background,
    Text,
    OffsetText,
    Selection,
    Caret,
};

inline constexpr int PaletteRoleCount = 5;

// A rectangle in device-independent pixels.
struct PaintRect {
    float left = 0.0f;
    float top = 0.0f;
    float right = 0.0f;
    float bottom = 0.0f;

    friend bool operator==(const PaintRect&, const PaintRect&) = default;
};

struct PaintOperation {
    PaintKind kind = PaintKind::Clear;
    PaletteRole color = PaletteRole::Background;
    // The box of a fill, outline, clip or DrawTextInBox. For a layout the origin and the corner that its
    // maximum size reaches.
    PaintRect rect;
    float strokeWidth = 0.0f; // outlines
    float maxWidth = 0.0f;    // layouts
    float maxHeight = 0.0f;   // layouts
    // The text of DrawTextInBox and DrawTextLayout, as a range of HexViewPaint::text.
    std::uint32_t textStart = 0;
    std::uint32_t textLength = 0;
};

// One paint of the hex view as a list of drawing operations in the order they are drawn, with the
// palette they are drawn in. Built without any platform call, so it can be tested and timed anywhere;
// the window executes it. Reused from paint to paint so that its storage is kept.
struct HexViewPaint {
    ThemePalette palette;
    std::vector<PaintOperation> operations;
    std::u16string text; // every string of the list, one after another

    void Clear();
    std::u16string_view TextOf(const PaintOperation& operation) const;
    RgbaColor ColorOf(const PaintOperation& operation) const;
};

RgbaColor ColorOf(const ThemePalette& palette, PaletteRole role);

// Replaces `paint` with the paint of the view as it stands: its metrics, caret and selection, document,
// encoding and theme, in its client area. Reads 16 bytes for each visible row through the document.
void BuildPaint(const HexView& view, HexViewPaint& paint);

} // namespace tlm
