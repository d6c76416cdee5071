#include "AppWindowFixture.h"

#include "app/QueryText.h"
#include "hexview/HexView.h"

#include <gtest/gtest.h>

namespace tlm::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct Request {
    std::uint32_t type = SearchTypeHex;
    std::u16string query;
    SearchDirection direction = SearchDirection::Next;
};

// The find flow with the dialog played by a script: each request typed, pressed and run by the
// dialog's loop, then the dialog closed.
class AppWindowFindTest : public AppWindowFixture {
protected:
    void Find(std::vector<Request> requests, std::function<void(std::size_t index)> between = {})
    {
        searchScript = [this, requests, between](SearchDialog& dialog, const SearchDialogCallback& callback) {
            for (std::size_t index = 0; index < requests.size(); ++index) {
                dialogType = requests[index].type;
                dialogQuery = requests[index].query;
                dialog.OnTypeChanged();
                if (requests[index].direction == SearchDirection::Next) {
                    dialog.OnNext();
                } else {
                    dialog.OnPrevious();
                }
                dialog.RunPendingRequest(callback);
                if (between) {
                    between(index);
                }
            }
            dialog.OnCloseRequest();
        };
        ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewFind)));
    }

    void FindHex(std::u16string query, SearchDirection direction = SearchDirection::Next)
    {
        Find({Request{SearchTypeHex, std::move(query), direction}});
    }

    void FindText(std::u16string query, SearchDirection direction = SearchDirection::Next)
    {
        Find({Request{SearchTypeText, std::move(query), direction}});
    }

    std::optional<ByteRange> Selected() const { return app.View().Selection(); }
    std::uint64_t Caret() const { return app.View().State().caretOffset; }

    void OpenBytes(const Bytes& bytes)
    {
        ASSERT_TRUE(Start());
        OpenFile(WriteFile("find.bin", bytes));
        ClearRecords();
    }

    void ExpectDialogBox(std::string_view key, MessageBoxKind kind)
    {
        ASSERT_EQ(dialogBoxes.size(), 1u);
        EXPECT_EQ(dialogBoxes[0].text, Tr(key));
        EXPECT_EQ(dialogBoxes[0].caption, Tr("dialog.search.title"));
        EXPECT_EQ(dialogBoxes[0].kind, kind);
        EXPECT_TRUE(boxes.empty());
    }
};

TEST_F(AppWindowFindTest, TheDialogOpensWithTheLabelsTheHistoryAndTheLimitOfTheEncoding)
{
    AppSettings stored;
    stored.encoding = TextEncoding::ShiftJis;
    stored.searchHistory = {{u"hex", u"4A"}, {u"text", u"abc"}};
    ASSERT_TRUE(StartWith(stored));
    OpenFile(WriteFile("find.bin", {1, 2, 3}));
    searchScript = {};
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewFind)));
    ASSERT_EQ(openedSearchDialogs.size(), 1u);
    const SearchDialog& dialog = openedSearchDialogs[0];
    EXPECT_EQ(dialog.title, Tr("dialog.search.title"));
    EXPECT_EQ(dialog.typeLabel, Tr("dialog.search.type"));
    EXPECT_EQ(dialog.queryLabel, Tr("dialog.search.query"));
    EXPECT_EQ(dialog.closeLabel, Tr("dialog.common.close"));
    EXPECT_EQ(dialog.previousLabel, Tr("dialog.search.previous"));
    EXPECT_EQ(dialog.nextLabel, Tr("dialog.search.next"));
    EXPECT_EQ(dialog.hexLabel, Tr("dialog.search.type.hex"));
    EXPECT_EQ(dialog.textLabel, Tr("dialog.search.type.text"));
    EXPECT_EQ(dialog.initialQuery, u"");
    EXPECT_EQ(dialog.history, stored.searchHistory);
    EXPECT_EQ(dialog.textLimit, 2048u);
    EXPECT_EQ(dialogItems, (std::vector<std::u16string>{u"4A"}));
    EXPECT_EQ(dialogLimit, HexQueryLimit);
}

TEST_F(AppWindowFindTest, TheViewGetsTheFocusWhenTheDialogEnds)
{
    OpenBytes({1, 2, 3});
    FindHex(u"02");
    EXPECT_EQ(calls.back(), "focusHexView");
}

