#pragma once

// Included by Windows code only.

#include <windows.h>

#include <string>

namespace tlm {

// Replaces the clipboard's contents with `text` as Unicode text, on behalf of `window`. A block the
// clipboard did not take is freed; a clipboard that cannot be opened is left as it is.
void CopyTextToClipboard(HWND window, const std::u16string& text);

} // namespace tlm
