#include "inspector/DataInspectorWindowWin32.h"

#include "app/AppMessage.h"
#include "hexview/ClipboardWin32.h"
#include "hexview/ComRefWin32.h"
#include "hexview/Direct2DFactoriesWin32.h"
#include "hexview/DirectWriteStartWin32.h"

#include <windowsx.h>

#include <d2d1.h>
#include <dwrite.h>

#include <array>
#include <string>
#include <utility>

namespace tlm {

namespace {

const wchar_t* Wide(const std::u16string& text)
{
    static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows wide text is UTF-16");
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

D2D1_COLOR_F ToD2D(const InspectorColor& color)
{
    return D2D1_COLOR_F{static_cast<float>(color.red) / 255.0f, static_cast<float>(color.green) / 255.0f,
        static_cast<float>(color.blue) / 255.0f, 1.0f};
}

int Scaled(int length, std::uint32_t dpi)
{
    return MulDiv(length, static_cast<int>(WindowDpi(dpi)), 96);
}

} // namespace

// The Direct2D and DirectWrite objects. The factories stay for the whole run; the render target goes
// with every resize and device loss, the text format with a DPI change, and both with the window.
class DataInspectorGraphics {
public:
    void NotifyWhenReady(HWND window, UINT message) { directWrite.NotifyWhenReady(window, message); }

    void MakeTextFormat(std::uint32_t dpi)
    {
        textFormat.Reset();
        const float size = WindowDpi(dpi) * InspectorLayout::FontSize / 96.0f;
        if (FAILED(factories.DWrite()->CreateTextFormat(L"Segoe UI", nullptr, DWRITE_FONT_WEIGHT_NORMAL,
                DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, size, L"", textFormat.Put()))
            || !textFormat) {
            textFormat.Reset();
            return;
        }
        textFormat->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP);
        textFormat->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_CENTER);
        textFormat->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING);
    }

    // Factory, text engine, text format, then the target; each missing step leaves the rest missing.
    bool Ensure(HWND window, std::uint32_t dpi)
    {
        if (!factories.EnsureD2D() || !factories.EnsureDWrite()) {
            return false;
        }
        if (!textFormat) {
            MakeTextFormat(dpi);
        }
        if (textFormat && !renderTarget) {
            if (factories.MakeWindowTarget(window, dpi, renderTarget)) {
                // Wine shows what a new target draws into a top-level window only once the window has
                // been laid out again; asking for its frame anew does that and changes nothing else.
                SetWindowPos(window, nullptr, 0, 0, 0, 0,
                    SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER | SWP_FRAMECHANGED);
            }
        }
        return textFormat && renderTarget;
    }

    void DropTarget() { renderTarget.Reset(); }

    void ReleaseWindowResources()
    {
        renderTarget.Reset();
        textFormat.Reset();
    }

    ID2D1HwndRenderTarget* Target() const { return renderTarget.Get(); }
    IDWriteTextFormat* TextFormat() const { return textFormat.Get(); }

private:
    // In the order of making, so that each is released before what it was made from.
    DirectWriteStart directWrite;
    Direct2DFactories factories{directWrite};
    ComRef<IDWriteTextFormat> textFormat;
    ComRef<ID2D1HwndRenderTarget> renderTarget;
};

namespace {

// One brush for each colour of the palette, for one paint.
class InspectorBrushes {
public:
    bool Make(ID2D1RenderTarget& target, const InspectorPalette& palette)
    {
        for (std::size_t role = 0; role < brushes.size(); ++role) {
            const D2D1_COLOR_F color = ToD2D(palette.Of(static_cast<InspectorColorRole>(role)));
            if (FAILED(target.CreateSolidColorBrush(&color, nullptr, brushes[role].Put())) || !brushes[role]) {
                return false;
            }
        }
        return true;
    }

