#include "document/WholeFile.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

// File names here are bytes, mostly UTF-8: a lone surrogate has no spelling in them.
TEST(WholeFilePosix, PathTextThatCannotNameAFileIsRefused)
{
    const std::u16string lone(1, static_cast<char16_t>(0xD800));
    EXPECT_FALSE(PathFromText(lone).has_value());
    EXPECT_FALSE(ReadWholeFile(lone).has_value());
    EXPECT_FALSE(ReplaceWholeFile(lone, "x"));
}

} // namespace
} // namespace tlm
