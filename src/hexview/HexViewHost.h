#pragma once

#include "app/AppMessage.h"
#include "hexview/HexViewLayout.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tlm {

// Everything the hex view asks of its window and the platform. The Windows window fills these with
// InvalidateRect, PostMessageW and so on; tests record them. An empty function does nothing and a
// query without one gives the stated default.
struct HexViewHost {
    std::function<void()> requestRedraw;
    std::function<void(AppMessage)> postToParent; // queued; the view goes on at once
    std::function<void(AppMessage)> sendToParent; // handled before it returns
    std::function<void()> takeFocus;
    std::function<void()> captureMouse;
    std::function<void()> releaseCapture; // may deliver the capture-changed event before it returns
    std::function<void(std::uint32_t timerId, std::uint32_t periodMilliseconds)> setTimer;
    std::function<void(std::uint32_t timerId)> killTimer;
    std::function<void(const ScrollBarSettings&)> setScrollBars; // range, page and position, redrawn
    std::function<void(const std::u16string&)> copyToClipboard;  // as CF_UNICODETEXT; failure is silent
    std::function<void()> releaseGraphics; // the render target and text format are stale
    std::function<ClientSize()> clientSize; // in pixels; 0 by 0 without it
    std::function<std::uint32_t()> windowDpi; // 0 or no function when there is no window yet
    std::function<std::uint32_t()> caretBlinkTime; // milliseconds; 530 without it
};

} // namespace tlm
