// Encodes arbitrary UTF-16 queries. Whatever is accepted must be exact: it decodes back to the query
// in every encoding that converts strictly, and the UTF-16 and ASCII forms are the units themselves.
// The way back is the lenient decoder: an exact mapping such as U+F8F1 to the lone byte FD of code
// page 932 is searchable, though the strict decoder turns that byte away as private use.
#include "encoding/EncodingCatalogue.h"
#include "encoding/SearchTextEncoder.h"
#include "encoding/TextServices.h"
#include "encoding/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using tlm::TextEncoding;

void Check(bool condition)
{
    if (!condition) {
        __builtin_trap();
    }
}

bool HasLoneSurrogate(std::u16string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] >= 0xD800 && text[i] <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            ++i;
        } else if (text[i] >= 0xD800 && text[i] <= 0xDFFF) {
            return true;
        }
    }
    return false;
}

bool IsTis620Byte(std::uint8_t byte)
{
    return byte <= 0x7F || (byte >= 0xA1 && byte <= 0xDA) || (byte >= 0xDF && byte <= 0xFB);
}

bool IsStrict(TextEncoding encoding)
{
    return encoding >= TextEncoding::ShiftJis && encoding <= TextEncoding::Windows1258;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1) {
        return 0;
    }
    const auto encoding = static_cast<TextEncoding>(data[0] % (tlm::TextEncodingCount + 1));
    std::u16string query;
    for (std::size_t i = 1; i + 1 < size; i += 2) {
        query.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
    }
    const auto bytes = tlm::EncodeSearchText(query, encoding);
    if (query.empty() || !tlm::IsKnownEncoding(encoding)) {
        Check(!bytes);
        return 0;
    }
    switch (encoding) {
    case TextEncoding::Ascii: {
        const bool plain = std::all_of(query.begin(), query.end(), [](char16_t unit) { return unit <= 0x7F; });
        Check(bytes.has_value() == plain);
        Check(!bytes || std::equal(bytes->begin(), bytes->end(), query.begin(), query.end()));
        break;
    }
    case TextEncoding::Utf8:
        Check(bytes.has_value());
        Check(HasLoneSurrogate(query) || tlm::Utf8ToUtf16(*bytes) == query);
        break;
    case TextEncoding::Utf16Le:
    case TextEncoding::Utf16Be:
        Check(bytes && bytes->size() == query.size() * 2);
        break;
    case TextEncoding::Tis620:
        Check(!bytes || std::all_of(bytes->begin(), bytes->end(), IsTis620Byte));
        [[fallthrough]];
    default:
        if (bytes && IsStrict(encoding)) {
            Check(!bytes->empty());
            Check(tlm::MultiByteToUtf16(tlm::EncodingCodePage(encoding), *bytes, false) == query);
        }
        break;
    }
    return 0;
}
