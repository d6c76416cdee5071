// Feeds arbitrary bytes to the language file reader.
#include "settings/StringTable.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

void Require(bool condition)
{
    if (!condition)
        std::abort();
}

bool IsTrimmed(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const tlm::StringTable table = tlm::ParseStringTable(std::string_view(reinterpret_cast<const char*>(data), size));
    for (const auto& [key, value] : table) {
        for (char c : key) {
            Require(static_cast<unsigned char>(c) <= 127);
            Require(c != '\n' && c != '=');
        }
        Require(key.empty() || (key.front() != ' ' && key.front() != '\t' && key.back() != ' ' && key.back() != '\t'));
        Require(value.find(u'\n') == std::u16string::npos);
        Require(value.empty() || (!IsTrimmed(value.front()) && !IsTrimmed(value.back())));
    }
    return 0;
}
