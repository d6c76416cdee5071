#include "app/FontDialogWin32.h"

#include "app/DialogWin32.h"

#include <string>

namespace tlm {

namespace {

constexpr int FamilyLabelId = 3301;
constexpr int FamilyBoxId = 3302;
constexpr int SizeLabelId = 3303;
constexpr int SizeBoxId = 3304;
constexpr int BoldBoxId = 3305;
constexpr int ItalicBoxId = 3306;
constexpr DWORD FontStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX;
constexpr DWORD FontExStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

bool classRegistered = false;

int CALLBACK CollectFamily(const LOGFONTW* font, const TEXTMETRICW* metrics, DWORD, LPARAM collected)
{
    auto& faces = *reinterpret_cast<std::vector<FontFamilyFace>*>(collected);
    const auto* name = reinterpret_cast<const char16_t*>(font->lfFaceName);
    // The bit's name says the opposite of its meaning: set, the pitch is variable.
    faces.push_back(FontFamilyFace{std::u16string(name), (metrics->tmPitchAndFamily & TMPF_FIXED_PITCH) != 0});
    return 1;
}

void Move(HWND control, const DialogRect& rect)
{
    if (control) {
        MoveWindow(control, rect.left, rect.top, rect.width, rect.height, TRUE);
    }
}

} // namespace

std::vector<FontFamilyFace> EnumerateFontFamilies()
{
    std::vector<FontFamilyFace> faces;
    HDC screen = GetDC(nullptr);
    if (!screen) {
        return faces;
    }
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;
    EnumFontFamiliesExW(screen, &wanted, &CollectFamily, reinterpret_cast<LPARAM>(&faces), 0);
    ReleaseDC(nullptr, screen);
    return faces;
}

void FontDialogWin32::Run(HWND owner, HINSTANCE instance, FontDialog& state)
{
    if (!RegisterDialogClass(instance, ClassName, &FontDialogWin32::WindowProc,
            reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)), classRegistered)) {
        return;
    }
    FontDialogWin32 dialog(state);
    HWND created = CreateDialogWindow(owner, instance, ClassName, state.title, FontStyle, FontExStyle,
        OuterSizeForClient(FontDialogWidth, FontDialogHeight, FontStyle, FontExStyle), &dialog);
    if (!created) {
        return;
    }
    RunModalLoop(owner, created, state.closed, [&dialog] {
        if (dialog.familyBox) {
            SetFocus(dialog.familyBox);
        }
    });
}

LRESULT CALLBACK FontDialogWin32::WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (auto* dialog = DialogObject<FontDialogWin32>(hwnd, message, lParam)) {
        return dialog->HandleMessage(hwnd, message, wParam, lParam);
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

void FontDialogWin32::CreateControls()
{
    CreateControl(window, L"STATIC", state.familyLabel, 0, 0, 12, 16, 90, 24, FamilyLabelId);
    familyBox = CreateControl(window, L"ComboBox", u"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0, 102, 12, 260,
        240, FamilyBoxId);
    for (const std::u16string& family : state.families) {
        SendMessageW(familyBox, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideText(family)));
    }
    SendMessageW(familyBox, CB_SETCURSEL, InitialFamilyIndex(state.families, state.family), 0);
    CreateControl(window, L"STATIC", state.sizeLabel, 0, 0, 12, 50, 90, 24, SizeLabelId);
    sizeBox = CreateControl(window, L"ComboBox", u"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0, 102, 46, 72, 220,
        SizeBoxId);
    for (const int size : FontDialogSizes) {
        const std::wstring text = std::to_wstring(size);
        SendMessageW(sizeBox, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    SendMessageW(sizeBox, CB_SETCURSEL, InitialSizeIndex(state.size), 0);
    boldBox = CreateControl(window, L"BUTTON", state.boldLabel, WS_TABSTOP | BS_AUTOCHECKBOX, 0, 102, 84, 90, 24,
        BoldBoxId);
    SendMessageW(boldBox, BM_SETCHECK, state.bold ? BST_CHECKED : BST_UNCHECKED, 0);
    italicBox = CreateControl(window, L"BUTTON", state.italicLabel, WS_TABSTOP | BS_AUTOCHECKBOX, 0, 204, 84, 90, 24,
        ItalicBoxId);
    SendMessageW(italicBox, BM_SETCHECK, state.italic ? BST_CHECKED : BST_UNCHECKED, 0);
    okButton = CreateControl(window, L"BUTTON", state.okLabel, WS_TABSTOP | BS_DEFPUSHBUTTON, 0, 0, 0, 108, 26, IDOK);
    cancelButton =
        CreateControl(window, L"BUTTON", state.cancelLabel, WS_TABSTOP | BS_PUSHBUTTON, 0, 0, 0, 108, 26, IDCANCEL);
    Layout();
    ApplyDialogFont(window);
}

void FontDialogWin32::Layout()
{
    RECT client{};
    if (!window || !GetClientRect(window, &client)) {
        return;
    }
    const FontDialogLayout layout = LayOutFontDialog(client.right - client.left, client.bottom - client.top);
    Move(familyBox, layout.familyBox);
    Move(okButton, layout.okButton);
    Move(cancelButton, layout.cancelButton);
}

void FontDialogWin32::Accept()
{
    const LRESULT selected = SendMessageW(familyBox, CB_GETCURSEL, 0, 0);
    const std::optional<std::size_t> family =
        selected == CB_ERR ? std::nullopt : std::optional<std::size_t>(static_cast<std::size_t>(selected));
    const bool bold = SendMessageW(boldBox, BM_GETCHECK, 0, 0) == BST_CHECKED;
    const bool italic = SendMessageW(italicBox, BM_GETCHECK, 0, 0) == BST_CHECKED;
    if (state.Accept(family, WindowText(sizeBox), bold, italic)) {
        DestroyDialogWindow(window);
    }
}

LRESULT FontDialogWin32::HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        window = hwnd;
        CreateControls();
        return 0;
    case WM_SIZE:
        Layout();
        return 0;
    case WM_GETMINMAXINFO: {
        auto* limits = reinterpret_cast<MINMAXINFO*>(lParam);
        limits->ptMinTrackSize.x = FontDialogMinimumWidth;
        limits->ptMinTrackSize.y = FontDialogMinimumHeight;
        return 0;
    }
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK) {
            Accept();
            return 0;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            state.Cancel();
            DestroyDialogWindow(hwnd);
            return 0;
        }
        break;
    case WM_CLOSE:
        state.Cancel();
        DestroyDialogWindow(hwnd);
        return 0;
    case WM_DESTROY:
        state.closed = true;
        window = familyBox = sizeBox = boldBox = italicBox = okButton = cancelButton = nullptr;
        return 0;
    default:
        break;
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

} // namespace tlm
