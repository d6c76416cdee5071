#include "document/WholeFile.h"

#include "TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tlm {
namespace {

namespace fs = std::filesystem;

void WriteText(const fs::path& path, const std::string& text)
{
    test::WriteWholeFile(path, std::vector<std::uint8_t>(text.begin(), text.end()));
}

std::string ReadText(const fs::path& path)
{
    const std::vector<std::uint8_t> bytes = test::ReadWholeFile(path);
    return std::string(bytes.begin(), bytes.end());
}

std::vector<std::string> Names(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(WholeFile, ReadGivesEveryByte)
{
    test::TestFolder scratch;
    const std::string bytes("a\0b\r\n\xFF", 6);
    WriteText(scratch.File("f"), bytes);
    EXPECT_EQ(ReadWholeFile(test::PathText(scratch.File("f"))), bytes);
}

TEST(WholeFile, ReadOfAMissingFileOrAFolderGivesNothing)
{
    test::TestFolder scratch;
    EXPECT_FALSE(ReadWholeFile(test::PathText(scratch.File("missing"))).has_value());
    EXPECT_FALSE(ReadWholeFile(test::PathText(scratch.Path())).has_value());
}

TEST(WholeFile, ReplaceCreatesAFileAndLeavesNothingElse)
{
    test::TestFolder scratch;
    ASSERT_TRUE(ReplaceWholeFile(test::PathText(scratch.File("f.json")), "new"));
    EXPECT_EQ(ReadText(scratch.File("f.json")), "new");
    EXPECT_EQ(Names(scratch.Path()), std::vector<std::string>{"f.json"});
}

TEST(WholeFile, ReplaceSwapsTheOldContentForTheNew)
{
    test::TestFolder scratch;
    WriteText(scratch.File("f.json"), std::string(5000, 'o'));
    ASSERT_TRUE(ReplaceWholeFile(test::PathText(scratch.File("f.json")), "short"));
    EXPECT_EQ(ReadText(scratch.File("f.json")), "short");
    EXPECT_EQ(Names(scratch.Path()), std::vector<std::string>{"f.json"});
}

TEST(WholeFile, AFailedReplaceKeepsTheOldFileAndRemovesItsTemporary)
{
    test::TestFolder scratch;
    // A folder in the target's place cannot be replaced by a file.
    fs::create_directory(scratch.File("f.json"));
    WriteText(scratch.File("f.json") / "inside", "kept");
    EXPECT_FALSE(ReplaceWholeFile(test::PathText(scratch.File("f.json")), "new"));
    EXPECT_EQ(ReadText(scratch.File("f.json") / "inside"), "kept");
    EXPECT_EQ(Names(scratch.Path()), std::vector<std::string>{"f.json"});
}

TEST(WholeFile, ReplaceInAMissingFolderFails)
{
    test::TestFolder scratch;
    EXPECT_FALSE(ReplaceWholeFile(test::PathText(scratch.File("no") / "f.json"), "x"));
    EXPECT_TRUE(fs::is_empty(scratch.Path()));
}

TEST(WholeFile, TemporaryNamesStandBesideTheTargetAndDiffer)
{
    std::set<std::u16string> names;
    for (std::uint32_t attempt = 0; attempt < 50; ++attempt) {
        const std::u16string name = TemporarySiblingPath(u"/folder/tolmo.settings.json", attempt);
        EXPECT_TRUE(name.starts_with(u"/folder/tolmo.settings.json."));
        EXPECT_TRUE(name.ends_with(u".tmp"));
        EXPECT_EQ(name.size(), std::u16string(u"/folder/tolmo.settings.json.").size() + 16 + 4);
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 50u);
}

} // namespace
} // namespace tlm
