#include "document/WholeFile.h"

#include <windows.h>

namespace tlm {

namespace {

constexpr std::uint32_t TemporaryNameAttempts = 64;
constexpr DWORD LargestWrite = 1u << 30;

std::wstring Wide(const std::u16string& text)
{
    return std::wstring(text.begin(), text.end());
}

bool WriteAll(HANDLE file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const DWORD chunk = bytes.size() > LargestWrite ? LargestWrite : static_cast<DWORD>(bytes.size());
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), chunk, &written, nullptr) || written == 0)
            return false;
        bytes.remove_prefix(written);
    }
    return true;
}

} // namespace

bool ReplaceWholeFile(const std::u16string& path, std::string_view bytes)
{
    const std::wstring target = Wide(path);
    for (std::uint32_t attempt = 0; attempt < TemporaryNameAttempts; ++attempt) {
        const std::wstring temporary = Wide(TemporarySiblingPath(path, attempt));
        const HANDLE file = CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
            FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            if (GetLastError() == ERROR_FILE_EXISTS)
                continue;
            return false;
        }
        const bool written = WriteAll(file, bytes) && FlushFileBuffers(file);
        const bool closed = CloseHandle(file) != 0;
        if (!written || !closed
            || !MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
            DeleteFileW(temporary.c_str());
            return false;
        }
        return true;
    }
    return false;
}

} // namespace tlm
