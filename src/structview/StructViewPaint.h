#pragma once

#include "structview/StructViewGeometry.h"
#include "structview/StructViewPalette.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tlm {

class StructViewWindow;

enum class StructPaintKind : std::uint8_t {
    Fill,   // `rect` in the colour
    Frame,  // a one-pixel outline of `rect`
    Text,   // the text in `rect`, one line, cut with an ellipsis at the end
    Clip,   // clip to `rect` until the next Clip or Unclip
    Unclip,
};

enum class StructPaintFont : std::uint8_t { Main, Secondary };

struct StructPaintOperation {
    StructPaintKind kind = StructPaintKind::Fill;
    StructViewRect rect;
    std::uint32_t colour = 0; // 0xBBGGRR
    StructPaintFont font = StructPaintFont::Main;
    bool centred = false;     // text centred in its box rather than from its left
    std::u16string text;
};

// One paint of the struct view as drawing operations in order. Built without any platform call; the
// window draws it into a memory bitmap and copies that to the screen in one block.
std::vector<StructPaintOperation> BuildStructViewPaint(const StructViewWindow& view);

} // namespace tlm
