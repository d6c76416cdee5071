#pragma once

#include <string>
#include <string_view>

namespace tlm {

// UTF-8 to UTF-16 that never fails: each byte that does not start a valid sequence becomes U+FFFD,
// as a text reader that must show something does.
std::u16string Utf8ToUtf16Lenient(std::string_view bytes);

} // namespace tlm
