#include "settings/ExecutableFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tlm {
namespace {

TEST(ExecutableFolder, TheProgramBaseDirectoryIsTheProgramsFolder)
{
    std::u16string error;
    const auto folder = ExecutableFolder(error);
    ASSERT_TRUE(folder.has_value()) << std::filesystem::path(error).string();
    EXPECT_TRUE(error.empty());
    EXPECT_EQ(ProgramBaseDirectory(), *folder);
    EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(*folder)));
}

} // namespace
} // namespace tlm
