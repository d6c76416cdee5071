#include "settings/LenientUtf8.h"

#include "encoding/Utf8.h"

#include <cstdint>
#include <span>

namespace tlm {

std::u16string Utf8ToUtf16Lenient(std::string_view bytes)
{
    const std::span<const std::uint8_t> all(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    std::u16string text;
    text.reserve(bytes.size());
    std::size_t position = 0;
    while (position < all.size()) {
        // Runs of ASCII are the common case and need no decoding.
        if (all[position] < 0x80) {
            text.push_back(static_cast<char16_t>(all[position]));
            ++position;
            continue;
        }
        const std::size_t length = ValidUtf8SequenceLength(all.subspan(position));
        if (length == 0) {
            text.push_back(u'\uFFFD');
            ++position;
            continue;
        }
        const std::string_view sequence = bytes.substr(position, length);
        text.append(Utf8ToUtf16(sequence).value_or(u"\uFFFD"));
        position += length;
    }
    return text;
}

} // namespace tlm
