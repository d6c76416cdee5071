#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tlm {

// Strict UTF-8 to UTF-16: overlong forms, surrogates, values above U+10FFFF, stray continuation bytes
// and a sequence cut short all fail the whole conversion. Empty input gives empty text.
std::optional<std::u16string> Utf8ToUtf16(std::span<const std::uint8_t> bytes);
std::optional<std::u16string> Utf8ToUtf16(std::string_view bytes);

// UTF-16 to UTF-8. A surrogate without its partner becomes U+FFFD, as the platform's converter does.
std::string Utf16ToUtf8(std::u16string_view text);

// Length that a lead byte announces, or 0 for a byte that cannot start a sequence.
std::size_t Utf8SequenceLength(std::uint8_t lead);

// Length of the valid UTF-8 sequence at the start of `bytes`, or 0 when it is not one.
std::size_t ValidUtf8SequenceLength(std::span<const std::uint8_t> bytes);

} // namespace tlm
