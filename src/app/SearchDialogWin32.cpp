#include "app/SearchDialogWin32.h"

#include "app/DialogWin32.h"

namespace tlm {

namespace {

constexpr int TypeLabelId = 3101;
constexpr int TypeBoxId = 3102;
constexpr int QueryLabelId = 3103;
constexpr int QueryBoxId = 3104;
constexpr int PreviousButtonId = 3105;
constexpr DWORD SearchStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD SearchExStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

bool classRegistered = false;

MessageBoxResult ToResult(int answer)
{
    switch (answer) {
    case IDOK:
        return MessageBoxResult::Ok;
    case IDYES:
        return MessageBoxResult::Yes;
    case IDNO:
        return MessageBoxResult::No;
    default:
        return MessageBoxResult::Cancel;
    }
}

UINT BoxStyle(MessageBoxKind kind)
{
    switch (kind) {
    case MessageBoxKind::Stop:
        return MB_OK | MB_ICONSTOP;
    case MessageBoxKind::Information:
        return MB_OK | MB_ICONINFORMATION;
    default:
        return MB_YESNOCANCEL | MB_ICONEXCLAMATION;
    }
}

} // namespace

void SearchDialogWin32::Run(HWND owner, HINSTANCE instance, SearchDialog& state, const SearchDialogCallback& callback)
{
    if (!RegisterDialogClass(instance, ClassName, &SearchDialogWin32::WindowProc,
            reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)), classRegistered)) {
        return;
    }
    SearchDialogWin32 dialog(state);
    state.SetControls(dialog.MakeControls());
    HWND created = CreateDialogWindow(owner, instance, ClassName, state.title, SearchStyle, SearchExStyle,
        OuterSizeForClient(420, 176, SearchStyle, SearchExStyle), &dialog);
    if (!created) {
        state.SetControls({});
        return;
    }
    RunModalLoop(owner, created, state.closed, [&dialog] { dialog.FocusQuery(); },
        [&state, &callback] { state.RunPendingRequest(callback); });
    state.SetControls({});
}

SearchDialogControls SearchDialogWin32::MakeControls()
{
    SearchDialogControls controls;
    controls.queryText = [this] { return queryBox ? WindowText(queryBox) : std::u16string(); };
    controls.selectedType = [this] {
        const LRESULT selected = typeBox ? SendMessageW(typeBox, CB_GETCURSEL, 0, 0) : 0;
        return selected == SearchTypeText ? SearchTypeText : SearchTypeHex;
    };
    controls.selectType = [this](std::uint32_t type) {
        if (typeBox) {
            SendMessageW(typeBox, CB_SETCURSEL, type, 0);
        }
    };
    controls.fillQueryBox = [this](const std::vector<std::u16string>& items, const std::u16string& text) {
        FillQueryBox(items, text);
    };
    controls.limitQuery = [this](std::uint32_t limit) {
        if (queryBox) {
            SendMessageW(queryBox, CB_LIMITTEXT, limit, 0);
        }
        if (queryEdit) {
            SendMessageW(queryEdit, EM_LIMITTEXT, limit, 0);
        }
    };
    controls.enableInputs = [this](bool enabled) { EnableInputs(enabled); };
    controls.focusQuery = [this] { FocusQuery(); };
    controls.destroyWindow = [this] {
        if (window) {
            DestroyDialogWindow(window);
        }
    };
    controls.messageBox = [this](const std::u16string& text, const std::u16string& caption, MessageBoxKind kind) {
        return ToResult(MessageBoxW(window, WideText(text), WideText(caption), BoxStyle(kind)));
    };
    return controls;
}

