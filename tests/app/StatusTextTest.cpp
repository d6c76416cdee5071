#include "app/StatusText.h"

#include "settings/Localizer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tlm {
namespace {

// Keys in angle brackets, so each text shows which key it came from.
std::u16string Bracketed(std::string_view key)
{
    return u"<" + std::u16string(key.begin(), key.end()) + u">";
}

StatusTextInputs OpenFile()
{
    StatusTextInputs inputs;
    inputs.fileOpen = true;
    inputs.fileSize = 1000;
    inputs.caret = 0x10;
    inputs.encoding = TextEncoding::Utf8;
    return inputs;
}

std::u16string Text(const StatusTextInputs& inputs)
{
    return BuildStatusText(inputs, Bracketed);
}

bool Contains(const std::u16string& text, std::u16string_view part)
{
    return text.find(part) != std::u16string::npos;
}

TEST(StatusText, TheOverrideWinsOverEverything)
{
    StatusTextInputs inputs = OpenFile();
    inputs.overrideActive = true;
    inputs.overrideText = u"blocked";
    inputs.saveActive = true;
    inputs.saveText = u"saving";
    inputs.searchActive = true;
    inputs.searchText = u"searching";
    EXPECT_EQ(Text(inputs), u"blocked");
}

TEST(StatusText, TheSaveWinsOverTheSearchAndTheFile)
{
    StatusTextInputs inputs = OpenFile();
    inputs.saveActive = true;
    inputs.saveText = u"Saving... 40%";
    inputs.searchActive = true;
    inputs.searchText = u"searching";
    EXPECT_EQ(Text(inputs), u"Saving... 40%");
}

TEST(StatusText, TheSearchWinsOverTheFile)
{
    StatusTextInputs inputs = OpenFile();
    inputs.searchActive = true;
    inputs.searchText = u"Searching... 7%";
    EXPECT_EQ(Text(inputs), u"Searching... 7%");
}

TEST(StatusText, WithNoFileOpenItSaysSo)
{
    EXPECT_EQ(Text(StatusTextInputs{}), u"<status.no_file>");
}

TEST(StatusText, AnOpenFileShowsItsPartsJoinedByTwoBlanks)
{
    EXPECT_EQ(Text(OpenFile()), u"<status.offset>: 0x00000010  <status.encoding>: UTF-8  <status.readonly>  "
                                u"<status.zoom>: 100%");
}

TEST(StatusText, TheOffsetIsUpperCaseHexadecimal)
{
    StatusTextInputs inputs = OpenFile();
    inputs.fileSize = 0x100000;
    inputs.caret = 0xABCDE;
    EXPECT_TRUE(Contains(Text(inputs), u": 0x000ABCDE  "));
}

TEST(StatusText, AFileBelowFourGibibytesShowsEightDigits)
{
    StatusTextInputs inputs = OpenFile();
    inputs.fileSize = 0xFFFFFFFFull;
    inputs.caret = 0xFFFFFFFEull;
    EXPECT_TRUE(Contains(Text(inputs), u": 0xFFFFFFFE  "));
}

TEST(StatusText, AFileOfExactlyFourGibibytesShowsSixteenDigits)
{
    StatusTextInputs inputs = OpenFile();
    inputs.fileSize = 0x100000000ull;
    inputs.caret = 0x12;
    EXPECT_TRUE(Contains(Text(inputs), u": 0x0000000000000012  "));
}

TEST(StatusText, TheEncodingShowsItsDisplayName)
{
    StatusTextInputs inputs = OpenFile();
    inputs.encoding = TextEncoding::ShiftJis;
    EXPECT_TRUE(Contains(Text(inputs), u"<status.encoding>: Shift_JIS  "));
}

TEST(StatusText, WhileEditingIsOffItShowsReadOnly)
{
    StatusTextInputs inputs = OpenFile();
    inputs.insertMode = true;
    const std::u16string text = Text(inputs);
    EXPECT_TRUE(Contains(text, u"  <status.readonly>  "));
    EXPECT_FALSE(Contains(text, u"<status.mode>"));
}

TEST(StatusText, WhileEditingInInsertModeItShowsInsert)
{
    StatusTextInputs inputs = OpenFile();
    inputs.editingEnabled = true;
    inputs.insertMode = true;
    const std::u16string text = Text(inputs);
    EXPECT_TRUE(Contains(text, u"  <status.mode>: <status.mode.insert>  "));
    EXPECT_FALSE(Contains(text, u"<status.readonly>"));
}

TEST(StatusText, WhileEditingInOverwriteModeItShowsOverwrite)
{
    StatusTextInputs inputs = OpenFile();
    inputs.editingEnabled = true;
    EXPECT_TRUE(Contains(Text(inputs), u"  <status.mode>: <status.mode.overwrite>  "));
}

TEST(StatusText, ModifiedIsShownOnlyWhenTheDocumentHasChanges)
{
    StatusTextInputs inputs = OpenFile();
    EXPECT_FALSE(Contains(Text(inputs), u"<status.modified>"));
    inputs.modified = true;
    EXPECT_TRUE(Contains(Text(inputs), u"<status.readonly>  <status.modified>  <status.zoom>"));
}

TEST(StatusText, TheZoomIsShownInPercentRoundedToTheNearest)
{
    const auto zoomText = [](float zoom) {
        StatusTextInputs inputs = OpenFile();
        inputs.zoom = zoom;
        const std::u16string text = Text(inputs);
        return text.substr(text.rfind(u": ") + 2);
    };
    EXPECT_EQ(zoomText(1.1f), u"110%");
    EXPECT_EQ(zoomText(0.6f), u"60%");
    EXPECT_EQ(zoomText(2.5f), u"250%");
    EXPECT_EQ(zoomText(1.234f), u"123%");
    EXPECT_EQ(zoomText(1.236f), u"124%");
    EXPECT_EQ(zoomText(0.7f + 0.1f + 0.1f), u"90%");
}

TEST(StatusText, WithEnglishStringsItReadsAsASentence)
{
    Localizer localizer(std::filesystem::path(TOLMO_SOURCE_DIR).u16string());
    localizer.SetLanguage(u"en-US");
    StatusTextInputs inputs = OpenFile();
    inputs.editingEnabled = true;
    inputs.insertMode = true;
    inputs.modified = true;
    const std::u16string text =
        BuildStatusText(inputs, [&localizer](std::string_view key) { return localizer.Tr(key); });
    EXPECT_EQ(text, u"Offset: 0x00000010  Encoding: UTF-8  Mode: Insert  Modified  Zoom: 100%");
}

} // namespace
} // namespace tlm
