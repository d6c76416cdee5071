#include "app/AboutDialogWin32.h"

#include "app/DialogWin32.h"

#include <shellapi.h>

namespace tlm {

namespace {

constexpr int ProductId = 3201;
constexpr int VersionId = 3202;
constexpr int CopyrightId = 3203;
constexpr int HomepageLabelId = 3204;
constexpr int LinkId = 3205;
constexpr int LicenseHeadingId = 3206;
constexpr int NoticeId = 3207;
constexpr DWORD AboutStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD AboutExStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

bool classRegistered = false;

} // namespace

void AboutDialogWin32::Run(HWND owner, HINSTANCE instance, AboutDialog& state)
{
    // The link's background is the window colour, so the dialog is painted in it too.
    if (!RegisterDialogClass(instance, ClassName, &AboutDialogWin32::WindowProc,
            reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_WINDOW + 1)), classRegistered)) {
        return;
    }
    AboutDialogWin32 dialog(state);
    HWND created = CreateDialogWindow(owner, instance, ClassName, state.title, AboutStyle, AboutExStyle,
        OuterSizeForClient(AboutDialogWidth, AboutDialogHeight, AboutStyle, AboutExStyle), &dialog);
    if (!created) {
        return;
    }
    RunModalLoop(owner, created, state.closed, [&dialog] {
        if (dialog.notice) {
            SendMessageW(dialog.notice, EM_SETSEL, static_cast<WPARAM>(-1), 0);
        }
        if (dialog.closeButton) {
            SetFocus(dialog.closeButton);
        }
    });
}

LRESULT CALLBACK AboutDialogWin32::WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (auto* dialog = DialogObject<AboutDialogWin32>(hwnd, message, lParam)) {
        return dialog->HandleMessage(hwnd, message, wParam, lParam);
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

int AboutDialogWin32::LabelWidth(const std::u16string& text) const
{
    HDC context = GetDC(window);
    if (!context) {
        return 0;
    }
    const HGDIOBJ previous = SelectObject(context, DialogFont());
    SIZE extent{};
    GetTextExtentPoint32W(context, WideText(text), static_cast<int>(text.size()), &extent);
    SelectObject(context, previous);
    ReleaseDC(window, context);
    return extent.cx;
}

void AboutDialogWin32::CreateControls()
{
    CreateControl(window, L"STATIC", state.productLine, 0, 0, 12, 12, 496, 22, ProductId);
    CreateControl(window, L"STATIC", state.versionLine, 0, 0, 12, 38, 496, 22, VersionId);
    CreateControl(window, L"STATIC", state.copyrightLine, 0, 0, 12, 64, 496, 22, CopyrightId);
    CreateControl(window, L"STATIC", state.homepageLabel, 0, 0, 12, 94, 496, 22, HomepageLabelId);
    link = CreateControl(window, L"STATIC", state.homepageAddress, SS_NOTIFY, 0, 12, 120, 496, 24, LinkId);
    CreateControl(window, L"STATIC", state.licenseHeading, 0, 0, 12, 152, 496, 22, LicenseHeadingId);
    notice = CreateControl(window, L"EDIT", state.notice, ES_MULTILINE | ES_READONLY | WS_VSCROLL | WS_TABSTOP,
        WS_EX_CLIENTEDGE, 12, 176, 496, 220, NoticeId);
    const DialogRect button = AboutCloseButton(LabelWidth(state.closeLabel));
    closeButton = CreateControl(window, L"BUTTON", state.closeLabel, WS_TABSTOP | BS_DEFPUSHBUTTON, 0, button.left,
        button.top, button.width, button.height, IDOK);
    ApplyDialogFont(window);
    SendMessageW(notice, EM_SETSEL, static_cast<WPARAM>(-1), 0);
    SetFocus(closeButton);
}

LRESULT AboutDialogWin32::HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        window = hwnd;
        CreateControls();
        return 0;
    case WM_CTLCOLORSTATIC: {
        // Every text stands on the window's colour; the link alone is coloured.
        const auto context = reinterpret_cast<HDC>(wParam);
        if (reinterpret_cast<HWND>(lParam) == link) {
            SetTextColor(context, RGB(AboutLinkRed, AboutLinkGreen, AboutLinkBlue));
        }
        SetBkMode(context, TRANSPARENT);
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    }
    case WM_SETCURSOR:
        if (reinterpret_cast<HWND>(wParam) == link) {
            SetCursor(LoadCursorW(nullptr, IDC_HAND));
            return TRUE;
        }
        break;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK) {
            state.closed = true;
            DestroyDialogWindow(hwnd);
            return 0;
        }
        if (LOWORD(wParam) == LinkId && HIWORD(wParam) == STN_CLICKED) {
            ShellExecuteW(hwnd, L"open", WideText(state.homepageAddress), nullptr, nullptr, SW_SHOWNORMAL);
            return 0;
        }
        // Esc arrives here as Cancel, which this dialog does not have: it stays open.
        break;
    case WM_CLOSE:
        state.closed = true;
        DestroyDialogWindow(hwnd);
        return 0;
    case WM_DESTROY:
        state.closed = true;
        window = link = notice = closeButton = nullptr;
        return 0;
    default:
        break;
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

} // namespace tlm
