#include "structview/StructViewWindowWin32.h"

#include "app/StructTimingLogWin32.h"
#include "structview/StructViewPaint.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace tlm {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows wide text is UTF-16");

const wchar_t* Wide(const std::u16string& text)
{
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

constexpr UINT_PTR EditSubclassId = 1;
constexpr int MainFontPoints = 14;
constexpr int SecondaryFontPoints = 13;
constexpr int CellTextInset = 4;

constexpr std::array<std::uint32_t, 4> ButtonIds{
    StructOpenButtonId, StructReloadButtonId, StructCloseButtonId, StructInfoButtonId};

bool classRegistered = false;

bool ControlHeld()
{
    return (GetKeyState(VK_CONTROL) & 0x8000) != 0;
}

HFONT MakeFont(UINT dpi, int points)
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    LOGFONTW font{};
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0)) {
        font = metrics.lfMessageFont;
    } else {
        std::wcscpy(font.lfFaceName, L"Segoe UI");
    }
    font.lfHeight = -MulDiv(points, static_cast<int>(dpi), 72);
    font.lfWidth = 0;
    font.lfCharSet = DEFAULT_CHARSET;
    return CreateFontIndirectW(&font);
}

UINT WindowDpi(HWND window)
{
    // GetDpiForWindow is looked up, so that the program still starts on systems without it.
    using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);
    static const auto getDpi = reinterpret_cast<GetDpiForWindowFunction>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    const UINT dpi = getDpi ? getDpi(window) : 0;
    return dpi == 0 ? 96 : dpi;
}

RECT ToRect(const StructViewRect& rect)
{
    return RECT{rect.left, rect.top, rect.right, rect.bottom};
}

void MoveControl(HWND control, const StructViewRect& rect, bool visible)
{
    if (!control) {
        return;
    }
    SetWindowPos(control, nullptr, rect.left, rect.top, rect.Width(), rect.Height(),
        SWP_NOZORDER | SWP_NOACTIVATE | (visible ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

// Edit controls keep their own text; it is set only when it differs, so the caret and the scroll stay.
void SetControlText(HWND control, const std::u16string& text)
{
    if (!control) {
        return;
    }
    const int length = GetWindowTextLengthW(control);
    std::wstring current(static_cast<std::size_t>(length) + 1, L'\0');
    GetWindowTextW(control, current.data(), length + 1);
    current.resize(static_cast<std::size_t>(length));
    if (current != std::wstring(text.begin(), text.end())) {
        SetWindowTextW(control, Wide(text));
    }
}

// Read-only edits show CR LF line breaks; the message may carry bare LF from a loader's text.
std::u16string WithWindowsLineBreaks(const std::u16string& text)
{
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == u'\n' && (index == 0 || text[index - 1] != u'\r')) {
            result += u'\r';
        }
        result += text[index];
    }
    return result;
}

void DrawOperations(HDC dc, const std::vector<StructPaintOperation>& operations, HFONT mainFont, HFONT secondaryFont)
{
    SetBkMode(dc, TRANSPARENT);
    HGDIOBJ oldBrush = SelectObject(dc, GetStockObject(DC_BRUSH));
    HGDIOBJ oldFont = SelectObject(dc, mainFont);
    for (const StructPaintOperation& operation : operations) {
        RECT rect = ToRect(operation.rect);
        switch (operation.kind) {
        case StructPaintKind::Fill:
            SetDCBrushColor(dc, operation.colour);
            FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
            break;
        case StructPaintKind::Frame:
            SetDCBrushColor(dc, operation.colour);
            FrameRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
            break;
        case StructPaintKind::Text: {
            SelectObject(dc, operation.font == StructPaintFont::Main ? mainFont : secondaryFont);
            SetTextColor(dc, operation.colour);
            if (!operation.centred) {
                rect.left += CellTextInset;
            }
            const UINT format = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX
                | (operation.centred ? DT_CENTER : DT_LEFT);
            DrawTextW(dc, Wide(operation.text), static_cast<int>(operation.text.size()), &rect, format);
            break;
        }
        case StructPaintKind::Clip: {
            HRGN region = CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom);
            SelectClipRgn(dc, region);
            DeleteObject(region);
            break;
        }
        case StructPaintKind::Unclip:
            SelectClipRgn(dc, nullptr);
            break;
        }
    }
    SelectObject(dc, oldFont);
    SelectObject(dc, oldBrush);
}

} // namespace

