#include "settings/RecentFilePath.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(RecentFilePath, WindowsStyleTakesBothSeparatorsAndIgnoresCase)
{
    EXPECT_TRUE(SameRecentFile(u"C:\\Data\\File.BIN", u"c:/data/file.bin", PathStyle::Windows));
    EXPECT_EQ(NormalizeRecentFilePath(u"c:/data//sub/./file.bin", PathStyle::Windows), u"C:\\DATA\\SUB\\FILE.BIN");
}

TEST(RecentFilePath, WindowsStyleFoldsLettersBeyondAscii)
{
    EXPECT_TRUE(SameRecentFile(u"C:\\Übung\\Файл.bin", u"c:\\übung\\файл.BIN", PathStyle::Windows));
    EXPECT_TRUE(SameRecentFile(u"C:\\Łódź\\Ĺ", u"C:\\łÓdŹ\\ĺ", PathStyle::Windows));
    EXPECT_FALSE(SameRecentFile(u"C:\\a1", u"C:\\a2", PathStyle::Windows));
}

TEST(RecentFilePath, DotDotTakesOutThePartBeforeIt)
{
    EXPECT_EQ(NormalizeRecentFilePath(u"C:\\a\\b\\..\\c", PathStyle::Windows), u"C:\\A\\C");
    EXPECT_EQ(NormalizeRecentFilePath(u"/a/b/../../c", PathStyle::Posix), u"/c");
}

TEST(RecentFilePath, DotDotNeverClimbsAboveTheRoot)
{
    EXPECT_EQ(NormalizeRecentFilePath(u"/../a", PathStyle::Posix), u"/a");
    EXPECT_EQ(NormalizeRecentFilePath(u"C:\\..\\a", PathStyle::Windows), u"C:\\A");
}

TEST(RecentFilePath, ARelativePathKeepsItsLeadingDotDot)
{
    EXPECT_EQ(NormalizeRecentFilePath(u"../a/./b", PathStyle::Posix), u"../a/b");
    EXPECT_EQ(NormalizeRecentFilePath(u"a/../../b", PathStyle::Posix), u"../b");
}

TEST(RecentFilePath, TrailingSeparatorsGo)
{
    EXPECT_EQ(NormalizeRecentFilePath(u"/a/b/", PathStyle::Posix), u"/a/b");
    EXPECT_EQ(NormalizeRecentFilePath(u"/", PathStyle::Posix), u"/");
    EXPECT_EQ(NormalizeRecentFilePath(u"C:\\", PathStyle::Windows), u"C:\\");
}

TEST(RecentFilePath, NetworkPathsKeepTheirDoubleSeparator)
{
    EXPECT_EQ(NormalizeRecentFilePath(u"//server/share//x", PathStyle::Windows), u"\\\\SERVER\\SHARE\\X");
    EXPECT_FALSE(SameRecentFile(u"\\\\server\\x", u"\\server\\x", PathStyle::Windows));
}

TEST(RecentFilePath, DriveRelativeAndRootedPathsDiffer)
{
    EXPECT_FALSE(SameRecentFile(u"C:a.bin", u"C:\\a.bin", PathStyle::Windows));
}

TEST(RecentFilePath, PosixStyleKeepsCaseAndBackslashes)
{
    EXPECT_FALSE(SameRecentFile(u"/data/File.bin", u"/data/file.bin", PathStyle::Posix));
    EXPECT_FALSE(SameRecentFile(u"/data/a\\b", u"/data/a/b", PathStyle::Posix));
    EXPECT_TRUE(SameRecentFile(u"/data//a/./b", u"/data/a/b", PathStyle::Posix));
}

} // namespace
} // namespace tlm
