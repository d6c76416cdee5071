#pragma once

// Included by Windows code only.

#include "hexview/SystemLibraryWin32.h"

#include <windows.h>

#include <dwrite.h>

#include <memory>
#include <mutex>
#include <thread>

namespace tlm {

// Makes the shared DirectWrite factory on a thread of its own. The first use of a factory reads every
// installed font, which can take a good part of a second; done beside the window's creation, it no
// longer holds up the window's appearance.
class DirectWriteStart {
public:
    DirectWriteStart();
    DirectWriteStart(const DirectWriteStart&) = delete;
    DirectWriteStart& operator=(const DirectWriteStart&) = delete;
    ~DirectWriteStart();

    // The factory once it is ready, with a reference for the caller; null before, and for good when it
    // could not be made. Never waits.
    IDWriteFactory* TakeFactory();
    // Posts `message` to `window` once the factory is ready, or at once when it is already.
    void NotifyWhenReady(HWND window, UINT message);

private:
    void Run();

    std::unique_ptr<SystemLibrary> library; // made by the thread; outlives the factory made from it
    std::mutex mutex;
    IDWriteFactory* factory = nullptr;
    bool finished = false;
    HWND readyWindow = nullptr;
    UINT readyMessage = 0;
    std::thread thread;
};

} // namespace tlm
