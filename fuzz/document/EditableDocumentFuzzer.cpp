// Drives the edit overlay with edits taken from the input and checks every step against a plain byte
// vector; ends with a search in both directions checked against a naive one.
#include "document/ByteSearch.h"
#include "document/EditableDocument.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

// One scratch file per process, removed when the process ends.
struct ScratchFile {
    std::filesystem::path path
        = std::filesystem::temp_directory_path() / ("tolmo-document-fuzz-" + std::to_string(getpid()) + ".bin");
    ~ScratchFile()
    {
        std::error_code error;
        std::filesystem::remove(path, error);
    }
};

const std::filesystem::path& FuzzFile()
{
    static const ScratchFile file;
    return file.path;
}

void Check(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

std::uint64_t NaiveForward(const Bytes& data, const Bytes& pattern, std::uint64_t start)
{
    for (std::uint64_t i = start; i + pattern.size() <= data.size(); ++i) {
        if (std::equal(pattern.begin(), pattern.end(), data.begin() + static_cast<std::ptrdiff_t>(i))) {
            return i;
        }
    }
    return UINT64_MAX;
}

std::uint64_t NaiveBackward(const Bytes& data, const Bytes& pattern, std::uint64_t start)
{
    if (pattern.size() > data.size()) {
        return UINT64_MAX;
    }
    for (std::uint64_t i = std::min<std::uint64_t>(start, data.size() - pattern.size()) + 1; i-- > 0;) {
        if (std::equal(pattern.begin(), pattern.end(), data.begin() + static_cast<std::ptrdiff_t>(i))) {
            return i;
        }
    }
    return UINT64_MAX;
}

std::uint64_t OffsetOf(const tlm::SearchResult& result)
{
    return result.status == tlm::SearchStatus::Found ? result.offset : UINT64_MAX;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) {
        return 0;
    }
    // The first byte sizes the file; its bytes come from a small alphabet so that edits revert often.
    const std::size_t fileSize = data[0] * 3u;
    Bytes model(fileSize);
    for (std::size_t i = 0; i < fileSize; ++i) {
        model[i] = static_cast<std::uint8_t>((i * 7 + data[1]) % 5);
    }
    {
        std::ofstream stream(FuzzFile(), std::ios::binary | std::ios::trunc);
        stream.write(reinterpret_cast<const char*>(model.data()), static_cast<std::streamsize>(model.size()));
    }
    tlm::EditableDocument document;
    Check(document.file.Open(FuzzFile().u16string()));
    std::size_t at = 2;
    for (; at + 3 <= size && data[at] < 0xF0; at += 3) {
        const std::uint8_t kind = data[at] % 3;
        const std::uint64_t offset = (static_cast<std::uint64_t>(data[at] >> 2) << 8 | data[at + 1]) % (model.size() + 2);
        const std::uint8_t value = data[at + 2] % 6;
        if (kind == 0) {
            Check(document.OverwriteByte(offset, value) == (offset < model.size()));
            if (offset < model.size()) {
                model[offset] = value;
            }
        } else if (kind == 1) {
            Check(document.InsertByte(offset, value) == (offset <= model.size()));
            if (offset <= model.size()) {
                model.insert(model.begin() + static_cast<std::ptrdiff_t>(offset), value);
            }
        } else {
            Check(document.DeleteByte(offset) == (offset < model.size()));
            if (offset < model.size()) {
                model.erase(model.begin() + static_cast<std::ptrdiff_t>(offset));
            }
        }
        Check(document.GetEditedSize() == model.size());
        const std::uint64_t from = offset % (model.size() + 1);
        const tlm::ByteBlock block = document.Read(from, 40);
        Check(block.offset == from);
        Check(std::equal(block.bytes.begin(), block.bytes.end(), model.begin() + static_cast<std::ptrdiff_t>(from),
            model.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(model.size(), from + 40))));
        Check(block.bytes.size() == std::min<std::size_t>(40, model.size() - from));
    }
    Check(document.Read(0, model.size() + 1).bytes == model);
    // The rest of the input is a pattern to search for from a start taken from the edits' end.
    if (at < size) {
        const Bytes pattern(data + at + 1, data + std::min(size, at + 1 + 8));
        Bytes folded = pattern;
        for (std::uint8_t& byte : folded) {
            byte %= 6;
        }
        const std::uint64_t start = data[at] % (model.size() + 1);
        if (!folded.empty()) {
            const std::uint64_t forward = start < model.size() ? NaiveForward(model, folded, start) : UINT64_MAX;
            Check(OffsetOf(tlm::SearchForward(&document, folded, start)) == forward);
            Check(OffsetOf(tlm::SearchBackward(&document, folded, start)) == NaiveBackward(model, folded, start));
        }
    }
    document.Close();
    return 0;
}
