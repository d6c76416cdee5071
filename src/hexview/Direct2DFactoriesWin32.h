#pragma once

// Included by Windows code only.

#include "hexview/ComRefWin32.h"
#include "hexview/DirectWriteStartWin32.h"
#include "hexview/SystemLibraryWin32.h"

#include <windows.h>

#include <d2d1.h>
#include <dwrite.h>

#include <cstdint>
#include <memory>

namespace tlm {

// The two factories a Direct2D window of the program draws with, made when first asked for: Direct2D's
// from its library, loaded then, and DirectWrite's from the thread that reads the fonts.
class Direct2DFactories {
public:
    explicit Direct2DFactories(DirectWriteStart& directWrite)
        : directWrite(directWrite)
    {
    }

    bool EnsureD2D();
    // False until the thread that reads the fonts is done, and for good when it could make no factory.
    bool EnsureDWrite();

    ID2D1Factory* D2D() const { return d2dFactory.Get(); }
    IDWriteFactory* DWrite() const { return dwriteFactory.Get(); }

    // A target over the window's client area that draws in device-independent pixels at `dpi` (0 is
    // read as 96); false, with `target` empty, when none can be made.
    bool MakeWindowTarget(HWND window, std::uint32_t dpi, ComRef<ID2D1HwndRenderTarget>& target) const;

private:
    DirectWriteStart& directWrite;
    std::unique_ptr<SystemLibrary> d2dLibrary; // outlives the factory made from it
    ComRef<ID2D1Factory> d2dFactory;
    ComRef<IDWriteFactory> dwriteFactory;
};

// The dots per inch a window reports, with 0 read as the standard 96.
float WindowDpi(std::uint32_t dpi);

} // namespace tlm
