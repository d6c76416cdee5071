#include "hexview/ClipboardWin32.h"

namespace tlm {

void CopyTextToClipboard(HWND window, const std::u16string& text)
{
    if (!OpenClipboard(window)) {
        return;
    }
    EmptyClipboard();
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (block != nullptr) {
        if (void* memory = GlobalLock(block)) {
            auto* characters = static_cast<wchar_t*>(memory);
            for (std::size_t i = 0; i < text.size(); ++i) {
                characters[i] = static_cast<wchar_t>(text[i]);
            }
            characters[text.size()] = L'\0';
            GlobalUnlock(block);
            // On success the clipboard owns the block.
            if (SetClipboardData(CF_UNICODETEXT, block) != nullptr) {
                block = nullptr;
            }
        }
    }
    if (block != nullptr) {
        GlobalFree(block);
    }
    CloseClipboard();
}

} // namespace tlm