TEST_F(AppWindowFindTest, AHexQueryWithMixedCaseFindsItsTwoBytes)
{
    OpenBytes({0x00, 0x4A, 0x4B, 0x4A});
    FindHex(u"4A 4b");
    ASSERT_TRUE(Selected());
    EXPECT_EQ(Selected()->first, 1u);
    EXPECT_EQ(Selected()->last, 2u);
    EXPECT_EQ(Caret(), 1u);
    EXPECT_TRUE(dialogBoxes.empty());
}

TEST_F(AppWindowFindTest, AHexQueryWithAnUnpairedDigitIsRefusedAsInvalid)
{
    OpenBytes({0x4A, 0x40});
    FindHex(u"4A 4");
    ExpectDialogBox("error.search_invalid_hex", MessageBoxKind::Stop);
    EXPECT_FALSE(Selected());
    EXPECT_EQ(Caret(), 0u);
    EXPECT_TRUE(app.Settings().searchHistory.empty());
}

TEST_F(AppWindowFindTest, AHexQueryOfBlanksOnlyIsInvalid)
{
    OpenBytes({0x20});
    FindHex(u" \t \r\n");
    ExpectDialogBox("error.search_invalid_hex", MessageBoxKind::Stop);
}

TEST_F(AppWindowFindTest, AHexQueryOfFullWidthDigitsIsInvalid)
{
    OpenBytes({0x4A});
    FindHex(u"\uFF14\uFF21");
    ExpectDialogBox("error.search_invalid_hex", MessageBoxKind::Stop);
}

TEST_F(AppWindowFindTest, ATextQueryOfBlanksOnlyCannotBeConverted)
{
    // Trimmed it is empty, and an empty text has no bytes in any encoding.
    OpenBytes({0x20});
    FindText(u"  \t ");
    ExpectDialogBox("error.search_invalid_text", MessageBoxKind::Stop);
}

TEST_F(AppWindowFindTest, TextWithNoFormInTheEncodingIsRefused)
{
    OpenBytes({0x41});
    FindText(u"\u65E5"); // no form in ASCII
    ExpectDialogBox("error.search_invalid_text", MessageBoxKind::Stop);
    EXPECT_EQ(Caret(), 0u);
}

TEST_F(AppWindowFindTest, PastedTextWithALoneSurrogateIsRefused)
{
    OpenBytes({0x41});
    FindText(std::u16string(u"A") + char16_t(0xD800));
    ExpectDialogBox("error.search_invalid_text", MessageBoxKind::Stop);
}

TEST_F(AppWindowFindTest, MoreThan4096BytesAreTooLong)
{
    OpenBytes({0x41});
    std::u16string query;
    for (int index = 0; index < 4097; ++index) {
        query += u"41";
    }
    FindHex(query);
    ExpectDialogBox("error.search_too_long", MessageBoxKind::Stop);
    EXPECT_TRUE(app.Settings().searchHistory.empty());
}

TEST_F(AppWindowFindTest, ExactlyFour096BytesAreSearched)
{
    OpenBytes(Bytes(5000, 0x41));
    FindText(std::u16string(4096, u'A'));
    EXPECT_TRUE(dialogBoxes.empty());
    ASSERT_TRUE(Selected());
    EXPECT_EQ(Selected()->last, 4095u);
}

TEST_F(AppWindowFindTest, ATextQueryIsEncodedInTheCurrentEncoding)
{
    AppSettings stored;
    stored.encoding = TextEncoding::ShiftJis;
    ASSERT_TRUE(StartWith(stored));
    // "日本" in Shift_JIS is 93 FA 96 7B.
    OpenFile(WriteFile("sjis.bin", {0x41, 0x93, 0xFA, 0x96, 0x7B, 0x42}));
    FindText(u"\u65E5\u672C");
    ASSERT_TRUE(Selected());
    EXPECT_EQ(Selected()->first, 1u);
    EXPECT_EQ(Selected()->last, 4u);
}

