#include "structview/StructInfoText.h"

#include "StructRowTestSupport.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(StructInfoText, ListsTheEntryAndEverySizeOnCrLfLines)
{
    StructPatternFile file;
    file.entryStructName = u"Header";
    file.sizeofShort = 2;
    file.sizeofInt = 4;
    file.sizeofLong = 8;
    file.sizeofLongLong = 16;
    file.sizeofFloat = 4;
    file.sizeofDouble = 8;
    file.pointerSize = 4;
    file.memberAlign = 0;
    EXPECT_EQ(BuildStructInfoText(file),
        u"entry = Header\r\n"
        u"sizeof_short = 2\r\n"
        u"sizeof_int = 4\r\n"
        u"sizeof_long = 8\r\n"
        u"sizeof_long_long = 16\r\n"
        u"sizeof_float = 4\r\n"
        u"sizeof_double = 8\r\n"
        u"pointer_size = 4\r\n"
        u"member_align = 0");
}

TEST(StructInfoText, AnImplicitEntryIsMarked)
{
    const auto file = test::Pattern({test::Struct(u"Only", {}, 0)});
    const std::u16string text = BuildStructInfoText(*file);
    EXPECT_TRUE(text.starts_with(u"entry = Only (implicit)\r\nsizeof_short = 2\r\n"));
    EXPECT_TRUE(text.ends_with(u"\r\nmember_align = 8"));
}

} // namespace
} // namespace tlm
