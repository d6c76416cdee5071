// The shipped patterns, each read over a small sample of its format built here byte by byte.
#include "structview/StructPatternLoader.h"
#include "structview/StructRows.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {
namespace {

std::shared_ptr<const StructPatternFile> LoadShipped(std::string_view name)
{
    const std::filesystem::path path = std::filesystem::path(TOLMO_SOURCE_DIR) / "patterns" / (std::string(name) + ".tlpat");
    auto file = std::make_shared<StructPatternFile>();
    std::u16string error;
    if (!LoadStructPatternFile(path.u16string(), *file, error)) {
        ADD_FAILURE() << path << ": " << std::string(error.begin(), error.end());
        return nullptr;
    }
    return file;
}

// A sample file written field by field, in either byte order.
class SampleBytes {
public:
    SampleBytes& U8(std::uint8_t value)
    {
        bytes.push_back(value);
        return *this;
    }
    SampleBytes& Le(std::uint64_t value, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i)
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        return *this;
    }
    SampleBytes& Be(std::uint64_t value, std::size_t size)
    {
        for (std::size_t i = size; i > 0; --i)
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * (i - 1))));
        return *this;
    }
    // Text in a field of `size` bytes, filled with NUL.
    SampleBytes& Text(std::string_view text, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i)
            bytes.push_back(i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0);
        return *this;
    }
    SampleBytes& Text(std::string_view text) { return Text(text, text.size()); }
    SampleBytes& Zeros(std::size_t count) { return Text({}, count); }

    std::vector<std::uint8_t> bytes;
};

struct Format {
    std::uint32_t byteArrayFormat = 0;
    std::uint32_t endian = 0;
    std::uint32_t numericBase = 0;
};

std::vector<StructRow> Rows(const std::shared_ptr<const StructPatternFile>& pattern, std::vector<std::uint8_t> bytes,
    Format format = {}, std::uint64_t baseOffset = 0)
{
    StructEvalRequest request;
    request.baseOffset = baseOffset;
    request.bytes = std::move(bytes);
    request.patternFile = pattern;
    request.unavailableText = u"n/a";
    request.valueFormat = StructValueFormat {format.byteArrayFormat, format.endian, format.numericBase};
    return BuildStructRows(request);
}

void ExpectRow(const StructRow& row, std::u16string_view name, std::u16string_view offset, std::u16string_view value,
    std::u16string_view size)
{
    EXPECT_EQ(row.name, name);
    EXPECT_EQ(row.offset, offset) << std::string(name.begin(), name.end());
    EXPECT_EQ(row.value, value) << std::string(name.begin(), name.end());
    EXPECT_EQ(row.size, size) << std::string(name.begin(), name.end());
}

Format Ascii()
{
    return Format {1, 0, 0};
}

Format Decimal()
{
    return Format {1, 0, 1};
}

