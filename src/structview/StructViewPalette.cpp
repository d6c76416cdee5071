#include "structview/StructViewPalette.h"

namespace tlm {

namespace {

std::uint32_t MixChannel(std::uint32_t text, std::uint32_t border, int shift)
{
    const std::uint32_t mixed = (((text >> shift) & 0xFF) * 72 + ((border >> shift) & 0xFF) * 28) / 100;
    return mixed << shift;
}

} // namespace

StructViewPalette StructViewPaletteFor(Theme theme)
{
    switch (static_cast<std::uint32_t>(theme)) {
    case 1:
        return StructViewPalette{0xEFEBE8, 0x39302A, 0x5E524A, 0x4D3D32, 0x28221E};
    case 2:
        return StructViewPalette{0xF3EDE6, 0x6E472A, 0x52463C, 0x4F3420, 0x1C140F};
    case 3:
        return StructViewPalette{0xF3F3F3, 0x2D2D2D, 0x484848, 0x383838, 0x111111};
    default:
        return StructViewPalette{0x202020, 0xF2E8E0, 0xCDC6C2, 0xF6E4D6, 0xFAFAFA};
    }
}

std::uint32_t StructViewDefinitionColour(const StructViewPalette& palette)
{
    return MixChannel(palette.text, palette.border, 0) | MixChannel(palette.text, palette.border, 8)
        | MixChannel(palette.text, palette.border, 16);
}

} // namespace tlm
