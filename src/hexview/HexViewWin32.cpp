#include "hexview/HexViewWin32.h"

#include "hexview/ClipboardWin32.h"
#include "hexview/ComRefWin32.h"
#include "hexview/Direct2DFactoriesWin32.h"

#include <windowsx.h>

#include <d2d1.h>
#include <dwrite.h>
#include <dwrite_2.h>

#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

namespace {

constexpr float CharacterLayoutBox = 256.0f;

std::wstring Wide(std::u16string_view text)
{
    return std::wstring(text.begin(), text.end());
}

D2D1_COLOR_F ToD2D(const RgbaColor& color)
{
    return D2D1_COLOR_F{color.red, color.green, color.blue, color.alpha};
}

D2D1_RECT_F ToD2D(const PaintRect& rect)
{
    return D2D1_RECT_F{rect.left, rect.top, rect.right, rect.bottom};
}

} // namespace

// The Direct2D and DirectWrite objects held between paints. The factories live as long as the window;
// the render target and the text format go with every resize, metrics change and device loss.
class HexViewGraphics {
public:
    explicit HexViewGraphics(DirectWriteStart& directWrite)
        : factories(directWrite)
    {
    }

    // The factory comes from the thread that reads the fonts; until it is done there is none, and the
    // view is measured again once it is.
    bool EnsureDWriteFactory() { return factories.EnsureDWrite(); }

    // Replaces the text format with one for `font` at `fontSize`; false when none can be made.
    bool MakeTextFormat(const HexViewFont& font, float fontSize)
    {
        textFormat.Reset();
        IDWriteFactory* const dwriteFactory = factories.DWrite();
        if (!dwriteFactory) {
            return false;
        }
        const std::wstring family = InstalledFamilyOr(Wide(font.family), Wide(HexViewFont{}.family));
        const HRESULT created = dwriteFactory->CreateTextFormat(family.c_str(), nullptr,
            font.bold ? DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL,
            font.italic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, fontSize,
            L"", textFormat.Put());
        if (FAILED(created) || !textFormat) {
            textFormat.Reset();
            return false;
        }
        textFormat->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP);
        textFormat->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_NEAR);
        textFormat->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING);
        UseSystemFontFallback();
        return true;
    }

    // What the paint needs, in order: the factories, the text format, the render target at the window's
    // client size and DPI. Each step that fails leaves the rest missing.
    void Ensure(HWND window, const HexView& view)
    {
        if (!factories.EnsureD2D()) {
            return;
        }
        if (!textFormat && factories.EnsureDWrite()) {
            MakeTextFormat(view.Font(), view.Metrics().fontSize);
        }
        if (!renderTarget) {
            factories.MakeWindowTarget(window, view.Metrics().dpi, renderTarget);
        }
    }

    bool IsReady() const { return renderTarget && factories.DWrite() && textFormat; }

    void ReleaseDeviceResources()
    {
        textFormat.Reset();
        renderTarget.Reset();
    }

    // A layout of `length` characters in the current text format; false when it cannot be made.
    bool MakeLayout(const wchar_t* text, std::size_t length, float maxWidth, float maxHeight,
        ComRef<IDWriteTextLayout>& layout) const
    {
        if (!factories.DWrite() || !textFormat) {
            return false;
        }
        const HRESULT created = factories.DWrite()->CreateTextLayout(text, static_cast<UINT32>(length), textFormat.Get(),
            maxWidth, maxHeight, layout.Put());
        return SUCCEEDED(created) && layout;
    }

    Direct2DFactories factories; // made before, and so released after, what is made from them
    ComRef<ID2D1HwndRenderTarget> renderTarget;
    ComRef<IDWriteTextFormat> textFormat;

private:

    // A family the system does not have would draw nothing at all on some systems: the default face
    // stands in for it, so that a stale font name in the settings never hides the bytes.
    std::wstring InstalledFamilyOr(const std::wstring& family, const std::wstring& fallback) const
    {
        ComRef<IDWriteFontCollection> fonts;
        if (FAILED(factories.DWrite()->GetSystemFontCollection(fonts.Put(), FALSE)) || !fonts) {
            return family;
        }
        UINT32 index = 0;
        BOOL exists = FALSE;
        if (SUCCEEDED(fonts->FindFamilyName(family.c_str(), &index, &exists)) && exists) {
            return family;
        }
        return fallback;
    }

    // Characters the chosen font lacks come from the system's other fonts. Older systems have no
    // fallback object; the format then draws what its font has.
    void UseSystemFontFallback()
    {
        ComRef<IDWriteFactory2> factory2;
        ComRef<IDWriteTextFormat1> format1;
        if (FAILED(factories.DWrite()->QueryInterface(__uuidof(IDWriteFactory2), reinterpret_cast<void**>(factory2.Put())))
            || !textFormat.QueryInto(format1)) {
            return;
        }
        ComRef<IDWriteFontFallback> fallback;
        if (SUCCEEDED(factory2->GetSystemFontFallback(fallback.Put())) && fallback) {
            format1->SetFontFallback(fallback.Get());
        }
    }
};

