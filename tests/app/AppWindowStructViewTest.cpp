// The struct view seen from the main window: opening, reloading and closing a pattern, the value
// format, the rows at the caret at once and through the worker, and patterns and files that are broken.
#include "AppWindowFixture.h"

#include "hexview/VirtualKey.h"
#include "structview/StructInfoText.h"
#include "structview/StructPatternLoader.h"
#include "structview/StructRows.h"

#include <filesystem>

namespace tlm::test {
namespace {

// A PNG signature followed by an IHDR chunk of a 300 by 200 RGBA image.
std::vector<std::uint8_t> PngHeaderBytes()
{
    return {0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 'I', 'H', 'D', 'R', 0x00, 0x00,
        0x01, 0x2C, 0x00, 0x00, 0x00, 0xC8, 0x08, 0x06, 0x00, 0x00, 0x00, 0x12, 0x34, 0x56, 0x78, 0xAA, 0xBB};
}

std::u16string RepositoryPattern(std::string_view name)
{
    return (std::filesystem::path(RepositoryRoot()) / "patterns" / name).u16string();
}

const StructRow* FindRow(const std::vector<StructRow>& rows, std::u16string_view name)
{
    for (const StructRow& row : rows) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}

class AppWindowStructViewTest : public AppWindowFixture {
protected:
    void SetUp() override
    {
        AppSettings stored;
        stored.structViewVisible = true;
        ASSERT_TRUE(StartWith(stored));
    }

    // Opens a pattern through the window's open button and the dialog's answer.
    void OpenPattern(const std::u16string& path)
    {
        chosenPattern = path;
        EXPECT_TRUE(app.OnAppMessage(AppMessage::StructOpenPattern, 0, 0));
    }

    std::u16string WritePattern(std::string_view name, std::string_view text)
    {
        const std::u16string path = folder.File(name);
        WriteFileText(path, text);
        return path;
    }

    // The rows computed here from the file's own bytes at an offset, for comparing with what is shown.
    std::vector<StructRow> Expected(const std::u16string& patternPath, const std::vector<std::uint8_t>& file,
        std::uint64_t offset, StructValueFormat format = {})
    {
        auto pattern = std::make_shared<StructPatternFile>();
        std::u16string error;
        EXPECT_TRUE(LoadStructPatternFile(patternPath, *pattern, error));
        StructEvalRequest request;
        request.baseOffset = offset;
        request.patternFile = pattern;
        request.valueFormat = format;
        request.unavailableText = Tr("inspector.data.value.unavailable");
        if (offset < file.size()) {
            request.bytes.assign(file.begin() + static_cast<std::ptrdiff_t>(offset), file.end());
        }
        return BuildStructRows(request);
    }

    std::u16string LoaderError(const std::u16string& path)
    {
        StructPatternFile pattern;
        std::u16string error;
        EXPECT_FALSE(LoadStructPatternFile(path, pattern, error));
        return error;
    }

