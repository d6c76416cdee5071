#pragma once

#include <cstdint>

namespace tlm {

// The closed set of encodings of the text column, the inspector and text queries.
// The numbers are stable within a run only; the settings file stores names.
enum class TextEncoding : std::uint32_t {
    Ascii = 0,
    Utf8 = 1,
    Utf16Le = 2,
    Utf16Be = 3,
    ShiftJis = 4,
    Windows949 = 5,
    EucKr = 6,
    Big5 = 7,
    Gbk = 8,
    Tis620 = 9,
    Windows1258 = 10,
    IsciiDevanagari = 11,
};

inline constexpr std::uint32_t TextEncodingCount = 12;

constexpr bool IsKnownEncoding(TextEncoding encoding)
{
    return static_cast<std::uint32_t>(encoding) < TextEncodingCount;
}

} // namespace tlm