LRESULT CALLBACK SearchDialogWin32::WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (auto* dialog = DialogObject<SearchDialogWin32>(hwnd, message, lParam)) {
        return dialog->HandleMessage(hwnd, message, wParam, lParam);
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

void SearchDialogWin32::CreateControls()
{
    CreateControl(window, L"STATIC", state.typeLabel, 0, 0, 12, 12, 396, 20, TypeLabelId);
    typeBox = CreateControl(window, L"ComboBox", u"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0, 12, 36, 396, 240,
        TypeBoxId);
    SendMessageW(typeBox, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideText(state.hexLabel)));
    SendMessageW(typeBox, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideText(state.textLabel)));
    CreateControl(window, L"STATIC", state.queryLabel, 0, 0, 12, 66, 396, 20, QueryLabelId);
    queryBox = CreateControl(window, L"ComboBox", u"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL,
        WS_EX_CLIENTEDGE, 12, 90, 396, 220, QueryBoxId);
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    if (GetComboBoxInfo(queryBox, &info)) {
        queryEdit = info.hwndItem;
    }
    previousButton = CreateControl(window, L"BUTTON", state.previousLabel, WS_TABSTOP | BS_PUSHBUTTON, 0, 128, 134,
        88, 26, PreviousButtonId);
    nextButton = CreateControl(window, L"BUTTON", state.nextLabel, WS_TABSTOP | BS_DEFPUSHBUTTON, 0, 224, 134, 88, 26,
        IDOK);
    closeButton = CreateControl(window, L"BUTTON", state.closeLabel, WS_TABSTOP | BS_PUSHBUTTON, 0, 320, 134, 88, 26,
        IDCANCEL);
    SetWindowTextW(queryBox, WideText(state.initialQuery));
    state.OnCreate();
    ApplyDialogFont(window);
}

void SearchDialogWin32::FillQueryBox(const std::vector<std::u16string>& items, const std::u16string& text)
{
    if (!queryBox) {
        return;
    }
    SendMessageW(queryBox, CB_RESETCONTENT, 0, 0);
    for (const std::u16string& item : items) {
        SendMessageW(queryBox, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideText(item)));
    }
    SetWindowTextW(queryBox, WideText(text));
    if (queryEdit) {
        SendMessageW(queryEdit, EM_SETSEL, 0, -1);
    }
}

void SearchDialogWin32::EnableInputs(bool enabled)
{
    for (HWND control : {typeBox, queryBox, previousButton, nextButton}) {
        if (control) {
            EnableWindow(control, enabled ? TRUE : FALSE);
        }
    }
    if (!enabled && window) {
        // The keys go to the dialog itself while its inputs are off, so Esc reaches it as a cancel.
        SetFocus(window);
    }
}

void SearchDialogWin32::FocusQuery()
{
    if (queryBox && IsWindow(queryBox)) {
        SetFocus(queryBox);
        if (queryEdit) {
            SendMessageW(queryEdit, EM_SETSEL, 0, -1);
        }
    }
}

bool SearchDialogWin32::OnCommand(WORD id, WORD code)
{
    switch (id) {
    case IDOK:
        state.OnNext();
        return true;
    case PreviousButtonId:
        state.OnPrevious();
        return true;
    case IDCANCEL:
        state.OnCloseRequest();
        return true;
    case TypeBoxId:
        if (code == CBN_SELCHANGE) {
            state.OnTypeChanged();
        }
        return true;
    case QueryBoxId:
        if (code == CBN_SELCHANGE || code == CBN_EDITCHANGE) {
            state.OnQueryChanged();
        }
        return true;
    default:
        return false;
    }
}

LRESULT SearchDialogWin32::HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        window = hwnd;
        CreateControls();
        return 0;
    case WM_COMMAND:
        if (OnCommand(LOWORD(wParam), HIWORD(wParam))) {
            return 0;
        }
        break;
    case WM_KEYDOWN:
        if (wParam == VK_ESCAPE) {
            state.OnCloseRequest();
            return 0;
        }
        break;
    case WM_CLOSE:
        state.OnCloseRequest();
        return 0;
    case WM_DESTROY:
        state.OnDestroy();
        window = typeBox = queryBox = queryEdit = previousButton = nextButton = closeButton = nullptr;
        return 0;
    default:
        break;
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

} // namespace tlm
