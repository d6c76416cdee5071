#pragma once

#include "hexview/HexView.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tlm::test {

// Stands in for the window around a HexView and keeps what the view asked of it.
struct RecordingHost {
    ClientSize client{800, 600};
    std::uint32_t dpi = 96;
    std::uint32_t blinkTime = 530;

    int redraws = 0;
    int focusRequests = 0;
    int graphicsReleases = 0;
    bool captured = false;
    std::vector<AppMessage> posted;
    std::vector<AppMessage> sent;
    std::map<std::uint32_t, std::uint32_t> timers; // running timers by id, with their period
    int timerKills = 0;
    std::optional<ScrollBarSettings> bars;
    std::vector<std::u16string> clipboard;

    // `view` receives the capture-changed event from a release, as the platform delivers it.
    HexViewHost Host(HexView* view = nullptr)
    {
        HexViewHost host;
        host.requestRedraw = [this] { ++redraws; };
        host.postToParent = [this](AppMessage message) { posted.push_back(message); };
        host.sendToParent = [this](AppMessage message) { sent.push_back(message); };
        host.takeFocus = [this] { ++focusRequests; };
        host.captureMouse = [this] { captured = true; };
        host.releaseCapture = [this, view] {
            const bool had = captured;
            captured = false;
            if (had && view != nullptr) {
                view->OnCaptureChanged();
            }
        };
        host.setTimer = [this](std::uint32_t id, std::uint32_t period) { timers[id] = period; };
        host.killTimer = [this](std::uint32_t id) {
            ++timerKills;
            timers.erase(id);
        };
        host.setScrollBars = [this](const ScrollBarSettings& settings) { bars = settings; };
        host.copyToClipboard = [this](const std::u16string& text) { clipboard.push_back(text); };
        host.releaseGraphics = [this] { ++graphicsReleases; };
        host.clientSize = [this] { return client; };
        host.windowDpi = [this] { return dpi; };
        host.caretBlinkTime = [this] { return blinkTime; };
        return host;
    }

    void ClearLog()
    {
        redraws = 0;
        focusRequests = 0;
        graphicsReleases = 0;
        posted.clear();
        sent.clear();
        timerKills = 0;
        clipboard.clear();
    }

    int CountPosted(AppMessage message) const
    {
        int count = 0;
        for (AppMessage m : posted) {
            count += m == message ? 1 : 0;
        }
        return count;
    }
};

} // namespace tlm::test