StructViewWindowWin32::~StructViewWindowWin32()
{
    Destroy();
    ReleaseFonts();
    if (backgroundBrush) {
        DeleteObject(std::exchange(backgroundBrush, nullptr));
    }
}

bool StructViewWindowWin32::Ensure(HWND ownerWindow, HINSTANCE moduleInstance)
{
    if (window) {
        return true;
    }
    owner = ownerWindow;
    instance = moduleInstance;
    if (!classRegistered) {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof(windowClass);
        windowClass.style = CS_DBLCLKS;
        windowClass.lpfnWndProc = &StructViewWindowWin32::WindowProc;
        windowClass.hInstance = instance;
        windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        windowClass.lpszClassName = ClassName;
        classRegistered = RegisterClassExW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
        if (!classRegistered) {
            return false;
        }
    }
    view.SetHost(MakeHost());
    const std::u16string& title = view.Labels().title;
    CreateWindowExW(0, ClassName, Wide(title), WS_OVERLAPPEDWINDOW | WS_VSCROLL | WS_HSCROLL | WS_CLIPCHILDREN,
        CW_USEDEFAULT, CW_USEDEFAULT, storedWidth, StructViewDefaultHeight, owner, nullptr, instance, this);
    return window != nullptr;
}

void StructViewWindowWin32::Destroy()
{
    if (window) {
        DestroyWindow(window); // WM_NCDESTROY forgets the handle
        window = nullptr;
    }
    ReleaseFonts();
}

StructViewHost StructViewWindowWin32::MakeHost()
{
    StructViewHost host;
    host.postToOwner = [this](AppMessage message, std::uintptr_t wParam) {
        if (owner) {
            PostMessageW(owner, static_cast<UINT>(message), static_cast<WPARAM>(wParam), 0);
        }
    };
    host.requestRedraw = [this] {
        if (window) {
            UpdateScrollBars();
            InvalidateRect(window, nullptr, FALSE);
        }
    };
    host.controlsChanged = [this] { UpdateControls(); };
    host.copyToClipboard = [this](const std::u16string& text) { CopyToClipboard(text); };
    host.openFormatMenu = [this](int x, int y) { OpenFormatMenu(x, y); };
    host.captureMouse = [this] {
        if (window) {
            SetCapture(window);
        }
    };
    host.releaseCapture = [] { ReleaseCapture(); };
    host.measureInfoText = [this](int width) { return MeasureInfoText(width); };
    return host;
}

void StructViewWindowWin32::PlaceBeside(HWND mainWindow)
{
    if (!window || !mainWindow) {
        return;
    }
    // Beside a main window that is not shown yet, or minimised, the struct view waits hidden.
    if (IsIconic(mainWindow) || !IsWindowVisible(mainWindow)) {
        ShowWindow(window, SW_HIDE);
        return;
    }
    RECT main{};
    if (!IsZoomed(window) && GetWindowRect(mainWindow, &main)) {
        const StructViewPlacement placement = PlaceStructViewBeside(main.left, main.top, main.bottom, storedWidth);
        SetWindowPos(window, nullptr, placement.left, placement.top, placement.width, placement.height,
            SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    }
    ShowWindow(window, SW_SHOWNOACTIVATE);
}

bool StructViewWindowWin32::HoldsActivation() const
{
    if (!window) {
        return false;
    }
    const HWND focus = GetFocus();
    return GetForegroundWindow() == window || focus == window || (focus && IsChild(window, focus));
}

void StructViewWindowWin32::RestoreActivation()
{
    if (!window) {
        return;
    }
    SetActiveWindow(window);
    SetForegroundWindow(window);
    SetFocus(window);
}

LRESULT CALLBACK StructViewWindowWin32::WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        if (auto* self = static_cast<StructViewWindowWin32*>(creation->lpCreateParams)) {
            self->window = hwnd;
            SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        }
    }
    auto* self = reinterpret_cast<StructViewWindowWin32*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (!self) {
        return DefWindowProcW(hwnd, message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        self->window = nullptr;
        return DefWindowProcW(hwnd, message, wParam, lParam);
    }
    return self->HandleMessage(hwnd, message, wParam, lParam);
}

