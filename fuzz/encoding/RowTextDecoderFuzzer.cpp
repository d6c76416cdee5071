// Decodes rows of an arbitrary file in an arbitrary encoding. The document traps on any read past its
// end, and every row must come back with one cell per byte.
#include "document/IReadOnlyDocument.h"
#include "encoding/RowTextDecoder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

class TrappingDocument final : public tlm::IReadOnlyDocument {
public:
    explicit TrappingDocument(std::vector<std::uint8_t> content)
        : bytes(std::move(content))
    {
    }

    bool IsOpen() const override { return true; }
    std::uint64_t GetSize() const override { return bytes.size(); }
    std::u16string GetPath() const override { return u"fuzz"; }

    tlm::ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override
    {
        if (offset > bytes.size() || count > bytes.size() - offset) {
            __builtin_trap();
        }
        tlm::ByteBlock block{offset, {}};
        block.bytes.assign(bytes.begin() + static_cast<std::ptrdiff_t>(offset),
            bytes.begin() + static_cast<std::ptrdiff_t>(offset + count));
        return block;
    }

private:
    std::vector<std::uint8_t> bytes;
};

void Check(bool condition)
{
    if (!condition) {
        __builtin_trap();
    }
}

void DecodeRow(const TrappingDocument& document, const std::vector<std::uint8_t>& content, std::uint64_t offset,
    std::size_t width, tlm::TextEncoding encoding)
{
    const std::size_t begin = static_cast<std::size_t>(std::min<std::uint64_t>(offset, content.size()));
    const std::size_t end = std::min(content.size(), begin + width);
    const std::span<const std::uint8_t> row(content.data() + begin, end - begin);
    Check(tlm::DecodeRowText(&document, begin, row, encoding).size() == row.size());
    Check(tlm::DecodeRowTextDetached(row, encoding).size() == row.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) {
        return 0;
    }
    // The first byte picks the encoding, one value past the last included; the second, a row offset.
    const auto encoding = static_cast<tlm::TextEncoding>(data[0] % (tlm::TextEncodingCount + 1));
    const std::size_t skew = data[1];
    std::vector<std::uint8_t> content(data + 2, data + size);
    const TrappingDocument document(content);

    for (std::uint64_t offset = 0; offset < content.size(); offset += 16) {
        DecodeRow(document, content, offset, 16, encoding);
    }
    DecodeRow(document, content, skew, 16, encoding);
    DecodeRow(document, content, skew % 7, 1 + skew % 23, encoding);

    const std::span<const std::uint8_t> all(content);
    for (std::size_t i = 0; i < std::min<std::size_t>(content.size(), 64); ++i) {
        const auto decoded = tlm::DecodeCharacterAt(encoding, all.subspan(i));
        Check(!decoded || (decoded->consumed >= 1 && decoded->consumed <= content.size() - i && !decoded->text.empty()));
    }
    return 0;
}