    // Waits for the worker's answers and hands them all to the window.
    void SettleWorker(std::size_t postedSoFar)
    {
        ASSERT_TRUE(results.WaitForPosted(AppMessage::StructResult, postedSoFar));
        DeliverResults();
    }
};

TEST_F(AppWindowStructViewTest, ShownWithoutAPatternItSaysSo)
{
    ASSERT_TRUE(structViewWindow);
    ASSERT_FALSE(structMessages.empty());
    EXPECT_EQ(structMessages.back(), Tr("structview.empty.message"));
}

TEST_F(AppWindowStructViewTest, TheWindowTakesTheStoredValueFormatWhenShown)
{
    ASSERT_FALSE(structFormats.empty());
    EXPECT_EQ(structFormats.back(), StructValueFormat{});
}

TEST_F(AppWindowStructViewTest, TheOpenDialogHasItsTitleAndStartsInThePatternsFolder)
{
    OpenPattern(RepositoryPattern("png.tlpat"));
    ASSERT_EQ(patternDialogs.size(), 1u);
    EXPECT_EQ(patternDialogs[0].title, Tr("dialog.struct_definition.title"));
    EXPECT_EQ(std::filesystem::path(patternDialogs[0].folder), std::filesystem::path(RepositoryPattern("")).parent_path());
}

TEST_F(AppWindowStructViewTest, ACancelledDialogChangesNothing)
{
    ClearRecords();
    chosenPattern.reset();
    app.OnAppMessage(AppMessage::StructOpenPattern, 0, 0);
    EXPECT_TRUE(structRowsShown.empty());
    EXPECT_TRUE(structErrors.empty());
    EXPECT_FALSE(app.StructPatternLoaded());
}

TEST_F(AppWindowStructViewTest, WithoutADocumentALoadedPatternShowsItsNameInfoAndNoRows)
{
    OpenPattern(RepositoryPattern("png.tlpat"));
    ASSERT_FALSE(structRowsShown.empty());
    EXPECT_EQ(structRowsShown.back().definitionName, u"png.tlpat");
    EXPECT_TRUE(structRowsShown.back().rows.empty());
    StructPatternFile pattern;
    std::u16string error;
    ASSERT_TRUE(LoadStructPatternFile(RepositoryPattern("png.tlpat"), pattern, error));
    EXPECT_EQ(structRowsShown.back().infoText, BuildStructInfoText(pattern));
}

TEST_F(AppWindowStructViewTest, ALoadedPatternShowsTheRowsAtTheCaretAtOnce)
{
    const std::vector<std::uint8_t> bytes = PngHeaderBytes();
    OpenFile(WriteFile("image.png", bytes));
    ClearRecords();
    OpenPattern(RepositoryPattern("png.tlpat"));
    ASSERT_EQ(structRowsShown.size(), 1u);
    EXPECT_EQ(structRowsShown[0].rows, Expected(RepositoryPattern("png.tlpat"), bytes, 0));
    const StructRow* width = FindRow(structRowsShown[0].rows, u"  width");
    if (!width) {
        width = FindRow(structRowsShown[0].rows, u"width");
    }
    ASSERT_NE(width, nullptr);
    EXPECT_EQ(width->offset, u"0x10");
}

TEST_F(AppWindowStructViewTest, ACaretMoveRefreshesThroughTheWorker)
{
    const std::vector<std::uint8_t> bytes = PngHeaderBytes();
    OpenFile(WriteFile("image.png", bytes));
    OpenPattern(RepositoryPattern("png.tlpat"));
    SettleWorker(1);
    ClearRecords();
    app.View().OnKeyDown(VirtualKey::Right, false);
    DeliverViewMessages();
    EXPECT_TRUE(structRowsShown.empty()); // nothing until the worker answers
    SettleWorker(2);
    ASSERT_FALSE(structRowsShown.empty());
    EXPECT_EQ(structRowsShown.back().rows, Expected(RepositoryPattern("png.tlpat"), bytes, 1));
}

TEST_F(AppWindowStructViewTest, AStaleWorkerResultIsDropped)
{
    const std::vector<std::uint8_t> bytes = PngHeaderBytes();
    OpenFile(WriteFile("image.png", bytes));
    OpenPattern(RepositoryPattern("png.tlpat"));
    ASSERT_TRUE(results.WaitForPosted(AppMessage::StructResult, 1));
    std::vector<PostedResult> waiting = results.TakeAll();
    app.View().OnKeyDown(VirtualKey::Right, false);
    DeliverViewMessages();
    ClearRecords();
    for (const PostedResult& stale : waiting) {
        app.OnAppMessage(static_cast<AppMessage>(stale.message), 0, stale.lParam);
    }
    EXPECT_TRUE(structRowsShown.empty());
}

TEST_F(AppWindowStructViewTest, ALoadFailureEntersErrorWithTheLoadersText)
{
    const std::u16string broken = WritePattern("broken.tlpat", "struct A { uint32_t x; \n");
    OpenPattern(broken);
    ASSERT_FALSE(structErrors.empty());
    EXPECT_EQ(structErrors.back(), LoaderError(broken));
    EXPECT_FALSE(structErrors.back().empty());
    EXPECT_FALSE(app.StructPatternLoaded());
}

TEST_F(AppWindowStructViewTest, AnErrorStaysShownWhenTheCaretMoves)
{
    OpenFile(WriteFile("image.png", PngHeaderBytes()));
    OpenPattern(WritePattern("broken.tlpat", "struct {"));
    ClearRecords();
    app.View().OnKeyDown(VirtualKey::Right, false);
    DeliverViewMessages();
    ASSERT_EQ(structErrors.size(), 1u);
    EXPECT_TRUE(structMessages.empty());
}

TEST_F(AppWindowStructViewTest, AReloadOfABrokenFileEntersErrorAndKeepsThePath)
{
    const std::u16string path = WritePattern("mine.tlpat", "struct A { uint8_t a; };\n");
    OpenPattern(path);
    ASSERT_TRUE(app.StructPatternLoaded());
    WriteFileText(path, "struct A { uint8_t a; \n");
    app.OnAppMessage(AppMessage::StructReloadPattern, 0, 0);
    ASSERT_FALSE(structErrors.empty());
    EXPECT_EQ(structErrors.back(), LoaderError(path));
    EXPECT_EQ(app.StructPatternPath(), path);
    EXPECT_FALSE(app.StructPatternLoaded());
}

TEST_F(AppWindowStructViewTest, AReloadAfterTheFileIsMendedSucceeds)
{
    const std::u16string path = WritePattern("mine.tlpat", "struct A { uint8_t a; \n");
    OpenPattern(path);
    ASSERT_FALSE(app.StructPatternLoaded());
    WriteFileText(path, "struct A { uint8_t a; uint8_t b; };\n");
    ClearRecords();
    app.OnAppMessage(AppMessage::StructReloadPattern, 0, 0);
    EXPECT_TRUE(app.StructPatternLoaded());
    ASSERT_EQ(structRowsShown.size(), 1u);
    EXPECT_EQ(structRowsShown[0].definitionName, u"mine.tlpat");
}

TEST_F(AppWindowStructViewTest, AReloadReadsTheEditedFile)
{
    const std::vector<std::uint8_t> bytes = PngHeaderBytes();
    OpenFile(WriteFile("image.png", bytes));
    const std::u16string path = WritePattern("mine.tlpat", "struct A { uint8_t a; };\n");
    OpenPattern(path);
    WriteFileText(path, "struct A { uint8_t a; uint16_t renamed; };\n");
    ClearRecords();
    app.OnAppMessage(AppMessage::StructReloadPattern, 0, 0);
    ASSERT_EQ(structRowsShown.size(), 1u);
    EXPECT_NE(FindRow(structRowsShown[0].rows, u"renamed"), nullptr);
}

TEST_F(AppWindowStructViewTest, APatternDeletedBeforeItsReloadShowsTheError)
{
    const std::u16string path = WritePattern("gone.tlpat", "struct A { uint8_t a; };\n");
    OpenPattern(path);
    std::filesystem::remove(std::filesystem::path(path));
    app.OnAppMessage(AppMessage::StructReloadPattern, 0, 0);
    ASSERT_FALSE(structErrors.empty());
    EXPECT_EQ(structErrors.back(), LoaderError(path));
    EXPECT_EQ(app.StructPatternPath(), path);
}

TEST_F(AppWindowStructViewTest, AReloadWithoutAPathDoesNothing)
{
    ClearRecords();
    app.OnAppMessage(AppMessage::StructReloadPattern, 0, 0);
    EXPECT_TRUE(calls.empty());
}

TEST_F(AppWindowStructViewTest, AReloadGivesTheActivationBackWhenTheWindowHeldIt)
{
    OpenPattern(WritePattern("a.tlpat", "struct A { uint8_t a; };\n"));
    structViewActive = true;
    ClearRecords();
    app.OnAppMessage(AppMessage::StructReloadPattern, 0, 0);
    EXPECT_EQ(CallsAmong({"structViewHasActivation", "showStructRows", "restoreStructViewActivation"}),
        (std::vector<std::string>{"structViewHasActivation", "showStructRows", "restoreStructViewActivation"}));
}

TEST_F(AppWindowStructViewTest, AReloadLeavesTheActivationAloneWhenTheWindowDidNotHoldIt)
{
    OpenPattern(WritePattern("a.tlpat", "struct A { uint8_t a; };\n"));
    structViewActive = false;
    ClearRecords();
    app.OnAppMessage(AppMessage::StructReloadPattern, 0, 0);
    EXPECT_FALSE(Called("restoreStructViewActivation"));
}

TEST_F(AppWindowStructViewTest, ClosingTheDefinitionForgetsItAndShowsTheEmptyMessage)
{
    OpenPattern(RepositoryPattern("png.tlpat"));
    ClearRecords();
    app.OnAppMessage(AppMessage::StructClearPattern, 0, 0);
    EXPECT_FALSE(app.StructPatternLoaded());
    EXPECT_TRUE(app.StructPatternPath().empty());
    ASSERT_EQ(structMessages.size(), 1u);
    EXPECT_EQ(structMessages[0], Tr("structview.empty.message"));
    EXPECT_FALSE(app.StructRows().HasPendingRequest());
}

TEST_F(AppWindowStructViewTest, AFormatChoiceIsStoredGivenToTheWindowAndShown)
{
    const std::vector<std::uint8_t> bytes = PngHeaderBytes();
    OpenFile(WriteFile("image.png", bytes));
    OpenPattern(RepositoryPattern("png.tlpat"));
    ClearRecords();
    app.OnAppMessage(AppMessage::StructValueFormat, 4, 0);
    app.OnAppMessage(AppMessage::StructValueFormat, 6, 0);
    app.OnAppMessage(AppMessage::StructValueFormat, 2, 0);
    const AppSettings stored = StoredSettings();
    EXPECT_EQ(stored.endian, StructEndian::Big);
    EXPECT_EQ(stored.numericBase, NumericBase::Dec);
    EXPECT_EQ(stored.byteArrayFormat, ByteArrayFormat::Ascii);
    ASSERT_FALSE(structFormats.empty());
    EXPECT_EQ(structFormats.back(), (StructValueFormat{1, 1, 1}));
    ASSERT_FALSE(structRowsShown.empty());
    EXPECT_EQ(structRowsShown.back().rows,
        Expected(RepositoryPattern("png.tlpat"), bytes, 0, StructValueFormat{1, 1, 1}));
    const StructRow* width = FindRow(structRowsShown.back().rows, u"  width");
    ASSERT_NE(width, nullptr);
    EXPECT_NE(width->value.find(u"300"), std::u16string::npos);
}

TEST_F(AppWindowStructViewTest, FormatChoicesOneThreeAndFiveTurnBack)
{
    app.OnAppMessage(AppMessage::StructValueFormat, 4, 0);
    app.OnAppMessage(AppMessage::StructValueFormat, 3, 0);
    app.OnAppMessage(AppMessage::StructValueFormat, 6, 0);
    app.OnAppMessage(AppMessage::StructValueFormat, 5, 0);
    app.OnAppMessage(AppMessage::StructValueFormat, 2, 0);
    app.OnAppMessage(AppMessage::StructValueFormat, 1, 0);
    EXPECT_EQ(app.CurrentStructFormat(), StructValueFormat{});
    EXPECT_EQ(StoredSettings().endian, StructEndian::Little);
}

TEST_F(AppWindowStructViewTest, AnUnknownOrUnchangedFormatChoiceDoesNothing)
{
    ClearRecords();
    app.OnAppMessage(AppMessage::StructValueFormat, 0, 0);
    app.OnAppMessage(AppMessage::StructValueFormat, 7, 0);
    app.OnAppMessage(AppMessage::StructValueFormat, 1, 0);
    EXPECT_TRUE(calls.empty());
}

TEST_F(AppWindowStructViewTest, AFileShorterThanTheEntryStructShowsUnavailableValues)
{
    OpenFile(WriteFile("short.bin", {0x89, 0x50, 0x4E}));
    OpenPattern(RepositoryPattern("png.tlpat"));
    ASSERT_FALSE(structRowsShown.empty());
    const StructRow* width = FindRow(structRowsShown.back().rows, u"  width");
    ASSERT_NE(width, nullptr);
    EXPECT_EQ(width->value, Tr("inspector.data.value.unavailable"));
}

TEST_F(AppWindowStructViewTest, AGigabytesLongEntryStructShowsWhatTheBytesAllow)
{
    OpenFile(WriteFile("small.bin", {0x01, 0x02, 0x03, 0x04}));
    OpenPattern(WritePattern("huge.tlpat",
        "struct Huge { uint16_t head; uint8_t body[4000000000]; uint32_t tail; };\n"));
    ASSERT_TRUE(app.StructPatternLoaded());
    ASSERT_FALSE(structRowsShown.empty());
    const std::vector<StructRow>& rows = structRowsShown.back().rows;
    const StructRow* head = FindRow(rows, u"head");
    const StructRow* tail = FindRow(rows, u"tail");
    ASSERT_TRUE(head && tail);
    EXPECT_EQ(head->value.substr(0, 6), u"0x0201");
    EXPECT_EQ(tail->value, Tr("inspector.data.value.unavailable"));
}

TEST_F(AppWindowStructViewTest, AGigabytesLongEntryStructOverALongFileReadsOnlyTheBound)
{
    const std::u16string big = folder.File("sparse.bin");
    ASSERT_TRUE(WriteSparseFile(big, 6'000'000'000ull));
    OpenFile(big);
    OpenPattern(WritePattern("huge.tlpat",
        "struct Huge { uint16_t head; uint8_t body[4000000000]; uint32_t tail; };\n"));
    ASSERT_FALSE(structRowsShown.empty());
    const StructRow* tail = FindRow(structRowsShown.back().rows, u"tail");
    ASSERT_NE(tail, nullptr);
    // The tail lies four gigabytes in, far past the bounded read, so it is not read.
    EXPECT_EQ(tail->value, Tr("inspector.data.value.unavailable"));
}

TEST_F(AppWindowStructViewTest, APathWithLettersBeyondAsciiLoadsAndShowsItsFileName)
{
    const std::filesystem::path name(u"\u00E9t\u00E9 \u65E5\u672C.tlpat");
    const std::u16string path = (folder.Path() / name).u16string();
    WriteFileText(path, "struct A { uint8_t a; };\n");
    OpenPattern(path);
    ASSERT_TRUE(app.StructPatternLoaded());
    ASSERT_FALSE(structRowsShown.empty());
    EXPECT_EQ(structRowsShown.back().definitionName, u"\u00E9t\u00E9 \u65E5\u672C.tlpat");
}

TEST_F(AppWindowStructViewTest, AMissingPathWithLettersBeyondAsciiShowsTheError)
{
    const std::u16string path = (folder.Path() / std::filesystem::path(u"\u00FCber.tlpat")).u16string();
    OpenPattern(path);
    ASSERT_FALSE(structErrors.empty());
    EXPECT_EQ(structErrors.back(), LoaderError(path));
}

TEST_F(AppWindowStructViewTest, SwitchingTheViewOffDropsItsWindowAndOnShowsThePatternAgain)
{
    OpenPattern(RepositoryPattern("png.tlpat"));
    app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisStructView));
    EXPECT_FALSE(structViewWindow);
    ClearRecords();
    app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisStructView));
    EXPECT_TRUE(structViewWindow);
    ASSERT_EQ(structRowsShown.size(), 1u);
    EXPECT_EQ(structRowsShown[0].definitionName, u"png.tlpat");
}

TEST_F(AppWindowStructViewTest, WhileTheViewIsOffNothingIsShownOrAsked)
{
    app.ExecuteCommand(ToNumber(CommandId::SettingsAnalysisStructView));
    OpenFile(WriteFile("image.png", PngHeaderBytes()));
    ClearRecords();
    app.View().OnKeyDown(VirtualKey::Right, false);
    DeliverViewMessages();
    EXPECT_FALSE(Called("ensureStructViewWindow"));
    EXPECT_TRUE(structRowsShown.empty());
}

} // namespace
} // namespace tlm::test
