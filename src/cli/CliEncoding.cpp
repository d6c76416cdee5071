#include "cli/CliEncoding.h"

#include "encoding/EncodingCatalogue.h"

namespace tlm {

std::optional<TextEncoding> ParseCliEncoding(std::string_view name)
{
    const std::string normalized = NormalizeEncodingName(name);
    const TextEncoding encoding = EncodingFromName(normalized);
    if (encoding == TextEncoding::Ascii && normalized != "ascii") {
        return std::nullopt;
    }
    return encoding;
}

} // namespace tlm
