#pragma once

// The find dialog's window, "Tolmo.SearchDialog": creates its controls, turns their notifications
// into SearchDialog calls and carries out what SearchDialog asks of them. Included by Windows code only.

#include "app/SearchDialog.h"

#include <windows.h>

namespace tlm {

class SearchDialogWin32 {
public:
    static constexpr wchar_t ClassName[] = L"Tolmo.SearchDialog";

    // Modal to `owner` until closed; each request runs `callback` from inside the dialog's loop.
    static void Run(HWND owner, HINSTANCE instance, SearchDialog& state, const SearchDialogCallback& callback);

private:
    explicit SearchDialogWin32(SearchDialog& state) : state(state) {}

    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    void CreateControls();
    SearchDialogControls MakeControls();
    void FillQueryBox(const std::vector<std::u16string>& items, const std::u16string& text);
    void EnableInputs(bool enabled);
    void FocusQuery();
    bool OnCommand(WORD id, WORD code);

    SearchDialog& state;
    HWND window = nullptr;
    HWND typeBox = nullptr;
    HWND queryBox = nullptr;
    HWND queryEdit = nullptr;
    HWND previousButton = nullptr;
    HWND nextButton = nullptr;
    HWND closeButton = nullptr;
};

} // namespace tlm