namespace {

// The five brushes of one paint, one for each palette role, released when the paint ends.
class PaintBrushes {
public:
    bool Make(ID2D1RenderTarget& target, const ThemePalette& palette)
    {
        for (std::size_t role = 0; role < brushes.size(); ++role) {
            const D2D1_COLOR_F color = ToD2D(ColorOf(palette, static_cast<PaletteRole>(role)));
            if (FAILED(target.CreateSolidColorBrush(&color, nullptr, brushes[role].Put())) || !brushes[role]) {
                return false;
            }
        }
        return true;
    }

    ID2D1Brush* Of(PaletteRole role) const { return brushes[static_cast<std::size_t>(role)].Get(); }

private:
    std::array<ComRef<ID2D1SolidColorBrush>, PaletteRoleCount> brushes;
};

// Draws the operations of a paint list between BeginDraw and EndDraw.
void Execute(const HexViewPaint& paint, ID2D1RenderTarget& target, const HexViewGraphics& graphics,
    const PaintBrushes& brushes)
{
    // One conversion for every string of the list; each operation points into it.
    const std::wstring text = Wide(paint.text);
    constexpr auto textOptions = D2D1_DRAW_TEXT_OPTIONS_ENABLE_COLOR_FONT;
    for (const PaintOperation& operation : paint.operations) {
        const D2D1_RECT_F rect = ToD2D(operation.rect);
        ID2D1Brush* brush = brushes.Of(operation.color);
        switch (operation.kind) {
        case PaintKind::Clear: {
            const D2D1_COLOR_F color = ToD2D(paint.ColorOf(operation));
            target.Clear(&color);
            break;
        }
        case PaintKind::FillRectangle:
            target.FillRectangle(&rect, brush);
            break;
        case PaintKind::DrawRectangle:
            target.DrawRectangle(&rect, brush, operation.strokeWidth, nullptr);
            break;
        case PaintKind::PushClip:
            target.PushAxisAlignedClip(&rect, D2D1_ANTIALIAS_MODE_ALIASED);
            break;
        case PaintKind::PopClip:
            target.PopAxisAlignedClip();
            break;
        case PaintKind::DrawTextInBox:
            target.DrawText(text.c_str() + operation.textStart, operation.textLength, graphics.textFormat.Get(), &rect,
                brush, textOptions, DWRITE_MEASURING_MODE_NATURAL);
            break;
        case PaintKind::DrawTextLayout: {
            // A layout that cannot be made is left out.
            ComRef<IDWriteTextLayout> layout;
            if (graphics.MakeLayout(text.c_str() + operation.textStart, operation.textLength, operation.maxWidth,
                    operation.maxHeight, layout)) {
                target.DrawTextLayout(D2D1_POINT_2F{operation.rect.left, operation.rect.top}, layout.Get(), brush,
                    textOptions);
            }
            break;
        }
        }
    }
}

void SetScrollBar(HWND window, int bar, const ScrollBarValues& values)
{
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = values.minimum;
    info.nMax = values.maximum;
    info.nPage = values.page;
    info.nPos = values.position;
    SetScrollInfo(window, bar, &info, TRUE);
}

} // namespace

HexViewWindow::HexViewWindow(HexView& view)
    : view(view)
    , graphics(std::make_unique<HexViewGraphics>(directWrite))
{
}

HexViewWindow::~HexViewWindow()
{
    // The host and measurer point at this object; the view outlives it.
    view.SetHost({});
    view.SetTextMeasurer({});
    if (window != nullptr) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        DestroyWindow(window);
        window = nullptr;
    }
}

bool HexViewWindow::RegisterWindowClass(HINSTANCE instance)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &HexViewWindow::WindowProc;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_WINDOW + 1));
    windowClass.lpszClassName = ClassName;
    if (RegisterClassW(&windowClass) != 0) {
        return true;
    }
    return GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

