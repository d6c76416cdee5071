// How much the struct view reads at the caret for one evaluation.
#include "structview/StructSnapshotSize.h"

#include "PatternLoadSupport.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(StructSnapshotSizeTest, AFixedStructReadsItsSize)
{
    EXPECT_EQ(StructSnapshotSize(test::LoadPattern(u"struct A { uint32_t a; uint16_t b; };\n")), 8u);
}

TEST(StructSnapshotSizeTest, AFlexibleArrayAtTheEndAddsTwoHundredFiftySixBytes)
{
    EXPECT_EQ(StructSnapshotSize(test::LoadPattern(u"struct Tail { int n; char data[]; };\n")), 4u + 256u);
}

TEST(StructSnapshotSizeTest, AFlexibleArrayInTheLastStructFieldCountsToo)
{
    const StructPatternFile file = test::LoadPattern(
        u"struct Inner { uint32_t n; char text[]; };\nstruct Outer { uint32_t a; Inner inner; };\n@entry Outer\n");
    EXPECT_EQ(StructSnapshotSize(file), file.structs.back().size + 256u);
}

TEST(StructSnapshotSizeTest, AGigabytesLongStructReadsAtMostTheBound)
{
    const StructPatternFile file = test::LoadPattern(u"struct Huge { uint8_t head; uint8_t body[3000000000]; };\n");
    ASSERT_GT(file.structs.back().size, 3'000'000'000u);
    EXPECT_EQ(StructSnapshotSize(file), MaxStructSnapshotBytes);
}

TEST(StructSnapshotSizeTest, NoEntryStructReadsNothing)
{
    StructPatternFile file;
    EXPECT_EQ(StructSnapshotSize(file), 0u);
}

} // namespace
} // namespace tlm
