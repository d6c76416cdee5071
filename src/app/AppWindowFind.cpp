#include "app/AppWindow.h"

#include "app/CallIfSet.h"
#include "app/QueryText.h"
#include "app/SearchStart.h"
#include "document/ByteSearch.h"
#include "encoding/SearchTextEncoder.h"

namespace tlm {

void AppWindow::FindNext()
{
    if (!document.IsOpen() || !platform.runSearchDialog) {
        return;
    }
    SearchDialog dialog;
    dialog.title = Tr("dialog.search.title");
    dialog.typeLabel = Tr("dialog.search.type");
    dialog.queryLabel = Tr("dialog.search.query");
    dialog.closeLabel = Tr("dialog.common.close");
    dialog.previousLabel = Tr("dialog.search.previous");
    dialog.nextLabel = Tr("dialog.search.next");
    dialog.hexLabel = Tr("dialog.search.type.hex");
    dialog.textLabel = Tr("dialog.search.type.text");
    dialog.history = settings.searchHistory;
    // The main window is disabled while the dialog runs, so the encoding cannot change under it; the
    // callback keeps the one it started with all the same.
    const TextEncoding encoding = currentEncoding;
    dialog.textLimit = TextQueryLimit(encoding);
    platform.runSearchDialog(dialog,
        [this, encoding](const SearchDialogResult& request, SearchDirection direction, SearchDialog& running) {
            RunSearchRequest(request, direction, running, encoding);
        });
    CallIfSet(platform.focusHexView);
}

void AppWindow::RunSearchRequest(const SearchDialogResult& request, SearchDirection direction, SearchDialog& dialog,
    TextEncoding encoding)
{
    const std::u16string caption = Tr("dialog.search.title");
    const auto show = [&](std::string_view key, MessageBoxKind kind) {
        CallIfSet(dialog.Controls().messageBox, Tr(key), caption, kind);
    };

    const std::u16string_view query = TrimQuery(request.query);
    const bool isText = request.type == SearchTypeText;
    const std::optional<std::vector<std::uint8_t>> pattern =
        isText ? EncodeSearchText(query, encoding) : ParseHexQuery(query);
    if (!pattern) {
        show(isText ? "error.search_invalid_text" : "error.search_invalid_hex", MessageBoxKind::Stop);
        return;
    }
    if (pattern->empty() || pattern->size() > MaxSearchPatternBytes) {
        show("error.search_too_long", MessageBoxKind::Stop);
        return;
    }
    if (AddSearchHistory(settings, isText ? u"text" : u"hex", query)) {
        SaveSettings();
    }
    dialog.ReplaceHistory(settings.searchHistory);

    const std::optional<ByteRange> selection = hexView.Selection();
    const std::optional<std::uint64_t> start = SearchStart(direction, hexView.State().caretOffset,
        selection ? std::optional<std::uint64_t>(selection->first) : std::nullopt, document.GetSize());
    if (!start) {
        // No room to move from the selection: nothing is scanned and the status stays.
        show("error.search_not_found", MessageBoxKind::Information);
        return;
    }

    searchProgress.Reset();
    searchProgress.active = true;
    searchProgress.text = Tr("status.searching");
    RefreshStatusBar();

    const ProgressCallback progress = [this](std::uint64_t processed, std::uint64_t total) {
        ReportSearchProgress(processed, total);
    };
    const KeepGoingCallback keepGoing = [this, &dialog] {
        if (platform.escapeKeyDown && platform.escapeKeyDown()) {
            dialog.cancelRequested = true;
        }
        CallIfSet(platform.pumpMessages);
        return !dialog.cancelRequested;
    };
    const SearchResult result = direction == SearchDirection::Next
        ? SearchForward(&document, *pattern, *start, keepGoing, progress)
        : SearchBackward(&document, *pattern, *start, keepGoing, progress);

    EndSearchProgress();

    if (result.status == SearchStatus::Cancelled) {
        return;
    }
    if (result.status != SearchStatus::Found || !result.hasOffset) {
        show("error.search_not_found", MessageBoxKind::Information);
        return;
    }
    hexView.ShowFoundRange(result.offset, pattern->size());
    RefreshStatusBar();
}

void AppWindow::GoTo()
{
    if (!document.IsOpen() || !platform.runPrompt) {
        return;
    }
    const std::u16string title = Tr("dialog.goto.title");
    const std::optional<std::u16string> text =
        platform.runPrompt(title, Tr("dialog.goto.prompt"), FormatGoToOffset(hexView.State().caretOffset));
    if (!text) {
        return;
    }
    const std::optional<std::uint64_t> offset = ParseGoToOffset(*text);
    if (!offset) {
        CallIfSet(platform.messageBox, Tr("error.goto_invalid"), title, MessageBoxKind::Stop);
        return;
    }
    hexView.MoveCaretTo(*offset);
    CallIfSet(platform.focusHexView);
    RefreshStatusBar();
}

} // namespace tlm
