#include "settings/ExecutableFolder.h"

#include <windows.h>

#include <string>
#include <vector>

namespace tlm {

namespace {

// Paths of up to 32767 characters and the null behind them.
constexpr DWORD PathBufferLength = 32768;

std::u16string Text(const wchar_t* text, std::size_t length)
{
    return std::u16string(text, text + length);
}

std::u16string SystemMessage(DWORD code)
{
    wchar_t* buffer = nullptr;
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM
            | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    std::u16string message;
    if (length > 0) {
        message = Text(buffer, length);
    } else {
        const std::wstring number = L"error " + std::to_wstring(code);
        message = Text(number.c_str(), number.size());
    }
    if (buffer)
        LocalFree(buffer);
    while (!message.empty() && (message.back() == u'\n' || message.back() == u'\r' || message.back() == u' '))
        message.pop_back();
    return message;
}

} // namespace

std::optional<std::u16string> ExecutableFolder(std::u16string& error)
{
    std::vector<wchar_t> buffer(PathBufferLength);
    const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), PathBufferLength);
    if (length == 0 || length >= PathBufferLength) {
        // A full buffer means the path was cut short.
        error = SystemMessage(length == 0 ? GetLastError() : ERROR_INSUFFICIENT_BUFFER);
        return std::nullopt;
    }
    std::u16string path = Text(buffer.data(), length);
    const std::size_t separator = path.find_last_of(u"\\/");
    if (separator == std::u16string::npos) {
        error = SystemMessage(ERROR_BAD_PATHNAME);
        return std::nullopt;
    }
    // A program in a drive's root keeps its separator: "C:" alone would mean that drive's current folder.
    const bool driveRoot = separator == 2 && path[1] == u':';
    path.resize(driveRoot ? separator + 1 : separator);
    return path;
}

} // namespace tlm
