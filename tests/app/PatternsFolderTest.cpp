// Where the pattern dialog starts.
#include "app/PatternsFolder.h"

#include "document/ParentPath.h"

#include <gtest/gtest.h>

#include <set>

namespace tlm {
namespace {

std::function<bool(const std::u16string&)> Existing(std::set<std::u16string> folders)
{
    return [folders = std::move(folders)](const std::u16string& folder) { return folders.count(folder) != 0; };
}

TEST(PatternsFolderTest, ThePatternsBesideTheProgramComeFirst)
{
    const std::u16string beside = JoinPath(u"C:\\Tolmo", u"patterns");
    EXPECT_EQ(FindPatternsFolder(u"C:\\Tolmo", Existing({beside, u"C:\\patterns"})), beside);
}

TEST(PatternsFolderTest, FromABuildTreeTheSourceTreesPatternsAreFound)
{
    const std::u16string source = JoinPath(u"/src/tolmo", u"patterns");
    EXPECT_EQ(FindPatternsFolder(u"/src/tolmo/build/windows/src/app", Existing({source})), source);
}

TEST(PatternsFolderTest, WithNoCandidateThePatternsBesideTheProgramAreAskedFor)
{
    EXPECT_EQ(FindPatternsFolder(u"/opt/tolmo", Existing({})), JoinPath(u"/opt/tolmo", u"patterns"));
}

TEST(PatternsFolderTest, AnUnknownProgramFolderGivesNothing)
{
    EXPECT_FALSE(FindPatternsFolder(std::nullopt, Existing({})).has_value());
}

TEST(PatternsFolderTest, TheSearchStopsAFewLevelsUp)
{
    const std::u16string far = JoinPath(u"/a", u"patterns");
    EXPECT_EQ(FindPatternsFolder(u"/a/b/c/d/e/f/g/h", Existing({far})), JoinPath(u"/a/b/c/d/e/f/g/h", u"patterns"));
}

} // namespace
} // namespace tlm