TEST_F(AppWindowFindTest, TheCallbackKeepsTheEncodingTheDialogOpenedWith)
{
    AppSettings stored;
    stored.encoding = TextEncoding::ShiftJis;
    ASSERT_TRUE(StartWith(stored));
    OpenFile(WriteFile("sjis.bin", {0x93, 0xFA, 0x00, 0x93, 0xFA}));
    Find({Request{SearchTypeText, u"\u65E5"}, Request{SearchTypeText, u"\u65E5"}}, [this](std::size_t index) {
        if (index == 0) {
            // Were the encoding to change under the dialog, the next request would not follow.
            app.ExecuteCommand(ToNumber(CommandId::ViewEncodingUtf8));
        }
    });
    EXPECT_TRUE(dialogBoxes.empty());
    ASSERT_TRUE(Selected());
    EXPECT_EQ(Selected()->first, 3u);
}

TEST_F(AppWindowFindTest, NextFromASelectionAtTheLastByteIsNotFoundWithoutAScan)
{
    OpenBytes({0x41, 0x42, 0x43});
    app.View().SelectRange(2, 2);
    app.View().MoveCaretTo(2);
    app.View().SelectRange(2, 2);
    ClearRecords();
    const std::size_t statusesBefore = statusTexts.size();
    FindHex(u"43");
    ExpectDialogBox("error.search_not_found", MessageBoxKind::Information);
    EXPECT_EQ(pumps, 0);
    EXPECT_EQ(statusTexts.size(), statusesBefore);
    ASSERT_TRUE(Selected());
    EXPECT_EQ(Selected()->first, 2u);
}

TEST_F(AppWindowFindTest, PreviousFromASelectionAtZeroIsNotFoundWithoutAScan)
{
    OpenBytes({0x41, 0x42, 0x43});
    app.View().SelectRange(0, 1);
    const std::size_t statusesBefore = statusTexts.size();
    FindHex(u"41", SearchDirection::Previous);
    ExpectDialogBox("error.search_not_found", MessageBoxKind::Information);
    EXPECT_EQ(pumps, 0);
    EXPECT_EQ(statusTexts.size(), statusesBefore);
    EXPECT_EQ(Caret(), 0u);
}

TEST_F(AppWindowFindTest, NoHitShowsNotFoundAndLeavesCaretAndSelection)
{
    OpenBytes({0x41, 0x42, 0x43});
    app.View().MoveCaretTo(1);
    FindHex(u"99");
    ExpectDialogBox("error.search_not_found", MessageBoxKind::Information);
    EXPECT_EQ(Caret(), 1u);
    EXPECT_FALSE(Selected());
}

TEST_F(AppWindowFindTest, TheSearchDoesNotWrapAround)
{
    OpenBytes({0x41, 0x42, 0x43});
    app.View().MoveCaretTo(1);
    FindHex(u"41");
    ExpectDialogBox("error.search_not_found", MessageBoxKind::Information);
}

TEST_F(AppWindowFindTest, NextStepsThroughOverlappingHits)
{
    OpenBytes({0x00, 0xAA, 0xAA, 0xAA, 0x00});
    std::vector<std::uint64_t> hits;
    Find({Request{SearchTypeHex, u"AA AA"}, Request{SearchTypeHex, u"AA AA"}, Request{SearchTypeHex, u"AA AA"}},
        [&](std::size_t) { hits.push_back(Selected() ? Selected()->first : 99); });
    EXPECT_EQ(hits, (std::vector<std::uint64_t>{1, 2, 2}));
    ExpectDialogBox("error.search_not_found", MessageBoxKind::Information);
}

TEST_F(AppWindowFindTest, PreviousSearchesBackFromOneBeforeTheHit)
{
    OpenBytes({0xAA, 0xAA, 0x00, 0xAA, 0xAA});
    app.View().MoveCaretTo(4);
    std::vector<std::uint64_t> hits;
    Find({Request{SearchTypeHex, u"AA", SearchDirection::Previous},
             Request{SearchTypeHex, u"AA", SearchDirection::Previous},
             Request{SearchTypeHex, u"AA", SearchDirection::Previous}},
        [&](std::size_t) { hits.push_back(Selected() ? Selected()->first : 99); });
    EXPECT_EQ(hits, (std::vector<std::uint64_t>{4, 3, 1}));
}

TEST_F(AppWindowFindTest, AHitIsShownSelectedWithTheCaretOnItAndTheParentTold)
{
    OpenBytes(Bytes(4096, 0));
    WriteFileBytes(folder.File("find.bin"), Bytes(4096, 0));
    viewPosts.clear();
    app.View().MoveCaretTo(0);
    viewPosts.clear();
    FindHex(u"00 00 00");
    ASSERT_TRUE(Selected());
    EXPECT_EQ(Selected()->first, 0u);
    EXPECT_EQ(Selected()->last, 2u);
    EXPECT_FALSE(viewPosts.empty());
    EXPECT_EQ(viewPosts.back(), AppMessage::ViewChanged);
}

