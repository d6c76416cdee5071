#include "app/SaveFlow.h"

namespace tlm {

namespace {

void Call(const std::function<void()>& function)
{
    if (function) {
        function();
    }
}

} // namespace

void SaveFlow::ShowNow(AppHost& host)
{
    Call(host.refreshStatusBar);
    Call(host.updateStatusBarNow);
    Call(host.pumpMessages);
}

bool SaveFlow::Run(AppHost& host, bool fileOpen, const std::function<bool(const ProgressCallback&)>& save,
    const std::function<std::u16string()>& lastError, const SaveTexts& texts)
{
    if (!fileOpen) {
        return true;
    }
    busy = true;
    word = texts.saving;
    progress.Reset();
    progress.active = true;
    progress.text = word;
    Call(host.rebuildMenu);
    if (host.enableHexView) {
        host.enableHexView(false);
    }
    ShowNow(host);

    const bool saved = save([this, &host](std::uint64_t processed, std::uint64_t total) {
        ReportProgress(host, processed, total);
    });

    if (host.enableHexView) {
        host.enableHexView(true);
    }
    busy = false;
    word.clear();
    progress.Reset();
    Call(host.rebuildMenu);
    Call(host.updateTitle);
    Call(host.refreshStatusBar);
    if (saved) {
        return true;
    }
    std::u16string message = texts.failed;
    const std::u16string reason = lastError ? lastError() : std::u16string();
    if (!reason.empty()) {
        message += u"\r\n\r\n";
        message += reason;
    }
    if (host.messageBox) {
        host.messageBox(message, texts.caption, MessageBoxKind::Stop);
    }
    return false;
}

void SaveFlow::ReportProgress(AppHost& host, std::uint64_t processed, std::uint64_t total)
{
    const std::uint64_t now = host.tickCount ? host.tickCount() : 0;
    if (progress.Report(processed, total, now, word)) {
        ShowNow(host);
    }
}

} // namespace tlm
