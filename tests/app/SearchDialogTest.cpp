#include "app/SearchDialog.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <string>
#include <vector>

namespace tlm {
namespace {

// The dialog over controls that are plain fields, with every call recorded.
class SearchDialogTest : public ::testing::Test {
protected:
    SearchDialogTest()
    {
        dialog.history = {{u"text", u"hello"}, {u"hex", u"4A 4B"}, {u"text", u"world"}, {u"hex", u"00"}};
        dialog.textLimit = 2048;
        SearchDialogControls controls;
        controls.queryText = [this] { return boxText; };
        controls.selectedType = [this] { return boxType; };
        controls.selectType = [this](std::uint32_t type) { boxType = type; };
        controls.fillQueryBox = [this](const std::vector<std::u16string>& items, const std::u16string& text) {
            boxItems = items;
            boxText = text;
            calls.push_back("fill");
        };
        controls.limitQuery = [this](std::uint32_t value) { limit = value; };
        controls.enableInputs = [this](bool enabled) {
            inputsEnabled = enabled;
            calls.push_back(enabled ? "enable" : "disable");
        };
        controls.focusQuery = [this] { calls.push_back("focus"); };
        controls.destroyWindow = [this] {
            calls.push_back("destroy");
            dialog.OnDestroy();
        };
        dialog.SetControls(std::move(controls));
    }

    SearchDialog dialog;
    std::u16string boxText;
    std::uint32_t boxType = 7;
    std::vector<std::u16string> boxItems;
    std::uint32_t limit = 0;
    bool inputsEnabled = true;
    std::vector<std::string> calls;
};

TEST_F(SearchDialogTest, ItStartsOnHexWithTheHexHistoryAndLimitAndFocusesTheQuery)
{
    dialog.initialQuery = u"start";
    dialog.OnCreate();
    EXPECT_EQ(boxType, SearchTypeHex);
    EXPECT_EQ(boxItems, (std::vector<std::u16string>{u"4A 4B", u"00"}));
    EXPECT_EQ(boxText, u"start");
    EXPECT_EQ(limit, 12287u);
    EXPECT_EQ(calls.back(), "focus");
}

TEST_F(SearchDialogTest, ChangingTheTypeSwapsTheHistoryAndTheLimitAndKeepsTheText)
{
    dialog.OnCreate();
    boxText = u"typed";
    boxType = SearchTypeText;
    dialog.OnTypeChanged();
    EXPECT_EQ(boxItems, (std::vector<std::u16string>{u"hello", u"world"}));
    EXPECT_EQ(limit, 2048u);
    EXPECT_EQ(boxText, u"typed");
    boxType = SearchTypeHex;
    dialog.OnTypeChanged();
    EXPECT_EQ(boxItems, (std::vector<std::u16string>{u"4A 4B", u"00"}));
    EXPECT_EQ(limit, 12287u);
}

TEST_F(SearchDialogTest, NextReadsTheInputsAndWaitsForTheLoop)
{
    dialog.OnCreate();
    boxText = u" 4A ";
    boxType = SearchTypeText;
    dialog.OnNext();
    EXPECT_EQ(dialog.pendingDirection, static_cast<std::uint32_t>(SearchDirection::Next));
    EXPECT_EQ(dialog.query, u" 4A ");
    EXPECT_EQ(dialog.type, SearchTypeText);
}

TEST_F(SearchDialogTest, TheLoopRunsTheRequestOnceWithTheInputsDisabled)
{
    dialog.OnCreate();
    boxText = u"41";
    dialog.OnPrevious();
    calls.clear();
    int runs = 0;
    const SearchDialogCallback callback = [&](const SearchDialogResult& request, SearchDirection direction,
                                              SearchDialog& running) {
        ++runs;
        EXPECT_EQ(request.query, u"41");
        EXPECT_EQ(request.type, SearchTypeHex);
        EXPECT_EQ(direction, SearchDirection::Previous);
        EXPECT_TRUE(running.searching);
        EXPECT_FALSE(inputsEnabled);
    };
    EXPECT_TRUE(dialog.RunPendingRequest(callback));
    EXPECT_FALSE(dialog.RunPendingRequest(callback));
    EXPECT_EQ(runs, 1);
    EXPECT_FALSE(dialog.searching);
    EXPECT_EQ(calls, (std::vector<std::string>{"disable", "enable", "focus"}));
}

TEST_F(SearchDialogTest, NextAndPreviousAreIgnoredWhileSearching)
{
    dialog.OnCreate();
    dialog.OnNext();
    dialog.RunPendingRequest([&](const SearchDialogResult&, SearchDirection, SearchDialog& running) {
        running.OnNext();
        running.OnPrevious();
    });
    EXPECT_EQ(dialog.pendingDirection, 0u);
}

TEST_F(SearchDialogTest, EscWhenIdleClosesTheDialog)
{
    dialog.OnCreate();
    dialog.OnCloseRequest();
    EXPECT_TRUE(dialog.closed);
    EXPECT_EQ(calls.back(), "destroy");
}

TEST_F(SearchDialogTest, EscWhileSearchingCancelsTheRequestWithoutClosing)
{
    dialog.OnCreate();
    dialog.OnNext();
    dialog.RunPendingRequest([&](const SearchDialogResult&, SearchDirection, SearchDialog& running) {
        running.OnCloseRequest();
        EXPECT_TRUE(running.cancelRequested);
    });
    EXPECT_FALSE(dialog.closed);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "destroy"), 0);
}

TEST_F(SearchDialogTest, ANewRequestClearsTheLastCancel)
{
    dialog.OnCreate();
    dialog.cancelRequested = true;
    dialog.OnNext();
    dialog.RunPendingRequest([](const SearchDialogResult&, SearchDirection, SearchDialog& running) {
        EXPECT_FALSE(running.cancelRequested);
    });
}

TEST_F(SearchDialogTest, ANewHistoryRefillsTheQueryBoxAndKeepsTheText)
{
    dialog.OnCreate();
    boxText = u"AB";
    dialog.ReplaceHistory({{u"hex", u"AB"}, {u"hex", u"4A 4B"}});
    EXPECT_EQ(boxItems, (std::vector<std::u16string>{u"AB", u"4A 4B"}));
    EXPECT_EQ(boxText, u"AB");
}

TEST_F(SearchDialogTest, TheQueryIsReadAsItChanges)
{
    dialog.OnCreate();
    boxText = u"new";
    dialog.OnQueryChanged();
    EXPECT_EQ(dialog.query, u"new");
}

} // namespace
} // namespace tlm
