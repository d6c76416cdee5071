#include "structview/StructPatternLoader.h"

#include "PatternLoadSupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace tlm {
namespace {

using namespace tlm::test;

// A fresh folder under the system's temporary folder, removed with everything in it.
class PatternFolder {
public:
    PatternFolder()
    {
        static std::atomic<int> counter{0};
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        folder = std::filesystem::temp_directory_path()
            / ("tolmo-pattern-test-" + std::to_string(stamp) + "-" + std::to_string(counter++));
        std::filesystem::create_directories(folder);
    }
    ~PatternFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    PatternFolder(const PatternFolder&) = delete;
    PatternFolder& operator=(const PatternFolder&) = delete;

    std::u16string Write(std::string_view name, std::string_view bytes) const
    {
        const auto path = folder / name;
        std::ofstream stream(path, std::ios::binary);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return path.u16string();
    }

    std::u16string Path(std::string_view name) const { return (folder / name).u16string(); }

private:
    std::filesystem::path folder;
};

struct LoadResult {
    bool loaded = false;
    StructPatternFile patternFile;
    std::u16string error;
};

LoadResult LoadFile(const std::u16string& path)
{
    LoadResult result;
    result.loaded = LoadStructPatternFile(path, result.patternFile, result.error);
    return result;
}

LoadResult LoadBytes(std::string_view bytes)
{
    PatternFolder folder;
    return LoadFile(folder.Write("pattern.tlpat", bytes));
}

std::string Numbered(std::string_view stem, int index)
{
    return std::string(stem) + std::to_string(index);
}

TEST(StructPatternLoader, LoadsAFileFromDisk)
{
    const auto result = LoadBytes("// header\nstruct Header {\n    char magic[4];\n    uint32_t size;\n};\n");
    ASSERT_TRUE(result.loaded);
    EXPECT_EQ(result.error, u"");
    ASSERT_EQ(result.patternFile.structs.size(), 1u);
    EXPECT_EQ(result.patternFile.structs[0].size, 8u);
    EXPECT_EQ(result.patternFile.entryStructName, u"Header");
}

TEST(StructPatternLoader, PathWithLettersBeyondAsciiOpens)
{
    PatternFolder folder;
    const std::u16string path = folder.Path("") + u"Muster-\u00FC\u00DF-\u5F62.tlpat";
    {
        std::ofstream stream(std::filesystem::path(path), std::ios::binary);
        stream << "struct S { int x; };";
    }
    const auto result = LoadFile(path);
    EXPECT_TRUE(result.loaded);
    EXPECT_EQ(result.patternFile.entryStructName, u"S");
}

TEST(StructPatternLoader, MissingFileFailsToOpen)
{
    PatternFolder folder;
    const auto result = LoadFile(folder.Path("absent.tlpat"));
    EXPECT_FALSE(result.loaded);
    EXPECT_EQ(result.error, u"Failed to open definition file.");
}

TEST(StructPatternLoader, FolderFailsToOpen)
{
    PatternFolder folder;
    const auto result = LoadFile(folder.Path(""));
    EXPECT_FALSE(result.loaded);
    EXPECT_EQ(result.error, u"Failed to open definition file.");
}

TEST(StructPatternLoader, InvalidUtf8IsRefused)
{
    for (const std::string_view bytes : {std::string_view("struct S { char c\xC3\x28; };"), std::string_view("\xC0\xAF"),
             std::string_view("struct S { int x; }; // \xED\xA0\x80"), std::string_view("struct S { int x; };\xE2\x82"),
             std::string_view("\x80"), std::string_view("\xF4\x90\x80\x80")}) {
        const auto result = LoadBytes(bytes);
        EXPECT_FALSE(result.loaded);
        EXPECT_EQ(result.error, u"Definition file must be UTF-8.");
    }
}

TEST(StructPatternLoader, Utf16FileIsNotUtf8)
{
    const auto result = LoadBytes(std::string_view("\xFF\xFEs\0t\0", 6));
    EXPECT_FALSE(result.loaded);
    EXPECT_EQ(result.error, u"Definition file must be UTF-8.");
}

TEST(StructPatternLoader, ByteOrderMarkIsDroppedBeforePositionsAreCounted)
{
    EXPECT_TRUE(LoadBytes("\xEF\xBB\xBFstruct S { int x; };").loaded);
    EXPECT_EQ(LoadBytes("\xEF\xBB\xBF@bogus 4").error, Positioned(1, 1, u"Directive value is not allowed.", u"@bogus 4"));
}

TEST(StructPatternLoader, OnlyOneByteOrderMarkIsDropped)
{
    const auto result = LoadBytes("\xEF\xBB\xBF\xEF\xBB\xBFstruct S { int x; };");
    EXPECT_FALSE(result.loaded);
    EXPECT_EQ(result.error, Positioned(1, 1, u"Unexpected character in definition file.", u"\uFEFFstruct S { int x; };"));
}

TEST(StructPatternLoader, EmptyFileHasNoStructDefinition)
{
    EXPECT_EQ(LoadBytes("").error, u"No struct definition was found.");
    EXPECT_EQ(LoadBytes("\xEF\xBB\xBF").error, u"No struct definition was found.");
}

TEST(StructPatternLoader, LettersBeyondAsciiLoadFromUtf8)
{
    const auto result = LoadBytes("struct Gr\xC3\xB6\xC3\x9F" "e { int L\xC3\xA4nge; };\n@entry GR\xC3\x96\xC3\x9F" "E");
    ASSERT_TRUE(result.loaded) << std::string(result.error.begin(), result.error.end());
    EXPECT_EQ(result.patternFile.entryStructName, u"Größe");
    EXPECT_EQ(result.patternFile.structs[0].members[0].name, u"Länge");
}

TEST(StructPatternLoader, ColumnsCountUtf16UnitsOfTheDecodedText)
{
    // U+1F600 is two UTF-16 units and not a letter, so it is refused where it stands; the é before
    // it is one unit although it took two bytes.
    EXPECT_EQ(LoadBytes("struct \xC3\xA9 { int x\xF0\x9F\x98\x80; };").error,
        Positioned(1, 17, u"Unexpected character in definition file.", u"struct é { int x\U0001F600; };"));
}

TEST(StructPatternLoader, FailedLoadLeavesThePatternUntouched)
{
    PatternFolder folder;
    StructPatternFile patternFile;
    std::u16string error;
    ASSERT_TRUE(LoadStructPatternFile(folder.Write("good.tlpat", "struct Good { int x; };"), patternFile, error));
    EXPECT_FALSE(LoadStructPatternFile(folder.Write("bad.tlpat", "struct Bad { Missing x; };"), patternFile, error));
    EXPECT_EQ(error, u"Unknown type: Missing");
    EXPECT_EQ(patternFile.entryStructName, u"Good");
    ASSERT_EQ(patternFile.structs.size(), 1u);
}

TEST(StructPatternLoader, DeepEmbeddingIsRefusedWithoutRunningOutOfStack)
{
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += "struct " + Numbered("S", i) + " { " + Numbered("S", i + 1) + " inner; };\n";
    text += "struct S20000 { int x; };\n@entry S0\n";
    const auto result = LoadBytes(text);
    EXPECT_FALSE(result.loaded);
    EXPECT_EQ(result.error, u"Structs are embedded more than 128 levels deep, at: S128");
}

TEST(StructPatternLoader, EmbeddingWithinTheLimitLoads)
{
    std::string text;
    for (int i = 0; i < 127; ++i)
        text += "struct " + Numbered("S", i) + " { char c; " + Numbered("S", i + 1) + " inner; };\n";
    text += "struct S127 { int x; };\n@entry S0\n";
    const auto result = LoadBytes(text);
    ASSERT_TRUE(result.loaded);
    EXPECT_EQ(result.patternFile.structs.front().size, 4u * 127u + 4u);
}

TEST(StructPatternLoader, EmbeddingChainDeclaredInnermostFirstHasNoDepthLimit)
{
    std::string text = "struct S0 { int x; };\n";
    for (int i = 1; i <= 5000; ++i)
        text += "struct " + Numbered("S", i) + " { " + Numbered("S", i - 1) + " inner; char c; };\n";
    text += "@entry S5000\n";
    const auto result = LoadBytes(text);
    ASSERT_TRUE(result.loaded);
    EXPECT_EQ(result.patternFile.structs.back().size, 4u + 4u * 5000u);
}

TEST(StructPatternLoader, LongTypedefCycleIsRefusedNotFollowedForever)
{
    std::string text;
    for (int i = 0; i < 200; ++i)
        text += "typedef " + Numbered("t", (i + 1) % 200) + " " + Numbered("t", i) + ";\n";
    text += "struct S { t0 x; };\n";
    const auto result = LoadBytes(text);
    EXPECT_FALSE(result.loaded);
    EXPECT_EQ(result.error, Positioned(201, 12, u"Typedef refers back to itself: t0", u"struct S { t0 x; };"));
}

TEST(StructPatternLoader, OverlongTypedefChainIsRefused)
{
    std::string text = "typedef int t0;\n";
    for (int i = 1; i <= 300; ++i)
        text += "typedef " + Numbered("t", i - 1) + " " + Numbered("t", i) + ";\n";
    text += "struct S { t300 x; t256 y; };\n";
    const auto result = LoadBytes(text);
    EXPECT_FALSE(result.loaded);
    EXPECT_EQ(result.error, Positioned(302, 12, u"Typedef chain is too long: t300", u"struct S { t300 x; t256 y; };"));
    // t255 is reached through 256 typedefs, the most that are followed.
    EXPECT_TRUE(LoadBytes(text.substr(0, text.rfind("struct")) + "struct S { t255 y; };").loaded);
}

TEST(StructPatternLoader, HugeArraysThatOverflowAreRefused)
{
    const auto result = LoadBytes("struct S {\n  uint64_t big[3000000000000000000];\n};\n");
    EXPECT_FALSE(result.loaded);
    EXPECT_EQ(result.error, Positioned(2, 3, u"Array is too large for a 64-bit size.", u"  uint64_t big[3000000000000000000];"));
}

TEST(StructPatternLoader, HugeStructArrayEmbeddedTwiceOverflows)
{
    const auto result = LoadBytes("struct Big { char a[10000000000000000000]; };\nstruct S { Big x; Big y; };\n@entry S\n");
    EXPECT_FALSE(result.loaded);
    EXPECT_EQ(result.error, Positioned(2, 19, u"Struct is too large for a 64-bit size.", u"struct S { Big x; Big y; };"));
}

TEST(StructPatternLoader, CrlfFileLoadsLikeAnLfFile)
{
    const auto lf = LoadBytes("struct A {\n  char c;\n  int i;\n};\n");
    const auto crlf = LoadBytes("struct A {\r\n  char c;\r\n  int i;\r\n};\r\n");
    ASSERT_TRUE(lf.loaded);
    ASSERT_TRUE(crlf.loaded);
    EXPECT_EQ(lf.patternFile.structs[0].size, crlf.patternFile.structs[0].size);
    EXPECT_EQ(LoadBytes("struct A {\r\n  int i\r\n};\r\n").error,
        Positioned(2, 3, u"Unexpected tokens after declaration name.", u"  int i"));
}

TEST(StructPatternLoader, ShippedPatternsLoad)
{
    const std::filesystem::path folder = std::filesystem::path(TOLMO_SOURCE_DIR) / "patterns";
    if (!std::filesystem::is_directory(folder))
        GTEST_SKIP() << "no patterns folder";
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".tlpat")
            continue;
        ++count;
        const auto result = LoadFile(entry.path().u16string());
        EXPECT_TRUE(result.loaded) << entry.path() << ": " << std::filesystem::path(result.error).string();
        EXPECT_FALSE(result.patternFile.entryStructName.empty()) << entry.path();
    }
    EXPECT_GT(count, 0);
}

} // namespace
} // namespace tlm
