#include "document/ParentPath.h"
#include "document/PlatformFile.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(ParentPath, DropsTheLastComponentAndTheSeparatorsBeforeIt)
{
    EXPECT_EQ(ParentPath(u"C:\\data\\file.bin"), u"C:\\data");
    EXPECT_EQ(ParentPath(u"/home/user/file.bin"), u"/home/user");
    EXPECT_EQ(ParentPath(u"dir\\\\\\file.bin"), u"dir");
    EXPECT_EQ(ParentPath(u"a/b//c"), u"a/b");
}

TEST(ParentPath, BothSeparatorsCount)
{
    EXPECT_EQ(ParentPath(u"C:/data\\sub/file.bin"), u"C:/data\\sub");
    EXPECT_EQ(ParentPath(u"a\\b/c"), u"a\\b");
}

TEST(ParentPath, KeepsTheRoot)
{
    EXPECT_EQ(ParentPath(u"C:\\file.bin"), u"C:\\");
    EXPECT_EQ(ParentPath(u"C:file.bin"), u"C:");
    EXPECT_EQ(ParentPath(u"/file.bin"), u"/");
    EXPECT_EQ(ParentPath(u"\\\\server\\share\\file.bin"), u"\\\\server\\share");
    EXPECT_EQ(ParentPath(u"\\\\?\\C:\\data\\file.bin"), u"\\\\?\\C:\\data");
    EXPECT_EQ(ParentPath(u"//tmp/file.bin"), u"//tmp/");
    EXPECT_EQ(ParentPath(u"//tmp/sub/file.bin"), u"//tmp/sub");
    EXPECT_EQ(ParentPath(u"C:\\"), u"C:\\");
}

TEST(ParentPath, ABareNameHasNoParent)
{
    EXPECT_EQ(ParentPath(u"file.bin"), u"");
    EXPECT_EQ(ParentPath(u""), u"");
}

TEST(ParentPath, ATrailingSeparatorEndsAnEmptyLastComponent)
{
    EXPECT_EQ(ParentPath(u"dir/sub/"), u"dir/sub");
}

TEST(ParentPath, IsStrictlyLexical)
{
    EXPECT_EQ(ParentPath(u"a/../b/./c"), u"a/../b/.");
    EXPECT_EQ(ParentPath(u"no such folder/x"), u"no such folder");
}

TEST(JoinPath, PutsOneSeparatorBetween)
{
    const std::u16string separator(1, PreferredPathSeparator);
    EXPECT_EQ(JoinPath(u"dir", u"name"), u"dir" + separator + u"name");
    EXPECT_EQ(JoinPath(u"dir/", u"name"), u"dir/name");
    EXPECT_EQ(JoinPath(u"C:\\", u"name"), u"C:\\name");
    EXPECT_EQ(JoinPath(u"C:", u"name"), u"C:" + separator + u"name");
}

} // namespace
} // namespace tlm