    ID2D1Brush* Of(InspectorColorRole role) const { return brushes[static_cast<std::size_t>(role)].Get(); }

private:
    std::array<ComRef<ID2D1SolidColorBrush>, InspectorColorRoleCount> brushes;
};

void Execute(const InspectorPaint& paint, ID2D1RenderTarget& target, IDWriteTextFormat& format,
    const InspectorBrushes& brushes)
{
    const std::wstring text(paint.text.begin(), paint.text.end());
    constexpr auto textOptions =
        static_cast<D2D1_DRAW_TEXT_OPTIONS>(D2D1_DRAW_TEXT_OPTIONS_CLIP | D2D1_DRAW_TEXT_OPTIONS_ENABLE_COLOR_FONT);
    for (const InspectorPaintOperation& operation : paint.operations) {
        const D2D1_RECT_F rect{operation.left, operation.top, operation.right, operation.bottom};
        ID2D1Brush* brush = brushes.Of(operation.color);
        switch (operation.kind) {
        case InspectorPaintKind::Clear: {
            const D2D1_COLOR_F color = ToD2D(paint.palette.Of(operation.color));
            target.Clear(&color);
            break;
        }
        case InspectorPaintKind::FillRectangle:
            target.FillRectangle(&rect, brush);
            break;
        case InspectorPaintKind::DrawLine:
            target.DrawLine(D2D1_POINT_2F{operation.left, operation.top},
                D2D1_POINT_2F{operation.right, operation.bottom}, brush, 1.0f, nullptr);
            break;
        case InspectorPaintKind::DrawTextInBox:
            // A box turned inside out by a narrow window has nothing to show.
            if (operation.textLength != 0 && operation.right > operation.left) {
                target.DrawText(text.c_str() + operation.textStart, operation.textLength, &format, &rect, brush,
                    textOptions, DWRITE_MEASURING_MODE_NATURAL);
            }
            break;
        }
    }
}

} // namespace

DataInspectorWindowWin32::DataInspectorWindowWin32()
{
    logic.SetHost(MakeHost());
}

DataInspectorWindowWin32::~DataInspectorWindowWin32()
{
    logic.SetHost({});
    Destroy();
}

bool DataInspectorWindowWin32::RegisterWindowClass(HINSTANCE instance)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &DataInspectorWindowWin32::WindowProc;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_WINDOW + 1));
    windowClass.lpszClassName = ClassName;
    return RegisterClassW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

bool DataInspectorWindowWin32::Show(HWND owner, HINSTANCE instance, const InspectorLabels& labels, Theme theme)
{
    if (window) {
        logic.SetLabels(labels);
        logic.SetTheme(theme);
        return true;
    }
    static bool registered = false;
    if (!registered) {
        registered = RegisterWindowClass(instance);
        if (!registered) {
            return false;
        }
    }
    parent = owner;
    const HWND created = CreateWindowExW(WS_EX_WINDOWEDGE, ClassName, Wide(labels.title),
        WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX, CW_USEDEFAULT, CW_USEDEFAULT,
        logic.WindowWidth(), InspectorLayout::CreationHeight, owner, nullptr, instance, this);
    if (!created) {
        return false;
    }
    logic.SetLabels(labels);
    logic.SetTheme(theme);
    if (graphics) {
        // Made for an earlier window; the fonts may still be on their way.
        graphics->NotifyWhenReady(created, FontsReadyMessage);
    }
    return true;
}

void DataInspectorWindowWin32::Destroy()
{
    // The drawing resources go before the window they draw into.
    if (graphics) {
        graphics->ReleaseWindowResources();
    }
    if (window) {
        DestroyWindow(window); // its last message forgets it
    }
}

DataInspectorHost DataInspectorWindowWin32::MakeHost()
{
    DataInspectorHost host;
    host.requestRedraw = [this](bool erase) {
        if (window) {
            InvalidateRect(window, nullptr, erase ? TRUE : FALSE);
        }
    };
    host.setTitle = [this](const std::u16string& title) {
        if (window) {
            SetWindowTextW(window, Wide(title));
        }
    };
    host.takeFocus = [this] {
        if (window) {
            SetFocus(window);
        }
    };
    host.captureMouse = [this] {
        if (window) {
            SetCapture(window);
        }
    };
    host.releaseCapture = [] { ReleaseCapture(); };
    host.holdsCapture = [this] { return window && GetCapture() == window; };
    host.showSizingCursor = [] { SetCursor(LoadCursorW(nullptr, IDC_SIZEWE)); };
    host.copyToClipboard = [this](const std::u16string& text) { CopyTextToClipboard(window, text); };
    host.clientSize = [this] { return ClientSize(); };
    return host;
}

InspectorClientSize DataInspectorWindowWin32::ClientSize() const
{
    RECT client{};
    if (!window || !GetClientRect(window, &client)) {
        return {};
    }
    return InspectorClientSize{client.right - client.left, client.bottom - client.top};
}

