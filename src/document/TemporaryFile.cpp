#include "document/TemporaryFile.h"

#include "document/ParentPath.h"

#include <chrono>
#include <random>

namespace tlm {

namespace {

constexpr std::uint32_t TemporaryFileAttempts = 64;

std::u16string UpperHex(std::uint64_t value, int minimumDigits)
{
    static constexpr char16_t digits[] = u"0123456789ABCDEF";
    std::u16string text;
    while (value != 0 || static_cast<int>(text.size()) < minimumDigits) {
        text.insert(text.begin(), digits[value & 0xF]);
        value >>= 4;
    }
    return text;
}

std::uint64_t TemporaryNameNumber(std::uint32_t attempt)
{
    std::uint64_t high = 0;
    std::uint64_t low = 0;
    try {
        // The device may be missing on an odd system; the clock and the process id still vary the name.
        std::random_device device;
        high = static_cast<std::uint32_t>(device());
        low = static_cast<std::uint32_t>(device());
    } catch (...) {
    }
    const auto clock = static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch()).count());
    const std::uint64_t process = static_cast<std::uint64_t>(CurrentProcessId()) << 32;
    return (high << 32) ^ low ^ clock ^ process ^ attempt;
}

} // namespace

std::u16string MakeTemporaryFileName(std::uint32_t attempt)
{
    return u"Tolmo-" + UpperHex(TemporaryNameNumber(attempt), 16) + u"-" + UpperHex(attempt, 2) + u".tmp";
}

std::optional<TemporaryFile> CreateUniqueTemporaryFile(const std::u16string& target)
{
    std::u16string folder = ParentPath(target);
    if (folder.empty()) {
        std::optional<std::u16string> current = CurrentFolder();
        if (!current) {
            SetLastSystemError(PathNotFoundError());
            return std::nullopt;
        }
        folder = std::move(*current);
    }
    for (std::uint32_t attempt = 0; attempt < TemporaryFileAttempts; ++attempt) {
        TemporaryFile file;
        file.path = JoinPath(folder, MakeTemporaryFileName(attempt));
        file.handle = CreateNewFile(file.path);
        if (IsValidFileHandle(file.handle)) {
            return file;
        }
        const std::uint32_t error = LastSystemError();
        if (!IsFileExistsError(error)) {
            SetLastSystemError(error);
            return std::nullopt;
        }
    }
    SetLastSystemError(FileExistsError());
    return std::nullopt;
}

} // namespace tlm