HWND HexViewWindow::Create(HWND parent, HINSTANCE instance, int controlId)
{
    view.SetHost(MakeHost());
    view.SetTextMeasurer(MakeMeasurer());
    const HWND created = CreateWindowExW(0, ClassName, L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP,
        0, 0, 100, 100, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)), instance, this);
    if (created == nullptr) {
        return nullptr;
    }
    // Until now the view measured nothing: the DPI is the window's, known only once it exists.
    view.OnDpiChanged(GetDpiForWindow(created));
    directWrite.NotifyWhenReady(created, FontsReadyMessage);
    return created;
}

void HexViewWindow::ReleaseGraphics()
{
    graphics->ReleaseDeviceResources();
}

void HexViewWindow::RequestRedraw() const
{
    if (window != nullptr) {
        InvalidateRect(window, nullptr, FALSE);
    }
}

HexViewHost HexViewWindow::MakeHost()
{
    HexViewHost host;
    host.requestRedraw = [this] { RequestRedraw(); };
    host.postToParent = [this](AppMessage message) {
        if (window != nullptr) {
            PostMessageW(GetParent(window), static_cast<UINT>(message), 0, 0);
        }
    };
    host.sendToParent = [this](AppMessage message) {
        if (window != nullptr) {
            SendMessageW(GetParent(window), static_cast<UINT>(message), 0, 0);
        }
    };
    host.takeFocus = [this] {
        if (window != nullptr) {
            SetFocus(window);
        }
    };
    host.captureMouse = [this] {
        if (window != nullptr) {
            SetCapture(window);
        }
    };
    host.releaseCapture = [] { ReleaseCapture(); };
    host.setTimer = [this](std::uint32_t timerId, std::uint32_t period) {
        if (window != nullptr) {
            SetTimer(window, timerId, period, nullptr);
        }
    };
    host.killTimer = [this](std::uint32_t timerId) {
        if (window != nullptr) {
            KillTimer(window, timerId);
        }
    };
    host.setScrollBars = [this](const ScrollBarSettings& bars) {
        if (window != nullptr) {
            SetScrollBar(window, SB_VERT, bars.vertical);
            SetScrollBar(window, SB_HORZ, bars.horizontal);
        }
    };
    host.copyToClipboard = [this](const std::u16string& text) { CopyTextToClipboard(window, text); };
    host.releaseGraphics = [this] { ReleaseGraphics(); };
    host.clientSize = [this] {
        RECT client{};
        if (window == nullptr || !GetClientRect(window, &client)) {
            return ClientSize{};
        }
        return ClientSize{client.right - client.left, client.bottom - client.top};
    };
    host.windowDpi = [this] { return window != nullptr ? static_cast<std::uint32_t>(GetDpiForWindow(window)) : 0u; };
    host.caretBlinkTime = [] { return static_cast<std::uint32_t>(GetCaretBlinkTime()); };
    return host;
}

TextMeasurer HexViewWindow::MakeMeasurer()
{
    TextMeasurer measurer;
    measurer.makeTextFormat = [this](const HexViewFont& font, float fontSize) {
        graphics->textFormat.Reset();
        return graphics->EnsureDWriteFactory() && graphics->MakeTextFormat(font, fontSize);
    };
    measurer.lineHeights = [this](std::u16string_view text, float maxWidth, float maxHeight)
        -> std::optional<std::vector<float>> {
        const std::wstring wide = Wide(text);
        ComRef<IDWriteTextLayout> layout;
        if (!graphics->MakeLayout(wide.c_str(), wide.size(), maxWidth, maxHeight, layout)) {
            return std::nullopt;
        }
        // Asked once for the count, which fails for want of room unless there are no lines, then again.
        UINT32 count = 0;
        const HRESULT counted = layout->GetLineMetrics(nullptr, 0, &count);
        if (FAILED(counted) && counted != E_NOT_SUFFICIENT_BUFFER) {
            return std::nullopt;
        }
        std::vector<DWRITE_LINE_METRICS> lines(count);
        if (count != 0 && FAILED(layout->GetLineMetrics(lines.data(), count, &count))) {
            return std::nullopt;
        }
        std::vector<float> heights;
        heights.reserve(lines.size());
        for (const DWRITE_LINE_METRICS& line : lines) {
            heights.push_back(line.height);
        }
        return heights;
    };
    measurer.width = [this](std::u16string_view text, float maxWidth, float maxHeight) -> std::optional<float> {
        const std::wstring wide = Wide(text);
        ComRef<IDWriteTextLayout> layout;
        DWRITE_TEXT_METRICS metrics{};
        if (!graphics->MakeLayout(wide.c_str(), wide.size(), maxWidth, maxHeight, layout)
            || FAILED(layout->GetMetrics(&metrics))) {
            return std::nullopt;
        }
        return metrics.widthIncludingTrailingWhitespace;
    };
    return measurer;
}

