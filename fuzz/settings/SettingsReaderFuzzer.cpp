// Feeds arbitrary bytes to the settings reader, then writes what it read and reads that again.
// settings.dict beside this file names the keys, which gets mutations into the reader quickly.
#include "settings/SettingsReader.h"
#include "settings/SettingsWriter.h"

#include <algorithm>
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

// What any read must leave true, whatever the text said.
void CheckLimits(const tlm::AppSettings& settings)
{
    Require(settings.fontSize > 0.0f);
    Require(settings.encodingFavorites.size() <= 3);
    for (std::size_t i = 0; i < settings.encodingFavorites.size(); ++i) {
        Require(tlm::IsKnownEncoding(settings.encodingFavorites[i]));
        Require(std::count(settings.encodingFavorites.begin(), settings.encodingFavorites.end(),
                    settings.encodingFavorites[i])
            == 1);
    }
    Require(tlm::IsKnownEncoding(settings.encoding));
    Require(static_cast<std::uint32_t>(settings.theme) <= 3);
    Require(settings.recentFiles.size() <= tlm::MaxRecentFiles);
    Require(settings.searchHistory.size() <= tlm::MaxSearchHistory);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    tlm::AppSettings settings;
    tlm::ParseSettings(text, settings);
    CheckLimits(settings);

    // A field's new value depends on the text alone, never on what the record held before, so a second
    // read of the same text changes nothing.
    tlm::AppSettings twice = settings;
    tlm::ParseSettings(text, twice);
    Require(twice == settings);

    // The writer must take whatever the reader gave, and its file must read again. The values need not
    // come back equal: a text that ends in a quoted key name (x"theme) is taken for that key by a reader
    // that scans rather than parses, which the unit tests show on purpose.
    const std::string written = tlm::SerializeSettings(settings);
    tlm::AppSettings again;
    Require(tlm::ParseSettings(written, again));
    CheckLimits(again);
    return 0;
}
