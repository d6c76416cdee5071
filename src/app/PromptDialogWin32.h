#pragma once

// The one-line prompt's window, "Tolmo.PromptDialog". Included by Windows code only.

#include "app/PromptDialog.h"

#include <windows.h>

#include <optional>
#include <string>

namespace tlm {

class PromptDialogWin32 {
public:
    static constexpr wchar_t ClassName[] = L"Tolmo.PromptDialog";

    // Modal to `owner`; the edit's text when the user chose OK, else nothing.
    static std::optional<std::u16string> Run(HWND owner, HINSTANCE instance, const std::u16string& title,
        const std::u16string& prompt, const std::u16string& text);

private:
    explicit PromptDialogWin32(PromptDialog& state) : state(state) {}

    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    void CreateControls();

    PromptDialog& state;
    HWND window = nullptr;
    HWND edit = nullptr;
};

} // namespace tlm
