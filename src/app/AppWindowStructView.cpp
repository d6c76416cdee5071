#include "app/AppWindow.h"

#include "app/CallIfSet.h"
#include "app/PatternsFolder.h"
#include "structview/StructInfoText.h"
#include "structview/StructPatternLoader.h"
#include "structview/StructSnapshotSize.h"

#include <algorithm>

namespace tlm {

namespace {

std::u16string FileNameOf(const std::u16string& path)
{
    const std::size_t separator = path.find_last_of(u"\\/");
    return separator == std::u16string::npos ? path : path.substr(separator + 1);
}

bool Stands(const std::function<bool()>& ensureWindow)
{
    return ensureWindow && ensureWindow();
}

} // namespace

StructValueFormat AppWindow::CurrentStructFormat() const
{
    return StructValueFormat{byteArrayFormat, endianFormat, numericBaseFormat};
}

void AppWindow::OpenStructPattern()
{
    if (!platform.chooseStructPattern) {
        return;
    }
    const std::optional<std::u16string> executable =
        platform.executableFolder ? platform.executableFolder() : std::nullopt;
    const std::u16string folder = FindPatternsFolder(executable, platform.folderExists).value_or(u"");
    const std::optional<std::u16string> chosen =
        platform.chooseStructPattern(Tr("dialog.struct_definition.title"), folder);
    if (chosen && !chosen->empty()) {
        LoadStructPattern(*chosen);
    }
}

bool AppWindow::LoadStructPattern(const std::u16string& path)
{
    // The path is kept either way, so that a reload after the file is mended can succeed.
    structPatternPath = path;
    StructPatternFile loaded;
    std::u16string error;
    if (!LoadStructPatternFile(path, loaded, error)) {
        structWorker.CancelPending();
        structPattern.reset();
        structPatternName.clear();
        structLoadError = error;
        ShowStructFailure();
        return false;
    }
    structPattern = std::make_shared<const StructPatternFile>(std::move(loaded));
    structPatternName = FileNameOf(path);
    structLoadError.reset();
    RefreshStructNow();
    return true;
}

void AppWindow::ReloadStructPattern()
{
    if (structPatternPath.empty()) {
        return;
    }
    const bool heldActivation = platform.structViewHasActivation && platform.structViewHasActivation();
    LoadStructPattern(std::u16string(structPatternPath));
    if (heldActivation) {
        CallIfSet(platform.restoreStructViewActivation);
    }
}

void AppWindow::ClearStructPattern()
{
    structWorker.CancelPending();
    structPattern.reset();
    structPatternPath.clear();
    structPatternName.clear();
    structLoadError.reset();
    CallIfSet(platform.showStructMessage, Tr("structview.empty.message"));
}

void AppWindow::ApplyStructValueFormat(std::uintptr_t choice)
{
    if (choice < 1 || choice > 6) {
        return;
    }
    const std::uint32_t value = (choice - 1) % 2;
    std::uint32_t* field = choice <= 2 ? &byteArrayFormat : choice <= 4 ? &endianFormat : &numericBaseFormat;
    if (*field == value) {
        return;
    }
    *field = value;
    settings.byteArrayFormat = static_cast<ByteArrayFormat>(byteArrayFormat);
    settings.endian = static_cast<StructEndian>(endianFormat);
    settings.numericBase = static_cast<NumericBase>(numericBaseFormat);
    SaveSettings();
    CallIfSet(platform.setStructValueFormat, CurrentStructFormat());
    RefreshStructNow();
    RequestStructRefresh();
}

bool AppWindow::ShowStructFailure()
{
    if (structPattern) {
        return false;
    }
    if (structLoadError) {
        CallIfSet(platform.showStructError, *structLoadError);
    } else {
        CallIfSet(platform.showStructMessage, Tr("structview.empty.message"));
    }
    return true;
}

StructEvalRequest AppWindow::StructSnapshot()
{
    StructEvalRequest request;
    request.baseOffset = hexView.State().caretOffset;
    request.patternFile = structPattern;
    request.unavailableText = Tr("inspector.data.value.unavailable");
    request.valueFormat = CurrentStructFormat();
    if (structPattern && document.IsOpen()) {
        request.bytes = document.Read(request.baseOffset, StructSnapshotSize(*structPattern)).bytes;
    }
    return request;
}

void AppWindow::RefreshStructNow()
{
    if (!settings.structViewVisible || !Stands(platform.ensureStructViewWindow) || ShowStructFailure()) {
        return;
    }
    if (!document.IsOpen()) {
        CallIfSet(platform.showStructRows, structPatternName, std::vector<StructRow>{},
            BuildStructInfoText(*structPattern));
        return;
    }
    StructEvalRequest request = StructSnapshot();
    std::vector<StructRow> rows = BuildStructRows(request);
    // The same request goes to the worker as well: it makes whatever the worker is still computing for an
    // older one stale, and its own answer repeats these rows.
    structWorker.Submit(std::move(request));
    CallIfSet(platform.showStructRows, structPatternName, std::move(rows), BuildStructInfoText(*structPattern));
}

void AppWindow::RequestStructRefresh()
{
    if (!settings.structViewVisible || !Stands(platform.ensureStructViewWindow)) {
        return;
    }
    // Without a loaded definition there is nothing to lay out at the caret.
    if (ShowStructFailure()) {
        structWorker.CancelPending();
        return;
    }
    if (!document.IsOpen()) {
        RefreshStructNow();
        return;
    }
    structWorker.Submit(StructSnapshot());
}

void AppWindow::OnStructResult(std::intptr_t lParam)
{
    structWorker.ReceiveResult(lParam, settings.structViewVisible && structPattern != nullptr,
        [this](std::vector<StructRow> rows) {
            if (!Stands(platform.ensureStructViewWindow)) {
                return;
            }
            CallIfSet(platform.showStructRows, structPatternName, std::move(rows), BuildStructInfoText(*structPattern));
        });
}

} // namespace tlm