void DataInspectorWindowWin32::Paint()
{
    PAINTSTRUCT paintStruct{};
    if (!BeginPaint(window, &paintStruct)) {
        return;
    }
    if (!graphics) {
        // Made at the first paint, when the window stands, so that reading the fonts on a thread of
        // their own never competes with the main window's start.
        graphics = std::make_unique<DataInspectorGraphics>();
        graphics->NotifyWhenReady(window, FontsReadyMessage);
    }
    // Without a text engine yet nothing is drawn; the engine's arrival asks for the paint again.
    if (graphics->Ensure(window, logic.Dpi())) {
        BuildInspectorPaint(logic, ClientSize(), paint);
        ID2D1HwndRenderTarget& target = *graphics->Target();
        InspectorBrushes brushes;
        if (brushes.Make(target, paint.palette)) {
            target.BeginDraw();
            Execute(paint, target, *graphics->TextFormat(), brushes);
            if (target.EndDraw() == static_cast<HRESULT>(D2DERR_RECREATE_TARGET)) {
                graphics->DropTarget();
                InvalidateRect(window, nullptr, FALSE);
            }
        } else {
            graphics->DropTarget();
        }
    }
    EndPaint(window, &paintStruct);
}

void DataInspectorWindowWin32::OnSize(WPARAM kind)
{
    if (kind != SIZE_MINIMIZED) {
        RECT outer{};
        if (GetWindowRect(window, &outer)) {
            logic.OnResized(outer.right - outer.left, kind == SIZE_MAXIMIZED);
        }
    }
    if (graphics) {
        graphics->DropTarget(); // made again at the client's new size by the next paint
    }
    InvalidateRect(window, nullptr, FALSE);
}

LRESULT CALLBACK DataInspectorWindowWin32::WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* self = static_cast<DataInspectorWindowWin32*>(creation->lpCreateParams);
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        if (self) {
            self->window = hwnd;
            self->logic.SetDpi(GetDpiForWindow(hwnd));
        }
    }
    auto* self = reinterpret_cast<DataInspectorWindowWin32*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (!self) {
        return DefWindowProcW(hwnd, message, wParam, lParam);
    }
    return self->HandleMessage(hwnd, message, wParam, lParam);
}

LRESULT DataInspectorWindowWin32::HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        // The paint covers the whole client area; an erase would only flicker.
        return 1;
    case WM_SIZE:
        OnSize(wParam);
        return 0;
    case WM_GETMINMAXINFO: {
        auto* limits = reinterpret_cast<MINMAXINFO*>(lParam);
        limits->ptMinTrackSize.x = Scaled(InspectorLayout::MinimumWidth, logic.Dpi());
        limits->ptMinTrackSize.y = Scaled(InspectorLayout::MinimumHeight, logic.Dpi());
        return 0;
    }
    case WM_DPICHANGED:
        logic.SetDpi(LOWORD(wParam));
        if (graphics) {
            graphics->ReleaseWindowResources();
        }
        InvalidateRect(hwnd, nullptr, FALSE);
        return 0;
    case FontsReadyMessage:
        fontsReady = true;
        InvalidateRect(hwnd, nullptr, FALSE);
        return 0;
    case WM_LBUTTONDOWN:
        logic.OnLeftButtonDown(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        return 0;
    case WM_MOUSEMOVE:
        if (logic.OnMouseMove(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam))) {
            return 0;
        }
        break;
    case WM_LBUTTONUP:
        if (logic.OnLeftButtonUp()) {
            return 0;
        }
        break;
    case WM_CAPTURECHANGED:
        logic.OnCaptureChanged();
        return 0;
    case WM_KEYDOWN:
        if (logic.OnKeyDown(static_cast<std::uint32_t>(wParam), GetKeyState(VK_CONTROL) < 0)) {
            return 0;
        }
        break;
    case WM_COPY:
        logic.Copy();
        return 0;
    case WM_CLOSE:
        // The application turns the setting off and destroys the window, so the menu agrees.
        if (parent) {
            PostMessageW(parent, static_cast<UINT>(AppMessage::InspectorClosed), 0, 0);
        }
        return 0;
    case WM_DESTROY:
        if (graphics) {
            graphics->ReleaseWindowResources();
        }
        break;
    case WM_NCDESTROY:
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        window = nullptr;
        logic.OnCaptureChanged();
        break;
    default:
        break;
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

} // namespace tlm