std::int32_t HexViewWindow::TrackPosition(int bar) const
{
    // The message carries only 16 bits of the position; the bar has all 32.
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_TRACKPOS;
    if (!GetScrollInfo(window, bar, &info)) {
        return 0;
    }
    return info.nTrackPos;
}

void HexViewWindow::Paint()
{
    PAINTSTRUCT paintStruct{};
    if (BeginPaint(window, &paintStruct) == nullptr) {
        return;
    }
    graphics->Ensure(window, view);
    if (!graphics->IsReady()) {
        EndPaint(window, &paintStruct);
        return;
    }

    BuildPaint(view, paint);
    PaintBrushes brushes;
    if (!brushes.Make(*graphics->renderTarget.Get(), paint.palette)) {
        ReleaseGraphics();
        EndPaint(window, &paintStruct);
        RequestRedraw();
    } else {
        ID2D1HwndRenderTarget& target = *graphics->renderTarget.Get();
        target.BeginDraw();
        Execute(paint, target, *graphics, brushes);
        if (target.EndDraw() == static_cast<HRESULT>(D2DERR_RECREATE_TARGET)) {
            ReleaseGraphics();
            RequestRedraw();
        }
        EndPaint(window, &paintStruct);
    }
    // The first paint of a new document is followed by a second one.
    if (view.State().firstPaintPending) {
        view.ClearFirstPaintPending();
        RequestRedraw();
    }
}

LRESULT CALLBACK HexViewWindow::WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* self = static_cast<HexViewWindow*>(create->lpCreateParams);
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        if (self != nullptr) {
            self->window = hwnd;
        }
    }
    auto* self = reinterpret_cast<HexViewWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (self == nullptr) {
        return DefWindowProcW(hwnd, message, wParam, lParam);
    }
    return self->HandleMessage(hwnd, message, wParam, lParam);
}

LRESULT HexViewWindow::HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    bool handled = false;
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        // The paint covers the whole client area.
        return 1;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
        handled = view.OnKeyDown(static_cast<std::uint32_t>(wParam), GetKeyState(VK_CONTROL) < 0);
        break;
    case WM_CHAR:
        handled = view.OnChar(static_cast<char16_t>(wParam));
        break;
    case WM_LBUTTONDOWN:
        handled = view.OnLeftButtonDown(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        break;
    case WM_MOUSEMOVE:
        handled = view.OnMouseMove(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        break;
    case WM_LBUTTONUP:
        handled = view.OnLeftButtonUp();
        break;
    case WM_CAPTURECHANGED:
        handled = view.OnCaptureChanged();
        break;
    case WM_MOUSEWHEEL:
        handled = view.OnMouseWheel(GET_WHEEL_DELTA_WPARAM(wParam), (GET_KEYSTATE_WPARAM(wParam) & MK_CONTROL) != 0);
        break;
    case WM_VSCROLL:
        handled = view.OnVerticalScroll(static_cast<ScrollCommand>(LOWORD(wParam)), TrackPosition(SB_VERT));
        break;
    case WM_HSCROLL:
        handled = view.OnHorizontalScroll(static_cast<ScrollCommand>(LOWORD(wParam)), TrackPosition(SB_HORZ));
        break;
    case WM_SETFOCUS:
        handled = view.OnSetFocus();
        break;
    case WM_KILLFOCUS:
        handled = view.OnKillFocus();
        break;
    case WM_TIMER:
        handled = view.OnTimer(static_cast<std::uint32_t>(wParam));
        break;
    case WM_SIZE:
        handled = view.OnResize();
        break;
    case WM_DPICHANGED:
        handled = view.OnDpiChanged(LOWORD(wParam));
        break;
    case WM_DPICHANGED_AFTERPARENT:
        handled = view.OnDpiChanged(GetDpiForWindow(hwnd));
        break;
    case FontsReadyMessage:
        // Measured until now without a text engine: the cells had no width yet.
        view.OnDpiChanged(GetDpiForWindow(hwnd));
        handled = true;
        break;
    case WM_NCDESTROY:
        // The render target belongs to this window; the factories may serve a later one.
        ReleaseGraphics();
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        window = nullptr;
        break;
    default:
        break;
    }
    return handled ? 0 : DefWindowProcW(hwnd, message, wParam, lParam);
}

} // namespace tlm