LRESULT CALLBACK StructViewWindowWin32::EditProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
    DWORD_PTR)
{
    if (message == WM_KEYDOWN && wParam == VK_F5) {
        SendMessageW(GetParent(hwnd), WM_KEYDOWN, wParam, lParam);
        return 0;
    }
    if (message == WM_KEYDOWN && wParam == 'A' && ControlHeld()) {
        SendMessageW(hwnd, EM_SETSEL, 0, -1);
        return 0;
    }
    if (message == WM_CHAR && wParam == 1) {
        return 0; // the Ctrl+A above, without the beep of an unknown character
    }
    return DefSubclassProc(hwnd, message, wParam, lParam);
}

LRESULT StructViewWindowWin32::HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        OnCreate();
        return 0;
    case WM_DESTROY:
        if (infoEdit) {
            RemoveWindowSubclass(infoEdit, &StructViewWindowWin32::EditProc, EditSubclassId);
        }
        if (messageEdit) {
            RemoveWindowSubclass(messageEdit, &StructViewWindowWin32::EditProc, EditSubclassId);
        }
        infoEdit = nullptr;
        messageEdit = nullptr;
        buttons = {};
        return 0;
    case WM_CLOSE:
        view.OnClose(); // the owner destroys the window
        return 0;
    case WM_ERASEBKGND:
        return 1; // the paint covers the whole client area
    case WM_PAINT:
        Paint();
        return 0;
    case WM_SIZE:
        if (wParam != SIZE_MAXIMIZED && wParam != SIZE_MINIMIZED) {
            RECT frame{};
            if (GetWindowRect(hwnd, &frame)) {
                storedWidth = StoredStructViewWidth(frame.right - frame.left);
            }
        }
        ClientSizeChanged();
        return 0;
    case WM_GETMINMAXINFO: {
        auto* info = reinterpret_cast<MINMAXINFO*>(lParam);
        info->ptMinTrackSize.x = StructViewMinimumWidth;
        info->ptMinTrackSize.y = StructViewMinimumHeight;
        return 0;
    }
    case WM_DPICHANGED:
        dpi = HIWORD(wParam) == 0 ? 96 : HIWORD(wParam);
        BuildFonts();
        ClientSizeChanged();
        return 0;
    case WM_COMMAND:
        if (HIWORD(wParam) == BN_CLICKED) {
            view.OnButton(LOWORD(wParam));
            return 0;
        }
        break;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLOREDIT: {
        const StructViewPalette palette = StructViewPaletteFor(view.CurrentTheme());
        HDC dc = reinterpret_cast<HDC>(wParam);
        SetTextColor(dc, palette.text);
        SetBkColor(dc, palette.background);
        return reinterpret_cast<LRESULT>(BackgroundBrush());
    }
    case WM_KEYDOWN:
        if (view.OnKeyDown(static_cast<std::uint32_t>(wParam), ControlHeld())) {
            return 0;
        }
        break;
    case WM_COPY:
        view.Copy();
        return 0;
    case WM_MOUSEWHEEL:
        view.OnWheel(GET_WHEEL_DELTA_WPARAM(wParam));
        return 0;
    case WM_VSCROLL: {
        SCROLLINFO info{};
        info.cbSize = sizeof(info);
        info.fMask = SIF_TRACKPOS;
        GetScrollInfo(hwnd, SB_VERT, &info);
        view.OnVerticalScroll(LOWORD(wParam), info.nTrackPos);
        return 0;
    }
    case WM_HSCROLL: {
        SCROLLINFO info{};
        info.cbSize = sizeof(info);
        info.fMask = SIF_TRACKPOS;
        GetScrollInfo(hwnd, SB_HORZ, &info);
        view.OnHorizontalScroll(LOWORD(wParam), info.nTrackPos);
        return 0;
    }
    case WM_LBUTTONDOWN:
        SetFocus(hwnd);
        view.OnLeftDown(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        return 0;
    case WM_LBUTTONDBLCLK:
        view.OnDoubleClick(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        return 0;
    case WM_MOUSEMOVE:
        view.OnMouseMove(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        return 0;
    case WM_LBUTTONUP:
        view.OnLeftUp();
        return 0;
    case WM_CAPTURECHANGED:
        view.OnCaptureLost();
        return 0;
    case WM_SETCURSOR:
        if (LOWORD(lParam) == HTCLIENT) {
            POINT point{};
            GetCursorPos(&point);
            ScreenToClient(hwnd, &point);
            if (view.WantsSizingCursor(point.x, point.y)) {
                SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
                return TRUE;
            }
        }
        break;
    default:
        break;
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

void StructViewWindowWin32::OnCreate()
{
    dpi = WindowDpi(window);
    CreateControls();
    BuildFonts();
    ClientSizeChanged();
}

void StructViewWindowWin32::CreateControls()
{
    // Created in this order: open, reload, close, info; then the info and message edits.
    const std::array<int, 4> widths{90, 128, 80, 70};
    for (std::size_t index = 0; index < buttons.size(); ++index) {
        buttons[index] = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, 0,
            0, widths[index], 26, window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(ButtonIds[index])), instance,
            nullptr);
    }
    const DWORD editStyle = WS_CHILD | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL;
    infoEdit = CreateWindowExW(0, L"EDIT", L"", editStyle, 0, 0, 1, 1, window, nullptr, instance, nullptr);
    messageEdit = CreateWindowExW(0, L"EDIT", L"", editStyle, 0, 0, 1, 1, window, nullptr, instance, nullptr);
    for (HWND edit : {infoEdit, messageEdit}) {
        if (edit) {
            SetWindowSubclass(edit, &StructViewWindowWin32::EditProc, EditSubclassId, 0);
        }
    }
}

void StructViewWindowWin32::BuildFonts()
{
    ReleaseFonts();
    mainFont = MakeFont(dpi, MainFontPoints);
    secondaryFont = MakeFont(dpi, SecondaryFontPoints);
    for (HWND control : {buttons[0], buttons[1], buttons[2], buttons[3], infoEdit, messageEdit}) {
        if (control) {
            SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(mainFont), TRUE);
        }
    }
}