std::uint32_t Crc32(const std::vector<std::uint8_t>& bytes, std::size_t begin, std::size_t end)
{
    std::uint32_t crc = 0xFFFFFFFFu;
    for (std::size_t i = begin; i < end; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

TEST(PatternLibrary, BmpShowsTheFileAndInfoHeadersOfATwoByTwoBitmap)
{
    const auto pattern = LoadShipped("bmp");
    ASSERT_NE(pattern, nullptr);
    SampleBytes file;
    file.Text("BM").Le(70, 4).Le(0, 2).Le(0, 2).Le(54, 4);
    file.Le(40, 4).Le(2, 4).Le(static_cast<std::uint32_t>(-2), 4).Le(1, 2).Le(24, 2).Le(0, 4).Le(16, 4);
    file.Le(2835, 4).Le(2835, 4).Le(0, 4).Le(0, 4);
    file.Text("\xFF\x00\x00\x00\xFF\x00\x00\x00", 8).Text("\x00\x00\xFF\xFF\xFF\xFF\x00\x00", 8);
    ASSERT_EQ(file.bytes.size(), 70u);

    const std::vector<StructRow> rows = Rows(pattern, file.bytes, Ascii());
    ASSERT_EQ(rows.size(), 18u);
    ExpectRow(rows[0], u"file : BitmapFileHeader", u"0x0", u"", u"14");
    ExpectRow(rows[1], u"  signature", u"0x0", u"\"BM\"", u"2");
    ExpectRow(rows[2], u"  fileSize", u"0x2", u"0x00000046", u"4");
    ExpectRow(rows[3], u"  reserved1", u"0x6", u"0x0000", u"2");
    ExpectRow(rows[5], u"  pixelOffset", u"0xA", u"0x00000036", u"4");
    ExpectRow(rows[6], u"info : BitmapInfoHeader", u"0xE", u"", u"40");
    ExpectRow(rows[7], u"  headerSize", u"0xE", u"0x00000028", u"4");
    ExpectRow(rows[8], u"  width", u"0x12", u"0x00000002", u"4");
    ExpectRow(rows[9], u"  height", u"0x16", u"0xFFFFFFFE", u"4");
    ExpectRow(rows[10], u"  planes", u"0x1A", u"0x0001", u"2");
    ExpectRow(rows[11], u"  bitCount", u"0x1C", u"0x0018", u"2");
    ExpectRow(rows[13], u"  imageSize", u"0x22", u"0x00000010", u"4");
    ExpectRow(rows[14], u"  xPixelsPerMeter", u"0x26", u"0x00000B13", u"4");
    ExpectRow(rows[17], u"  colorsImportant", u"0x32", u"0x00000000", u"4");
    EXPECT_EQ(pattern->structs.back().size, 28u + 26u);
}

TEST(PatternLibrary, PngShowsTheSignatureAndTheIhdrChunkInBigEndian)
{
    const auto pattern = LoadShipped("png");
    ASSERT_NE(pattern, nullptr);
    SampleBytes file;
    file.Text("\x89PNG\r\n\x1A\n");
    file.Be(13, 4).Text("IHDR").Be(640, 4).Be(480, 4).U8(8).U8(6).U8(0).U8(0).U8(0);
    const std::uint32_t crc = Crc32(file.bytes, 12, file.bytes.size());
    file.Be(crc, 4);

    const std::vector<StructRow> rows = Rows(pattern, file.bytes, Format {0, 1, 0});
    ASSERT_EQ(rows.size(), 12u);
    ExpectRow(rows[0], u"signature", u"0x0", u"89 50 4E 47 0D 0A 1A 0A", u"8");
    ExpectRow(rows[1], u"ihdr : PngIhdrChunk", u"0x8", u"", u"25");
    ExpectRow(rows[2], u"  length", u"0x8", u"0x0000000D", u"4");
    ExpectRow(rows[3], u"  type", u"0xC", u"49 48 44 52", u"4");
    ExpectRow(rows[4], u"  width", u"0x10", u"0x00000280", u"4");
    ExpectRow(rows[5], u"  height", u"0x14", u"0x000001E0", u"4");
    ExpectRow(rows[6], u"  bitDepth", u"0x18", u"0x08", u"1");
    ExpectRow(rows[7], u"  colorType", u"0x19", u"0x06", u"1");
    ExpectRow(rows[10], u"  interlace", u"0x1C", u"0x00", u"1");
    std::u16string crcText = u"0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        crcText.push_back(u"0123456789ABCDEF"[(crc >> shift) & 0xF]);
    ExpectRow(rows[11], u"  crc", u"0x1D", crcText, u"4");

    // In ascii mode the chunk type reads as text, and the signature, led by 0x89, as a cut string.
    const std::vector<StructRow> asciiRows = Rows(pattern, file.bytes, Format {1, 1, 0});
    EXPECT_EQ(asciiRows.at(0).value, u"\"...\"");
    EXPECT_EQ(asciiRows.at(3).value, u"\"IHDR\"");
    // Under the default little-endian order the same fields read byte-swapped.
    EXPECT_EQ(Rows(pattern, file.bytes).at(4).value, u"0x80020000");
}

TEST(PatternLibrary, GifShowsTheHeaderAndTheLogicalScreenDescriptor)
{
    const auto pattern = LoadShipped("gif");
    ASSERT_NE(pattern, nullptr);
    SampleBytes file;
    file.Text("GIF89a").Le(320, 2).Le(200, 2).U8(0xF7).U8(3).U8(0);

    const std::vector<StructRow> rows = Rows(pattern, file.bytes, Decimal());
    ASSERT_EQ(rows.size(), 8u);
    ExpectRow(rows[0], u"signature", u"0x0", u"\"GIF\"", u"3");
    ExpectRow(rows[1], u"version", u"0x3", u"\"89a\"", u"3");
    ExpectRow(rows[2], u"screen : GifScreenDescriptor", u"0x6", u"", u"7");
    ExpectRow(rows[3], u"  width", u"0x6", u"320", u"2");
    ExpectRow(rows[4], u"  height", u"0x8", u"200", u"2");
    ExpectRow(rows[5], u"  flags", u"0xA", u"247", u"1");
    ExpectRow(rows[6], u"  backgroundColorIndex", u"0xB", u"3", u"1");
    ExpectRow(rows[7], u"  pixelAspectRatio", u"0xC", u"0", u"1");
}

TEST(PatternLibrary, WavShowsTheRiffHeaderAndThePcmFormatChunk)
{
    const auto pattern = LoadShipped("wav");
    ASSERT_NE(pattern, nullptr);
    SampleBytes file;
    file.Text("RIFF").Le(36 + 8, 4).Text("WAVE");
    file.Text("fmt ").Le(16, 4).Le(1, 2).Le(2, 2).Le(44100, 4).Le(176400, 4).Le(4, 2).Le(16, 2);
    file.Text("data").Le(8, 4).Zeros(8);

    const std::vector<StructRow> rows = Rows(pattern, file.bytes, Decimal());
    ASSERT_EQ(rows.size(), 13u);
    ExpectRow(rows[0], u"riff : RiffHeader", u"0x0", u"", u"12");
    ExpectRow(rows[1], u"  chunkId", u"0x0", u"\"RIFF\"", u"4");
    ExpectRow(rows[2], u"  chunkSize", u"0x4", u"44", u"4");
    ExpectRow(rows[3], u"  format", u"0x8", u"\"WAVE\"", u"4");
    ExpectRow(rows[4], u"format : WaveFormatChunk", u"0xC", u"", u"24");
    ExpectRow(rows[5], u"  chunkId", u"0xC", u"\"fmt \"", u"4");
    ExpectRow(rows[6], u"  chunkSize", u"0x10", u"16", u"4");
    ExpectRow(rows[7], u"  audioFormat", u"0x14", u"1", u"2");
    ExpectRow(rows[8], u"  channels", u"0x16", u"2", u"2");
    ExpectRow(rows[9], u"  sampleRate", u"0x18", u"44100", u"4");
    ExpectRow(rows[10], u"  byteRate", u"0x1C", u"176400", u"4");
    ExpectRow(rows[11], u"  blockAlign", u"0x20", u"4", u"2");
    ExpectRow(rows[12], u"  bitsPerSample", u"0x22", u"16", u"2");
}

TEST(PatternLibrary, ZipShowsALocalFileHeaderAndTheBytesAfterIt)
{
    const auto pattern = LoadShipped("zip-local-file");
    ASSERT_NE(pattern, nullptr);
    EXPECT_TRUE(pattern->entryIsImplicit);
    SampleBytes file;
    file.Le(0x04034B50, 4).Le(20, 2).Le(0, 2).Le(0, 2).Le(0x6000, 2).Le(0x5A77, 2).Le(0x3610A686, 4).Le(6, 4).Le(6, 4);
    file.Le(9, 2).Le(0, 2).Text("hello.txt").Text("Hello\n");

    const std::vector<StructRow> rows = Rows(pattern, file.bytes, Ascii());
    ASSERT_EQ(rows.size(), 12u);
    ExpectRow(rows[0], u"signature", u"0x0", u"0x04034B50", u"4");
    ExpectRow(rows[1], u"versionNeeded", u"0x4", u"0x0014", u"2");
    ExpectRow(rows[3], u"compression", u"0x8", u"0x0000", u"2");
    ExpectRow(rows[6], u"crc32", u"0xE", u"0x3610A686", u"4");
    ExpectRow(rows[7], u"compressedSize", u"0x12", u"0x00000006", u"4");
    ExpectRow(rows[9], u"fileNameLength", u"0x1A", u"0x0009", u"2");
    ExpectRow(rows[10], u"extraFieldLength", u"0x1C", u"0x0000", u"2");
    // The name runs on into the stored data up to its line break.
    ExpectRow(rows[11], u"fileName", u"0x1E", u"\"hello.txtHello...\"", u"1+");
    EXPECT_EQ(Rows(pattern, file.bytes).at(11).value, u"68 65 6C 6C 6F 2E 74 78 74 48 65 6C 6C 6F 0A");
    EXPECT_EQ(pattern->structs.at(0).size, 30u);
}

TEST(PatternLibrary, Elf64ShowsTheIdentAndTheFileHeader)
{
    const auto pattern = LoadShipped("elf64");
    ASSERT_NE(pattern, nullptr);
    SampleBytes file;
    file.Text("\x7F" "ELF").U8(2).U8(1).U8(1).U8(0).U8(0).Zeros(7);
    file.Le(3, 2).Le(0x3E, 2).Le(1, 4).Le(0x1060, 8).Le(64, 8).Le(0x3A28, 8).Le(0, 4);
    file.Le(64, 2).Le(56, 2).Le(13, 2).Le(64, 2).Le(31, 2).Le(30, 2);
    ASSERT_EQ(file.bytes.size(), 64u);

    const std::vector<StructRow> rows = Rows(pattern, file.bytes);
    ASSERT_EQ(rows.size(), 21u);
    ExpectRow(rows[0], u"ident : ElfIdent", u"0x0", u"", u"16");
    ExpectRow(rows[1], u"  magic", u"0x0", u"7F 45 4C 46", u"4");
    ExpectRow(rows[2], u"  fileClass", u"0x4", u"0x02", u"1");
    ExpectRow(rows[3], u"  data", u"0x5", u"0x01", u"1");
    ExpectRow(rows[7], u"  reserved", u"0x9", u"00 00 00 00 00 00 00", u"7");
    ExpectRow(rows[8], u"type", u"0x10", u"0x0003", u"2");
    ExpectRow(rows[9], u"machine", u"0x12", u"0x003E", u"2");
    ExpectRow(rows[10], u"version", u"0x14", u"0x00000001", u"4");
    ExpectRow(rows[11], u"entry", u"0x18", u"0x0000000000001060", u"8");
    ExpectRow(rows[12], u"programHeaderOffset", u"0x20", u"0x0000000000000040", u"8");
    ExpectRow(rows[13], u"sectionHeaderOffset", u"0x28", u"0x0000000000003A28", u"8");
    ExpectRow(rows[14], u"flags", u"0x30", u"0x00000000", u"4");
    ExpectRow(rows[15], u"headerSize", u"0x34", u"0x0040", u"2");
    ExpectRow(rows[17], u"programHeaderCount", u"0x38", u"0x000D", u"2");
    ExpectRow(rows[20], u"sectionNameIndex", u"0x3E", u"0x001E", u"2");
    EXPECT_EQ(pattern->structs.back().size, 64u);
}

// A DOS stub header pointing at a PE signature and COFF header at 0x80.
SampleBytes MinimalPeImage()
{
    SampleBytes file;
    file.Text("MZ").Le(0x90, 2).Le(3, 2).Le(0, 2).Le(4, 2).Le(0, 2).Le(0xFFFF, 2).Le(0, 2).Le(0xB8, 2);
    file.Le(0, 2).Le(0, 2).Le(0, 2).Le(0x40, 2).Le(0, 2).Zeros(8).Le(0, 2).Le(0, 2).Zeros(20).Le(0x80, 4);
    file.Zeros(0x80 - 64);
    file.Text("PE", 4).Le(0x8664, 2).Le(6, 2).Le(0x65A1B2C3, 4).Le(0, 4).Le(0, 4).Le(240, 2).Le(0x0022, 2);
    file.Le(0x20B, 2).U8(14).U8(38);
    return file;
}

TEST(PatternLibrary, PeDosHeaderShowsTheStubFieldsAndWhereThePeHeaderIs)
{
    const auto pattern = LoadShipped("pe-dos-header");
    ASSERT_NE(pattern, nullptr);
    const SampleBytes file = MinimalPeImage();

    const std::vector<StructRow> rows = Rows(pattern, file.bytes, Ascii());
    ASSERT_EQ(rows.size(), 19u);
    ExpectRow(rows[0], u"magic", u"0x0", u"\"MZ\"", u"2");
    ExpectRow(rows[1], u"lastPageBytes", u"0x2", u"0x0090", u"2");
    ExpectRow(rows[2], u"pageCount", u"0x4", u"0x0003", u"2");
    ExpectRow(rows[6], u"maxExtraParagraphs", u"0xC", u"0xFFFF", u"2");
    ExpectRow(rows[8], u"initialSp", u"0x10", u"0x00B8", u"2");
    ExpectRow(rows[12], u"relocationTableOffset", u"0x18", u"0x0040", u"2");
    ExpectRow(rows[14], u"reserved", u"0x1C", u"00 00 00 00 00 00 00 00", u"8");
    ExpectRow(rows[15], u"oemId", u"0x24", u"0x0000", u"2");
    ExpectRow(rows[17], u"reserved2", u"0x28", u"00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 ...", u"20");
    ExpectRow(rows[18], u"peHeaderOffset", u"0x3C", u"0x00000080", u"4");
    EXPECT_EQ(pattern->structs.at(0).size, 64u);
}

TEST(PatternLibrary, PeCoffHeaderShowsTheSignatureAndFileHeaderAtTheirOffset)
{
    const auto pattern = LoadShipped("pe-coff-header");
    ASSERT_NE(pattern, nullptr);
    const SampleBytes file = MinimalPeImage();
    const std::vector<std::uint8_t> atPeHeader(file.bytes.begin() + 0x80, file.bytes.end());

    const std::vector<StructRow> rows = Rows(pattern, atPeHeader, Ascii(), 0x80);
    ASSERT_EQ(rows.size(), 11u);
    ExpectRow(rows[0], u"signature", u"0x80", u"\"PE\"", u"4");
    ExpectRow(rows[1], u"machine", u"0x84", u"0x8664", u"2");
    ExpectRow(rows[2], u"sectionCount", u"0x86", u"0x0006", u"2");
    ExpectRow(rows[3], u"timeDateStamp", u"0x88", u"0x65A1B2C3", u"4");
    ExpectRow(rows[4], u"symbolTableOffset", u"0x8C", u"0x00000000", u"4");
    ExpectRow(rows[6], u"optionalHeaderSize", u"0x94", u"0x00F0", u"2");
    ExpectRow(rows[7], u"characteristics", u"0x96", u"0x0022", u"2");
    ExpectRow(rows[8], u"optionalHeaderMagic", u"0x98", u"0x020B", u"2");
    ExpectRow(rows[9], u"majorLinkerVersion", u"0x9A", u"0x0E", u"1");
    ExpectRow(rows[10], u"minorLinkerVersion", u"0x9B", u"0x26", u"1");
    EXPECT_EQ(pattern->structs.at(0).size, 28u);
}

TEST(PatternLibrary, TarShowsTheUstarHeaderFieldsAsText)
{
    const auto pattern = LoadShipped("tar");
    ASSERT_NE(pattern, nullptr);
    SampleBytes file;
    file.Text("notes.txt", 100).Text("0000644", 8).Text("0001750", 8).Text("0001750", 8);
    file.Text("00000000014", 12).Text("14523456701", 12).Text("        ", 8).Text("0");
    file.Zeros(100).Text("ustar", 6).Text("00").Text("tolmo", 32).Text("staff", 32);
    file.Text("0000000", 8).Text("0000000", 8).Zeros(155).Zeros(12);
    ASSERT_EQ(file.bytes.size(), 512u);
    unsigned sum = 0;
    for (std::uint8_t byte : file.bytes)
        sum += byte;
    std::string checksum = "000000";
    for (std::size_t i = checksum.size(); i > 0; --i, sum /= 8)
        checksum[i - 1] = static_cast<char>('0' + sum % 8);
    for (std::size_t i = 0; i < 8; ++i)
        file.bytes[148 + i] = i < 6 ? static_cast<std::uint8_t>(checksum[i]) : (i == 6 ? 0 : ' ');

    const std::vector<StructRow> rows = Rows(pattern, file.bytes, Ascii());
    ASSERT_EQ(rows.size(), 17u);
    ExpectRow(rows[0], u"name", u"0x0", u"\"notes.txt\"", u"100");
    ExpectRow(rows[1], u"mode", u"0x64", u"\"0000644\"", u"8");
    ExpectRow(rows[2], u"uid", u"0x6C", u"\"0001750\"", u"8");
    ExpectRow(rows[4], u"size", u"0x7C", u"\"00000000014\"", u"12");
    ExpectRow(rows[5], u"mtime", u"0x88", u"\"14523456701\"", u"12");
    ExpectRow(rows[6], u"checksum", u"0x94", u"\"" + std::u16string(checksum.begin(), checksum.end()) + u"\"", u"8");
    ExpectRow(rows[7], u"typeFlag", u"0x9C", u"0x30", u"1");
    ExpectRow(rows[8], u"linkName", u"0x9D", u"\"\"", u"100");
    ExpectRow(rows[9], u"magic", u"0x101", u"\"ustar\"", u"6");
    ExpectRow(rows[10], u"version", u"0x107", u"\"00\"", u"2");
    ExpectRow(rows[11], u"userName", u"0x109", u"\"tolmo\"", u"32");
    ExpectRow(rows[12], u"groupName", u"0x129", u"\"staff\"", u"32");
    ExpectRow(rows[15], u"prefix", u"0x159", u"\"\"", u"155");
    ExpectRow(rows[16], u"unused", u"0x1F4", u"\"\"", u"12");
    EXPECT_EQ(Rows(pattern, file.bytes).at(0).value, u"6E 6F 74 65 73 2E 74 78 74 00 00 00 00 00 00 00 ...");
    EXPECT_EQ(pattern->structs.at(0).size, 512u);
}

TEST(PatternLibrary, AHeaderCutByTheEndOfTheFileShowsWhatIsThere)
{
    const auto pattern = LoadShipped("bmp");
    ASSERT_NE(pattern, nullptr);
    SampleBytes file;
    file.Text("BM").Le(70, 4).Le(0, 2).Le(0, 2).Le(54, 4).Le(40, 4).Le(2, 2);
    const std::vector<StructRow> rows = Rows(pattern, file.bytes, Ascii());
    ASSERT_EQ(rows.size(), 18u);
    EXPECT_EQ(rows[5].value, u"0x00000036");
    EXPECT_EQ(rows[7].value, u"0x00000028");
    EXPECT_EQ(rows[8].value, u"n/a");
    EXPECT_EQ(rows[17].value, u"n/a");
}

} // namespace
} // namespace tlm