TEST_F(AppWindowFindTest, TheSameQueryTwiceKeepsOneHistoryEntry)
{
    OpenBytes({0x41, 0x42});
    Find({Request{SearchTypeHex, u"41"}, Request{SearchTypeHex, u"42"}, Request{SearchTypeHex, u" 41 "}});
    const std::vector<SearchHistoryEntry> expected{{u"hex", u"41"}, {u"hex", u"42"}};
    EXPECT_EQ(app.Settings().searchHistory, expected);
    EXPECT_EQ(StoredSettings().searchHistory, expected);
}

TEST_F(AppWindowFindTest, TheSameTextAsHexAndAsTextAreTwoEntries)
{
    OpenBytes({0x41, 0x42});
    Find({Request{SearchTypeHex, u"41"}, Request{SearchTypeText, u"41"}});
    const std::vector<SearchHistoryEntry> expected{{u"text", u"41"}, {u"hex", u"41"}};
    EXPECT_EQ(StoredSettings().searchHistory, expected);
}

TEST_F(AppWindowFindTest, AQueryThatFindsNothingIsStillRemembered)
{
    OpenBytes({0x41, 0x42});
    FindHex(u"99");
    EXPECT_EQ(StoredSettings().searchHistory, (std::vector<SearchHistoryEntry>{{u"hex", u"99"}}));
}

TEST_F(AppWindowFindTest, TheQueryBoxIsRefilledWithTheNewHistory)
{
    OpenBytes({0x41, 0x42});
    Find({Request{SearchTypeHex, u"41"}, Request{SearchTypeHex, u"42"}});
    EXPECT_EQ(dialogItems, (std::vector<std::u16string>{u"42", u"41"}));
}

TEST_F(AppWindowFindTest, TheHistoryKeepsSixteenEntries)
{
    OpenBytes({0x41});
    std::vector<Request> requests;
    for (int index = 0; index < 20; ++index) {
        requests.push_back(Request{SearchTypeHex, FormatGoToOffset(0x10 + index)});
    }
    Find(requests);
    ASSERT_EQ(StoredSettings().searchHistory.size(), 16u);
    EXPECT_EQ(StoredSettings().searchHistory.front().query, u"23");
}

TEST_F(AppWindowFindTest, TheStatusBarSaysSearchingWhileTheSearchRunsAndTheFileAfter)
{
    ASSERT_TRUE(Start());
    const std::u16string path = folder.File("big.bin");
    ASSERT_TRUE(WriteSparseFile(path, 8u * 1048576u));
    OpenFile(path);
    const std::u16string before = app.StatusText();
    std::vector<std::u16string> duringPump;
    onPump = [&] { duringPump.push_back(LastStatus()); };
    FindHex(u"01");
    ASSERT_FALSE(duringPump.empty());
    EXPECT_EQ(duringPump.front().rfind(Tr("status.searching"), 0), 0u);
    EXPECT_EQ(LastStatus(), before);
    ExpectDialogBox("error.search_not_found", MessageBoxKind::Information);
}

TEST_F(AppWindowFindTest, EscDuringTheSearchCancelsSilentlyAndTheDialogStays)
{
    ASSERT_TRUE(Start());
    const std::u16string path = folder.File("big.bin");
    ASSERT_TRUE(WriteSparseFile(path, 64u * 1048576u));
    OpenFile(path);
    const std::u16string before = app.StatusText();
    int asked = 0;
    escapeDown = [&] { return ++asked == 3; };
    bool closedAfterRequest = true;
    Find({Request{SearchTypeHex, u"01"}}, [&](std::size_t) { closedAfterRequest = openedSearchDialogs.empty(); });
    EXPECT_EQ(asked, 3);
    EXPECT_FALSE(closedAfterRequest);
    EXPECT_TRUE(dialogBoxes.empty());
    EXPECT_TRUE(boxes.empty());
    EXPECT_EQ(LastStatus(), before);
    EXPECT_FALSE(Selected());
    EXPECT_EQ(Caret(), 0u);
}

