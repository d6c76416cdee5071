#pragma once

#include "app/AppHost.h"
#include "settings/AppSettings.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tlm {

enum class SearchDirection : std::uint32_t { Previous = 1, Next = 2 };

// One request of the find dialog: the type box's index (0 hex, 1 text) and the query, untrimmed.
struct SearchDialogResult {
    std::uint32_t type = 0;
    std::u16string query;
};

inline constexpr std::uint32_t SearchTypeHex = 0;
inline constexpr std::uint32_t SearchTypeText = 1;

// What the dialog asks of its window's controls. Tests record and script these.
struct SearchDialogControls {
    std::function<std::u16string()> queryText;      // the query box's text
    std::function<std::uint32_t()> selectedType;    // the type box's index
    std::function<void(std::uint32_t type)> selectType;
    // Empties the query box's list, adds `items`, puts `text` back and selects all of it.
    std::function<void(const std::vector<std::u16string>& items, const std::u16string& text)> fillQueryBox;
    std::function<void(std::uint32_t limit)> limitQuery;
    std::function<void(bool enabled)> enableInputs; // type box, query box, Previous and Next
    std::function<void()> focusQuery;
    std::function<void()> destroyWindow;
    // A message box owned by the dialog.
    std::function<MessageBoxResult(const std::u16string& text, const std::u16string& caption, MessageBoxKind kind)>
        messageBox;
};

class SearchDialog;
using SearchDialogCallback = std::function<void(const SearchDialogResult&, SearchDirection, SearchDialog&)>;

// The find dialog's state and decisions: the history shown for the chosen type, the length limit,
// the request waiting to run, and the cancel of a running one. It stays open across requests; Esc
// and Close end a running request rather than the dialog.
class SearchDialog {
public:
    std::u16string title, typeLabel, queryLabel, closeLabel, previousLabel, nextLabel, hexLabel, textLabel;
    std::u16string initialQuery;
    std::vector<SearchHistoryEntry> history;
    std::uint32_t initialType = SearchTypeHex;
    std::u16string query;
    std::uint32_t type = SearchTypeHex;
    bool closed = false;
    bool searching = false;
    bool cancelRequested = false;
    std::uint32_t textLimit = 4096;
    std::uint32_t pendingDirection = 0; // 0 none, else a SearchDirection

    void SetControls(SearchDialogControls controls);
    const SearchDialogControls& Controls() const { return controls; }

    // The end of the window's creation: starts on the initial type and query with the history and
    // limit of that type, all selected, the query box focused.
    void OnCreate();
    void OnNext();
    void OnPrevious();
    // Close, the close box and Esc: cancel a running request, else close.
    void OnCloseRequest();
    void OnTypeChanged();
    void OnQueryChanged();
    void OnDestroy();

    // The loop's step after each message: runs the waiting request, if any, through `callback` with
    // the inputs disabled. True when a request ran.
    bool RunPendingRequest(const SearchDialogCallback& callback);

    // A new history after a request: kept and shown again in the query box.
    void ReplaceHistory(std::vector<SearchHistoryEntry> entries);

    // The history entries of the type shown, in list order.
    std::vector<std::u16string> VisibleHistory() const;
    std::uint32_t QueryLimit() const;

private:
    void ReadInputs();
    void FillQueryBox();
    void ApplyLimit();
    void Request(SearchDirection direction);

    SearchDialogControls controls;
};

} // namespace tlm
