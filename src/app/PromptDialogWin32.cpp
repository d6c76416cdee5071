#include "app/PromptDialogWin32.h"

#include "app/DialogWin32.h"

namespace tlm {

namespace {

constexpr int PromptLabelId = 3001;
constexpr int PromptEditId = 3002;
constexpr DWORD PromptStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD PromptExStyle = WS_EX_DLGMODALFRAME;
constexpr SIZE PromptSize{360, 132};

bool classRegistered = false;

} // namespace

std::optional<std::u16string> PromptDialogWin32::Run(HWND owner, HINSTANCE instance, const std::u16string& title,
    const std::u16string& prompt, const std::u16string& text)
{
    if (!RegisterDialogClass(instance, ClassName, &PromptDialogWin32::WindowProc,
            reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)), classRegistered)) {
        return std::nullopt;
    }
    PromptDialog state;
    state.title = title;
    state.prompt = prompt;
    state.text = text;
    PromptDialogWin32 dialog(state);
    HWND created = CreateDialogWindow(owner, instance, ClassName, title, PromptStyle, PromptExStyle, PromptSize, &dialog);
    if (!created) {
        return std::nullopt;
    }
    RunModalLoop(owner, created, state.closed, [&dialog] {
        if (dialog.edit) {
            SetFocus(dialog.edit);
            SendMessageW(dialog.edit, EM_SETSEL, 0, -1);
        }
    });
    if (!state.accepted) {
        return std::nullopt;
    }
    return state.result;
}

LRESULT CALLBACK PromptDialogWin32::WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (auto* dialog = DialogObject<PromptDialogWin32>(hwnd, message, lParam)) {
        return dialog->HandleMessage(hwnd, message, wParam, lParam);
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

void PromptDialogWin32::CreateControls()
{
    CreateControl(window, L"STATIC", state.prompt, 0, 0, 12, 12, 336, 20, PromptLabelId);
    edit = CreateControl(window, L"EDIT", state.text, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, 12, 38, 336, 24,
        PromptEditId);
    // The two buttons say OK and Cancel in every language.
    CreateControl(window, L"BUTTON", u"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, 0, 164, 90, 88, 26, IDOK);
    CreateControl(window, L"BUTTON", u"Cancel", WS_TABSTOP | BS_PUSHBUTTON, 0, 260, 90, 88, 26, IDCANCEL);
    ApplyDialogFont(window);
    SendMessageW(edit, EM_SETSEL, 0, -1);
    SetFocus(edit);
}

LRESULT PromptDialogWin32::HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        window = hwnd;
        CreateControls();
        return 0;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK) {
            state.Accept(WindowText(edit));
            DestroyDialogWindow(hwnd);
            return 0;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            state.Cancel();
            return 0;
        }
        break;
    case WM_CLOSE:
        state.Cancel();
        return 0;
    case WM_DESTROY:
        state.OnDestroy();
        window = nullptr;
        edit = nullptr;
        return 0;
    default:
        break;
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

} // namespace tlm
