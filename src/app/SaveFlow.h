#pragma once

#include "app/AppHost.h"
#include "app/ProgressThrottle.h"
#include "document/ProgressCallback.h"

#include <functional>
#include <string>

namespace tlm {

// The texts a save shows, already localised.
struct SaveTexts {
    std::u16string saving;  // the progress word
    std::u16string failed;  // the failure message
    std::u16string caption; // the program's title
};

// A save run on the user-interface thread: while it runs the window is busy, the menu bar is greyed,
// the view takes no input, and the progress callback keeps the window alive by pumping messages.
class SaveFlow {
public:
    // Saves through `save`, which receives the progress function. True when no file is open or the
    // save succeeded; on failure shows the message, followed by `lastError()` when that isn't empty.
    bool Run(AppHost& host, bool fileOpen, const std::function<bool(const ProgressCallback&)>& save,
        const std::function<std::u16string()>& lastError, const SaveTexts& texts);

    // One progress report, throttled; shown reports repaint the status bar and pump messages.
    void ReportProgress(AppHost& host, std::uint64_t processed, std::uint64_t total);

    // True while a save runs: closing the window is refused then.
    bool Busy() const { return busy; }
    const ProgressThrottle& Progress() const { return progress; }

private:
    void ShowNow(AppHost& host);

    bool busy = false;
    std::u16string word;
    ProgressThrottle progress;
};

} // namespace tlm
