#pragma once

// A generated file for timing the hex view: runs of text in every script the encodings serve, mixed with
// binary data, so that each encoding finds characters of its own as well as bytes it cannot show.

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>
#include <vector>

namespace tlm::bench {

inline void AppendUtf8(std::vector<std::uint8_t>& out, char32_t c)
{
    if (c < 0x80) {
        out.push_back(static_cast<std::uint8_t>(c));
        return;
    }
    if (c < 0x800) {
        out.push_back(static_cast<std::uint8_t>(0xC0 | (c >> 6)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<std::uint8_t>(0xE0 | (c >> 12)));
        out.push_back(static_cast<std::uint8_t>(0x80 | ((c >> 6) & 0x3F)));
    } else {
        out.push_back(static_cast<std::uint8_t>(0xF0 | (c >> 18)));
        out.push_back(static_cast<std::uint8_t>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<std::uint8_t>(0x80 | ((c >> 6) & 0x3F)));
    }
    out.push_back(static_cast<std::uint8_t>(0x80 | (c & 0x3F)));
}

// `size` bytes in runs of 64 to 4096 bytes, each run of one kind.
inline std::vector<std::uint8_t> MixedScriptChunk(std::uint32_t seed, std::size_t size)
{
    std::mt19937 random(seed);
    const auto pick = [&random](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    std::vector<std::uint8_t> out;
    out.reserve(size + 8192);
    while (out.size() < size) {
        const std::size_t runEnd = out.size() + static_cast<std::size_t>(pick(64, 4096));
        const int kind = pick(0, 7);
        while (out.size() < runEnd) {
            switch (kind) {
            case 0: // words
                out.push_back(static_cast<std::uint8_t>(pick(0, 7) == 0 ? ' ' : pick('a', 'z')));
                break;
            case 1: { // UTF-8 of Latin, Cyrillic, Thai, kana, Han, Hangul, emoji and combining marks
                static constexpr char32_t blocks[] = {0x00C0, 0x0410, 0x0E01, 0x3041, 0x4E00, 0xAC00, 0x1F600, 0x0300};
                AppendUtf8(out, blocks[pick(0, 7)] + static_cast<char32_t>(pick(0, 40)));
                break;
            }
            case 2: // Shift_JIS kanji
                out.push_back(static_cast<std::uint8_t>(pick(0x88, 0x9F)));
                out.push_back(static_cast<std::uint8_t>(pick(0, 1) != 0 ? pick(0x40, 0x7E) : pick(0x80, 0xFC)));
                break;
            case 3: // pairs that GBK, Big5, EUC-KR and code page 949 all take
                out.push_back(static_cast<std::uint8_t>(pick(0xB0, 0xC8)));
                out.push_back(static_cast<std::uint8_t>(pick(0xA1, 0xFE)));
                break;
            case 4: // Thai consonants with some vowels
                out.push_back(static_cast<std::uint8_t>(pick(0, 3) == 0 ? pick(0xD1, 0xDA) : pick(0xA1, 0xCE)));
                break;
            case 5: { // UTF-16 LE of Latin and Han
                const int unit = pick(0, 1) != 0 ? pick('a', 'z') : pick(0x4E00, 0x4FFF);
                out.push_back(static_cast<std::uint8_t>(unit & 0xFF));
                out.push_back(static_cast<std::uint8_t>(unit >> 8));
                break;
            }
            case 6: // the ISCII letters
                out.push_back(static_cast<std::uint8_t>(pick(0xA1, 0xFA)));
                break;
            default:
                out.push_back(static_cast<std::uint8_t>(random()));
                break;
            }
        }
    }
    out.resize(size);
    return out;
}

// A file of `size` bytes in the temporary folder, removed at the end. A few distinct chunks are written
// in turn: making each afresh would take longer than the timing itself.
class MixedScriptFile {
public:
    MixedScriptFile(const char* name, std::uint64_t size, std::size_t chunkSize = 4 * 1024 * 1024,
        std::uint32_t distinctChunks = 8)
        : path(std::filesystem::temp_directory_path() / name)
    {
        std::vector<std::vector<std::uint8_t>> chunks;
        for (std::uint32_t seed = 0; seed < distinctChunks; ++seed) {
            chunks.push_back(MixedScriptChunk(seed, chunkSize));
        }
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        for (std::uint64_t written = 0, index = 0; written < size; written += chunkSize, ++index) {
            const std::vector<std::uint8_t>& chunk = chunks[index % distinctChunks];
            const std::uint64_t count = std::min<std::uint64_t>(chunk.size(), size - written);
            out.write(reinterpret_cast<const char*>(chunk.data()), static_cast<std::streamsize>(count));
        }
        ok = static_cast<bool>(out);
    }
    MixedScriptFile(const MixedScriptFile&) = delete;
    MixedScriptFile& operator=(const MixedScriptFile&) = delete;
    ~MixedScriptFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    std::filesystem::path path;
    bool ok = false;
};

} // namespace tlm::bench