void StructViewWindowWin32::ReleaseFonts()
{
    if (mainFont) {
        DeleteObject(std::exchange(mainFont, nullptr));
    }
    if (secondaryFont) {
        DeleteObject(std::exchange(secondaryFont, nullptr));
    }
}

void StructViewWindowWin32::ClientSizeChanged()
{
    if (!window) {
        return;
    }
    RECT client{};
    GetClientRect(window, &client);
    view.SetClientSize(client.right - client.left, client.bottom - client.top);
}

void StructViewWindowWin32::UpdateControls()
{
    if (!window) {
        return;
    }
    SetWindowTextW(window, Wide(view.Labels().title));
    const StructViewLayout& layout = view.Layout();
    constexpr std::array<StructViewButton, 4> order{
        StructViewButton::Open, StructViewButton::Reload, StructViewButton::Close, StructViewButton::Info};
    for (std::size_t index = 0; index < buttons.size(); ++index) {
        if (!buttons[index]) {
            continue;
        }
        SetControlText(buttons[index], view.ButtonText(order[index]));
        EnableWindow(buttons[index], view.ButtonEnabled(order[index]) ? TRUE : FALSE);
        MoveControl(buttons[index], layout.Button(order[index]), true);
    }
    const bool infoShown = layout.infoBandHeight > 0;
    SetControlText(infoEdit, WithWindowsLineBreaks(view.InfoText()));
    MoveControl(infoEdit, layout.infoEdit, infoShown);
    SetControlText(messageEdit, WithWindowsLineBreaks(view.MessageEditText()));
    MoveControl(messageEdit, layout.messageEdit, view.State() != StructViewState::Loaded);
    UpdateScrollBars();
}

void StructViewWindowWin32::UpdateScrollBars()
{
    if (!window) {
        return;
    }
    const StructViewLayout& layout = view.Layout();
    const bool loaded = view.State() == StructViewState::Loaded;
    SCROLLINFO vertical{};
    vertical.cbSize = sizeof(vertical);
    vertical.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    vertical.nMax = loaded ? std::max(layout.contentHeight - 1, 0) : 0;
    vertical.nPage = static_cast<UINT>(loaded ? layout.rowArea.Height() : 0);
    vertical.nPos = view.ScrollY();
    SetScrollInfo(window, SB_VERT, &vertical, TRUE);
    SCROLLINFO horizontal{};
    horizontal.cbSize = sizeof(horizontal);
    horizontal.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    horizontal.nMax = loaded ? std::max(layout.contentWidth - 1, 0) : 0;
    horizontal.nPage = static_cast<UINT>(loaded ? std::max(layout.clientWidth, 0) : 0);
    horizontal.nPos = view.ScrollX();
    SetScrollInfo(window, SB_HORZ, &horizontal, TRUE);
}

