#include "app/WindowTitle.h"

#include <gtest/gtest.h>

#include <string>

namespace tlm {
namespace {

// Just enough of a document for the title: open or not, its path, and whether it has changes.
class TitleDocument : public IEditableDocument {
public:
    bool open = false;
    std::u16string path;
    bool modified = false;

    bool IsOpen() const override { return open; }
    std::uint64_t GetSize() const override { return 0; }
    std::u16string GetPath() const override { return path; }
    ByteBlock Read(std::uint64_t offset, std::uint64_t) const override { return ByteBlock{offset, {}}; }
    bool OverwriteByte(std::uint64_t, std::uint8_t) override { return false; }
    bool InsertByte(std::uint64_t, std::uint8_t) override { return false; }
    bool DeleteByte(std::uint64_t) override { return false; }
    bool IsModified() const override { return modified; }
    std::uint64_t GetEditedSize() const override { return 0; }
};

TitleDocument OpenDocument(std::u16string path, bool modified = false)
{
    TitleDocument document;
    document.open = true;
    document.path = std::move(path);
    document.modified = modified;
    return document;
}

TEST(WindowTitle, StartedWithNoFileShowsTheTitleAlone)
{
    EXPECT_EQ(ComposeWindowTitle(u"Tolmo", TitleDocument{}), u"Tolmo");
}

TEST(WindowTitle, OpenFileAddsItsNameAfterADash)
{
    EXPECT_EQ(ComposeWindowTitle(u"Tolmo", OpenDocument(u"C:\\data\\dump.bin")), u"Tolmo - dump.bin");
}

TEST(WindowTitle, ForwardSlashSeparatesComponentsToo)
{
    EXPECT_EQ(ComposeWindowTitle(u"Tolmo", OpenDocument(u"C:/data/images/photo.jpg")), u"Tolmo - photo.jpg");
}

TEST(WindowTitle, MixedSeparatorsTakeTheLastOne)
{
    EXPECT_EQ(ComposeWindowTitle(u"Tolmo", OpenDocument(u"C:\\data/sub\\file.dat")), u"Tolmo - file.dat");
}

TEST(WindowTitle, PathWithoutSeparatorIsTheNameItself)
{
    EXPECT_EQ(ComposeWindowTitle(u"Tolmo", OpenDocument(u"notes.txt")), u"Tolmo - notes.txt");
}

TEST(WindowTitle, ModifiedDocumentEndsWithAStar)
{
    EXPECT_EQ(ComposeWindowTitle(u"Tolmo", OpenDocument(u"C:\\dump.bin", true)), u"Tolmo - dump.bin *");
}

TEST(WindowTitle, NonLatinNamesAreKeptWhole)
{
    const std::u16string name = u"\u65E5\u672C\u8A9E\U0001F600.bin";
    EXPECT_EQ(ComposeWindowTitle(u"Tolmo", OpenDocument(u"D:\\" + name)), u"Tolmo - " + name);
}

TEST(WindowTitle, LocalisedProgramTitleLeadsTheText)
{
    EXPECT_EQ(ComposeWindowTitle(u"\u30C8\u30EB\u30E2", OpenDocument(u"a.bin")), u"\u30C8\u30EB\u30E2 - a.bin");
}

TEST(LastPathComponent, TrailingSeparatorGivesAnEmptyName)
{
    EXPECT_EQ(LastPathComponent(u"C:\\folder\\"), u"");
}

TEST(LastPathComponent, DriveRootAloneStaysAsItIs)
{
    EXPECT_EQ(LastPathComponent(u"C:"), u"C:");
}

} // namespace
} // namespace tlm
