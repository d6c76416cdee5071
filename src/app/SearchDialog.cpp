#include "app/SearchDialog.h"

#include "app/CallIfSet.h"
#include "app/QueryText.h"

#include <utility>

namespace tlm {

void SearchDialog::SetControls(SearchDialogControls newControls)
{
    controls = std::move(newControls);
}

void SearchDialog::OnCreate()
{
    type = initialType;
    query = initialQuery;
    CallIfSet(controls.selectType, type);
    CallIfSet(controls.fillQueryBox, VisibleHistory(), query);
    ApplyLimit();
    CallIfSet(controls.focusQuery);
}

void SearchDialog::ReadInputs()
{
    if (controls.queryText) {
        query = controls.queryText();
    }
    if (controls.selectedType) {
        type = controls.selectedType() == SearchTypeText ? SearchTypeText : SearchTypeHex;
    }
}

std::vector<std::u16string> SearchDialog::VisibleHistory() const
{
    const std::u16string_view wanted = type == SearchTypeText ? u"text" : u"hex";
    std::vector<std::u16string> items;
    for (const SearchHistoryEntry& entry : history) {
        if (entry.kind == wanted) {
            items.push_back(entry.query);
        }
    }
    return items;
}

std::uint32_t SearchDialog::QueryLimit() const
{
    return type == SearchTypeText ? textLimit : HexQueryLimit;
}

void SearchDialog::FillQueryBox()
{
    // The typed text survives the refill: the list changes, not what the user wrote.
    if (controls.queryText) {
        query = controls.queryText();
    }
    CallIfSet(controls.fillQueryBox, VisibleHistory(), query);
}

void SearchDialog::ApplyLimit()
{
    CallIfSet(controls.limitQuery, QueryLimit());
}

void SearchDialog::Request(SearchDirection direction)
{
    if (searching) {
        return;
    }
    ReadInputs();
    pendingDirection = static_cast<std::uint32_t>(direction);
}

void SearchDialog::OnNext()
{
    Request(SearchDirection::Next);
}

void SearchDialog::OnPrevious()
{
    Request(SearchDirection::Previous);
}

void SearchDialog::OnCloseRequest()
{
    if (searching) {
        cancelRequested = true;
        return;
    }
    closed = true;
    CallIfSet(controls.destroyWindow);
}

void SearchDialog::OnTypeChanged()
{
    if (controls.selectedType) {
        type = controls.selectedType() == SearchTypeText ? SearchTypeText : SearchTypeHex;
    }
    FillQueryBox();
    ApplyLimit();
}

void SearchDialog::OnQueryChanged()
{
    ReadInputs();
}

void SearchDialog::OnDestroy()
{
    closed = true;
}

bool SearchDialog::RunPendingRequest(const SearchDialogCallback& callback)
{
    if (pendingDirection == 0) {
        return false;
    }
    const auto direction = static_cast<SearchDirection>(std::exchange(pendingDirection, 0));
    searching = true;
    cancelRequested = false;
    CallIfSet(controls.enableInputs, false);
    if (callback) {
        callback(SearchDialogResult{type, query}, direction, *this);
    }
    searching = false;
    CallIfSet(controls.enableInputs, true);
    if (!closed) {
        CallIfSet(controls.focusQuery);
    }
    return true;
}

void SearchDialog::ReplaceHistory(std::vector<SearchHistoryEntry> entries)
{
    history = std::move(entries);
    FillQueryBox();
}

} // namespace tlm