void StructViewWindowWin32::Paint()
{
    const std::int64_t start = StructTimingLog::Now();
    PAINTSTRUCT paint{};
    HDC target = BeginPaint(window, &paint);
    if (!target) {
        return;
    }
    RECT client{};
    GetClientRect(window, &client);
    const int width = std::max(static_cast<int>(client.right), 1);
    const int height = std::max(static_cast<int>(client.bottom), 1);
    HDC memory = CreateCompatibleDC(target);
    HBITMAP bitmap = memory ? CreateCompatibleBitmap(target, width, height) : nullptr;
    if (memory && bitmap) {
        HGDIOBJ oldBitmap = SelectObject(memory, bitmap);
        DrawOperations(memory, BuildStructViewPaint(view), mainFont, secondaryFont);
        BitBlt(target, 0, 0, width, height, memory, 0, 0, SRCCOPY);
        SelectObject(memory, oldBitmap);
    }
    if (bitmap) {
        DeleteObject(bitmap);
    }
    if (memory) {
        DeleteDC(memory);
    }
    EndPaint(window, &paint);
    StructTimingLog::Instance().Painted(start);
}

void StructViewWindowWin32::CopyToClipboard(const std::u16string& text)
{
    if (!window || !OpenClipboard(window)) {
        return;
    }
    EmptyClipboard();
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (memory) {
        if (void* target = GlobalLock(memory)) {
            std::memcpy(target, text.c_str(), bytes);
            GlobalUnlock(memory);
            if (!SetClipboardData(CF_UNICODETEXT, memory)) {
                GlobalFree(memory);
            }
        } else {
            GlobalFree(memory);
        }
    }
    CloseClipboard();
}

void StructViewWindowWin32::OpenFormatMenu(int x, int y)
{
    HMENU menu = CreatePopupMenu();
    if (!menu) {
        return;
    }
    for (const StructFormatMenu& group : view.FormatMenu()) {
        HMENU sub = CreatePopupMenu();
        if (!sub) {
            continue;
        }
        for (const StructFormatMenuItem& item : group.items) {
            AppendMenuW(sub, MF_STRING | (item.checked ? MF_CHECKED : MF_UNCHECKED), item.id, Wide(item.label));
        }
        AppendMenuW(menu, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(sub), Wide(group.label));
    }
    POINT point{x, y};
    ClientToScreen(window, &point);
    // A pop-up menu closes cleanly only when its owner is in front, and leaves menu mode only once
    // its owner's thread sees another message after it.
    SetForegroundWindow(window);
    const UINT chosen = static_cast<UINT>(TrackPopupMenu(menu, TPM_RETURNCMD | TPM_LEFTALIGN | TPM_TOPALIGN
            | TPM_RIGHTBUTTON, point.x, point.y, 0, window, nullptr));
    PostMessageW(window, WM_NULL, 0, 0);
    DestroyMenu(menu);
    if (chosen != 0) {
        view.OnMenuChoice(chosen);
    }
}

int StructViewWindowWin32::MeasureInfoText(int width)
{
    const std::u16string text = WithWindowsLineBreaks(view.InfoText());
    if (text.empty()) {
        return 0;
    }
    HDC dc = GetDC(window);
    if (!dc) {
        return 0;
    }
    HGDIOBJ oldFont = SelectObject(dc, mainFont ? mainFont : GetStockObject(DEFAULT_GUI_FONT));
    RECT rect{0, 0, width, 0};
    DrawTextW(dc, Wide(text), static_cast<int>(text.size()), &rect,
        DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX);
    SelectObject(dc, oldFont);
    ReleaseDC(window, dc);
    return rect.bottom - rect.top;
}

HBRUSH StructViewWindowWin32::BackgroundBrush()
{
    const COLORREF colour = StructViewPaletteFor(view.CurrentTheme()).background;
    if (!backgroundBrush || backgroundBrushColour != colour) {
        if (backgroundBrush) {
            DeleteObject(backgroundBrush);
        }
        backgroundBrush = CreateSolidBrush(colour);
        backgroundBrushColour = colour;
    }
    return backgroundBrush;
}

} // namespace tlm
