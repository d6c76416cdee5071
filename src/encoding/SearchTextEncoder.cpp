#include "encoding/SearchTextEncoder.h"

#include "encoding/BaseAndMarkDecoder.h"
#include "encoding/EncodingCatalogue.h"
#include "encoding/TextServices.h"
#include "encoding/Utf8.h"

#include <algorithm>

namespace tlm {

namespace {

using Bytes = std::vector<std::uint8_t>;

std::optional<Bytes> EncodeAscii(std::u16string_view query)
{
    if (std::any_of(query.begin(), query.end(), [](char16_t unit) { return unit > 0x7F; })) {
        return std::nullopt;
    }
    return Bytes(query.begin(), query.end());
}

// Units as they are: a lone surrogate is searched for as the unit it is.
Bytes EncodeUtf16(std::u16string_view query, bool bigEndian)
{
    Bytes bytes;
    bytes.reserve(query.size() * 2);
    for (char16_t unit : query) {
        const auto high = static_cast<std::uint8_t>(unit >> 8);
        const auto low = static_cast<std::uint8_t>(unit & 0xFF);
        bytes.push_back(bigEndian ? high : low);
        bytes.push_back(bigEndian ? low : high);
    }
    return bytes;
}

std::optional<Bytes> EncodeUtf8(std::u16string_view query)
{
    std::string text = Utf16ToUtf8(query);
    if (text.empty()) {
        return std::nullopt;
    }
    return Bytes(text.begin(), text.end());
}

// No best fit and no default character: a character without an exact form refuses the whole query.
std::optional<Bytes> EncodeStrictly(std::uint32_t codePage, std::u16string_view query)
{
    std::optional<MultiByteText> converted = Utf16ToMultiByte(codePage, query, true);
    if (!converted || converted->bytes.empty() || converted->usedDefaultChar) {
        return std::nullopt;
    }
    return std::move(converted->bytes);
}

// Code page 874 is wider than TIS-620; the search keeps to the bytes the view shows as text.
std::optional<Bytes> EncodeTis620(std::u16string_view query)
{
    std::optional<Bytes> bytes = EncodeStrictly(874, query);
    if (bytes && !std::all_of(bytes->begin(), bytes->end(), IsTis620Byte)) {
        return std::nullopt;
    }
    return bytes;
}

// ISCII is converted as the platform makes it, with no check for a default character.
std::optional<Bytes> EncodeIscii(std::u16string_view query)
{
    std::optional<MultiByteText> converted = Utf16ToMultiByte(57002, query, false);
    if (!converted || converted->bytes.empty()) {
        return std::nullopt;
    }
    return std::move(converted->bytes);
}

} // namespace

std::optional<std::vector<std::uint8_t>> EncodeSearchText(std::u16string_view query, TextEncoding encoding)
{
    if (query.empty() || !IsKnownEncoding(encoding)) {
        return std::nullopt;
    }
    switch (encoding) {
    case TextEncoding::Ascii:
        return EncodeAscii(query);
    case TextEncoding::Utf8:
        return EncodeUtf8(query);
    case TextEncoding::Utf16Le:
        return EncodeUtf16(query, false);
    case TextEncoding::Utf16Be:
        return EncodeUtf16(query, true);
    case TextEncoding::Tis620:
        return EncodeTis620(query);
    case TextEncoding::IsciiDevanagari:
        return EncodeIscii(query);
    default:
        return EncodeStrictly(EncodingCodePage(encoding), query);
    }
}

} // namespace tlm