TEST_F(AppWindowFindTest, CloseDuringTheSearchCancelsItWithoutClosingTheDialog)
{
    ASSERT_TRUE(Start());
    const std::u16string path = folder.File("big.bin");
    ASSERT_TRUE(WriteSparseFile(path, 64u * 1048576u));
    OpenFile(path);
    SearchDialog* running = nullptr;
    bool closedDuring = true;
    int pumpsAtCancel = 0;
    searchScript = [&](SearchDialog& dialog, const SearchDialogCallback& callback) {
        running = &dialog;
        dialogQuery = u"01";
        dialog.OnNext();
        dialog.RunPendingRequest(callback);
        closedDuring = dialog.closed;
    };
    onPump = [&] {
        if (running && pumps == 2) {
            running->OnCloseRequest(); // the Close button pressed during the pump
            pumpsAtCancel = pumps;
        }
    };
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewFind)));
    EXPECT_FALSE(closedDuring);
    EXPECT_EQ(pumpsAtCancel, 2);
    EXPECT_LE(pumps, 4); // stopped at once, not after the 64 blocks
    EXPECT_TRUE(dialogBoxes.empty());
}

TEST_F(AppWindowFindTest, FindWithoutAFileOpensNoDialog)
{
    ASSERT_TRUE(Start());
    ClearRecords();
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewFind)));
    EXPECT_FALSE(Called("runSearchDialog"));
}

TEST_F(AppWindowFindTest, GoToOffersTheCaretInUpperCaseHex)
{
    OpenBytes(Bytes(0x200, 0));
    app.View().MoveCaretTo(0x1AB);
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewGoTo)));
    ASSERT_EQ(prompts.size(), 1u);
    EXPECT_EQ(prompts[0].title, Tr("dialog.goto.title"));
    EXPECT_EQ(prompts[0].prompt, Tr("dialog.goto.prompt"));
    EXPECT_EQ(prompts[0].text, u"1AB");
}

TEST_F(AppWindowFindTest, GoToWithPrefixAndBlanksMovesTheCaretTo31)
{
    OpenBytes(Bytes(64, 0));
    promptAnswers.push_back(u" 0X1f ");
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewGoTo)));
    EXPECT_EQ(Caret(), 31u);
    EXPECT_TRUE(Called("focusHexView"));
    EXPECT_TRUE(boxes.empty());
}

TEST_F(AppWindowFindTest, GoToPastTheEndIsClamped)
{
    OpenBytes(Bytes(64, 0));
    promptAnswers.push_back(u"FFFFFFFF");
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewGoTo)));
    EXPECT_EQ(Caret(), 63u);
}

TEST_F(AppWindowFindTest, GoToWithALetterBeyondHexShowsTheError)
{
    OpenBytes(Bytes(64, 0));
    app.View().MoveCaretTo(5);
    promptAnswers.push_back(u"g");
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewGoTo)));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.goto_invalid"));
    EXPECT_EQ(boxes[0].caption, Tr("dialog.goto.title"));
    EXPECT_EQ(boxes[0].kind, MessageBoxKind::Stop);
    EXPECT_EQ(Caret(), 5u);
    EXPECT_EQ(prompts.size(), 1u); // not reopened
}

TEST_F(AppWindowFindTest, GoToWith17DigitsShowsTheError)
{
    OpenBytes(Bytes(64, 0));
    promptAnswers.push_back(u"10000000000000000");
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewGoTo)));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Tr("error.goto_invalid"));
    EXPECT_EQ(Caret(), 0u);
}

TEST_F(AppWindowFindTest, GoToCancelledDoesNothing)
{
    OpenBytes(Bytes(64, 0));
    app.View().MoveCaretTo(5);
    ClearRecords();
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewGoTo)));
    EXPECT_EQ(Caret(), 5u);
    EXPECT_TRUE(boxes.empty());
    EXPECT_FALSE(Called("focusHexView"));
}

TEST_F(AppWindowFindTest, GoToWithoutAFileOpensNoPrompt)
{
    ASSERT_TRUE(Start());
    ASSERT_TRUE(app.ExecuteCommand(ToNumber(CommandId::ViewGoTo)));
    EXPECT_TRUE(prompts.empty());
}

} // namespace
} // namespace tlm::test
