#include "document/WholeFile.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <random>
#include <system_error>

namespace tlm {

std::optional<std::filesystem::path> PathFromText(std::u16string_view text)
{
    // The conversion to the system's narrow form throws on text it cannot represent.
    try {
        return std::filesystem::path(text);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

std::optional<std::string> ReadWholeFile(const std::u16string& path)
{
    const auto file = PathFromText(path);
    if (!file)
        return std::nullopt;
    std::error_code error;
    if (std::filesystem::is_directory(*file, error))
        return std::nullopt;
    std::ifstream stream(*file, std::ios::binary);
    if (!stream)
        return std::nullopt;
    std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (stream.bad())
        return std::nullopt;
    return bytes;
}

std::u16string TemporarySiblingPath(const std::u16string& target, std::uint32_t attempt)
{
    static constexpr char16_t Digits[] = u"0123456789ABCDEF";
    std::random_device device;
    const auto clock = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    std::uint64_t mixed = (static_cast<std::uint64_t>(device()) << 32) ^ device() ^ (clock * 0x9E3779B97F4A7C15ull)
        ^ attempt;
    std::u16string name = target + u'.';
    for (int shift = 60; shift >= 0; shift -= 4)
        name.push_back(Digits[(mixed >> shift) & 0xF]);
    name += u".tmp";
    return name;
}

} // namespace tlm
