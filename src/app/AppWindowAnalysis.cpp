#include "app/AppWindow.h"

#include "app/CallIfSet.h"
#include "inspector/InspectorRequest.h"

namespace tlm {

namespace {

// A window that cannot be made, or a platform without it, means there is nothing to feed.
bool Stands(const std::function<bool()>& ensureWindow)
{
    return ensureWindow && ensureWindow();
}

} // namespace

void AppWindow::SetInspectorVisible(bool visible)
{
    if (settings.dataInspectorVisible != visible) {
        settings.dataInspectorVisible = visible;
        SaveSettings();
    }
    if (visible) {
        if (Stands(platform.ensureInspectorWindow)) {
            CallIfSet(platform.relabelAnalysisWindows);
            CallIfSet(platform.placeAnalysisWindows);
        }
        RequestInspectorRefresh();
    } else {
        // Off means gone, not hidden: the window and its drawing resources go.
        CallIfSet(platform.destroyInspectorWindow);
    }
    RebuildMenu();
}

void AppWindow::SetStructViewVisible(bool visible)
{
    if (settings.structViewVisible != visible) {
        settings.structViewVisible = visible;
        SaveSettings();
    }
    if (visible) {
        if (Stands(platform.ensureStructViewWindow)) {
            CallIfSet(platform.relabelAnalysisWindows);
            CallIfSet(platform.setStructValueFormat, CurrentStructFormat());
            CallIfSet(platform.placeAnalysisWindows);
        }
        RefreshStructNow();
    } else {
        structWorker.CancelPending();
        CallIfSet(platform.destroyStructViewWindow);
    }
    RebuildMenu();
}

void AppWindow::RequestInspectorRefresh()
{
    if (!settings.dataInspectorVisible || !Stands(platform.ensureInspectorWindow)) {
        return;
    }
    // A small read on this thread; the decoding is the worker's.
    InspectorJob job;
    job.unavailableText = Tr("inspector.data.value.unavailable");
    job.request.offset = hexView.State().caretOffset;
    job.request.encoding = currentEncoding;
    if (document.IsOpen()) {
        job.request.bytes = document.Read(job.request.offset, InspectorSnapshotSize).bytes;
    }
    inspectorWorker.Submit(std::move(job));
}

void AppWindow::OnInspectorResult(std::intptr_t lParam)
{
    // The record is freed on every path, also when it is stale or the window went away meanwhile.
    inspectorWorker.ReceiveResult(lParam, settings.dataInspectorVisible, [this](std::vector<std::u16string> rows) {
        if (!Stands(platform.ensureInspectorWindow)) {
            return;
        }
        CallIfSet(platform.showInspectorValues, std::move(rows));
        CallIfSet(platform.placeAnalysisWindows);
    });
}

void AppWindow::OnInspectorClosed()
{
    SetInspectorVisible(false);
}

void AppWindow::OnStructViewClosed()
{
    SetStructViewVisible(false);
}

} // namespace tlm
